// The program's save dialog, answered with the keyboard.

#include "ui/common/DialogoGuardarQt.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>

class TstDialogoGuardar : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir;
    DialogoGuardarQt dialogo;

    // Opens the dialog on the folder and runs pasos on it once it shows with the focus in a
    // widget; the dialog's answer.
    QString Abrir(const QString &carpeta, const std::function<void(QFileDialog *)> &pasos)
    {
        QTimer::singleShot(0, this, [pasos] {
            QFileDialog *d = nullptr;
            if (QTest::qWaitFor([&d] {
                    d = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
                    return d && d->isVisible() && QApplication::focusWidget();
                }))
                pasos(d);
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

private slots:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        dialogo.setCarpetaAlternativa(dir->path());
    }

    // A folder that does not exist opens the alternative one; the name box opens with its
    // blanks selected, so typing replaces them.
    void nombreEscritoYEnter()
    {
        QString carpeta, inicial;
        const QString r = Abrir(QStringLiteral("C:\\"), [&](QFileDialog *d) {
            carpeta = d->directory().absolutePath();
            auto *caja = qobject_cast<QLineEdit *>(QApplication::focusWidget());
            if (!caja)
                return d->reject();
            inicial = caja->selectedText();
            QTest::keyClicks(caja, QStringLiteral("marzo"));
            QTest::keyClick(caja, Qt::Key_Return);
        });
        QCOMPARE(carpeta, QDir(dir->path()).absolutePath());
        QCOMPARE(inicial, QString(254, u' '));
        QCOMPARE(r, QDir::toNativeSeparators(dir->path() + QStringLiteral("/marzo")));
    }

    // A name of blanks is not taken; Esc then answers the empty text.
    void nombreEnBlancoYEsc()
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
};

QTEST_MAIN(TstDialogoGuardar)
#include "tst_dialogoguardar.moc"
