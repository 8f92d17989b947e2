#include "data/oDB.h"
#include "reports/Exportar.h"
#include "reports/LibroImpreso.h"
#include "reports/RegistrosEsperados.h"
#include "reports/RegistrosAFIP.h"

#include <QtTest>

// The records of the tax-authority files and the spreadsheet row, from the invoice values,
// compared byte for byte with records written out from the layout.
namespace {

using namespace esperado;

const QString F8 = QStringLiteral("20050315");
const QString CUIT20 = QStringLiteral("00000000030111111118");
const QString NOMBRE30 = QStringLiteral("Distribuidora Norte           ");
const QString PV2 = QStringLiteral("00002");
const QString NRO = QStringLiteral("00000000000000012345");
const QString SIN = QStringLiteral("-"); // no VAT line

// An invoice of supplier 30111111118 with the type, number and name of a case; no amounts yet.
FacturaExportada Factura(const QString &tipo, const QString &numero, const QString &nombre,
                         const QString &fecha = QStringLiteral("15/03/2005"))
{
    FacturaExportada f;
    f.fecha = fecha;
    f.tipo = tipo;
    f.numero = numero;
    f.cuit = QStringLiteral("30111111118");
    f.nombre = nombre;
    return f;
}

} // namespace

class TstExportarRegistros : public QObject
{
    Q_OBJECT
private slots:
    void registros_data();
    void registros();
    void gravadoCeroPasaALaFacturaSiguiente();
    void importe15_data();
    void importe15();
    void numero_data();
    void numero();
    void codigos_data();
    void codigos();
    void trimLZ_data();
    void trimLZ();
    void filaPlanilla_data();
    void filaPlanilla();
    void rutas_data();
    void rutas();
    void sentencias_data();
    void sentencias();
};

void TstExportarRegistros::registros_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("numero");
    QTest::addColumn<QString>("nombre");
    QTest::addColumn<double>("noGravado");
    QTest::addColumn<double>("gravado");
    QTest::addColumn<double>("iva");
    QTest::addColumn<double>("ingBrutos");
    QTest::addColumn<QString>("tasa");
    QTest::addColumn<bool>("gravadoCeroAntes");
    QTest::addColumn<QString>("comprobante");
    QTest::addColumn<QString>("alicuota");
    QTest::addColumn<bool>("gravadoCeroDespues");

    const QString nombre = QStringLiteral("Distribuidora Norte");
    const QString t1210 = QStringLiteral("000000000121000");
    const QString g1000 = QStringLiteral("000000000100000");
    const QString i210 = QStringLiteral("000000000021000");

    QTest::newRow("0002-00012345 type A")
        << "A" << "0002-00012345" << nombre << 0.0 << 1000.0 << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, NOMBRE30, t1210, Z(15), Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, g1000, "0005", i210) << false;
    QTest::newRow("12345 type A")
        << "A" << "12345" << nombre << 0.0 << 1000.0 << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "001", "00001", NRO, CUIT20, NOMBRE30, t1210, Z(15), Z(15), "1 ")
        << Alicuota("001", "00001", NRO, CUIT20, g1000, "0005", i210) << false;
    QTest::newRow("12345 type 99")
        << "99" << "12345" << nombre << 0.0 << 1000.0 << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "099", "00000", NRO, CUIT20, NOMBRE30, t1210, Z(15), Z(15), "1 ")
        << Alicuota("099", "00000", NRO, CUIT20, g1000, "0005", i210) << false;
    QTest::newRow("unknown type writes no code")
        << "X" << "0002-00012345" << nombre << 50.0 << 1000.0 << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "", PV2, NRO, CUIT20, NOMBRE30, "000000000126000", Z(15), Z(15), "1 ")
        << Alicuota("", PV2, NRO, CUIT20, Z(15), "0005", i210) << false;
    QTest::newRow("amounts 0 and 1234.5")
        << "A" << "0002-00012345" << nombre << 0.0 << 1234.5 << 259.25 << 0.0 << "21" << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, NOMBRE30, "000000000149375", Z(15), Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, "000000000123450", "0005", "000000000025925") << false;
    QTest::newRow("negative amounts keep their sign inside")
        << "A" << "0002-00012345" << nombre << -200.0 << 100.0 << 21.0 << 0.0 << "21" << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, NOMBRE30, "0000000000-7900", "000000000-20000", Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, "000000000010000", "0005", "000000000002100") << false;
    QTest::newRow("type B writes zeros but its VAT")
        << "B" << "0002-00012345" << nombre << 50.0 << 1000.0 << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "006", PV2, NRO, CUIT20, NOMBRE30, "000000000126000", Z(15), Z(15), "1 ")
        << Alicuota("006", PV2, NRO, CUIT20, Z(15), "0005", i210) << false;
    QTest::newRow("no VAT line: code 0003")
        << "A" << "0002-00012345" << nombre << 0.0 << 1000.0 << 210.0 << 0.0 << SIN << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, NOMBRE30, t1210, Z(15), Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, g1000, "0003", i210) << false;
    QTest::newRow("name of 40 cut to 30")
        << "A" << "0002-00012345" << "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcd" << 0.0 << 1000.0
        << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123", t1210, Z(15), Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, g1000, "0005", i210) << false;
    QTest::newRow("name of 5 and 25 blanks")
        << "A" << "0002-00012345" << "Perez" << 0.0 << 1000.0 << 210.0 << 0.0 << "21" << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, "Perez" + B(25), t1210, Z(15), Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, g1000, "0005", i210) << false;
    QTest::newRow("gross income in its field")
        << "C" << "0002-00012345" << nombre << 0.0 << 1000.0 << 210.0 << 30.0 << "21" << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, "000000000124000", Z(15), "000000000003000", "1 ")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0005", i210) << false;

    // Field 15, rule by rule.
    QTest::newRow("rule 1 comes before type A")
        << "A" << "0002-00012345" << nombre << 0.0 << 100.0 << 0.0 << 5.0 << SIN << false
        << Comprobante(F8, "001", PV2, NRO, CUIT20, NOMBRE30, "000000000010500", Z(15), "000000000000500", "1n")
        << Alicuota("001", PV2, NRO, CUIT20, "000000000010000", "0003", Z(15)) << false;
    QTest::newRow("rule 1 type C")
        << "C" << "0002-00012345" << nombre << 0.0 << 100.0 << 0.0 << 5.0 << "0" << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, "000000000010500", Z(15), "000000000000500", "1n")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << false;
    QTest::newRow("rule 2 type NDA without rate")
        << "NDA" << "0002-00012345" << nombre << 50.0 << 0.0 << 0.0 << 0.0 << SIN << false
        << Comprobante(F8, "002", PV2, NRO, CUIT20, NOMBRE30, "000000000005000", "000000000005000", Z(15), "1 ")
        << Alicuota("002", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << true;
    QTest::newRow("rule 2 a known rate")
        << "C" << "0002-00012345" << nombre << 0.0 << 100.0 << 10.5 << 0.0 << "10,5" << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, "000000000011050", Z(15), Z(15), "1 ")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0004", "000000000001050") << false;
    QTest::newRow("rule 3 exempt only")
        << "C" << "0002-00012345" << nombre << 100.0 << 0.0 << 0.0 << 0.0 << SIN << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, "000000000010000", Z(15), Z(15), "0n")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << false;
    QTest::newRow("rule 3 not for 99, which sets GravadoCero")
        << "99" << "0003-00000077" << nombre << 100.0 << 0.0 << 0.0 << 0.0 << SIN << false
        << Comprobante(F8, "099", "00003", "00000000000000000077", CUIT20, NOMBRE30, "000000000010000", "000000000010000", Z(15), "1n")
        << Alicuota("099", "00003", "00000000000000000077", CUIT20, Z(15), "0003", Z(15)) << true;
    QTest::newRow("rule 3 needs no gross income")
        << "C" << "0002-00012345" << nombre << 100.0 << 0.0 << 0.0 << 5.0 << SIN << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, "000000000010500", Z(15), "000000000000500", "0n")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << false;
    QTest::newRow("rule 4 taxed without rate")
        << "C" << "0002-00012345" << nombre << 0.0 << 100.0 << 0.0 << 0.0 << SIN << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, "000000000010000", Z(15), Z(15), "1n")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << false;
    QTest::newRow("rule 5 GravadoCero carried over")
        << "C" << "0002-00012345" << nombre << 0.0 << 0.0 << 0.0 << 0.0 << SIN << true
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, Z(15), Z(15), Z(15), "1n")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << true;
    QTest::newRow("rule 6 otherwise")
        << "C" << "0002-00012345" << nombre << 0.0 << 0.0 << 0.0 << 0.0 << SIN << false
        << Comprobante(F8, "011", PV2, NRO, CUIT20, NOMBRE30, Z(15), Z(15), Z(15), "0n")
        << Alicuota("011", PV2, NRO, CUIT20, Z(15), "0003", Z(15)) << false;
    QTest::newRow("type A with taxed amount clears GravadoCero")
        << "A" << "0002-00012345" << nombre << 0.0 << 100.0 << 21.0 << 0.0 << "21" << true
        << Comprobante(F8, "001", PV2, NRO, CUIT20, NOMBRE30, "000000000012100", Z(15), Z(15), "1 ")
        << Alicuota("001", PV2, NRO, CUIT20, "000000000010000", "0005", "000000000002100") << false;
}

void TstExportarRegistros::registros()
{
    QFETCH(QString, tipo);
    QFETCH(QString, numero);
    QFETCH(QString, nombre);
    QFETCH(double, noGravado);
    QFETCH(double, gravado);
    QFETCH(double, iva);
    QFETCH(double, ingBrutos);
    QFETCH(QString, tasa);
    QFETCH(bool, gravadoCeroAntes);
    QFETCH(QString, comprobante);
    QFETCH(QString, alicuota);
    QFETCH(bool, gravadoCeroDespues);

    FacturaExportada f = Factura(tipo, numero, nombre);
    f.noGravado = noGravado;
    f.gravado = gravado;
    f.iva = iva;
    f.ingBrutos = ingBrutos;
    if (tasa != SIN)
        f.alicuota = tasa;
    EstadoRegistros estado;
    estado.GravadoCero = gravadoCeroAntes;

    const RegistrosFactura r = ArmarRegistros(f, estado);
    QCOMPARE(r.comprobante, comprobante);
    QCOMPARE(r.alicuota, alicuota);
    QCOMPARE(estado.GravadoCero, gravadoCeroDespues);
    const int corto = CodigoTipoComprobante(tipo).isEmpty() ? 3 : 0;
    QCOMPARE(r.comprobante.size(), 327 - corto);
    QCOMPARE(r.alicuota.size(), 86 - corto);
}

void TstExportarRegistros::gravadoCeroPasaALaFacturaSiguiente()
{
    FacturaExportada a = Factura(QStringLiteral("A"), QStringLiteral("0001-00000001"), QStringLiteral("X"),
                                 QStringLiteral("01/03/2005"));
    a.noGravado = 10; // untaxed only: its taxed digits are all zeros
    FacturaExportada c = a;
    c.tipo = QStringLiteral("C");
    c.noGravado = 0;

    EstadoRegistros estado;
    ArmarRegistros(a, estado);
    const QString conA = ArmarRegistros(c, estado).comprobante;
    EstadoRegistros limpio;
    const QString solo = ArmarRegistros(c, limpio).comprobante;
    QCOMPARE(conA.mid(237, 2), QStringLiteral("1n"));
    QCOMPARE(solo.mid(237, 2), QStringLiteral("0n"));
    // A type B in between does not clear it.
    FacturaExportada b = c;
    b.tipo = QStringLiteral("B");
    b.gravado = 100;
    EstadoRegistros otro;
    ArmarRegistros(a, otro);
    ArmarRegistros(b, otro);
    QCOMPARE(ArmarRegistros(c, otro).comprobante.mid(237, 2), QStringLiteral("1n"));
}

void TstExportarRegistros::importe15_data()
{
    QTest::addColumn<double>("importe");
    QTest::addColumn<QString>("esperado");
    QTest::addColumn<bool>("falla");
    QTest::newRow("zero") << 0.0 << "000000000000000" << false;
    QTest::newRow("1234.5") << 1234.5 << "000000000123450" << false;
    QTest::newRow("rounded to cents") << 1234.567 << "000000000123457" << false;
    QTest::newRow("half a cent up") << 0.005 << "000000000000001" << false;
    QTest::newRow("below half a cent") << 0.004 << "000000000000000" << false;
    QTest::newRow("small") << 5.0 << "000000000000500" << false;
    QTest::newRow("negative") << -12.5 << "0000000000-1250" << false;
    QTest::newRow("large") << 99999999.99 << "000009999999999" << false;
    QTest::newRow("sixteen digits fail") << 10000000000000.0 << "" << true;
}

void TstExportarRegistros::importe15()
{
    QFETCH(double, importe);
    QFETCH(QString, esperado);
    QFETCH(bool, falla);
    if (falla) {
        try {
            Importe15(importe);
            QFAIL("an amount of 16 digits was encoded");
        } catch (const oDB::ErrorBD &e) {
            QCOMPARE(e.numero, 5);
        }
        return;
    }
    QCOMPARE(Importe15(importe), esperado);
}

void TstExportarRegistros::numero_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("numero");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("puntoVenta");
    QTest::addColumn<QString>("numero20");
    QTest::newRow("point of sale and number") << "A" << "0002-00012345" << "0002-00012345" << "00002" << "00000000000000012345";
    QTest::newRow("only 6 digits kept") << "A" << "0002-12345678" << "0002-12345678" << "00002" << "00000000000000345678";
    QTest::newRow("last 4 of the point of sale") << "B" << "00012-5" << "00012-5" << "00012" << "00000000000000000005";
    QTest::newRow("bare number") << "A" << "12345" << "12345" << "00001" << "00000000000000012345";
    QTest::newRow("bare number type 99") << "99" << "12345" << "0000-12345" << "00000" << "00000000000000012345";
    QTest::newRow("type 99 with point of sale") << "99" << "0005-00001234" << "0005-00001234" << "00005" << "00000000000000001234";
    QTest::newRow("short point of sale stays short") << "A" << "2-5" << "2-5" << "02" << "00000000000000000005";
}

void TstExportarRegistros::numero()
{
    QFETCH(QString, tipo);
    QFETCH(QString, numero);
    QFETCH(QString, texto);
    QFETCH(QString, puntoVenta);
    QFETCH(QString, numero20);
    const NumeroComprobante n = SepararNumero(tipo, numero);
    QCOMPARE(n.texto, texto);
    QCOMPARE(CampoPuntoVenta(n), puntoVenta);
    QCOMPARE(CampoNumero(n), numero20);
}

void TstExportarRegistros::codigos_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("codigoTipo");
    QTest::addColumn<QString>("tasa");
    QTest::addColumn<QString>("codigoTasa");
    QTest::addColumn<bool>("sinAlicuota");
    QTest::newRow("A 21") << "A" << "001" << "21" << "0005" << false;
    QTest::newRow("B 10,5") << "B" << "006" << "10,5" << "0004" << false;
    QTest::newRow("C 27") << "C" << "011" << "27" << "0006" << false;
    QTest::newRow("99 2,5") << "99" << "099" << "2,5" << "0009" << false;
    QTest::newRow("TIQUE FCA, rate written with a point") << "TIQUE FCA" << "081" << "10.5" << "0003" << true;
    QTest::newRow("TIQUE FCB, rate 0") << "TIQUE FCB" << "082" << "0" << "0003" << true;
    QTest::newRow("TIQUE, other rate") << "TIQUE" << "083" << "5" << "0003" << true;
    QTest::newRow("NDA, no line") << "NDA" << "002" << SIN << "0003" << true;
    QTest::newRow("lower case is unknown") << "a" << "" << "21" << "0005" << false;
    QTest::newRow("blank after the type is unknown") << "A " << "" << "21" << "0005" << false;
}

void TstExportarRegistros::codigos()
{
    QFETCH(QString, tipo);
    QFETCH(QString, codigoTipo);
    QFETCH(QString, tasa);
    QFETCH(QString, codigoTasa);
    QFETCH(bool, sinAlicuota);
    QCOMPARE(CodigoTipoComprobante(tipo), codigoTipo);
    bool sin = false;
    QCOMPARE(CodigoAlicuota(tasa == SIN ? std::nullopt : std::optional<QString>(tasa), sin), codigoTasa);
    QCOMPARE(sin, sinAlicuota);
}

void TstExportarRegistros::trimLZ_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("padded number") << "00000000000000012345" << "12345";
    QTest::newRow("inner zeros stay") << "0102030" << "102030";
    QTest::newRow("all zeros") << "0000" << "";
    QTest::newRow("empty") << "" << "";
    QTest::newRow("no leading zero") << "100" << "100";
    QTest::newRow("letters") << "00A1" << "A1";
}

void TstExportarRegistros::trimLZ()
{
    QFETCH(QString, texto);
    QFETCH(QString, esperado);
    QCOMPARE(TrimLZ(texto), esperado);
}

void TstExportarRegistros::filaPlanilla_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<QString>("numero");
    QTest::addColumn<QString>("nombre");
    QTest::addColumn<QString>("descripcion");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("fila");
    QTest::newRow("description 1,5 kg") << "A" << "0002-00012345" << "Norte" << "1,5 kg" << "a,b,c"
        << "\"15/03/2005\"|\"A\"|\"0002-00012345\"|\"30111111118\"|\"Norte\"|00.00|1234.50|05.00|259.25|1498.75|1.5 kg|a.b.c\r\n";
    QTest::newRow("numeric descriptions formatted") << "A" << "7" << "Norte" << "5" << "1234,5"
        << "\"15/03/2005\"|\"A\"|\"7\"|\"30111111118\"|\"Norte\"|00.00|1234.50|05.00|259.25|1498.75|05.00|1234.50\r\n";
    QTest::newRow("type 99 number with its prefix") << "99" << "12345" << "Norte" << "" << ""
        << "\"15/03/2005\"|\"99\"|\"0000-12345\"|\"30111111118\"|\"Norte\"|00.00|1234.50|05.00|259.25|1498.75||\r\n";
    QTest::newRow("quote in the name as it is") << "B" << "1-2" << "Pe\"ña" << "" << ""
        << "\"15/03/2005\"|\"B\"|\"1-2\"|\"30111111118\"|\"Pe\"ña\"|00.00|1234.50|05.00|259.25|1498.75||\r\n";
}

void TstExportarRegistros::filaPlanilla()
{
    QFETCH(QString, tipo);
    QFETCH(QString, numero);
    QFETCH(QString, nombre);
    QFETCH(QString, descripcion);
    QFETCH(QString, extra);
    QFETCH(QString, fila);
    FacturaExportada f = Factura(tipo, numero, nombre);
    f.gravado = 1234.5;
    f.iva = 259.25;
    f.ingBrutos = 5;
    f.descripcion = descripcion;
    f.descripcionExtra = extra;
    QCOMPARE(FilaPlanilla(f, QStringLiteral("|")), fila);
}

void TstExportarRegistros::rutas_data()
{
    QTest::addColumn<QString>("elegida");
    QTest::addColumn<QString>("planilla");
    QTest::addColumn<QString>("comprobantes");
    QTest::newRow("xls kept") << "C:\\iva\\marzo.xls" << "C:\\iva\\marzo.xls" << "C:\\iva\\marzo COMPRAS COMPRBTE.txt";
    QTest::newRow("upper case XLS kept") << "/iva/Marzo.XLS" << "/iva/Marzo.XLS" << "/iva/Marzo COMPRAS COMPRBTE.txt";
    QTest::newRow("suffix added") << "/iva/marzo" << "/iva/marzo.xls" << "/iva/marzo COMPRAS COMPRBTE.txt";
    QTest::newRow("xls without a point: four characters cut") << "C:\\datosxls" << "C:\\datosxls" << "C:\\dato COMPRAS COMPRBTE.txt";
    QTest::newRow("NUL characters removed") << QStringLiteral("/iva/abril") + QChar(0) + QChar(0)
        << "/iva/abril.xls" << "/iva/abril COMPRAS COMPRBTE.txt";
}

void TstExportarRegistros::rutas()
{
    QFETCH(QString, elegida);
    QFETCH(QString, planilla);
    QFETCH(QString, comprobantes);
    QCOMPARE(RutaPlanilla(elegida), planilla);
    QCOMPARE(RutaArchivoAFIP(planilla, QStringLiteral(" COMPRAS COMPRBTE.txt")), comprobantes);
}

void TstExportarRegistros::sentencias_data()
{
    QTest::addColumn<QString>("construida");
    QTest::addColumn<QString>("texto");
    const QString c = QStringLiteral("30-70000001-1");
    const QString p = QStringLiteral("01/03/2026");
    const QString existe = QStringLiteral(" and exists( select PRVSNRCUIT from IVC where IVC_DetIVA.IVCSNROFAC = IVC.IVCSNROFAC and IVC_DetIVA.PRVSNRCUIT = IVC.PRVSNRCUIT and USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026') )");
    const QString tasa = QStringLiteral("select IVCDETIVA, sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  from IVC_DetIVA where ");
    QTest::newRow("invoices") << SqlFacturasPeriodo(c, p)
        << "select * from IVC where USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026') order by IVCFCOMPRO,val(IVCSNROFAC)";
    QTest::newRow("supplier name") << SqlNombreProveedor("30-1") << "select PRVSNOMBRE from PRV where  PRVSNRCUIT = '30-1'";
    QTest::newRow("rate of the record") << SqlAlicuota(c, "00000000000000012345", "30-1")
        << "select IVCDETIVA  from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and IVCSNROFAC like  '%12345' and PRVSNRCUIT = '30-1' and USRSNRCUIT = '30-70000001-1'";
    QTest::newRow("10.5") << SqlResumenTasa("10.5", c, p) << tasa + "IVCDETIVA =10.5 and USRSNRCUIT = '30-70000001-1' " + existe + " group by IVCDETIVA";
    QTest::newRow("21") << SqlResumenTasa("21", c, p) << tasa + "IVCDETIVA = 21 and USRSNRCUIT = '30-70000001-1' " + existe + " group by IVCDETIVA";
    QTest::newRow("27") << SqlResumenTasa("27", c, p) << tasa + "IVCDETIVA = 27 and USRSNRCUIT = '30-70000001-1' " + existe + " group by IVCDETIVA";
    QTest::newRow("other rates, spreadsheet") << SqlResumenOtras(c, p)
        << "select sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  from IVC_DetIVA where IVCDETIVA not in (10.5,21,27) and USRSNRCUIT = '30-70000001-1'  and exists( select PRVSNRCUIT from IVC where ivc_DetIVA.IVCDETIVA    <> 0 and IVC_DetIVA.IVCSNROFAC = IVC.IVCSNROFAC and IVC_DetIVA.PRVSNRCUIT = IVC.PRVSNRCUIT and USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026') )  ";
    QTest::newRow("other rates, ledger") << libro::SqlResumenOtrasLibro(c, p)
        << "select sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  from IVC_DetIVA where IVCDETIVA not in (0,10.5,21,27) and USRSNRCUIT = '30-70000001-1' " + existe;
    QTest::newRow("untaxed and gross income") << SqlResumenNoGravado(c, p)
        << " select sum(IVCDNOGRAV) as nograv, sum(IVCINGBRU) as ingb from IVC where  USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026')";
}

void TstExportarRegistros::sentencias()
{
    QFETCH(QString, construida);
    QFETCH(QString, texto);
    QCOMPARE(construida, texto);
}

QTEST_GUILESS_MAIN(TstExportarRegistros)
#include "tst_exportar_registros.moc"
