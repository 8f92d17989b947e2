#include "ui/common/MensajesQt.h"
#include "ui/main/Arranque.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

// What the program checks before its windows, and its message boxes.
class TstPrograma : public QObject
{
    Q_OBJECT
private slots:
    void hayPantalla_data();
    void hayPantalla();
    void mensajes_data();
    void mensajes();
};

void TstPrograma::hayPantalla_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<bool>("hay");
    QTest::newRow("nada") << QStringList{} << false;
    QTest::newRow("DISPLAY vacia") << QStringList{"DISPLAY="} << false;
    QTest::newRow("otra variable") << QStringList{"HOME=/root"} << false;
    QTest::newRow("X11") << QStringList{"DISPLAY=:0"} << true;
    QTest::newRow("Wayland") << QStringList{"WAYLAND_DISPLAY=wayland-0"} << true;
    QTest::newRow("plataforma Qt") << QStringList{"QT_QPA_PLATFORM=offscreen"} << true;
}

void TstPrograma::hayPantalla()
{
    QFETCH(QStringList, variables);
    QFETCH(bool, hay);
    QProcessEnvironment e;
    for (const QString &v : variables)
        e.insert(v.section(u'=', 0, 0), v.section(u'=', 1));
    QCOMPARE(HayPantalla(e), hay);
}

void TstPrograma::mensajes_data()
{
    QTest::addColumn<int>("estilo");
    QTest::addColumn<int>("icono");
    QTest::addColumn<QStringList>("botones");
    QTest::addColumn<int>("tecla");
    QTest::addColumn<int>("respuesta");
    const int crit = vb::vbCritical + vb::vbSystemModal;
    QTest::newRow("critico, Enter") << crit << int(QMessageBox::Critical) << QStringList{"OK"} << int(Qt::Key_Return) << int(vb::vbOK);
    QTest::newRow("aviso, Esc") << int(vb::vbExclamation) << int(QMessageBox::Warning) << QStringList{"OK"} << int(Qt::Key_Escape) << int(vb::vbOK);
    QTest::newRow("informacion") << int(vb::vbInformation) << int(QMessageBox::Information) << QStringList{"OK"} << int(Qt::Key_Return) << int(vb::vbOK);
    QTest::newRow("pregunta, Si") << vb::vbYesNo + vb::vbQuestion << int(QMessageBox::Question) << QStringList{"Yes", "No"} << int(Qt::Key_Return) << int(vb::vbYes);
    QTest::newRow("pregunta, No por defecto") << vb::vbYesNo + vb::vbQuestion + 256 << int(QMessageBox::Question) << QStringList{"Yes", "No"} << int(Qt::Key_Return) << int(vb::vbNo);
    QTest::newRow("aceptar o cancelar, Esc") << int(vb::vbOKCancel) << int(QMessageBox::NoIcon) << QStringList{"OK", "Cancel"} << int(Qt::Key_Escape) << int(vb::vbCancel);
}

void TstPrograma::mensajes()
{
    QFETCH(int, estilo);
    QFETCH(int, icono);
    QFETCH(QStringList, botones);
    QFETCH(int, tecla);
    QFETCH(int, respuesta);
    QString texto, titulo;
    int iconoVisto = -1;
    QStringList botonesVistos;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        texto = box->text();
        titulo = box->windowTitle();
        iconoVisto = box->icon();
        for (QAbstractButton *b : box->buttons())
            switch (box->standardButton(b)) {
            case QMessageBox::Ok: botonesVistos << QStringLiteral("OK"); break;
            case QMessageBox::Cancel: botonesVistos << QStringLiteral("Cancel"); break;
            case QMessageBox::Yes: botonesVistos << QStringLiteral("Yes"); break;
            case QMessageBox::No: botonesVistos << QStringLiteral("No"); break;
            default: botonesVistos << QStringLiteral("?"); break;
            }
        QTest::keyClick(box, Qt::Key(tecla));
        if (box->isVisible())
            box->done(0);
    });
    MensajesQt m;
    const int r = m.MsgBox(QStringLiteral("Falta algo.\r\n\r\nVerifique <b>"), estilo, QStringLiteral("Confirmación"));
    QCOMPARE(r, respuesta);
    QCOMPARE(texto, QStringLiteral("Falta algo.\n\nVerifique <b>"));
    QCOMPARE(titulo, QStringLiteral("Confirmación"));
    QCOMPARE(iconoVisto, icono);
    std::sort(botonesVistos.begin(), botonesVistos.end());
    std::sort(botones.begin(), botones.end());
    QCOMPARE(botonesVistos, botones);
}

QTEST_MAIN(TstPrograma)
#include "tst_programa.moc"
