// The period check, rule by rule: one invoice written into a real book, changed from a clean one
// in the way each case says, and the check run over its period. The clean invoice trips no
// rule; the cases that do not trip one are those near its edge.

#include "checks/Verificacion.h"
#include "common/Libro.h"
#include "data/Convenciones.h"

#include <QtTest>
#include <algorithm>
#include <functional>

using namespace verificacion;

namespace {

const QString kEmpresa = QStringLiteral("30712345671");
const QString kProv = QStringLiteral("30700000016");

struct LineaCaso { double tasa, valor; };

// A clean invoice of November 2026: type A, 1000 taxed at 21%.
struct Caso {
    QString empresa = kEmpresa, periodo = "01/11/2026", cuit = kProv, nombre = "Proveedor Uno SA";
    bool enPRV = true;
    QString tipo = "A", numero = "0001-00000123", fecha = "05/11/2026";
    double gravado = 1000, noGravado = 0, iva = 210, ingBrutos = 0;
    QList<LineaCaso> lineasIVA{{21, 210}}, lineasIB;
    QString otroNumero, otroTipo = QStringLiteral("A"); // a second invoice of the same supplier
    // No VAT, nor its line; no taxed amount either when said.
    Caso &SinIva(bool sinGravado = false)
    {
        iva = 0;
        lineasIVA.clear();
        gravado = sinGravado ? 0 : gravado;
        return *this;
    }
};

struct Fila {
    const char *nombre, *regla;
    bool dispara;
    std::function<void(Caso &)> cambio;
    const char *enElMensaje = ""; // the values as the finding's message writes them
};

const QList<Fila> kFilas = {
    {"empresa, dígito", "cuit-empresa", true, [](Caso &c) { c.empresa = QStringLiteral("30712345670"); }},
    {"proveedor, dígito", "cuit-proveedor", true, [](Caso &c) { c.cuit = QStringLiteral("30700000017"); }},
    {"proveedor, prefijo 31", "cuit-proveedor", true, [](Caso &c) { c.cuit = QStringLiteral("31700000013"); }},
    {"proveedor con guiones", "cuit-proveedor", true, [](Caso &c) { c.cuit = QStringLiteral("30-70000001-6"); }},
    {"proveedor, resto 1", "cuit-proveedor", true, [](Caso &c) { c.cuit = QStringLiteral("20000000010"); }},
    {"proveedor, resto 0", "cuit-proveedor", false, [](Caso &c) { c.cuit = QStringLiteral("20000000060"); }},
    {"tipo X", "tipo", true, [](Caso &c) { c.tipo = QStringLiteral("X"); }},
    {"tipo a minúscula", "tipo", true, [](Caso &c) { c.tipo = QStringLiteral("a"); }},
    {"tipo TIQUE FCA", "tipo", false, [](Caso &c) { c.tipo = QStringLiteral("TIQUE FCA"); }},
    {"punto de venta con O", "punto-venta", true, [](Caso &c) { c.numero = QStringLiteral("O001-00000123"); }},
    {"punto de venta corto", "punto-venta", false, [](Caso &c) { c.numero = QStringLiteral("1-123"); }},
    {"número con letra", "numero", true, [](Caso &c) { c.numero = QStringLiteral("0001-0000012A"); }},
    {"número de 21 cifras", "numero", true, [](Caso &c) { c.numero = QStringLiteral("123456789012345678901"); }},
    {"número sin punto de venta", "numero", false, [](Caso &c) { c.numero = QStringLiteral("12345"); }},
    {"número de 9 cifras", "numero-cortado", true, [](Caso &c) { c.numero = QStringLiteral("0001-123456789"); }},
    {"sólo pierde ceros", "numero-cortado", false, [](Caso &c) { c.numero = QStringLiteral("0001-00123456"); }},
    {"mismo número sin ceros", "duplicado", true, [](Caso &c) { c.otroNumero = QStringLiteral("0001-123"); }},
    {"mismo número, otro tipo", "duplicado", false, [](Caso &c) { c.otroNumero = "0001-123"; c.otroTipo = "B"; }},
    {"otro número", "duplicado", false, [](Caso &c) { c.otroNumero = QStringLiteral("0001-00000124"); }},
    {"proveedor borrado", "proveedor-desconocido", true, [](Caso &c) { c.enPRV = false; }},
    {"comillas curvas", "nombre-latin1", true, [](Caso &c) { c.nombre = QStringLiteral("Café “Uno” SA"); }},
    {"eñes y acentos", "nombre-latin1", false, [](Caso &c) { c.nombre = QStringLiteral("Ñandú Café SA"); }},
    {"pasado el corte de 30", "nombre-latin1", false, [](Caso &c) { c.nombre = "Distribuidora del Centro Sur SA “Uno”"; }},
    {"tabulador", "nombre-control", true, [](Caso &c) { c.nombre = QStringLiteral("Uno\tSA"); }},
    {"16 dígitos", "importe-grande", true, [](Caso &c) { c.SinIva(true).noGravado = 10000000000000; }},
    {"15 dígitos", "importe-grande", false, [](Caso &c) { c.SinIva(true).noGravado = 999999999999; }},
    {"IVA distinto", "iva-lineas", true, [](Caso &c) { c.iva = 220; }},
    {"IVA sin líneas", "iva-lineas", true, [](Caso &c) { c.lineasIVA.clear(); }},
    {"IVA de dos líneas", "iva-lineas", false, [](Caso &c) { c.lineasIVA = {{21, 100}, {21, 110}}; }},
    {"IIBB distinto", "ingbrutos-lineas", true, [](Caso &c) { c.ingBrutos = 40; c.lineasIB = {{3, 30}}; }},
    {"IIBB sin líneas, versión anterior", "ingbrutos-lineas", false, [](Caso &c) { c.ingBrutos = 150; }},
    {"línea de 200 al 21%", "iva-tasa", true, [](Caso &c) { c.iva = 200; c.lineasIVA = {{21, 200}}; }},
    {"dos líneas redondeadas", "iva-tasa", false, [](Caso &c) { c.lineasIVA = {{21, 70.00}, {21, 140.00}}; }},
    {"dos tasas", "varias-tasas", true, [](Caso &c) { c.iva = 157.5; c.lineasIVA = {{10.5, 52.5}, {21, 105}}; },
     "(10,5%: 52,50; 21%: 105,00): el archivo de alícuotas informa sólo la primera (10,5%)"},
    {"A sin IVA", "clase-a-sin-iva", true, [](Caso &c) { c.SinIva(); }},
    {"TIQUE FCA sin IVA", "clase-a-sin-iva", true, [](Caso &c) { c.SinIva().tipo = QStringLiteral("TIQUE FCA"); }},
    {"A sólo no gravado", "clase-a-sin-iva", false, [](Caso &c) { c.SinIva(true).noGravado = 50; }},
    {"B con IVA", "clase-bc-con-iva", true, [](Caso &c) { c.tipo = QStringLiteral("B"); }},
    {"TIQUE con IVA", "clase-bc-con-iva", true, [](Caso &c) { c.tipo = QStringLiteral("TIQUE"); }},
    {"99 con IVA", "clase-bc-con-iva", false, [](Caso &c) { c.tipo = QStringLiteral("99"); }},
    {"B sin IVA", "clase-bc-con-iva", false, [](Caso &c) { c.SinIva().tipo = QStringLiteral("B"); }},
    {"1 de diciembre", "fecha-posterior", true, [](Caso &c) { c.fecha = QStringLiteral("01/12/2026"); }},
    {"30 de noviembre", "fecha-posterior", false, [](Caso &c) { c.fecha = QStringLiteral("30/11/2026"); }},
    // The session's PeriodoHasta of December is a year early; the period's own end counts.
    {"en diciembre", "fecha-posterior", false, [](Caso &c) { c.periodo = "01/12/2026"; c.fecha = "15/12/2026"; }},
    {"13 meses antes", "fecha-antigua", true, [](Caso &c) { c.fecha = QStringLiteral("31/10/2025"); }},
    {"12 meses antes", "fecha-antigua", false, [](Caso &c) { c.fecha = QStringLiteral("01/11/2025"); }},
    {"todo en cero", "total-cero", true, [](Caso &c) { c.SinIva(true); }},
    {"sólo IIBB", "total-cero", false, [](Caso &c) { c.SinIva(true).lineasIB = {{1, 5}}; c.ingBrutos = 5; }},
    {"no gravado negativo", "importe-negativo", true, [](Caso &c) { c.noGravado = -5; }},
    {"nota de crédito negativa", "importe-negativo", true, [](Caso &c) { c.gravado = -1000; c.iva = -210; c.lineasIVA = {{21, -210}}; }},
};

Resultado Verificar(const Caso &c)
{
    LibroDePrueba l;
    l.Empresa(c.empresa, QStringLiteral("Empresa SA"));
    if (c.enPRV)
        l.Proveedor(c.cuit, c.nombre);
    l.Proveedor(QStringLiteral("30700000024"), QStringLiteral("Otro SA")); // with an invoice of the period too
    l.Factura(c.empresa, QStringLiteral("30700000024"), c.periodo, "05/11/2026", "C", "1", 0, 10, 0, 0);
    l.Factura(c.empresa, c.cuit, c.periodo, c.fecha, c.tipo, c.numero, c.gravado, c.noGravado, c.iva, c.ingBrutos);
    int id = 0;
    for (const LineaCaso &x : c.lineasIVA)
        l.LineaIVA(c.empresa, c.cuit, c.numero, ++id, x.tasa, QStringLiteral("Iva"), x.valor);
    for (const LineaCaso &x : c.lineasIB)
        l.LineaIB(c.empresa, c.cuit, c.numero, ++id, x.tasa, QStringLiteral("IIBB"), x.valor);
    if (!c.otroNumero.isEmpty())
        l.Factura(c.empresa, c.cuit, c.periodo, c.fecha, c.otroTipo, c.otroNumero, c.gravado, 0, c.iva, 0);
    // A company and a period of their own around it, which the check leaves out.
    l.Factura(QStringLiteral("30700000024"), c.cuit, c.periodo, c.fecha, QStringLiteral("X"), c.numero, -1, 0, 0, 0);
    l.Factura(c.empresa, c.cuit, "01/01/2020", c.fecha, "X", "9", -1, 0, 0, 0);
    return VerificarPeriodo(*l.S().dbLibro, c.empresa, c.periodo);
}

} // namespace

class TstVerificacion : public QObject
{
    Q_OBJECT
private slots:
    // The clean invoice of every case trips nothing.
    void limpia()
    {
        const Resultado r = Verificar(Caso());
        QCOMPARE(QPair(r.facturas, r.hallazgos.size()), QPair(2, qsizetype(0)));
    }

    void reglas_data()
    {
        QTest::addColumn<int>("fila");
        for (int i = 0; i < kFilas.size(); ++i)
            QTest::newRow(kFilas[i].nombre) << i;
    }
    void reglas()
    {
        QFETCH(int, fila);
        const Fila &f = kFilas[fila];
        Caso c;
        f.cambio(c);
        const Resultado r = Verificar(c);
        const auto h = std::find_if(r.hallazgos.cbegin(), r.hallazgos.cend(),
                                    [&](const Hallazgo &x) { return x.regla == QLatin1String(f.regla); });
        QVERIFY2((h != r.hallazgos.cend()) == f.dispara, f.regla);
        if (!f.dispara)
            return;
        const Regla *regla = BuscarRegla(QString::fromLatin1(f.regla));
        QVERIFY(regla);
        QCOMPARE(h->severidad, regla->severidad);
        QVERIFY2(!h->mensaje.contains(QRegularExpression("%\\d")) && !h->accion.isEmpty(), qPrintable(h->mensaje));
        QVERIFY2(h->mensaje.contains(QString::fromUtf8(f.enElMensaje)), qPrintable(h->mensaje));
        if (regla->porEmpresa)
            QVERIFY(h->DeEmpresa() && h->mensaje.contains(c.empresa));
        else
            QCOMPARE(QStringList({h->cuit, h->numero, conv::FechaCorta(h->fecha), h->nombre}),
                     QStringList({c.cuit, c.numero, c.fecha, c.enPRV ? c.nombre : QStringLiteral("desconocido!")}));
        QCOMPARE(r.errores + r.avisos, int(r.hallazgos.size()));
    }
};

QTEST_GUILESS_MAIN(TstVerificacion)
#include "tst_verificacion.moc"
