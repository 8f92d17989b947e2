#include "reports/Exportar.h"
#include "reports/RegistrosAFIP.h"
#include "reports/RegistrosEsperados.h"

#include <QtTest>

// The records of the tax-authority files from the invoice values, compared byte for byte with
// records written out from the layouts, and the names of the files beside the spreadsheet.
namespace {

using namespace esperado;

const QString SIN = QStringLiteral("-"); // no VAT line

// One invoice of supplier 30111111118 dated 15/03/2005 and the fields its records must carry;
// every member left out keeps the value of a plain type A invoice of 1000 taxed at 21%.
struct Caso {
    QString tipo = QStringLiteral("A");
    QString numero = QStringLiteral("0002-00012345");
    QString nombre = QStringLiteral("Distribuidora Norte");
    double U = 0, T = 1000, IVA = 210, G = 0;
    QString tasa = QStringLiteral("21");
    bool gravadoCeroAntes = false;

    QString tipo3 = QStringLiteral("001");
    QString pv5 = QStringLiteral("00002");
    QString nro20 = QStringLiteral("00000000000000012345");
    QString nombre30 = QStringLiteral("Distribuidora Norte           ");
    QString total15 = QStringLiteral("000000000121000");
    QString noGrav15 = Z(15), ib15 = Z(15);
    QString campo15 = QStringLiteral("1 ");
    QString grav15 = QStringLiteral("000000000100000");
    QString codigo4 = QStringLiteral("0005");
    QString iva15 = QStringLiteral("000000000021000");
    bool gravadoCeroDespues = false;
};

} // namespace

Q_DECLARE_METATYPE(Caso)

class TstExportarRegistros : public QObject
{
    Q_OBJECT
private slots:
    void registros_data();
    void registros();
    void rutas();
};

void TstExportarRegistros::registros_data()
{
    QTest::addColumn<Caso>("c");
    const auto fila = [](const char *nombre, const Caso &c) { QTest::newRow(nombre) << c; };

    fila("0002-00012345 type A", {});
    fila("12345 type 99, rate 2,5", {.tipo = "99", .numero = "12345", .tasa = "2,5", .tipo3 = "099", .pv5 = "00000", .codigo4 = "0009"});
    fila("lower-case type is unknown", {.tipo = "a", .tipo3 = "", .grav15 = Z(15)});
    fila("point of sale's last 4, number's last 6", {.numero = "00012-12345678", .pv5 = "00012", .nro20 = "00000000000000345678"});
    fila("amounts 0 and 1234.5, rounded to cents",
         {.T = 1234.5, .IVA = 259.254, .total15 = "000000000149375", .grav15 = "000000000123450", .iva15 = "000000000025925"});
    fila("negative amounts keep their sign inside",
         {.U = -200, .T = 100, .IVA = 21, .total15 = "0000000000-7900", .noGrav15 = "000000000-20000",
          .grav15 = "000000000010000", .iva15 = "000000000002100"});
    fila("type B: zeros but its VAT, GravadoCero kept",
         {.tipo = "B", .U = 50, .gravadoCeroAntes = true, .tipo3 = "006", .total15 = "000000000126000",
          .grav15 = Z(15), .gravadoCeroDespues = true});
    fila("no VAT line: code 0003", {.tasa = SIN, .codigo4 = "0003"});
    fila("name of 40 cut to 30", {.nombre = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcd", .nombre30 = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123"});
    fila("characters beyond the basic plane: one byte each",
         {.numero = QStringLiteral("0002-000\U0001F60012345"), .nombre = QStringLiteral("Caf\u00e9 \U0001F600\U0001F600 Sur"),
          .nro20 = "00000000000000?12345", .nombre30 = QStringLiteral("Caf\u00e9 ?? Sur") + B(19)});
    fila("VAT of 13 digits on its own cent",
         {.T = 0, .IVA = 5000000068049.169, .total15 = "500000006804917", .grav15 = Z(15),
          .iva15 = "500000006804917", .gravadoCeroDespues = true});
    fila("rate written with a point is no rate", {.tipo = "TIQUE FCA", .tasa = "10.5", .tipo3 = "081", .codigo4 = "0003"});

    // Field 15, rule by rule.
    fila("rule 1 comes before type A",
         {.T = 100, .IVA = 0, .G = 5, .tasa = SIN, .total15 = "000000000010500", .ib15 = "000000000000500",
          .campo15 = "1n", .grav15 = "000000000010000", .codigo4 = "0003", .iva15 = Z(15)});
    fila("rule 2 type NDA without rate, sets GravadoCero",
         {.tipo = "NDA", .U = 50, .T = 0, .IVA = 0, .tasa = SIN, .tipo3 = "002", .total15 = "000000000005000",
          .noGrav15 = "000000000005000", .grav15 = Z(15), .codigo4 = "0003", .iva15 = Z(15), .gravadoCeroDespues = true});
    fila("rule 2 a known rate",
         {.tipo = "C", .T = 100, .IVA = 10.5, .tasa = "10,5", .tipo3 = "011", .total15 = "000000000011050",
          .grav15 = Z(15), .codigo4 = "0004", .iva15 = "000000000001050"});
    fila("rule 3 exempt only",
         {.tipo = "C", .U = 100, .T = 0, .IVA = 0, .tasa = SIN, .tipo3 = "011", .total15 = "000000000010000",
          .campo15 = "0n", .grav15 = Z(15), .codigo4 = "0003", .iva15 = Z(15)});
    fila("rule 3 not for 99, which sets GravadoCero",
         {.tipo = "99", .numero = "0003-00000077", .U = 100, .T = 0, .IVA = 0, .tasa = SIN, .tipo3 = "099",
          .pv5 = "00003", .nro20 = "00000000000000000077", .total15 = "000000000010000", .noGrav15 = "000000000010000",
          .campo15 = "1n", .grav15 = Z(15), .codigo4 = "0003", .iva15 = Z(15), .gravadoCeroDespues = true});
    fila("rule 4 TIQUE FCB taxed, rate 0",
         {.tipo = "TIQUE FCB", .tasa = "0", .tipo3 = "082", .campo15 = "1n", .grav15 = Z(15), .codigo4 = "0003"});
    fila("rule 5 GravadoCero carried over",
         {.tipo = "C", .T = 0, .IVA = 0, .tasa = SIN, .gravadoCeroAntes = true, .tipo3 = "011", .total15 = Z(15),
          .campo15 = "1n", .grav15 = Z(15), .codigo4 = "0003", .iva15 = Z(15), .gravadoCeroDespues = true});
    fila("rule 6 otherwise: TIQUE, other rate",
         {.tipo = "TIQUE", .T = 0, .IVA = 0, .tasa = "5", .tipo3 = "083", .total15 = Z(15), .campo15 = "0n",
          .grav15 = Z(15), .codigo4 = "0003", .iva15 = Z(15)});
    fila("type A with a taxed amount clears GravadoCero",
         {.T = 100, .IVA = 21, .gravadoCeroAntes = true, .total15 = "000000000012100", .grav15 = "000000000010000",
          .iva15 = "000000000002100"});
}

void TstExportarRegistros::registros()
{
    QFETCH(Caso, c);
    FacturaExportada f{.fecha = QStringLiteral("15/03/2005"), .tipo = c.tipo, .numero = c.numero,
                        .cuit = QStringLiteral("30111111118"), .nombre = c.nombre, .noGravado = c.U, .gravado = c.T,
                        .iva = c.IVA, .ingBrutos = c.G,
                        .alicuota = c.tasa != SIN ? std::optional(c.tasa) : std::nullopt, .descripcion = {},
                        .descripcionExtra = {}};
    EstadoRegistros estado{.GravadoCero = c.gravadoCeroAntes};
    const RegistrosFactura r = ArmarRegistros(f, estado);
    const QString cuit20 = QStringLiteral("00000000030111111118");
    QCOMPARE(r.comprobante, Comprobante("20050315", c.tipo3, c.pv5, c.nro20, cuit20, c.nombre30, c.total15,
                                        c.noGrav15, c.ib15, c.campo15));
    QCOMPARE(r.alicuota, Alicuota(c.tipo3, c.pv5, c.nro20, cuit20, c.grav15, c.codigo4, c.iva15));
    QCOMPARE(estado.GravadoCero, c.gravadoCeroDespues);
}

void TstExportarRegistros::rutas()
{
    // Four characters are always cut, even from a name that does not end in ".xls".
    const QString elegida = QStringLiteral("C:\\datosxls");
    QCOMPARE(RutaPlanilla(elegida), elegida);
    QCOMPARE(RutaArchivoAFIP(elegida, QStringLiteral(" COMPRAS ALICUOTAS.txt")), QStringLiteral("C:\\dato COMPRAS ALICUOTAS.txt"));
}

QTEST_GUILESS_MAIN(TstExportarRegistros)
#include "tst_exportar_registros.moc"
