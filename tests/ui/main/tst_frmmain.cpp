#include "Inicio.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "data/Convenciones.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/frmOpciones.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {
const QString kAlfa = QStringLiteral("20-22222222-2");
const QString kBeta = QStringLiteral("30-11111111-1");
const QString kUno = QStringLiteral("30-70000000-1");
const QString kDos = QStringLiteral("30-70000000-2");
const QString kNov = QStringLiteral("01/11/2026");
} // namespace

// The main window: start-up sequence, period list and totals, delete, print settings, F6.
class TstFrmMain : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void primeraVezListaYTotales();
    void arranqueRecordadoDiciembre();
    void arranqueEscTerminaSinVentana();
    void periodoSinFacturas();
    void suprimir_data();
    void suprimir();
    void escCamposImpresion_data();
    void escCamposImpresion();
    void f6CambiaEmpresa();
    void f6EscSoloCierraOpciones();

private:
    QStringList FilasGrilla(const frmMAIN &w) const;
    std::unique_ptr<LibroDePrueba> libro;
};

void TstFrmMain::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Empresa(kBeta, QStringLiteral("Beta SRL"), QStringLiteral("N"));
    libro->Empresa(kAlfa, QStringLiteral("Alfa SA"));
    libro->Proveedor(kUno, QStringLiteral("Proveedor Uno"));
    libro->Proveedor(kDos, QStringLiteral("Proveedor Dos"));
    // Alfa, November 2026: listed by date, then by the number's value (9 before 10).
    libro->Factura(kAlfa, kDos, kNov, QStringLiteral("03/11/2026"), QStringLiteral("B"), QStringLiteral("10"), 100, 10.5, 21, 0);
    libro->Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"), QStringLiteral("10"), 5, 0, 1.05, 5);
    libro->Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"), QStringLiteral("9"), 200, 0, 42, 2.5);
    libro->LineaIVA(kAlfa, kUno, QStringLiteral("9"), 1, 21, QStringLiteral("Iva del 21:"), 42);
    libro->LineaIB(kAlfa, kUno, QStringLiteral("9"), 1, 1.25, QStringLiteral("IIBB"), 2.5);
    libro->LineaGravado(kAlfa, kUno, QStringLiteral("9"), 1, 150);
    libro->LineaGravado(kAlfa, kUno, QStringLiteral("9"), 2, 50);
    // Not in the list: Alfa in October (same number and supplier as one of November), Beta.
    libro->Factura(kAlfa, kUno, QStringLiteral("01/10/2026"), QStringLiteral("20/10/2026"), QStringLiteral("A"), QStringLiteral("9"), 1, 0, 0, 0);
    libro->Factura(kBeta, kUno, QStringLiteral("01/10/2026"), QStringLiteral("02/10/2026"), QStringLiteral("C"), QStringLiteral("77"), 50, 0, 0, 0);
}

void TstFrmMain::cleanup() { libro.reset(); }

QStringList TstFrmMain::FilasGrilla(const frmMAIN &w) const
{
    QStringList out;
    for (int r = 1; r < w.Grd->Rows(); ++r) {
        QStringList c;
        for (int col = 0; col < w.Grd->Cols(); ++col)
            c << w.Grd->TextMatrix(r, col);
        out << c.join(u'|');
    }
    return out;
}

void TstFrmMain::arranqueRecordadoDiciembre()
{
    libro->Recordar(kBeta, QStringLiteral("15/12/2025"));
    libro->S().ajustes.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN"), QStringLiteral("10,5"));
    libro->S().ajustes.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPLIXP"), QStringLiteral("45"));
    frmMAIN w(libro->S());
    QString hastaAlAbrir, propuesta;
    AlAbrirse<frmOpciones>([&](frmOpciones &f) {
        hastaAlAbrir = libro->S().PeriodoHasta;
        propuesta = f.cboUSR->currentText() + u' ' + f.cboMES->currentText() + u' ' + f.TxtYear->text();
        QTest::keyClick(f.cboMES, Qt::Key_F11);
    });
    QVERIFY(w.Form_Load());
    // The December bounds end on 31 December of the previous year.
    QCOMPARE(hastaAlAbrir, QStringLiteral("31/12/2024"));
    QCOMPARE(propuesta, QStringLiteral("Beta SRL DICIEMBRE 2025"));
    const Sesion &s = libro->S();
    QCOMPARE(s.Periodo, QStringLiteral("01/12/2025"));
    QCOMPARE(s.PeriodoDesde, QStringLiteral("01/12/2025"));
    QCOMPARE(s.PeriodoHasta, QStringLiteral("31/12/2024"));
    QCOMPARE(w.lbIVCFPERIOD->text(), QStringLiteral("01/12/2025"));
    QCOMPARE(w.txtIMPFuente->text(), QStringLiteral("10,5"));
    QCOMPARE(w.txtIMPLinxHoja->text(), QStringLiteral("45"));
}

void TstFrmMain::arranqueEscTerminaSinVentana()
{
    frmMAIN w(libro->S());
    AlAbrirse<frmOpciones>([](frmOpciones &f) { QTest::keyClick(f.TxtYear, Qt::Key_Escape); });
    QVERIFY(!w.Form_Load());
    QVERIFY(libro->S().Cancelado);
    QVERIFY(!w.isVisible());
    QCOMPARE(w.lbUSRSNOMBR->text(), QString());
    QCOMPARE(w.Grd->Rows(), 1);
    QCOMPARE(libro->S().ajustes.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("USRSNROCUIT")), QString());
}

void TstFrmMain::primeraVezListaYTotales()
{
    // Nothing remembered: the first company in name order, this month.
    frmMAIN w(libro->S());
    QString propuesta;
    AlAbrirse<frmOpciones>([&](frmOpciones &f) {
        propuesta = f.cboUSR->currentText() + u' ' + f.cboMES->currentText() + u' ' + f.TxtYear->text();
        QTest::keyClick(f.cboUSR, Qt::Key_F11);
    });
    QVERIFY(w.Form_Load());
    QCOMPARE(propuesta, QStringLiteral("Alfa SA NOVIEMBRE 2026"));
    QCOMPARE(w.lbFecha->text(), conv::FechaLarga(QDate(2026, 11, 21)));
    QCOMPARE(w.lbUSRSNOMBR->text(), QStringLiteral("Alfa SA"));
    QCOMPARE(w.lbIVCFPERIOD->text(), QStringLiteral("01/11/2026"));
    QCOMPARE(w.txtIMPFuente->text(), QStringLiteral("9"));
    QCOMPARE(w.txtIMPLinxHoja->text(), QStringLiteral("30"));
    QCOMPARE(libro->S().ajustes.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("USRSNROCUIT")), kAlfa);

    QCOMPARE(w.Grd->Cols(), 11);
    QStringList cabeceras;
    for (int c = 0; c < 11; ++c)
        cabeceras << w.Grd->TextMatrix(0, c);
    QCOMPARE(cabeceras, (QStringList{"Fecha", "Tipo   ", "Nro", "", "Nombre", "Gravado", "No Gravado",
                                     "Total IVA", "IIBB", "Total", ""}));
    for (int c = 0; c < 11; ++c) {
        QCOMPARE(w.Grd->isColumnHidden(c), c == 3 || c == 10);
        if (c != 3 && c != 10)
            QVERIFY(w.Grd->columnWidth(c) >= qRound(w.Grd->ColWidthTwips(c) / 15.0));
    }
    // Amounts "00.00"; the IIBB column as the book returns it; the raw VAT in column 10.
    QCOMPARE(FilasGrilla(w), (QStringList{
        "03/11/26|B|10|30-70000000-2|Proveedor Dos|100,00|10,50|21,00|0|131,50|21",
        "05/11/26|A|9|30-70000000-1|Proveedor Uno|200,00|00,00|42,00|2,5|244,50|42",
        "05/11/26|A|10|30-70000000-1|Proveedor Uno|05,00|00,00|01,05|5|11,05|1,05"}));
    QCOMPARE(w.Grd->Row(), 3);
    QVERIFY(w.Grd->selectionModel()->isRowSelected(2, QModelIndex()));
    QCOMPARE(w.lbTGrav->text(), QStringLiteral("305,00"));
    QCOMPARE(w.lbTNoGrav->text(), QStringLiteral("10,50"));
    QCOMPARE(w.lbIva21->text(), QStringLiteral("64,05"));
    QCOMPARE(w.lbINGBRU->text(), QStringLiteral("07,50"));
    QCOMPARE(w.LbTot->text(), QStringLiteral("387,05"));
}

void TstFrmMain::periodoSinFacturas()
{
    libro->Recordar(kBeta, kNov);
    frmMAIN w(libro->S());
    QVERIFY(Arrancar(w));
    QCOMPARE(w.Grd->Rows(), 2);
    QCOMPARE(FilasGrilla(w), QStringList{QStringLiteral("||||||||||")});
    for (QLabel *l : {w.lbTGrav, w.lbTNoGrav, w.lbIva21, w.lbINGBRU, w.LbTot})
        QCOMPARE(l->text(), QStringLiteral("00,00"));
    // Delete on the blank row deletes nothing.
    QTest::keyClick(w.Grd, Qt::Key_Delete);
    QCOMPARE(libro->Contar(QStringLiteral("IVC")), 5L);
    QCOMPARE(w.Grd->Rows(), 2);
}

void TstFrmMain::suprimir_data()
{
    QTest::addColumn<int>("arriba");
    QTest::addColumn<QString>("numero");
    QTest::addColumn<int>("filasDespues");
    // Number 9 has taxed-amount lines: it goes in every period and the list is reloaded.
    QTest::newRow("con lineas de gravado") << 1 << "9" << 3;
    // Number 10 of Proveedor Uno has none: the last delete affects no row, the list stays.
    QTest::newRow("sin lineas de gravado") << 0 << "10" << 4;
}

void TstFrmMain::suprimir()
{
    QFETCH(int, arriba);
    QFETCH(QString, numero);
    QFETCH(int, filasDespues);
    libro->Recordar(kAlfa, kNov);
    frmMAIN w(libro->S());
    QVERIFY(Arrancar(w));
    for (int i = 0; i < arriba; ++i)
        QTest::keyClick(w.Grd, Qt::Key_Up);
    QCOMPARE(w.Grd->TextMatrix(w.Grd->Row(), 2), numero);
    QTest::keyClick(w.Grd, Qt::Key_Delete);

    const QString clave = QStringLiteral("PRVSNRCUIT = '%1' and IVCSNROFAC = '%2'").arg(kUno, numero);
    QCOMPARE(libro->Contar(QStringLiteral("IVC"), clave), 0L);
    QCOMPARE(libro->Contar(QStringLiteral("IVC_DetIVA"), clave), 0L);
    QCOMPARE(libro->Contar(QStringLiteral("IVC_Gravado"), clave), 0L);
    QCOMPARE(libro->Contar(QStringLiteral("IVC_DetIngBrutos")), 1L);
    QCOMPARE(libro->Contar(QStringLiteral("IVC")), numero == QLatin1String("9") ? 3L : 4L);
    QCOMPARE(w.Grd->Rows(), filasDespues);
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
    // The totals labels keep their text until the next refresh.
    QCOMPARE(w.lbTGrav->text(), QStringLiteral("305,00"));
}

void TstFrmMain::escCamposImpresion_data()
{
    QTest::addColumn<QString>("fuente");
    QTest::addColumn<QString>("lineas");
    QTest::addColumn<QString>("mensaje");
    QTest::newRow("fuente") << "abc" << "30" << "El campo FUENTE debe ser Númerico";
    QTest::newRow("lineas") << "10" << "3x" << "El campo LINEAS x HOJA debe ser Númerico";
    QTest::newRow("ambos, la fuente primero") << "" << "" << "El campo FUENTE debe ser Númerico";
    QTest::newRow("validos") << "10,5" << "40" << "";
}

void TstFrmMain::escCamposImpresion()
{
    QFETCH(QString, fuente);
    QFETCH(QString, lineas);
    QFETCH(QString, mensaje);
    libro->Recordar(kAlfa, kNov);
    frmMAIN w(libro->S());
    ArrancarYMostrar(w);
    for (auto [txt, texto] : {std::pair{w.txtIMPFuente, fuente}, std::pair{w.txtIMPLinxHoja, lineas}}) {
        QTest::keyClick(txt, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(txt, Qt::Key_Backspace);
        QTest::keyClicks(txt, texto);
    }
    QTest::keyClick(w.txtIMPLinxHoja, Qt::Key_Escape);

    const Ajustes &a = libro->S().ajustes;
    const QString guardadaFuente = a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN"));
    const QString guardadaLineas = a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPLIXP"));
    if (mensaje.isEmpty()) {
        QVERIFY(libro->Mensajes().mostrados.isEmpty());
        QVERIFY(!w.isVisible());
        QCOMPARE(guardadaFuente, fuente);
        QCOMPARE(guardadaLineas, lineas);
        QVERIFY(!libro->S().dbLibro);
        // The session keeps the values read at start.
        QCOMPARE(libro->S().ImpFuente, 9.0);
    } else {
        QCOMPARE(libro->Mensajes().mostrados.size(), 1);
        QCOMPARE(libro->Mensajes().Ultimo(), mensaje);
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
        QCOMPARE(libro->Mensajes().mostrados.last().titulo, QString());
        QVERIFY(w.isVisible());
        QCOMPARE(guardadaFuente, QString());
        QCOMPARE(guardadaLineas, QString());
    }
}

void TstFrmMain::f6CambiaEmpresa()
{
    libro->Recordar(kAlfa, QStringLiteral("01/10/2026"));
    frmMAIN w(libro->S());
    QVERIFY(Arrancar(w));
    QCOMPARE(w.Grd->Rows(), 2);
    QCOMPARE(w.LbTot->text(), QStringLiteral("01,00"));
    AlAbrirse<frmOpciones>([](frmOpciones &f) {
        QTest::keyClick(f.cboUSR, Qt::Key_Down); // Alfa SA -> Beta SRL
        QTest::keyClick(f.cboUSR, Qt::Key_F11);
    });
    QTest::keyClick(w.Grd, Qt::Key_F6);
    QCOMPARE(libro->S().CuitUsuario, kBeta);
    QCOMPARE(FilasGrilla(w), QStringList{QStringLiteral("02/10/26|C|77|30-70000000-1|Proveedor Uno|50,00|00,00|00,00|0|50,00|0")});
    QCOMPARE(w.LbTot->text(), QStringLiteral("50,00"));
    // The company and period labels are set only at start.
    QCOMPARE(w.lbUSRSNOMBR->text(), QStringLiteral("Alfa SA"));
}

void TstFrmMain::f6EscSoloCierraOpciones()
{
    libro->Recordar(kAlfa, kNov);
    frmMAIN w(libro->S());
    ArrancarYMostrar(w);
    AlAbrirse<frmOpciones>([](frmOpciones &f) {
        QTest::keyClick(f.cboUSR, Qt::Key_Down);
        QTest::keyClick(f.cboUSR, Qt::Key_Escape);
    });
    QTest::keyClick(w.txtIMPFuente, Qt::Key_F6);
    QVERIFY(libro->S().Cancelado);
    QVERIFY(w.isVisible());
    QCOMPARE(libro->S().CuitUsuario, kAlfa);
    QCOMPARE(w.Grd->Rows(), 4);
}

QTEST_MAIN(TstFrmMain)
#include "tst_frmmain.moc"
