// The program's save dialog, answered with the keyboard.

#include "ui/common/DialogoGuardarQt.h"
#include "ui/main/VentanaModal.h"

#include <QFileDialog>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>

class TstDialogoGuardar : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    DialogoGuardarQt dialogo;

    // Opens the dialog on the folder and runs pasos on it once it shows; the dialog's answer.
    QString Abrir(const QString &carpeta, const std::function<void(QFileDialog &)> &pasos)
    {
        AlAbrirse<QFileDialog>(pasos);
        return dialogo.GuardarComo("Guardar Reporte de Libro IVA Compras",
                                   {{"XLS Delimitado por comas (*.xls)", "*.xls"}},
                                   carpeta, QString(254, u' '), nullptr);
    }

private slots:
    // A folder that does not exist opens the alternative one; the name box opens with its
    // blanks selected, so typing replaces them; a name of blanks is not taken; Enter takes the
    // name typed and Esc answers the empty text.
    void nombre()
    {
        dialogo.setCarpetaAlternativa(dir.path());
        QString carpeta, inicial;
        const QString r = Abrir("C:\\", [&](QFileDialog &d) {
            QWidget *caja = QApplication::focusWidget();
            carpeta = d.directory().absolutePath();
            inicial = caja->property("selectedText").toString();
            QTest::keyClicks(caja, "   ");
            QTest::keyClick(caja, Qt::Key_Return);
            QVERIFY(d.isVisible()); // a name of blanks is not taken
            QTest::keyClick(caja, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(caja, "marzo");
            QTest::keyClick(caja, Qt::Key_Return);
        });
        QCOMPARE((QStringList{carpeta, inicial, r}),
                 (QStringList{QDir(dir.path()).absolutePath(), QString(254, u' '),
                              QDir::toNativeSeparators(dir.path() + "/marzo")}));
        QCOMPARE(Abrir(dir.path(), [](QFileDialog &d) {
                     QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
                     QVERIFY(!d.isVisible());
                 }),
                 QString());
    }
};

QTEST_MAIN(TstDialogoGuardar)
#include "tst_dialogoguardar.moc"
