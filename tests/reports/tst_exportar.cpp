#include "common/Archivo.h"
#include "common/DialogoGuion.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/Exportar.h"
#include "reports/RegistrosAFIP.h"
#include "reports/RegistrosEsperados.h"

#include <QDir>
#include <QProcess>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>

// The F10 export run over a real book, and "ivacompras exportar" run as a program: the
// spreadsheet and the two tax-authority files written byte for byte, the path rules, the
// messages, the error trap and the exit status; and the records of the tax-authority files from
// the invoice values, compared byte for byte with records written out from the layouts.
namespace {

const QString EMPRESA = QStringLiteral("20123456789");
const QString P1 = QStringLiteral("30111111118");
const QString P2 = QStringLiteral("30222222229");
const QString MARZO = QStringLiteral("01/03/2005");

using namespace esperado;

// One invoice of supplier 30111111118 dated 15/03/2005 and the fields its records must carry;
// every member left out keeps the value of a plain type A invoice of 1000 taxed at 21%.
struct Caso {
    QString tipo = QStringLiteral("A"), numero = QStringLiteral("0002-00012345"), nombre = QStringLiteral("Distribuidora Norte");
    double U = 0, T = 1000, IVA = 210, G = 0;
    std::optional<QString> tasa = QStringLiteral("21"); // none: no VAT line
    bool gravadoCeroAntes = false;

    QString tipo3 = QStringLiteral("001"), pv5 = QStringLiteral("00002"), nro20 = QStringLiteral("00000000000000012345");
    QString nombre30 = QStringLiteral("Distribuidora Norte           "), total15 = QStringLiteral("000000000121000");
    QString noGrav15 = Z(15), ib15 = Z(15), campo15 = QStringLiteral("1 "), grav15 = QStringLiteral("000000000100000");
    QString codigo4 = QStringLiteral("0005"), iva15 = QStringLiteral("000000000021000");
    bool gravadoCeroDespues = false;
};

} // namespace

Q_DECLARE_METATYPE(Caso)

class TstExportar : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        libro = std::make_unique<LibroDePrueba>();
        dialogo = std::make_unique<DialogoGuion>();
        libro->S().dialogo = dialogo.get();
        libro->Empresa(EMPRESA, QStringLiteral("Comercio Sur SRL"));
        libro->Proveedor(P1, QStringLiteral("PEÑA Y CIA S.A."));
        libro->Proveedor(P2, QStringLiteral("Distribuidora \"Norte\""));
        libro->Periodo(EMPRESA, MARZO);
        QDir().mkpath(Dir());
    }
    void periodoCompleto()
    {
        FacturasDeMarzo();
        // An upper-case suffix is kept.
        QVERIFY(Exportar(Dir() + QStringLiteral("marzo.XLS")));

        QCOMPARE(Vistos(), QStringList{"0 Archivos Generados"});
        QCOMPARE(libro->S().ajustes.Leer("KESTREL", "Config", "SepCol"), QStringLiteral("\t"));

        const QString c1 = QStringLiteral("00000000030111111118"), c2 = QStringLiteral("00000000030222222229");
        const QString pena = QStringLiteral("PEÑA Y CIA S.A.") + B(15);
        const QString norte = QStringLiteral("Distribuidora \"Norte\"") + B(9);
        const QString comprobantes =
            Comprobante("20050302", "001", "00002", "00000000000000012345", c1, pena, "000000000133700", Z(15), Z(15), "1 ") +
            Comprobante("20050302", "001", "00005", "00000000000000000045", c2, norte, "000000000010000", "000000000010000", Z(15), "1 ") +
            Comprobante("20050305", "011", "00003", "00000000000000000077", c2, norte, "000000000001200", Z(15), "000000000001200", "1n") +
            Comprobante("20050310", "006", "00001", "00000000000000012345", "00000000030999999990", "desconocido!" + B(18), "000000000060500", Z(15), Z(15), "1 ") +
            Comprobante("20050315", "099", "00000", "00000000000000000678", c1, pena, "000000000022100", Z(15), Z(15), "1 ") +
            Comprobante("20050320", "", "00004", "00000000000000000001", c1, pena, "000000000011500", Z(15), Z(15), "1n");
        const QString alicuotas =
            Alicuota("001", "00002", "00000000000000012345", c1, "000000000110000", "0005", "000000000023700") +
            Alicuota("001", "00005", "00000000000000000045", c2, Z(15), "0006", Z(15)) +
            Alicuota("011", "00003", "00000000000000000077", c2, Z(15), "0003", Z(15)) +
            Alicuota("006", "00001", "00000000000000012345", "00000000030999999990", Z(15), "0005", "000000000010500") +
            Alicuota("099", "00000", "00000000000000000678", c1, "000000000020000", "0004", "000000000002100") +
            Alicuota("", "00004", "00000000000000000001", c1, Z(15), "0003", "000000000000500");
        // Quotes inside a name stay as they are; descriptions take "00.00" and lose their commas.
        const QString planilla = QStringLiteral(
            "FECHA\tTIPO\tFAC NRO\tCUIT\tPROVEEDOR\tNO GRAVADO\tGRAVADO\tING BRU\tIVA\tTOTAL\tDescripcion\tDescripcionExtra\r\n"
            "\r\n"
            "\"02/03/2005\"\t\"A\"\t\"0002-00012345\"\t\"30111111118\"\t\"PEÑA Y CIA S.A.\"\t00.00\t1100.00\t00.00\t237.00\t1337.00\t1.5 kg\tFlete\r\n"
            "\"02/03/2005\"\t\"A\"\t\"0005-00000045\"\t\"30222222229\"\t\"Distribuidora \"Norte\"\"\t100.00\t00.00\t00.00\t00.00\t100.00\t05.00\ta.b\r\n"
            "\"05/03/2005\"\t\"C\"\t\"0003-00000077\"\t\"30222222229\"\t\"Distribuidora \"Norte\"\"\t00.00\t00.00\t12.00\t00.00\t12.00\t\t\r\n"
            "\"10/03/2005\"\t\"B\"\t\"12345\"\t\"30999999990\"\t\"desconocido!\"\t00.00\t500.00\t00.00\t105.00\t605.00\t\t\r\n"
            "\"15/03/2005\"\t\"99\"\t\"0000-678\"\t\"30111111118\"\t\"PEÑA Y CIA S.A.\"\t00.00\t200.00\t00.00\t21.00\t221.00\t\t\r\n"
            "\"20/03/2005\"\t\"X\"\t\"0004-00000001\"\t\"30111111118\"\t\"PEÑA Y CIA S.A.\"\t10.00\t100.00\t00.00\t05.00\t115.00\t\t\r\n"
            "\t\t\t\tTotales\t110.00\t1900.00\t12.00\t368.00\t2390.00\r\n\r\n"
            "Neto Gravado 10.5%\t200.00\r\nIVA 10.5%\t21.00\r\nNeto Gravado 21%\t1500.00\r\nIVA 21%\t315.00\r\n"
            "Neto Gravado 27%\t100.00\r\nIVA 27%\t27.00\r\nNeto Gravado OTROS\t100.00\r\nIVA OTROS\t05.00\r\n"
            "Ingresos Brutos \t12.00\r\nNo gravado/Exentos \t110.00\r\nTotal \t2390.00\r\n");

        QCOMPARE(Leer(Dir() + "marzo.XLS"), planilla.toLatin1());
        // One byte per character: the "Ñ" keeps the record at 325 bytes.
        QCOMPARE(Leer(Dir() + "marzo COMPRAS COMPRBTE.txt"), comprobantes.toLatin1());
        QCOMPARE(Leer(Dir() + "marzo COMPRAS ALICUOTAS.txt"), alicuotas.toLatin1());

        // "ivacompras exportar" writes the same three files, with its own settings file. Four
        // characters are always cut for the tax-authority files, even from a name without ".xls".
        QCOMPARE(Comando({"--archivo", Dir() + "comandoxls"}), QStringLiteral("0 Archivos Generados\n"));
        QCOMPARE(Ajustes(libro->Carpeta() + "ajustes-comando").Leer("KESTREL", "Config", "SepCol"),
                 QStringLiteral("\t"));
        QCOMPARE((QList<QByteArray>{Leer(Dir() + "comandoxls"), Leer(Dir() + "comand COMPRAS COMPRBTE.txt"),
                                   Leer(Dir() + "comand COMPRAS ALICUOTAS.txt")}),
                 (QList<QByteArray>{planilla.toLatin1(), comprobantes.toLatin1(), alicuotas.toLatin1()}));
        // The command that fails writes nothing: the error trap's report and status 1 for a folder that
        // is not there, the usage and status 2 when no file is given.
        const QString sinCarpeta = Comando({"--archivo", Dir() + "no/x.xls"}), sinArchivo = Comando({});
        QVERIFY2(sinCarpeta.startsWith("1 ") && sinCarpeta.contains(" seccion modGBPROC.GenerarReporte "),
                 qPrintable(sinCarpeta));
        QVERIFY2(sinArchivo.startsWith("2 ") && sinArchivo.contains("uso:"), qPrintable(sinArchivo));
        QCOMPARE(QDir(Dir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 6);

        // June has none. Blanks and NUL characters around the answer are dropped, then ".xls" is added.
        libro->Periodo(EMPRESA, QStringLiteral("01/06/2005"));
        QVERIFY(Exportar(B(2) + Dir() + QStringLiteral("junio") + QChar(0) + B(3)));
        // The sums over nothing show as 00.00; the rates with no line show nothing.
        QCOMPARE(Leer(Dir() + "junio.xls"),
                 QByteArray("FECHA\tTIPO\tFAC NRO\tCUIT\tPROVEEDOR\tNO GRAVADO\tGRAVADO\tING BRU\tIVA\tTOTAL\tDescripcion\tDescripcionExtra\r\n"
                            "\r\n\t\t\t\tTotales\t00.00\t00.00\t00.00\t00.00\t00.00\r\n\r\n"
                            "Neto Gravado OTROS\t00.00\r\nIVA OTROS\t00.00\r\nIngresos Brutos \t00.00\r\n"
                            "No gravado/Exentos \t00.00\r\nTotal \t00.00\r\n"));
        QCOMPARE(Leer(Dir() + "junio COMPRAS COMPRBTE.txt") + Leer(Dir() + "junio COMPRAS ALICUOTAS.txt"), QByteArray());
    }
    void avisosNoNumericos()
    {
        libro->Factura(EMPRESA, P1, MARZO, "02/03/2005", "A", "00A1-000123", 100, 0, 21, 0);
        libro->Factura(EMPRESA, P1, MARZO, "03/03/2005", "A", "0012-12B4", 100, 0, 21, 0);
        QVERIFY(Exportar(Dir() + QStringLiteral("avisos.xls")));
        QCOMPARE(Vistos(), (QStringList{"0 Se ha encontrado un Punto de Venta NO NUMERICO: 00A1",
                                        "0 Se ha encontrado un Nro de Factura NO NUMERICO: 000000000000000012B4", "0 Archivos Generados"}));
        // The records are written as built.
        QCOMPARE(Leer(Dir() + "avisos COMPRAS COMPRBTE.txt").mid(327 + 8, 28), QByteArray("00100012000000000000000012B4"));
    }
    void errores_data()
    {
        QTest::addColumn<QString>("bloqueado");
        QTest::addColumn<QString>("numeroYDescripcion");
        QTest::newRow("vouchers file cannot be put in place") << "err COMPRAS COMPRBTE.txt"
            << "\r\n57\r\nNo se puede escribir el archivo 'DIR/err COMPRAS COMPRBTE.txt': la ruta es una carpeta";
        // A file size limit refuses the bytes as a full disk would (the reason is the system's,
        // said in Spanish): the spreadsheet is the first file past the limit.
        QTest::newRow("disk refuses more bytes") << "" // the only row without a blocked path
            << "\r\n57\r\nNo se puede escribir el archivo 'DIR/err.xls': el archivo es demasiado grande";
    }
    void errores()
    {
        QFETCH(QString, bloqueado);
        QFETCH(QString, numeroYDescripcion);
        numeroYDescripcion.replace(QStringLiteral("DIR/"), Dir());
        libro->Factura(EMPRESA, P1, MARZO, "01/03/2005", "A", "0001-00000001", 100, 0, 21, 0);
        libro->Factura(EMPRESA, P1, MARZO, "02/03/2005", "A", "0002-00012345", 1100, 0, 231, 0);
        if (!bloqueado.isEmpty())
            QVERIFY(QDir().mkpath(Dir() + bloqueado));
        // The previous period's export is there: it must stay as it was.
        EscribirArchivo(Dir() + QStringLiteral("err.xls"), "anterior");
        EscribirArchivo(Dir() + QStringLiteral("err COMPRAS ALICUOTAS.txt"), "anterior");

        rlimit antes{};
        getrlimit(RLIMIT_FSIZE, &antes);
        const rlimit limite{bloqueado.isEmpty() ? rlim_t(100) : antes.rlim_cur, antes.rlim_max};
        const auto senal = signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limite);
        const bool exportado = Exportar(Dir() + QStringLiteral("err.xls"));
        setrlimit(RLIMIT_FSIZE, &antes);
        signal(SIGXFSZ, senal);
        const QString texto = Vistos().join(u'|');
        QVERIFY2(!exportado && texto.startsWith(QStringLiteral("16 Nro Linea: ")) && texto.contains(numeroYDescripcion) &&
                     texto.endsWith(QStringLiteral(" seccion modGBPROC.GenerarReporte ")) && !texto.contains(u'|'),
                 qPrintable(texto));
        // The three files are one set: the earlier ones untouched, no new one, nothing left over.
        QCOMPARE(QDir(Dir()).entryList(QDir::Files, QDir::Name),
                 QStringList({"err COMPRAS ALICUOTAS.txt", "err.xls"}));
        QCOMPARE(Leer(Dir() + "err.xls") + Leer(Dir() + "err COMPRAS ALICUOTAS.txt"), QByteArray("anterioranterior"));
    }
    void registros_data()
    {
        QTest::addColumn<Caso>("c");
        const auto fila = [](const char *nombre, const Caso &c) { QTest::newRow(nombre) << c; };

        fila("12345 type 99, rate 2,5", {.tipo = "99", .numero = "12345", .tasa = "2,5", .tipo3 = "099", .pv5 = "00000", .codigo4 = "0009"});
        fila("lower-case type is unknown", {.tipo = "a", .tipo3 = "", .grav15 = Z(15)});
        fila("point of sale's last 4, number's last 6", {.numero = "00012-12345678", .pv5 = "00012", .nro20 = "00000000000000345678"});
        fila("amounts 0 and 1234.5, rounded to cents",
             {.T = 1234.5, .IVA = 259.254, .total15 = "000000000149375", .grav15 = "000000000123450", .iva15 = "000000000025925"});
        fila("negative amounts keep their sign inside", {.U = -200, .T = 100, .IVA = 21, .total15 = "0000000000-7900",
             .noGrav15 = "000000000-20000", .grav15 = "000000000010000", .iva15 = "000000000002100"});
        fila("name of 40 cut to 30", {.nombre = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcd", .nombre30 = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123"});
        fila("characters beyond the basic plane: one byte each",
             {.numero = QStringLiteral("0002-000\U0001F60012345"), .nombre = QStringLiteral("Caf\u00e9 \U0001F600\U0001F600 Sur"),
              .nro20 = "00000000000000?12345", .nombre30 = QStringLiteral("Caf\u00e9 ?? Sur") + B(19)});
        fila("VAT of 13 digits on its own cent", {.T = 0, .IVA = 5000000068049.169, .total15 = "500000006804917", .grav15 = Z(15),
             .iva15 = "500000006804917", .gravadoCeroDespues = true});
        fila("rate written with a point is no rate", {.tipo = "TIQUE FCA", .tasa = "10.5", .tipo3 = "081", .codigo4 = "0003"});

        // Field 15, rule by rule (N: nothing taxed, no VAT line); a type with no letter of its own and a known rate
        // (B), and GravadoCero carried over (C), are in the full period.
        const Caso N{.T = 0, .IVA = 0, .tasa = std::nullopt, .total15 = Z(15), .grav15 = Z(15), .codigo4 = "0003", .iva15 = Z(15)};
        const auto con = [&](Caso c, auto f) { f(c); return c; };
        fila("rule 1 comes before type A", con(N, [](Caso &c) { c.T = 100; c.G = 5; c.total15 = "000000000010500";
             c.ib15 = "000000000000500"; c.campo15 = "1n"; c.grav15 = "000000000010000"; }));
        fila("rule 2 type NDA without rate, sets GravadoCero", con(N, [](Caso &c) { c.tipo = "NDA"; c.U = 50; c.tipo3 = "002";
             c.total15 = c.noGrav15 = "000000000005000"; c.gravadoCeroDespues = true; }));
        fila("rule 3 exempt only", con(N, [](Caso &c) { c.tipo = "C"; c.U = 100; c.tipo3 = "011"; c.total15 = "000000000010000";
             c.campo15 = "0n"; }));
        fila("rule 3 not for 99, which sets GravadoCero", con(N, [](Caso &c) { c.tipo = "99"; c.numero = "0003-00000077"; c.U = 100;
             c.tipo3 = "099"; c.pv5 = "00003"; c.nro20 = "00000000000000000077"; c.total15 = c.noGrav15 = "000000000010000";
             c.campo15 = "1n"; c.gravadoCeroDespues = true; }));
        fila("rule 4 TIQUE FCB taxed, rate 0",
             {.tipo = "TIQUE FCB", .tasa = "0", .tipo3 = "082", .campo15 = "1n", .grav15 = Z(15), .codigo4 = "0003"});
        fila("rule 6 otherwise: TIQUE, other rate", con(N, [](Caso &c) { c.tipo = "TIQUE"; c.tasa = "5"; c.tipo3 = "083";
             c.campo15 = "0n"; }));
        fila("type A with a taxed amount clears GravadoCero", {.T = 100, .IVA = 21, .gravadoCeroAntes = true,
             .total15 = "000000000012100", .grav15 = "000000000010000", .iva15 = "000000000002100"});
    }
    void registros()
    {
        QFETCH(Caso, c);
        FacturaExportada f{.fecha = QStringLiteral("15/03/2005"), .tipo = c.tipo, .numero = c.numero, .cuit = P1,
                           .nombre = c.nombre, .noGravado = c.U, .gravado = c.T, .iva = c.IVA, .ingBrutos = c.G,
                           .alicuota = c.tasa, .descripcion = {}, .descripcionExtra = {}};
        EstadoRegistros estado{.GravadoCero = c.gravadoCeroAntes};
        const RegistrosFactura r = ArmarRegistros(f, estado);
        const QString cuit20 = QStringLiteral("00000000030111111118");
        QCOMPARE(r.comprobante, Comprobante("20050315", c.tipo3, c.pv5, c.nro20, cuit20, c.nombre30, c.total15,
                                            c.noGrav15, c.ib15, c.campo15));
        QCOMPARE(r.alicuota, Alicuota(c.tipo3, c.pv5, c.nro20, cuit20, c.grav15, c.codigo4, c.iva15));
        QCOMPARE(estado.GravadoCero, c.gravadoCeroDespues);
    }
private:
    void FacturasDeMarzo()
    {
        LibroDePrueba &l = *libro;
        // Same date: ordered by the number's leading digits (2 before 5).
        l.Factura(EMPRESA, P2, MARZO, "02/03/2005", "A", "0005-00000045", 0, 100, 0, 0);
        l.Ejecutar("update IVC set DESCRIPCION = '5', DESCRIPCIONEXTRA = 'a,b' where IVCSNROFAC = '0005-00000045'");
        l.Factura(EMPRESA, P1, MARZO, "02/03/2005", "A", "0002-00012345", 1100, 0, 237, 0);
        l.LineaIVA(EMPRESA, P1, "0002-00012345", 1, 21, "Iva 21", 210);
        l.LineaIVA(EMPRESA, P1, "0002-00012345", 2, 27, "Iva 27", 27);
        l.Ejecutar("update IVC set DESCRIPCION = '1,5 kg', DESCRIPCIONEXTRA = 'Flete' where IVCSNROFAC = '0002-00012345'");
        // Gross income only: GravadoCero left by the exempt type A before it.
        l.Factura(EMPRESA, P2, MARZO, "05/03/2005", "C", "0003-00000077", 0, 0, 0, 12);
        // A supplier missing from the list.
        l.Factura(EMPRESA, "30999999990", MARZO, "10/03/2005", "B", "12345", 500, 0, 105, 0);
        l.LineaIVA(EMPRESA, "30999999990", "12345", 1, 21, "Iva 21", 105);
        l.Factura(EMPRESA, P1, MARZO, "15/03/2005", "99", "678", 200, 0, 21, 0);
        l.LineaIVA(EMPRESA, P1, "678", 1, 10.5, "Iva 10,5", 21);
        l.Factura(EMPRESA, P1, MARZO, "20/03/2005", "X", "0004-00000001", 100, 10, 5, 0);
        l.LineaIVA(EMPRESA, P1, "0004-00000001", 1, 5, "Iva 5", 5);
        l.LineaIVA(EMPRESA, P1, "0004-00000001", 2, 0, "Iva 0", 0);
        // Outside the run: another period, another company. The line of another period still
        // answers the rate query of a number ending in the same digits ("%45").
        l.Factura(EMPRESA, P1, "01/04/2005", "01/04/2005", "A", "0009-00000009", 999, 0, 0, 0);
        l.Factura(EMPRESA, P2, "01/02/2005", "01/02/2005", "A", "0001-00000345", 100, 0, 27, 0);
        l.LineaIVA(EMPRESA, P2, "0001-00000345", 1, 27, "Iva 27", 27);
        l.Factura("27000000006", P1, MARZO, "03/03/2005", "A", "0001-00000001", 1000, 0, 210, 0);
        l.LineaIVA("27000000006", P1, "0001-00000001", 1, 21, "Iva 21", 210);
    }
    // "ivacompras exportar" over the book for March 2005: its exit status and what it wrote on the
    // error output.
    QString Comando(const QStringList &archivo)
    {
        QProcess p;
        p.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../ivacompras"),
                QStringList{"exportar", "--datos", libro->Carpeta(), "--cuit", EMPRESA, "--periodo", "03/2005",
                            "--ajustes", libro->Carpeta() + "ajustes-comando"} + archivo);
        if (!p.waitForFinished(120000) || p.exitStatus() != QProcess::NormalExit)
            return QStringLiteral("no terminó: ") + p.errorString();
        return QString::number(p.exitCode()) + u' ' + QString::fromLocal8Bit(p.readAllStandardError());
    }
    bool Exportar(const QString &ruta)
    {
        dialogo->respuesta = ruta;
        QString tab = QStringLiteral("\t");
        return GenerarReporte(libro->S(), tab, nullptr);
    }
    QStringList Vistos() const
    {
        QStringList v;
        for (const auto &m : libro->Mensajes().mostrados)
            v << QString::number(m.estilo) + u' ' + m.texto;
        return v;
    }
    QString Dir() const { return libro->Carpeta() + QStringLiteral("salida/"); }
    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<DialogoGuion> dialogo;
};

QTEST_MAIN(TstExportar)
#include "tst_exportar.moc"
