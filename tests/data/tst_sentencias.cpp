#include "common/Libro.h"
#include "data/Convenciones.h"
#include "data/oDB.h"

#include <QtTest>
#include <stdexcept>

// Every statement text of the program, written as the windows and reports compose it (with
// the values in place), run through the database component against a book with known rows.
//
// Book of the company 30-70000001-1 ("E1"), March 2026 unless said:
//   F1 P1 15/03 A     0003-00012345 grav 1500 nograv 50 iva 262,5 ib 45 (VAT 21: 210, 10,5: 52,5;
//                                    taxed lines 1000 + 500; IIBB line 3%: 45)
//   F2 P2 10/03 B     0001-00000077 grav 300                     ib 6  (taxed line 300; IIBB 2%: 6)
//   F3 P2 15/03 A     0002-00099999 grav 200            iva 54         (VAT 27: 54; taxed line 200)
//   F4 P1 20/03 TIQUE 0005-00000010 grav 200 nograv 80  iva 5          (VAT 2,5: 5 and 0: 0)
//   F5 P1 05/04 A     0003-00012400 grav 100 (April)    iva 21  ib 1,5 (VAT 21: 21; IIBB 1,5%)
//   F7 P2 08/02 B     0001-00000077 grav 120 (February: same key as F2)
// and of the company 20-22222222-3 ("E2"):
//   F6 P1 12/03 A     0003-00012345 grav 400            iva 84         (VAT 21: 84)
class TstSentencias : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase() { libro.reset(); }
    void consultas_data();
    void consultas();
    void acciones_data();
    void acciones();
    void eliminarFacturaDejaIngBrutos();

private:
    std::unique_ptr<LibroDePrueba> libro;
};

namespace {
const QString E1 = QStringLiteral("30-70000001-1");
const QString E2 = QStringLiteral("20-22222222-3");
const QString P1 = QStringLiteral("30-11111111-1");
const QString P2 = QStringLiteral("30-22222222-2");
const QString F1 = QStringLiteral("0003-00012345");
const QString Gravados = QStringLiteral("select GRAVAD_Valor,GRAVAD_id from IVC_Gravado where USRSNRCUIT = '30-70000001-1'  and PRVSNRCUIT = '30-11111111-1'  and IVCSNROFAC = '0003-00012345' order by GRAVAD_id");

// Every action runs inside a transaction that is rolled back when the case ends, whatever its
// outcome, so that each case starts from the same book.
class Deshacer
{
public:
    explicit Deshacer(oDB::clManejo &db) : db_(db) { db_.Ejecutar(QStringLiteral("BEGIN")); }
    ~Deshacer() { db_.Ejecutar(QStringLiteral("ROLLBACK")); }

private:
    oDB::clManejo &db_;
};

// The rows of a query as "a|b|c" lines: the clip text of all its fields, or only the named ones.
QStringList Filas(oDB::clManejo &db, const QString &sql, const QString &campos = QString())
{
    oDB::Recordset rs;
    db.CrearRs(rs, sql);
    if (!rs.Abierto())
        throw std::runtime_error(qPrintable(db.UltimoError() + QStringLiteral(" in: ") + sql));
    QStringList out;
    if (campos.isEmpty()) {
        out = rs.GetString(QStringLiteral("|"), QStringLiteral("\n")).split(u'\n');
        out.removeLast();
        return out;
    }
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList f;
        for (const QString &c : campos.split(u','))
            f << conv::Texto(rs(c));
        out << f.join(u'|');
    }
    return out;
}

void Consulta(const char *nombre, const QString &sql, const QStringList &esperado, const QString &campos = QString(),
              bool personal = false)
{
    QTest::newRow(nombre) << personal << sql << campos << esperado;
}

void Accion(const char *nombre, const QString &sql, long afectadas, const QString &control, const QStringList &esperado)
{
    QTest::newRow(nombre) << sql << afectadas << control << esperado;
}

// Statement texts the program composes with different values.
QString Totales(const QString &cuit, const QString &periodo)
{
    return QStringLiteral("select count(*) as cant,sum(IVCDGRAVAD) as grav,sum(IVCDNOGRAV) as nograv,sum(IVARIN) as ivai,'00.00' as ivan,sum(IVCINGBRU) as inbr from IVC where USRSNRCUIT = '%1' and IVCFPERIOD = datevalue('%2')").arg(cuit, periodo);
}
QString Lista(const QString &cuit)
{
    return QStringLiteral("select format(IVCFCOMPRO,'dd/mm/yy') ,IVCSTIPFAC,IVCSNROFAC,PRV.PRVSNRCUIT,PRV.PRVSNOMBRE,format(IVCDGRAVAD,'00.00'),format(IVCDNOGRAV,'00.00'),format(IVARIN,'00.00'),IVCINGBRU,format(IVCDGRAVAD+IVCDNOGRAV+IVARIN+IVCINGBRU,'00.00') as total,ivarin,ivarni from IVC,PRV where IVC.PRVSNRCUIT = PRV.PRVSNRCUIT AND USRSNRCUIT = '%1' and IVCFPERIOD = datevalue('01/03/2026') order by IVCFCOMPRO,val(IVCSNROFAC)").arg(cuit);
}
QString TotalGravados(const QString &numero)
{
    return QStringLiteral("select sum(GRAVAD_Valor) as TotalGravados from IVC_Gravado where USRSNRCUIT = '30-70000001-1'  and PRVSNRCUIT = '30-11111111-1'  and IVCSNROFAC = '%1'").arg(numero);
}
QString Proveedor(const QString &cuit) { return QStringLiteral("select * from PRV where PRVSNRCUIT = '%1'").arg(cuit); }
QString TasaExportada(const QString &fin, const QString &prv)
{
    return QStringLiteral("select IVCDETIVA  from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and IVCSNROFAC like  '%") + fin +
           QStringLiteral("' and PRVSNRCUIT = '") + prv + QStringLiteral("' and USRSNRCUIT = '30-70000001-1'");
}
QString ResumenTasa(const QString &tasa, const QString &cuit)
{
    return QStringLiteral("select IVCDETIVA, sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  from IVC_DetIVA where IVCDETIVA %1 and USRSNRCUIT = '%2'  and exists( select PRVSNRCUIT from IVC where IVC_DetIVA.IVCSNROFAC = IVC.IVCSNROFAC and IVC_DetIVA.PRVSNRCUIT = IVC.PRVSNRCUIT and USRSNRCUIT = '%2' and IVCFPERIOD = datevalue('01/03/2026') ) group by IVCDETIVA").arg(tasa, cuit);
}
QString ResumenOtras(const QString &cuit)
{
    return QStringLiteral("select sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  from IVC_DetIVA where IVCDETIVA not in (10.5,21,27) and USRSNRCUIT = '%1'  and exists( select PRVSNRCUIT from IVC where ivc_DetIVA.IVCDETIVA    <> 0 and IVC_DetIVA.IVCSNROFAC = IVC.IVCSNROFAC and IVC_DetIVA.PRVSNRCUIT = IVC.PRVSNRCUIT and USRSNRCUIT = '%1' and IVCFPERIOD = datevalue('01/03/2026') )  ").arg(cuit);
}
} // namespace

void TstSentencias::initTestCase()
{
    libro = std::make_unique<LibroDePrueba>();
    LibroDePrueba &l = *libro;
    l.Empresa(E1, QStringLiteral("Panadería Peña"));
    l.Empresa(E2, QStringLiteral("Almacén Ñandú"), QStringLiteral("N"));
    l.Proveedor(P1, QStringLiteral("Molinos Ñuñoa S.A."));
    l.Proveedor(P2, QStringLiteral("aceitera Güemes"));
    l.Proveedor(QStringLiteral("20-33333333-3"), QStringLiteral("Zapatería López"));
    const QString mar = QStringLiteral("01/03/2026"), f3 = QStringLiteral("0002-00099999"), f4 = QStringLiteral("0005-00000010"),
                  f5 = QStringLiteral("0003-00012400"), f2 = QStringLiteral("0001-00000077"), a = QStringLiteral("A");
    l.Factura(E1, P1, mar, QStringLiteral("15/03/2026"), a, F1, 1500, 50, 262.5, 45);
    l.Factura(E1, P2, mar, QStringLiteral("10/03/2026"), QStringLiteral("B"), f2, 300, 0, 0, 6);
    l.Factura(E1, P2, mar, QStringLiteral("15/03/2026"), a, f3, 200, 0, 54, 0);
    l.Factura(E1, P1, mar, QStringLiteral("20/03/2026"), QStringLiteral("TIQUE"), f4, 200, 80, 5, 0);
    l.Factura(E1, P1, QStringLiteral("01/04/2026"), QStringLiteral("05/04/2026"), a, f5, 100, 0, 21, 1.5);
    l.Factura(E2, P1, mar, QStringLiteral("12/03/2026"), a, F1, 400, 0, 84, 0);
    l.Factura(E1, P2, QStringLiteral("01/02/2026"), QStringLiteral("08/02/2026"), QStringLiteral("B"), f2, 120, 0, 0, 0);
    l.Ejecutar(QStringLiteral("update IVC set DESCRIPCION = '  Harina 000  ', DESCRIPCIONEXTRA = null where USRSNRCUIT = '30-70000001-1' and IVCSNROFAC = '0003-00012345'"));
    l.LineaIVA(E1, P1, F1, 1, 21, QStringLiteral("Iva del 21:"), 210);
    l.LineaIVA(E1, P1, F1, 2, 10.5, QStringLiteral("Iva del 10,5:"), 52.5);
    l.LineaIVA(E1, P2, f3, 1, 27, QStringLiteral("Iva del 27:"), 54);
    l.LineaIVA(E1, P1, f4, 3, 2.5, QStringLiteral("Iva del 2,5:"), 5);
    l.LineaIVA(E1, P1, f4, 4, 0, QStringLiteral("Iva del 0:"), 0);
    l.LineaIVA(E1, P1, f5, 5, 21, QStringLiteral("Iva del 21:"), 21);
    l.LineaIVA(E2, P1, F1, 1, 21, QStringLiteral("Iva del 21:"), 84);
    l.LineaIB(E1, P1, F1, 1, 3, QStringLiteral("Ingresos Brutos"), 45);
    l.LineaIB(E1, P1, f5, 2, 1.5, QStringLiteral("Percepción"), 1.5);
    l.LineaIB(E1, P2, f2, 1, 2, QStringLiteral("IIBB"), 6);
    l.LineaGravado(E1, P1, F1, 1, 1000);
    l.LineaGravado(E1, P1, F1, 2, 500);
    l.LineaGravado(E1, P2, f3, 1, 200);
    l.LineaGravado(E1, P2, f2, 1, 300);
}

void TstSentencias::consultas_data()
{
    QTest::addColumn<bool>("personal");
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("campos");
    QTest::addColumn<QStringList>("esperado");

    // Main window: period totals and list.
    Consulta("period totals", Totales(E1, QStringLiteral("01/03/2026")), {"4|2200|130|321,5|00.00|51"});
    Consulta("period totals, empty period", Totales(E1, QStringLiteral("01/05/2026")), {"0||||00.00|"});
    Consulta("period list: by date, then number's leading value", Lista(E1),
             {"10/03/26|B|0001-00000077|30-22222222-2|aceitera Güemes|300,00|00,00|00,00|6|306,00|0|0",
              "15/03/26|A|0002-00099999|30-22222222-2|aceitera Güemes|200,00|00,00|54,00|0|254,00|54|0",
              "15/03/26|A|0003-00012345|30-11111111-1|Molinos Ñuñoa S.A.|1500,00|50,00|262,50|45|1857,50|262,5|0",
              "20/03/26|TIQUE|0005-00000010|30-11111111-1|Molinos Ñuñoa S.A.|200,00|80,00|05,00|0|285,00|5|0"});
    Consulta("period list, the other company", Lista(E2),
             {"12/03/26|A|0003-00012345|30-11111111-1|Molinos Ñuñoa S.A.|400,00|00,00|84,00|0|484,00|84|0"});

    // Company and period window.
    Consulta("companies by name", "select USRSNRCUIT,USRSNOMBRE from USR order by USRSNOMBRE",
             {"20-22222222-3|Almacén Ñandú", "30-70000001-1|Panadería Peña"}, {}, true);
    Consulta("company", "select * from USR where USRSNRCUIT = '30-70000001-1'", {"Panadería Peña|S|Calle 1|info@empresa.com.ar"},
             "USRSNOMBRE,USRSCONIVA,USRSDOMICI,USRSEMAIL", true);
    Consulta("company missing", "select * from USR where USRSNRCUIT = '30-99999999-9'", {}, {}, true);

    // Invoice windows: suppliers, duplicate check, descriptions.
    Consulta("suppliers by name, without case", "select PRVSNRCUIT,PRVSNOMBRE from PRV order by PRVSNOMBRE",
             {"30-22222222-2|aceitera Güemes", "30-11111111-1|Molinos Ñuñoa S.A.", "20-33333333-3|Zapatería López"});
    const QString duplicado = QStringLiteral("select IVCFALTA as alta, IVCFCOMPRO as fechafac, IVCFPERIOD as periodo from IVC where USRSNRCUIT = '%1' and PRVSNRCUIT = '30-22222222-2' and IVCSNROFAC = '0001-00000077'");
    Consulta("duplicate in any period", duplicado.arg(E1), {"01/11/2026|10/03/2026|01/03/2026", "01/11/2026|08/02/2026|01/02/2026"});
    Consulta("duplicate of another company is none", duplicado.arg(E2), {});
    Consulta("descriptions", "select descripcion, descripcionextra from IVC where USRSNRCUIT = '30-70000001-1'  and PRVSNRCUIT = '30-11111111-1'  and IVCSNROFAC = '0003-00012345'",
             {"  Harina 000  |"});

    // VAT, gross-income and taxed-amount lines.
    Consulta("VAT lines of an invoice", "select * from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'",
             {"1|21|Iva del 21:|210", "2|10,5|Iva del 10,5:|52,5"}, "IVCdetId,IVCDETIVA,IVCDETDSC,IVCDETVLR");
    const QString idIva = QStringLiteral("select max(IVCdetId) as idmax from IVC_DetIVA where USRSNRCUIT = '%1' and PRVSNRCUIT = '%2'");
    Consulta("VAT next id over the supplier's invoices", idIva.arg(E1, P1), {"5"});
    Consulta("VAT next id, none yet", idIva.arg(E2, P2), {""});
    Consulta("IIBB lines of an invoice", "select * from IVC_DetIngBrutos where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'",
             {"1|3|Ingresos Brutos|45"}, "IVCdetId,IVCDETIB,IVCDETIBDSC,IVCDETIBVLR");
    Consulta("IIBB next id, table written with lower-case d", "select max(IVCdetId) as idmax from IVC_detIngBrutos where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1'", {"2"});
    Consulta("taxed next id in the invoice", "select max(GRAVAD_id) as MaxId from IVC_Gravado where USRSNRCUIT = '30-70000001-1'  and PRVSNRCUIT = '30-11111111-1'  and IVCSNROFAC = '0003-00012345'", {"2"});
    Consulta("taxed total", TotalGravados(F1), {"1500"});
    Consulta("taxed total of an invoice without lines", TotalGravados(QStringLiteral("0005-00000010")), {""});
    Consulta("taxed lines in id order", Gravados, {"1000|1", "500|2"});

    // Supplier window.
    Consulta("supplier", Proveedor(QStringLiteral("20-33333333-3")), {"20-33333333-3|Zapatería López|Av. Siempreviva 742|4444-5555|p@x.com|Juan|01/01/2020"});
    Consulta("supplier missing", Proveedor(QStringLiteral("20-00000000-0")), {});

    // Printed ledger.
    Consulta("ledger: by date, then the last 8 characters' value", "select * from IVC where USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026') order by IVCFCOMPRO, val(right(IVCSNROFAC,8))",
             {"0001-00000077|B", "0003-00012345|A", "0002-00099999|A", "0005-00000010|TIQUE"}, "IVCSNROFAC,IVCSTIPFAC");
    const QString nombre = QStringLiteral("select PRVSNOMBRE from PRV where  PRVSNRCUIT = '%1'");
    Consulta("supplier name", nombre.arg(P1), {"Molinos Ñuñoa S.A."});
    Consulta("supplier name unknown", nombre.arg(QStringLiteral("30-00000000-0")), {});
    Consulta("ledger IIBB detail", "select IVCDETIB, IVCDETIBDSC, IVCDETIBVLR from IVC_DetIngBrutos where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and  IVCSNROFAC = '0003-00012345'",
             {"3|Ingresos Brutos|45"});
    Consulta("ledger VAT detail", "select IVCDETIVA, IVCDETDSC, IVCDETVLR from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and  IVCSNROFAC = '0003-00012345'",
             {"21|Iva del 21:|210", "10,5|Iva del 10,5:|52,5"});
    Consulta("ledger other rates, zero excluded in the list", "select sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  from IVC_DetIVA where IVCDETIVA not in (0,10.5,21,27) and USRSNRCUIT = '30-70000001-1'  and exists( select PRVSNRCUIT from IVC where IVC_DetIVA.IVCSNROFAC = IVC.IVCSNROFAC and IVC_DetIVA.PRVSNRCUIT = IVC.PRVSNRCUIT and USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026') )",
             {"5|200"});

    // Export: invoices, rate of the tax-authority record.
    Consulta("export: by date, then the number's leading value", "select * from IVC where USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026') order by IVCFCOMPRO,val(IVCSNROFAC)",
             {"0001-00000077|10/03/2026|0", "0002-00099999|15/03/2026|0", "0003-00012345|15/03/2026|50", "0005-00000010|20/03/2026|80"}, "IVCSNROFAC,IVCFCOMPRO,IVCDNOGRAV");
    Consulta("export rate by the number's end", TasaExportada(QStringLiteral("12345"), P1), {"21", "10,5"});
    Consulta("export rate, zero rate kept", TasaExportada(QStringLiteral("10"), P1), {"2,5", "0"});
    Consulta("export rate, invoice without lines", TasaExportada(QStringLiteral("77"), P2), {});

    // Spreadsheet summary (the ledger uses the same texts for 10.5, 21 and 27).
    Consulta("summary 10.5", ResumenTasa(QStringLiteral("=10.5"), E1), {"10,5|52,5|500"});
    Consulta("summary 21, April line left out", ResumenTasa(QStringLiteral("= 21"), E1), {"21|210|1000"});
    Consulta("summary 27", ResumenTasa(QStringLiteral("= 27"), E1), {"27|54|200"});
    Consulta("summary 27, rate without lines gives no row", ResumenTasa(QStringLiteral("= 27"), E2), {});
    Consulta("summary other rates, zero excluded in the sub-query", ResumenOtras(E1), {"5|200"});
    Consulta("summary other rates, none: one row of nulls", ResumenOtras(E2), {"|"});
    Consulta("summary untaxed and IIBB", " select sum(IVCDNOGRAV) as nograv, sum(IVCINGBRU) as ingb from IVC where  USRSNRCUIT = '30-70000001-1' and IVCFPERIOD = datevalue('01/03/2026')",
             {"130|51"});
}

void TstSentencias::consultas()
{
    QFETCH(bool, personal);
    QFETCH(QString, sql);
    QFETCH(QString, campos);
    QFETCH(QStringList, esperado);
    QCOMPARE(Filas(personal ? *libro->S().dbPersonal : *libro->S().dbLibro, sql, campos), esperado);
}

void TstSentencias::acciones_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<long>("afectadas");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QStringList>("esperado");
    const QString cabecera = QStringLiteral("select USRSNRCUIT,PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARIN,IVCINGBRU,DESCRIPCION,DESCRIPCIONEXTRA from IVC where IVCSNROFAC like '0003-000123%' order by USRSNRCUIT,IVCSNROFAC");
    const QString otraEmpresa = QStringLiteral("20-22222222-3|30-11111111-1|01/03/2026|12/03/2026|A|0003-00012345|0|400|84|0||");

    // Main window: delete of an invoice.
    Accion("delete VAT lines of the invoice", "delete from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'",
           2, "select USRSNRCUIT, IVCSNROFAC from IVC_DetIVA where IVCSNROFAC = '0003-00012345'", {"20-22222222-3|0003-00012345"});
    Accion("delete header in every period", "delete from IVC where PRVSNRCUIT = '30-22222222-2' and USRSNRCUIT = '30-70000001-1' and IVCSNROFAC = '0001-00000077'",
           2, "select count(*) from IVC where PRVSNRCUIT = '30-22222222-2'", {"1"});
    Accion("delete taxed lines of the invoice", "delete from IVC_Gravado where PRVSNRCUIT = '30-11111111-1' and USRSNRCUIT = '30-70000001-1' and IVCSNROFAC = '0003-00012345'",
           2, "select count(*) from IVC_Gravado", {"2"});

    // Add window: header insert and update, taxed lines dropped on an unsaved close.
    Accion("header insert, taxed caption untouched", "insert into IVC (USRSNRCUIT,PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARNI,IVARIN,IVCINGBRU,IVCFALTA, DESCRIPCION, DESCRIPCIONEXTRA) values ('30-70000001-1','20-33333333-3',datevalue('01-03-2026'),datevalue('25-03-2026'),'NDA','0004-00000001','12,50','00.00','0','0','0',datevalue('21-11-2026'),'Reparación ´urgente´','')",
           1, "select IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCDNOGRAV,IVCDGRAVAD,IVARNI,IVARIN,IVCINGBRU,IVCFALTA,DESCRIPCION,DESCRIPCIONEXTRA,typeof(IVCDNOGRAV) from IVC where IVCSNROFAC = '0004-00000001'",
           {"01/03/2026|25/03/2026|NDA|12,5|0|0|0|0|21/11/2026|Reparación ´urgente´||real"});
    Accion("header update from the add window", "update IVC set IVCFPERIOD = datevalue('01-03-2026'),IVCFCOMPRO = datevalue('16-03-2026'),IVCSTIPFAC = 'NDA',IVCSNROFAC = '0003-00012399',IVCDNOGRAV = '60',IVCDGRAVAD = '1500,00' where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'",
           1, cabecera, {otraEmpresa, "30-70000001-1|30-11111111-1|01/03/2026|16/03/2026|NDA|0003-00012399|60|1500|262,5|45|  Harina 000  |"});
    Accion("taxed lines dropped on close without saving", "delete from IVC_Gravado where USRSNRCUIT = '30-70000001-1'  and PRVSNRCUIT = '30-11111111-1'  and IVCSNROFAC = '0003-00012345'",
           2, "select IVCSNROFAC from IVC_Gravado order by IVCSNROFAC", {"0001-00000077", "0002-00099999"});

    // Modify window: header update (with and without the legacy gross income), period change.
    Accion("header update from the modify window", "update IVC set IVCFPERIOD = datevalue('01-04-2026'),IVCFCOMPRO = datevalue('14-03-2026'),PRVSNRCUIT = '30-22222222-2', IVCSTIPFAC = 'A',IVCSNROFAC = '0003-00012346',IVCDNOGRAV = '50,5',Descripcion = 'Harina ´000´',DescripcionExtra = 'Remito 1',IVCDGRAVAD = '1500,00' where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345' ",
           1, cabecera, {otraEmpresa, "30-70000001-1|30-22222222-2|01/04/2026|14/03/2026|A|0003-00012346|50,5|1500|262,5|45|Harina ´000´|Remito 1"});
    Accion("header update from the modify window, legacy IIBB", "update IVC set IVCFPERIOD = datevalue('01-03-2026'),IVCFCOMPRO = datevalue('15-03-2026'),PRVSNRCUIT = '30-11111111-1', IVCSTIPFAC = 'A',IVCSNROFAC = '0003-00012345',IVCDNOGRAV = '50',Descripcion = '',DescripcionExtra = '',IVCDGRAVAD = '1500,00' , IVCINGBRU = '12,25' where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345' ",
           1, cabecera, {otraEmpresa, "30-70000001-1|30-11111111-1|01/03/2026|15/03/2026|A|0003-00012345|50|1500|262,5|12,25||"});
    Accion("period change", "update IVC set IVCFPERIOD = datevalue('01-12-2026') where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-22222222-2' and IVCSNROFAC = '0002-00099999'",
           1, "select IVCFPERIOD, IVCFCOMPRO from IVC where IVCSNROFAC = '0002-00099999'", {"01/12/2026|15/03/2026"});

    // VAT lines.
    Accion("VAT total on the header", "update IVC set IVARIN = '300,75' where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'",
           1, "select USRSNRCUIT, IVARIN, IVARIN * 2 from IVC where IVCSNROFAC = '0003-00012345' order by USRSNRCUIT", {"20-22222222-3|84|168", "30-70000001-1|300,75|601,5"});
    Accion("VAT line insert, every value quoted", "insert into IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIVA, IVCDETDSC, IVCDETVLR) values ('30-70000001-1','30-11111111-1','6','0003-00012345','10,5','Iva del 10,5:','10,5')",
           1, "select IVCdetId, IVCDETIVA, IVCDETDSC, IVCDETVLR, typeof(IVCdetId), typeof(IVCDETIVA), typeof(IVCDETVLR) from IVC_DetIVA where IVCdetId = 6", {"6|10,5|Iva del 10,5:|10,5|integer|real|real"});
    Accion("VAT line delete by id, any invoice of the supplier", "delete from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCdetId = 5",
           1, "select IVCdetId from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' order by IVCdetId", {"1", "2", "3", "4"});

    // Gross-income lines.
    Accion("IIBB total on the header", "update IVC set IVCINGBRU = '00,00' where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'",
           1, "select IVCINGBRU, typeof(IVCINGBRU) from IVC where USRSNRCUIT = '30-70000001-1' and IVCSNROFAC = '0003-00012345'", {"0|real"});
    Accion("IIBB line insert", "insert into IVC_DetIngBrutos (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIB, IVCDETIBDSC, IVCDETIBVLR) values ('30-70000001-1','30-11111111-1','3','0003-00012345','3','Ingresos Brutos','30')",
           1, "select sum(IVCDETIBVLR), max(IVCdetId) from IVC_DetIngBrutos where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'", {"75|3"});
    Accion("IIBB line delete by id", "delete from IVC_DetIngBrutos where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCdetId = 2",
           1, "select IVCSNROFAC from IVC_DetIngBrutos order by IVCSNROFAC", {"0001-00000077", "0003-00012345"});

    // Taxed-amount lines.
    Accion("taxed line insert through cdbl", "insert into IVC_Gravado (USRSNRCUIT,PRVSNRCUIT,IVCSNROFAC,GRAVAD_id,GRAVAD_Valor) values ('30-70000001-1','30-11111111-1','0003-00012345',3,cdbl('250,50'))",
           1, TotalGravados(F1), {"1750,5"});
    Accion("taxed line delete by id", "delete from IVC_Gravado where USRSNRCUIT = '30-70000001-1'  and PRVSNRCUIT = '30-11111111-1'  and IVCSNROFAC = '0003-00012345'  and GRAVAD_id = 2",
           1, Gravados, {"1000|1"});

    // Supplier window.
    Accion("supplier insert keeps blanks", "INSERT INTO PRV(PRVSNRCUIT,PRVSNOMBRE,PRVSDOMICI,PRVSTELFON,PRVSEMAIL,PRVSCONTAC,PRVFALTA) values (' 30-44444444-4 ','Ñoño Hnos.','','','','',datevalue('21/11/2026'))",
           1, Proveedor(QStringLiteral(" 30-44444444-4 ")), {" 30-44444444-4 |Ñoño Hnos.|||||21/11/2026"});
    Accion("supplier update", "UPDATE PRV SET PRVSNOMBRE='Zapatería López e Hijos',PRVSDOMICI='Mitre 1',PRVSTELFON='',PRVSEMAIL='',PRVSCONTAC='Ana' WHERE PRVSNRCUIT = '20-33333333-3'",
           1, Proveedor(QStringLiteral("20-33333333-3")), {"20-33333333-3|Zapatería López e Hijos|Mitre 1|||Ana|01/01/2020"});
    Accion("supplier delete keeps its invoices", "DELETE FROM PRV WHERE PRVSNRCUIT = '30-22222222-2'", 1, "select count(*) from IVC where PRVSNRCUIT = '30-22222222-2'", {"3"});
    Accion("supplier delete, none", "DELETE FROM PRV WHERE PRVSNRCUIT = '30-99999999-9'", 0, "select count(*) from PRV", {"3"});
}

void TstSentencias::acciones()
{
    QFETCH(QString, sql);
    QFETCH(long, afectadas);
    QFETCH(QString, control);
    QFETCH(QStringList, esperado);
    oDB::clManejo &db = *libro->S().dbLibro;
    const Deshacer deshacer(db);
    QCOMPARE(db.Ejecutar(sql), afectadas);
    QCOMPARE(Filas(db, control), esperado);
}

// The three statements of the main window's delete, in order: the invoice's gross-income lines
// stay, and so does the same invoice of the other company.
void TstSentencias::eliminarFacturaDejaIngBrutos()
{
    oDB::clManejo &db = *libro->S().dbLibro;
    const Deshacer deshacer(db);
    db.Ejecutar(QStringLiteral("delete from IVC_DetIVA where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345'"));
    db.Ejecutar(QStringLiteral("delete from IVC where PRVSNRCUIT = '30-11111111-1' and USRSNRCUIT = '30-70000001-1' and IVCSNROFAC = '0003-00012345'"));
    db.Ejecutar(QStringLiteral("delete from IVC_Gravado where PRVSNRCUIT = '30-11111111-1' and USRSNRCUIT = '30-70000001-1' and IVCSNROFAC = '0003-00012345'"));
    QCOMPARE(Filas(db, QStringLiteral("select 'IVC', USRSNRCUIT, 0 from IVC where IVCSNROFAC = '0003-00012345' union all select 'IVA', USRSNRCUIT, IVCDETVLR from IVC_DetIVA where IVCSNROFAC = '0003-00012345' union all select 'IB', USRSNRCUIT, IVCDETIBVLR from IVC_DetIngBrutos where IVCSNROFAC = '0003-00012345' union all select 'GRAV', count(*), 0 from IVC_Gravado where IVCSNROFAC = '0003-00012345'")),
             (QStringList{"IVC|" + E2 + "|0", "IVA|" + E2 + "|84", "IB|" + E1 + "|45", "GRAV|0|0"}));
}

QTEST_GUILESS_MAIN(TstSentencias)
#include "tst_sentencias.moc"
