#include "EmpresaDelLibro.h"
#include "common/ImpresoraGrabadora.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/LibroImpreso.h"

#include <QtTest>

// The printed ledger: column alignment, the composed text over a real book, and the pages.
class TstLibroImpreso : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void alinear_data();
    void alinear();
    void libroCompleto();
    void periodoVacio();
    void resumenSoloDondeHayFilas_data();
    void resumenSoloDondeHayFilas();
    void paginas_data();
    void paginas();
    void paginasSinCuerpoSinHojaNueva();
    void apostrofeTerminaEnLaTrampa();

private:
    std::unique_ptr<LibroDePrueba> libro;
    Sesion &S() { return libro->S(); }
};

namespace {

const QString kLargo = QStringLiteral("30111111118");
const QString kFerreteria = QStringLiteral("30222222229");
const QString kDesconocido = QStringLiteral("30333333330");
// 60 characters.
const QString kNombreLargo =
    QStringLiteral("A123456789B123456789C123456789D123456789E123456789F123456789");

QString B(int n) { return QString(n, u' '); }
QString G(int n) { return QString(n, u'-'); }

// Fields already padded by hand, one blank between them.
QString J(const QStringList &campos) { return campos.join(u' '); }

// Lines common to every ledger, as laid out by hand.
const QString kTitulos = J({B(5) + "FECHA", "TIPO", B(11) + "FAC NRO", B(7) + "CUIT", "PROVEEDOR" + B(41),
                            "NO GRAVADO", B(3) + "GRAVADO", B(3) + "ING BRU", B(7) + "IVA", B(5) + "TOTAL"});
const QString kRegla = J({G(10), G(4), G(18), G(11), G(50), G(10), G(10), G(10), G(10), G(10)});
const QString kSubtitulo = B(94) + J({"  IVA", "Descripción" + B(19), B(5) + "Valor"});
const QString kSubregla = B(91) + J({G(5), G(30), G(10)});

// "linea 1" ... "linea n", separated by CR LF.
QString Numeradas(int n)
{
    QStringList l;
    for (int i = 1; i <= n; ++i)
        l << QStringLiteral("linea %1").arg(i);
    return l.join(QStringLiteral("\r\n"));
}

QString Texto(const QStringList &lineas) { return lineas.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"); }

} // namespace

void TstLibroImpreso::init()
{
    libro = std::make_unique<LibroDePrueba>();
    EmpresaDelLibro(*libro);
    libro->Proveedor(kLargo, kNombreLargo);
    libro->Proveedor(kFerreteria, QStringLiteral("Ferretería Ñandú"));
}

void TstLibroImpreso::cleanup() { libro.reset(); }

void TstLibroImpreso::alinear_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("modo");
    QTest::addColumn<int>("ancho");
    QTest::addColumn<QString>("resultado");
    QTest::addColumn<QString>("variable");

    QTest::newRow("izquierda") << "NDA" << "I" << 5 << "NDA  " << "NDA";
    QTest::newRow("derecha") << "NDA" << "D" << 4 << " NDA" << "NDA";
    QTest::newRow("justo") << "abcd" << "D" << 4 << "abcd" << "abcd";
    QTest::newRow("largo izquierda se corta") << "abcdefgh" << "I" << 5 << "abcde" << "abcde";
    QTest::newRow("largo derecha se corta") << "abcdefgh" << "D" << 3 << "abc" << "abc";
    QTest::newRow("vacio") << "" << "D" << 3 << "   " << "";
    QTest::newRow("ancho cero") << "abc" << "I" << 0 << "" << "";
    QTest::newRow("modo en minuscula") << "abc" << "i" << 5 << "Error en align" << "abc";
    QTest::newRow("otro modo, el corte queda") << "abcdefgh" << "C" << 5 << "Error en align" << "abcde";
}

void TstLibroImpreso::alinear()
{
    QFETCH(QString, texto);
    QFETCH(QString, modo);
    QFETCH(int, ancho);
    QFETCH(QString, resultado);
    QFETCH(QString, variable);
    QCOMPARE(align(texto, modo, qint16(ancho)), resultado);
    QCOMPARE(texto, variable);
}

void TstLibroImpreso::libroCompleto()
{
    // Two invoices on one date: the number's last eight characters order them (45 before 123).
    libro->Factura(kEmpresa, kLargo, "01/03/2026", "05/03/2026", "A", "0001-00000123", 1000, 50, 210, 30);
    libro->LineaIB(kEmpresa, kLargo, "0001-00000123", 1, 3, "Perc IIBB BA", 30);
    libro->LineaIVA(kEmpresa, kLargo, "0001-00000123", 1, 21, "IVA 21%", 210);
    libro->Factura(kEmpresa, kFerreteria, "01/03/2026", "05/03/2026", "NDA", "0002-00000045", 200, 0, 21, 0);
    libro->LineaIVA(kEmpresa, kFerreteria, "0002-00000045", 1, 10.5, "IVA 10,5", 21);
    // A supplier that is not in the list, no detail lines, an untaxed amount of three decimals.
    libro->Factura(kEmpresa, kDesconocido, "01/03/2026", "10/03/2026", "B", "0003-00000001", 100, 12.344, 27, 0);
    libro->Factura(kEmpresa, kFerreteria, "01/03/2026", "12/03/2026", "A", "0001-00000200", 400, 0, 74, 25);
    libro->LineaIB(kEmpresa, kFerreteria, "0001-00000200", 1, 2.5, "Perc CABA", 10);
    libro->LineaIB(kEmpresa, kFerreteria, "0001-00000200", 2, 3, "Perc BA", 15);
    libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000200", 1, 21, "IVA 21", 42);
    libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000200", 2, 27, "IVA 27", 27);
    libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000200", 3, 5, "IVA 5", 5);
    libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000200", 4, 0, "Exento", 0);
    // Other periods and other companies stay out, their lines too.
    libro->Factura(kEmpresa, kFerreteria, "01/02/2026", "20/02/2026", "A", "0001-00000099", 500, 0, 105, 0);
    libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000099", 1, 21, "IVA 21", 105);
    libro->Factura("20999999990", kFerreteria, "01/03/2026", "06/03/2026", "A", "0001-00000300", 100, 0, 27, 0);
    libro->LineaIVA("20999999990", kFerreteria, "0001-00000300", 1, 27, "IVA 27", 27);

    const QString nombre50 = kNombreLargo.left(50);
    const QString ferreteria = QStringLiteral("Ferretería Ñandú") + B(34);
    const QStringList esperado = {
        kTitulos,
        kRegla,
        kSubtitulo,
        kSubregla,
        J({"05/03/2026", " NDA", B(5) + "0002-00000045", kFerreteria, ferreteria, B(5) + "00,00",
           B(4) + "200,00", B(5) + "00,00", B(5) + "21,00", B(4) + "221,00"}),
        B(79) + QStringLiteral("detalle IVA --> 10,5% IVA 10,5") + B(22) + QStringLiteral("      21,00"),
        J({"05/03/2026", B(3) + "A", B(5) + "0001-00000123", kLargo, nombre50, B(5) + "50,00",
           B(3) + "1000,00", B(5) + "30,00", B(4) + "210,00", B(3) + "1290,00"}),
        B(72) + QStringLiteral("detalle Ing Brutos -->    3% Perc IIBB BA") + B(7) + QStringLiteral("      30,00"),
        B(79) + QStringLiteral("detalle IVA -->   21% IVA 21%") + B(23) + QStringLiteral("     210,00"),
        J({"10/03/2026", B(3) + "B", B(5) + "0003-00000001", kDesconocido, "desconocido!" + B(38),
           B(5) + "12,34", B(4) + "100,00", B(5) + "00,00", B(5) + "27,00", B(4) + "139,34"}),
        J({"12/03/2026", B(3) + "A", B(5) + "0001-00000200", kFerreteria, ferreteria, B(5) + "00,00",
           B(4) + "400,00", B(5) + "25,00", B(5) + "74,00", B(4) + "499,00"}),
        B(72) + QStringLiteral("detalle Ing Brutos -->  2,5% Perc CABA") + B(10) + QStringLiteral("      10,00"),
        B(91) + QStringLiteral("-->    3% Perc BA") + B(12) + QStringLiteral("      15,00"),
        B(79) + QStringLiteral("detalle IVA -->   21% IVA 21") + B(24) + QStringLiteral("      42,00"),
        B(91) + QStringLiteral("-->   27% IVA 27") + B(24) + QStringLiteral("      27,00"),
        B(91) + QStringLiteral("-->    5% IVA 5") + B(25) + QStringLiteral("      05,00"),
        B(91) + QStringLiteral("-->    0% Exento") + B(24) + QStringLiteral("      00,00"),
        J({B(10), B(4), B(18), B(11), B(42) + "Totales:", B(5) + "62,34", B(3) + "1700,00",
           B(5) + "55,00", B(4) + "332,00", B(3) + "2149,34"}),
        QStringLiteral("NETO GRAVADO 10,5% 200,00"),
        QStringLiteral("IVA 10,5% 21,00"),
        QStringLiteral("NETO GRAVADO 21% 1200,00"),
        QStringLiteral("IVA 21% 252,00"),
        QStringLiteral("NETO GRAVADO 27% 100,00"),
        QStringLiteral("IVA 27% 27,00"),
        QStringLiteral("NETO GRAVADO OTROS 100,00"),
        QStringLiteral("IVA OTROS 05,00"),
        QStringLiteral("INGRESOS BRUTOS 55,00"),
        QStringLiteral("NO GRAVADOS/EXENTOS 62,34"),
        QStringLiteral("TOTAL 2149,34"),
    };
    const QString texto = libro::ComponerLibro(S());
    const QStringList lineas = libro::CortarLineas(texto);
    for (int i = 0; i < esperado.size(); ++i)
        QCOMPARE(lineas.value(i), esperado[i]);
    QCOMPARE(texto, Texto(esperado));
    // Every main line is 152 characters wide.
    for (int i : {4, 6, 9, 10})
        QCOMPARE(lineas[i].size(), libro::kAnchoLinea);
    QCOMPARE(kTitulos.size(), libro::kAnchoLinea);
    QCOMPARE(lineas[17].size(), libro::kAnchoLinea);
}

void TstLibroImpreso::periodoVacio()
{
    // An invoice of another period: this one has none.
    libro->Factura(kEmpresa, kFerreteria, "01/02/2026", "20/02/2026", "A", "0001-00000099", 500, 7, 105, 3);
    const QStringList esperado = {
        kTitulos,
        kRegla,
        kSubtitulo,
        kSubregla,
        J({B(10), B(4), B(18), B(11), B(42) + "Totales:", B(5) + "00,00", B(5) + "00,00",
           B(5) + "00,00", B(5) + "00,00", B(5) + "00,00"}),
        // The two aggregates without grouping always bring a row; their null sums show 00,00.
        QStringLiteral("NETO GRAVADO OTROS 00,00"),
        QStringLiteral("IVA OTROS 00,00"),
        QStringLiteral("INGRESOS BRUTOS 00,00"),
        QStringLiteral("NO GRAVADOS/EXENTOS 00,00"),
        QStringLiteral("TOTAL 00,00"),
    };
    QCOMPARE(libro::ComponerLibro(S()), Texto(esperado));

    ImpresoraGrabadora imp;
    QVERIFY(ImprimirLibro(S(), imp, 9, 30));
    QCOMPARE(imp.hojas.size(), 1);
    QCOMPARE(imp.documentos, 1);
    const QString encabezado = QStringLiteral("COMPAÑÍA ÑANDÚ S.R.L. - CUIT: 20111111112") + B(56) +
                               QStringLiteral(" Desde: 01/03/2026 hasta 31/03/2026");
    QStringList hoja = QStringList{QString(), encabezado, QString()} + esperado;
    hoja << QString() << B(136) + QStringLiteral("Pagina 1 de 1");
    QCOMPARE(imp.Textos(0), hoja);
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
}

void TstLibroImpreso::resumenSoloDondeHayFilas_data()
{
    QTest::addColumn<QList<double>>("tasas");
    QTest::addColumn<QStringList>("resumen");

    QTest::newRow("solo 21") << QList<double>{21}
                             << QStringList{"NETO GRAVADO 21% 100,00", "IVA 21% 21,00",
                                            "NETO GRAVADO OTROS 00,00", "IVA OTROS 00,00"};
    QTest::newRow("10,5 y 27") << QList<double>{27, 10.5}
                               << QStringList{"NETO GRAVADO 10,5% 100,00", "IVA 10,5% 10,50",
                                              "NETO GRAVADO 27% 100,00", "IVA 27% 27,00",
                                              "NETO GRAVADO OTROS 00,00", "IVA OTROS 00,00"};
    QTest::newRow("tasa cero no es otra tasa") << QList<double>{0}
                                               << QStringList{"NETO GRAVADO OTROS 00,00", "IVA OTROS 00,00"};
    QTest::newRow("otras tasas") << QList<double>{2.5, 5}
                                 << QStringList{"NETO GRAVADO OTROS 200,00", "IVA OTROS 07,50"};
}

void TstLibroImpreso::resumenSoloDondeHayFilas()
{
    QFETCH(QList<double>, tasas);
    QFETCH(QStringList, resumen);
    // One line per rate, each on a taxed base of 100.
    libro->Factura(kEmpresa, kFerreteria, "01/03/2026", "05/03/2026", "A", "0001-00000001", 100, 0, 0, 0);
    int id = 0;
    for (double t : tasas)
        libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000001", ++id, t, "linea", t);

    const QStringList lineas = libro::CortarLineas(libro::ComponerLibro(S()));
    const qsizetype desde = lineas.indexOf(QRegularExpression(QStringLiteral(" +Totales:.*"))) + 1;
    const qsizetype hasta = lineas.indexOf(QRegularExpression(QStringLiteral("INGRESOS BRUTOS .*")));
    QVERIFY(desde > 0 && hasta > desde);
    QCOMPARE(lineas.mid(desde, hasta - desde), resumen);
}

void TstLibroImpreso::paginas_data()
{
    QTest::addColumn<int>("lineas");
    QTest::addColumn<int>("porHoja");
    QTest::addColumn<QList<int>>("cuerpos");

    QTest::newRow("100 a 30") << 100 << 30 << QList<int>{27, 27, 27, 19};
    QTest::newRow("una linea") << 1 << 30 << QList<int>{1};
    QTest::newRow("50 a 30") << 50 << 30 << QList<int>{27, 23};
    QTest::newRow("5 por hoja") << 4 << 5 << QList<int>{2, 2};
    QTest::newRow("menos de 5: una por hoja") << 2 << 3 << QList<int>{1, 1};
}

void TstLibroImpreso::paginas()
{
    QFETCH(int, lineas);
    QFETCH(int, porHoja);
    QFETCH(QList<int>, cuerpos);
    ImpresoraGrabadora imp;
    libro::ImprimirPaginas(imp, Numeradas(lineas), QStringLiteral("ENC"), 9, qint16(porHoja));

    QCOMPARE(imp.FontName(), QStringLiteral("Courier New"));
    QCOMPARE(imp.documentos, 1);
    QCOMPARE(imp.hojas.size(), cuerpos.size());
    int siguiente = 1;
    for (int h = 0; h < cuerpos.size(); ++h) {
        // The header's empty line and header line at the size + 1, the rest at the size.
        QStringList textos{QString(), QStringLiteral("ENC"), QString()};
        QList<double> puntos{10, 10, 9};
        for (int i = 0; i < cuerpos[h]; ++i, puntos << 9)
            textos << QStringLiteral("linea %1").arg(siguiente++);
        const QString pie = QStringLiteral("Pagina %1 de %2").arg(h + 1).arg(cuerpos.size());
        textos << B(149 - int(pie.size())) + pie;
        puntos << 9;
        QCOMPARE(imp.Textos(h), textos);
        QList<double> impresos;
        for (const auto &l : imp.hojas[h])
            impresos << l.puntos;
        QCOMPARE(impresos, puntos);
    }
    QCOMPARE(siguiente, lineas + 1);
}

void TstLibroImpreso::paginasSinCuerpoSinHojaNueva()
{
    // 27 lines at 30 a page: the count says two pages, the body fills one; the second page's
    // header and footer follow on the same sheet, no new page before them.
    ImpresoraGrabadora imp;
    libro::ImprimirPaginas(imp, Numeradas(27), QStringLiteral("ENC"), 9, 30);
    QCOMPARE(imp.hojas.size(), 1);
    QCOMPARE(imp.Textos(0).mid(30), (QStringList{B(136) + "Pagina 1 de 2", QString(), "ENC", QString(),
                                                 B(136) + "Pagina 2 de 2"}));
    // 10 lines at 4 a page: six pages of one line; the rest of the body is not printed, and
    // the new page asked for after the last footer leaves an empty sheet.
    ImpresoraGrabadora corta;
    libro::ImprimirPaginas(corta, Numeradas(10), QStringLiteral("ENC"), 9, 4);
    QCOMPARE(corta.hojas.size(), 7);
    QCOMPARE(corta.Textos(5).mid(3), (QStringList{"linea 6", B(136) + "Pagina 6 de 6"}));
    QVERIFY(corta.hojas[6].isEmpty());
}

void TstLibroImpreso::apostrofeTerminaEnLaTrampa()
{
    // A supplier CUIT with an apostrophe breaks the supplier query: nothing is printed.
    libro->Factura(kEmpresa, QStringLiteral("30''1"), "01/03/2026", "05/03/2026", "A", "0001-00000001", 100, 0, 21, 0);
    ImpresoraGrabadora imp;
    QVERIFY(!ImprimirLibro(S(), imp, 9, 30));
    QVERIFY(imp.hojas.isEmpty());
    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
    QVERIFY(libro->Mensajes().Ultimo().endsWith(QStringLiteral(" - Seccion [MORLAxDLL.modGBPROC.ImprimirLibro]")));
}

QTEST_GUILESS_MAIN(TstLibroImpreso)
#include "tst_libroimpreso.moc"
