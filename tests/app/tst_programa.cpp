// What the program checks before its windows, and its message boxes answered from the keyboard,
// wide enough for the title the window manager puts over them (the program's name when the box
// has none).

#include "ui/common/MensajesQt.h"
#include "ui/main/Arranque.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

class TstPrograma : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QApplication::setApplicationName(QStringLiteral("IVA Compras")); }
    void hayPantalla_data()
    {
        QTest::addColumn<QString>("variable");
        QTest::addColumn<bool>("hay");
        QTest::newRow("DISPLAY vacia") << "DISPLAY=" << false;
        QTest::newRow("X11") << "DISPLAY=:0" << true;
        QTest::newRow("Wayland") << "WAYLAND_DISPLAY=wayland-0" << true;
        QTest::newRow("plataforma Qt") << "QT_QPA_PLATFORM=offscreen" << true;
    }
    void hayPantalla()
    {
        QFETCH(QString, variable);
        QFETCH(bool, hay);
        QProcessEnvironment e;
        e.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
        QCOMPARE(HayPantalla(e), hay);
    }

    void mensajes_data()
    {
        QTest::addColumn<int>("estilo");
        QTest::addColumn<int>("icono");
        QTest::addColumn<int>("botones");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<int>("respuesta");
        QTest::addColumn<QString>("titulo");
        const QString largo = QStringLiteral("Confirmación de la operación de exportación del período");
        const int ok = QMessageBox::Ok, sino = QMessageBox::Yes | QMessageBox::No;
        const int enter = Qt::Key_Return, esc = Qt::Key_Escape;
        QTest::newRow("critico, Enter") << vb::vbCritical + vb::vbSystemModal << int(QMessageBox::Critical) << ok << enter << int(vb::vbOK) << "Confirmación";
        QTest::newRow("aviso, Esc, sin título") << int(vb::vbExclamation) << int(QMessageBox::Warning) << ok << esc << int(vb::vbOK) << "";
        QTest::newRow("informacion, título largo") << int(vb::vbInformation) << int(QMessageBox::Information) << ok << enter << int(vb::vbOK) << largo;
        QTest::newRow("pregunta, Si") << vb::vbYesNo + vb::vbQuestion << int(QMessageBox::Question) << sino << enter << int(vb::vbYes) << "Confirmación";
        QTest::newRow("pregunta, No por defecto") << vb::vbYesNo + vb::vbQuestion + 256 << int(QMessageBox::Question) << sino << enter << int(vb::vbNo) << "";
        QTest::newRow("aceptar o cancelar, Esc") << int(vb::vbOKCancel) << int(QMessageBox::NoIcon)
                                                 << int(QMessageBox::Ok | QMessageBox::Cancel) << esc << int(vb::vbCancel) << "";
    }
    void mensajes()
    {
        QFETCH(int, estilo);
        QFETCH(int, icono);
        QFETCH(int, botones);
        QFETCH(int, tecla);
        QFETCH(int, respuesta);
        QFETCH(QString, titulo);
        QString visto; // text|title|icon|buttons
        int ancho = 0;
        // The box is read and answered once it is up; one that never comes up as the modal
        // window is closed after a while, and the comparisons below fail.
        QTimer espera;
        espera.setInterval(10);
        QTimer::singleShot(10000, [&] {
            for (QWidget *w : QApplication::topLevelWidgets())
                if (auto *b = qobject_cast<QMessageBox *>(w); b && b->isVisible())
                    b->done(0);
        });
        QObject::connect(&espera, &QTimer::timeout, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            espera.stop();
            visto = QStringLiteral("%1|%2|%3|%4").arg(box->text(), box->windowTitle()).arg(box->icon()).arg(box->standardButtons().toInt());
            ancho = box->width();
            QTest::keyClick(box, Qt::Key(tecla));
            if (box->isVisible())
                box->done(0);
        });
        espera.start();
        MensajesQt m;
        QCOMPARE(m.MsgBox(QStringLiteral("Falta algo.\r\n\r\nVerifique <b>"), estilo, titulo), respuesta);
        QCOMPARE(visto, QStringLiteral("Falta algo.\n\nVerifique <b>|%1|%2|%3").arg(titulo).arg(icono).arg(botones));
        QFont negrita = QApplication::font();
        negrita.setBold(true);
        const QString barra = titulo.isEmpty() ? QStringLiteral("IVA Compras") : titulo;
        QVERIFY2(ancho >= QFontMetrics(negrita).horizontalAdvance(barra) + 120, qPrintable(QString::number(ancho)));
    }
};

QTEST_MAIN(TstPrograma)
#include "tst_programa.moc"
