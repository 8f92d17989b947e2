// The program's save dialog, answered with the keyboard.

#include "ui/common/DialogoGuardarQt.h"

#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>

class TstDialogoGuardar : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
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
        bool sigueAbierto = false;
        const QString r = Abrir("C:\\", [&](QFileDialog *d) {
            QWidget *caja = QApplication::focusWidget();
            carpeta = d->directory().absolutePath();
            inicial = caja->property("selectedText").toString();
            QTest::keyClicks(caja, "   ");
            QTest::keyClick(caja, Qt::Key_Return);
            sigueAbierto = d->isVisible();
            QTest::keyClick(caja, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(caja, "marzo");
            QTest::keyClick(caja, Qt::Key_Return);
        });
        QCOMPARE((QStringList{carpeta, inicial, QString::number(sigueAbierto), r}),
                 (QStringList{QDir(dir.path()).absolutePath(), QString(254, u' '), "1",
                              QDir::toNativeSeparators(dir.path() + "/marzo")}));
        QCOMPARE(Abrir(dir.path(), [](QFileDialog *) { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); }),
                 QString());
    }
};

QTEST_MAIN(TstDialogoGuardar)
#include "tst_dialogoguardar.moc"
