#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/frmOpciones.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QtTest>

namespace {
const QString kAlfa = QStringLiteral("20-22222222-2");
const QString kBeta = QStringLiteral("30-11111111-1");
} // namespace

// The company and period window, opened on its own (not modal) with a real main window behind.
class TstFrmOpciones : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void propuesta_data();
    void propuesta();
    void empresaYDiciembre2005();
    void mesSinCeroAdelante();
    void escCancela();
    void enterPasaAlSiguiente_data();
    void enterPasaAlSiguiente();
    void barraDelAnio();
    void empresaBorradaAlConfirmar();
    void baseInexistente();

private:
    // LeerDatos as at start-up, then the window loaded.
    std::unique_ptr<frmOpciones> Abrir(const QString &cuit, const QString &periodo);
    QString Recordado(const char *clave) const
    {
        return libro->S().ajustes.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QString::fromLatin1(clave));
    }
    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmMAIN> principal;
};

void TstFrmOpciones::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Empresa(kBeta, QStringLiteral("Beta SRL"), QStringLiteral("N"));
    libro->Empresa(kAlfa, QStringLiteral("Alfa SA"));
    libro->Proveedor(QStringLiteral("30-7"), QStringLiteral("Proveedor"));
    libro->Factura(kBeta, QStringLiteral("30-7"), QStringLiteral("01/12/2005"), QStringLiteral("02/12/2005"),
                   QStringLiteral("A"), QStringLiteral("1"), 100, 0, 21, 0);
    principal = std::make_unique<frmMAIN>(libro->S());
}

void TstFrmOpciones::cleanup()
{
    principal.reset();
    libro.reset();
}

std::unique_ptr<frmOpciones> TstFrmOpciones::Abrir(const QString &cuit, const QString &periodo)
{
    libro->Recordar(cuit, periodo);
    LeerDatos(libro->S());
    auto f = std::make_unique<frmOpciones>(libro->S(), principal.get());
    f->show();
    return f;
}

void TstFrmOpciones::propuesta_data()
{
    QTest::addColumn<QString>("cuit");
    QTest::addColumn<QString>("periodo");
    QTest::addColumn<QString>("empresa");
    QTest::addColumn<QString>("mes");
    QTest::addColumn<QString>("anio");
    QTest::addColumn<QString>("periodoSesion");
    // Today is 21/11/2026.
    QTest::newRow("primera vez") << "" << "" << "Alfa SA" << "NOVIEMBRE" << "2026" << "01/11/2026";
    QTest::newRow("empresa que ya no existe") << "99-9" << "15/03/2005" << "Alfa SA" << "NOVIEMBRE" << "2026" << "01/11/2026";
    QTest::newRow("empresa sin periodo") << kBeta << "" << "Beta SRL" << "ENERO" << "1990" << "01/01/1990";
    QTest::newRow("periodo no fecha") << kBeta << "13/13/2005" << "Beta SRL" << "ENERO" << "1990" << "01/01/1990";
    QTest::newRow("empresa y periodo") << kBeta << "15/03/2005" << "Beta SRL" << "MARZO" << "2005" << "15/03/2005";
}

void TstFrmOpciones::propuesta()
{
    QFETCH(QString, cuit);
    QFETCH(QString, periodo);
    QFETCH(QString, empresa);
    QFETCH(QString, mes);
    QFETCH(QString, anio);
    QFETCH(QString, periodoSesion);
    auto f = Abrir(cuit, periodo);
    QCOMPARE(f->cboUSR->count(), 2);
    QCOMPARE(f->cboUSR->itemText(0), QStringLiteral("Alfa SA"));
    QCOMPARE(f->cboIDUSR->itemText(0), kAlfa);
    QCOMPARE(f->cboIDUSR->itemText(1), kBeta);
    QVERIFY(!f->cboIDUSR->isVisible());
    QCOMPARE(f->cboMES->count(), 12);
    QCOMPARE(f->cboMES->itemText(8), QStringLiteral("SEPTIEMBRE"));
    QCOMPARE(f->cboUSR->currentText(), empresa);
    QCOMPARE(f->cboIDUSR->currentIndex(), f->cboUSR->currentIndex());
    QCOMPARE(f->cboMES->currentText(), mes);
    QCOMPARE(f->TxtYear->text(), anio);
    QCOMPARE(QString::number(f->VScroll1->value()), anio);
    QCOMPARE(libro->S().Periodo, periodoSesion);
}

void TstFrmOpciones::empresaYDiciembre2005()
{
    auto f = Abrir(kAlfa, QStringLiteral("01/11/2026"));
    QTest::keyClick(f->cboUSR, Qt::Key_Down);
    QTest::keyClick(f->cboMES, Qt::Key_End);
    QCOMPARE(f->cboMES->currentText(), QStringLiteral("DICIEMBRE"));
    QTest::keyClick(f->TxtYear, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(f->TxtYear, QStringLiteral("2005"));
    QTest::keyClick(f->TxtYear, Qt::Key_F11);

    const Sesion &s = libro->S();
    QVERIFY(!s.Cancelado);
    QVERIFY(!f->isVisible());
    QCOMPARE(s.CuitUsuario, kBeta);
    QCOMPARE(s.NombreUsuario, QStringLiteral("Beta SRL"));
    QCOMPARE(s.ConIva, QStringLiteral("N"));
    QCOMPARE(s.DomicilioUsuario, QStringLiteral("Calle 1"));
    QCOMPARE(s.EmailUsuario, QStringLiteral("info@empresa.com.ar"));
    QCOMPARE(s.MesPeriodo, qint16(12));
    QCOMPARE(s.Periodo, QStringLiteral("01/12/2005"));
    QCOMPARE(s.PeriodoDesde, QStringLiteral("01/12/2005"));
    QCOMPARE(s.PeriodoHasta, QStringLiteral("31/12/2004"));
    QCOMPARE(Recordado("USRSNROCUIT"), kBeta);
    QCOMPARE(Recordado("IVCFPERIOD"), QStringLiteral("01/12/2005"));
    // The main window shows the chosen company and period.
    QCOMPARE(principal->Grd->Rows(), 2);
    QCOMPARE(principal->Grd->TextMatrix(1, 0), QStringLiteral("02/12/05"));
    QCOMPARE(principal->LbTot->text(), QStringLiteral("121,00"));
}

void TstFrmOpciones::mesSinCeroAdelante()
{
    auto f = Abrir(kAlfa, QStringLiteral("01/03/2005"));
    QTest::keyClick(f->cboUSR, Qt::Key_F11);
    QCOMPARE(libro->S().Periodo, QStringLiteral("01/3/2005"));
    QCOMPARE(libro->S().PeriodoHasta, QStringLiteral("31/03/2005"));
    QCOMPARE(Recordado("IVCFPERIOD"), QStringLiteral("01/3/2005"));
}

void TstFrmOpciones::escCancela()
{
    auto f = Abrir(kAlfa, QStringLiteral("15/03/2005"));
    QTest::keyClick(f->cboUSR, Qt::Key_Down);
    QTest::keyClick(f->cboUSR, Qt::Key_Escape);
    QVERIFY(libro->S().Cancelado);
    QVERIFY(!f->isVisible());
    QCOMPARE(libro->S().CuitUsuario, kAlfa);
    QCOMPARE(libro->S().PeriodoDesde, QStringLiteral("01/03/2005"));
    QCOMPARE(Recordado("IVCFPERIOD"), QStringLiteral("15/03/2005"));
    QCOMPARE(principal->Grd->Rows(), 1);
}

void TstFrmOpciones::enterPasaAlSiguiente_data()
{
    QTest::addColumn<QString>("desde");
    QTest::addColumn<QString>("hasta");
    QTest::newRow("empresa") << "cboUSR" << "cboMES";
    QTest::newRow("mes") << "cboMES" << "TxtYear";
    QTest::newRow("anio") << "TxtYear" << "VScroll1";
    QTest::newRow("barra") << "VScroll1" << "cboUSR";
}

void TstFrmOpciones::enterPasaAlSiguiente()
{
    QFETCH(QString, desde);
    QFETCH(QString, hasta);
    auto f = Abrir(kAlfa, QStringLiteral("01/11/2026"));
    QVERIFY(QTest::qWaitForWindowActive(f.get()));
    auto *w = f->findChild<QWidget *>(desde);
    w->setFocus();
    QCOMPARE(QApplication::focusWidget(), w);
    QTest::keyClick(w, Qt::Key_Return);
    QVERIFY(QApplication::focusWidget());
    QCOMPARE(QApplication::focusWidget()->objectName(), hasta);
    QVERIFY(f->isVisible());
}

void TstFrmOpciones::barraDelAnio()
{
    auto f = Abrir(kAlfa, QStringLiteral("01/11/2026"));
    QTest::keyClick(f->VScroll1, Qt::Key_Up);
    QCOMPARE(f->TxtYear->text(), QStringLiteral("2027"));
    QTest::keyClick(f->VScroll1, Qt::Key_Down);
    QTest::keyClick(f->VScroll1, Qt::Key_Down);
    QCOMPARE(f->TxtYear->text(), QStringLiteral("2025"));
    QVERIFY(f->VScroll1->minimum() <= 1990 && f->VScroll1->maximum() >= 2026);
}

void TstFrmOpciones::empresaBorradaAlConfirmar()
{
    auto f = Abrir(kAlfa, QStringLiteral("01/12/2005"));
    libro->Ejecutar(QStringLiteral("personal.mdb"), {QStringLiteral("delete from USR where USRSNRCUIT = '%1'").arg(kBeta)});
    QTest::keyClick(f->cboUSR, Qt::Key_Down);
    QTest::keyClick(f->cboMES, Qt::Key_Up);
    QTest::keyClick(f->cboMES, Qt::Key_F11);
    const Sesion &s = libro->S();
    QCOMPARE(libro->Mensajes().Ultimo(), QStringLiteral("No se encuentra la información de este usuario."));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
    // The company changed; the period and the remembered choice did not; the window closed and
    // the main list shows the new company in the old period.
    QCOMPARE(s.CuitUsuario, kBeta);
    QCOMPARE(s.NombreUsuario, QStringLiteral("Beta SRL"));
    QCOMPARE(s.PeriodoDesde, QStringLiteral("01/12/2005"));
    QVERIFY(!s.Cancelado);
    QVERIFY(!f->isVisible());
    QCOMPARE(Recordado("USRSNROCUIT"), kAlfa);
    QCOMPARE(principal->Grd->TextMatrix(1, 0), QStringLiteral("02/12/05"));
}

void TstFrmOpciones::baseInexistente()
{
    libro->S().ajustes.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QStringLiteral("PERSONAL"),
                               libro->Carpeta() + QStringLiteral("no/"));
    auto f = Abrir(QString(), QString());
    QCOMPARE(f->cboUSR->count(), 0);
    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QVERIFY(libro->Mensajes().Ultimo().contains(libro->Carpeta() + QStringLiteral("no/personal.mdb")));
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
    QTest::keyClick(f->cboUSR, Qt::Key_Escape);
    QVERIFY(libro->S().Cancelado);
}

QTEST_MAIN(TstFrmOpciones)
#include "tst_frmopciones.moc"
