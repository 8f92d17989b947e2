#include "ui/common/DialogoGuardarQt.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>

// The program's save dialog, answered with the keyboard.
class TstDialogoGuardar : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void nombreEscritoYEnter();
    void escCancela();
    void nombreEnBlancoNoAcepta();
    void carpetaInexistente();

private:
    // Opens the dialog and runs pasos on it once it shows; the dialog's answer.
    QString Abrir(const QString &carpeta, const std::function<void(QFileDialog *)> &pasos);
    std::unique_ptr<QTemporaryDir> dir;
    DialogoGuardarQt dialogo;
    QFileDialog *visto = nullptr;
};

void TstDialogoGuardar::init()
{
    dir = std::make_unique<QTemporaryDir>();
    dialogo.setCarpetaAlternativa(dir->path());
    visto = nullptr;
}

QString TstDialogoGuardar::Abrir(const QString &carpeta, const std::function<void(QFileDialog *)> &pasos)
{
    QTimer::singleShot(0, this, [this, pasos] {
        const bool abierto = QTest::qWaitFor([this] {
            visto = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            return visto && visto->isVisible() && QApplication::focusWidget();
        });
        if (abierto)
            pasos(visto);
        else if (QWidget *w = QApplication::activeModalWidget())
            w->close();
    });
    const QList<FiltroArchivo> filtros = {
        {QStringLiteral("XLS Delimitado por comas (*.xls)"), QStringLiteral("*.xls")},
        {QStringLiteral("All Files (*.*)"), QStringLiteral("*.*")},
    };
    return dialogo.GuardarComo(QStringLiteral("Guardar Reporte de Libro IVA Compras"), filtros, carpeta,
                               QString(254, u' '), nullptr);
}

void TstDialogoGuardar::nombreEscritoYEnter()
{
    QString inicial, escrito;
    QStringList filtros;
    QString titulo;
    const QString r = Abrir(dir->path(), [&](QFileDialog *d) {
        titulo = d->windowTitle();
        filtros = d->nameFilters();
        auto *caja = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        if (!caja) {
            d->reject();
            return;
        }
        inicial = caja->selectedText();
        QTest::keyClicks(caja, QStringLiteral("marzo"));
        escrito = caja->text();
        QTest::keyClick(caja, Qt::Key_Return);
    });
    QVERIFY(visto);
    QCOMPARE(titulo, QStringLiteral("Guardar Reporte de Libro IVA Compras"));
    QCOMPARE(filtros, (QStringList{"XLS Delimitado por comas (*.xls)", "All Files (*.*)"}));
    // The name box opens with its blanks selected: typing replaces them.
    QCOMPARE(inicial, QString(254, u' '));
    QCOMPARE(escrito, QStringLiteral("marzo"));
    QCOMPARE(r, QDir::toNativeSeparators(dir->path() + QStringLiteral("/marzo")));
}

void TstDialogoGuardar::escCancela()
{
    const QString r = Abrir(dir->path(), [](QFileDialog *) {
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("abril"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    });
    QVERIFY(visto);
    QCOMPARE(r, QString());
}

void TstDialogoGuardar::nombreEnBlancoNoAcepta()
{
    bool sigueAbierto = false;
    const QString r = Abrir(dir->path(), [&](QFileDialog *d) {
        QWidget *caja = QApplication::focusWidget();
        QTest::keyClicks(caja, QStringLiteral("   "));
        QTest::keyClick(caja, Qt::Key_Return);
        sigueAbierto = d->isVisible();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    });
    QVERIFY(sigueAbierto);
    QCOMPARE(r, QString());
}

void TstDialogoGuardar::carpetaInexistente()
{
    QString carpeta;
    Abrir(QStringLiteral("C:\\"), [&](QFileDialog *d) {
        carpeta = d->directory().absolutePath();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    });
    QCOMPARE(carpeta, QDir(dir->path()).absolutePath());
}

QTEST_MAIN(TstDialogoGuardar)
#include "tst_dialogoguardar.moc"
