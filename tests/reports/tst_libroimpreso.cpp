#include "common/Archivo.h"
#include "common/ImpresoraGrabadora.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/Impresoras.h"
#include "reports/LibroImpreso.h"

#include <QFontDatabase>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QString kEmpresa = QStringLiteral("20111111112");
const QString kLargo = QStringLiteral("30111111118");
const QString kFerreteria = QStringLiteral("30222222229");
const QString kDesconocido = QStringLiteral("30333333330");
// 60 characters.
const QString kNombreLargo = QStringLiteral("A123456789B123456789C123456789D123456789E123456789F123456789");

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

QString Texto(const QStringList &lineas) { return lineas.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"); }

} // namespace

// The printed ledger over a real book: the composed text, the pages, and where it goes (a
// Latin-1 text file, a PDF file, the PDF in the documents folder of a machine without
// printers). Across the page at every font size: read back from the PDF as text (pdftotext
// -layout), the totals line ends with its last amount and every footer and header is whole; on
// paper that cannot hold the lines the user is asked first, and a "no" prints nothing.
class TstLibroImpreso : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        libro = std::make_unique<LibroDePrueba>();
        libro->Empresa(kEmpresa, QStringLiteral("Compañía Ñandú S.R.L."));
        libro->Periodo(kEmpresa, QStringLiteral("01/03/2026"));
        libro->Proveedor(kLargo, kNombreLargo);
        libro->Proveedor(kFerreteria, QStringLiteral("Ferretería Ñandú"));
    }
    void libroCompleto()
    {
        // Two invoices on one date: the number's last eight characters order them (45 before 123).
        libro->Factura(kEmpresa, kLargo, "01/03/2026", "05/03/2026", "A", "0001-00000123", 1000, 50, 215, 30);
        libro->LineaIB(kEmpresa, kLargo, "0001-00000123", 1, 2.5, "Perc CABA", 10);
        libro->LineaIB(kEmpresa, kLargo, "0001-00000123", 2, 3, "Perc BA", 20);
        libro->LineaIVA(kEmpresa, kLargo, "0001-00000123", 1, 21, "IVA 21%", 210);
        libro->LineaIVA(kEmpresa, kLargo, "0001-00000123", 2, 5, "IVA 5", 5);
        libro->Factura(kEmpresa, kFerreteria, "01/03/2026", "05/03/2026", "NDA", "0002-00000045", 200, 0, 21, 0);
        libro->LineaIVA(kEmpresa, kFerreteria, "0002-00000045", 1, 10.5, "IVA 10,5", 21);
        // A supplier that is not in the list, no detail lines, an untaxed amount of three decimals.
        libro->Factura(kEmpresa, kDesconocido, "01/03/2026", "10/03/2026", "B", "0003-00000001", 100, 12.344, 27, 0);
        // Other periods and other companies stay out, their lines too: no 27% in the summary.
        libro->Factura(kEmpresa, kFerreteria, "01/02/2026", "20/02/2026", "A", "0001-00000099", 500, 0, 105, 0);
        libro->LineaIVA(kEmpresa, kFerreteria, "0001-00000099", 1, 21, "IVA 21", 105);
        libro->Factura("20999999990", kFerreteria, "01/03/2026", "06/03/2026", "A", "0001-00000300", 100, 0, 27, 0);
        libro->LineaIVA("20999999990", kFerreteria, "0001-00000300", 1, 27, "IVA 27", 27);

        // The 60-character name printed as its first 50; the 3-character type as a blank and "NDA".
        const QString ferreteria = QStringLiteral("Ferretería Ñandú") + B(34);
        const QStringList esperado = QStringList{
            kTitulos, kRegla, kSubtitulo, kSubregla,
            J({"05/03/2026", " NDA", B(5) + "0002-00000045", kFerreteria, ferreteria, B(5) + "00,00",
               B(4) + "200,00", B(5) + "00,00", B(5) + "21,00", B(4) + "221,00"}),
            B(79) + QStringLiteral("detalle IVA --> 10,5% IVA 10,5") + B(22) + QStringLiteral("      21,00"),
            J({"05/03/2026", B(3) + "A", B(5) + "0001-00000123", kLargo, kNombreLargo.left(50), B(5) + "50,00",
               B(3) + "1000,00", B(5) + "30,00", B(4) + "215,00", B(3) + "1295,00"}),
            B(72) + QStringLiteral("detalle Ing Brutos -->  2,5% Perc CABA") + B(10) + QStringLiteral("      10,00"),
            B(91) + QStringLiteral("-->    3% Perc BA") + B(12) + QStringLiteral("      20,00"),
            B(79) + QStringLiteral("detalle IVA -->   21% IVA 21%") + B(23) + QStringLiteral("     210,00"),
            B(91) + QStringLiteral("-->    5% IVA 5") + B(25) + QStringLiteral("      05,00"),
            J({"10/03/2026", B(3) + "B", B(5) + "0003-00000001", kDesconocido, "desconocido!" + B(38),
               B(5) + "12,34", B(4) + "100,00", B(5) + "00,00", B(5) + "27,00", B(4) + "139,34"}),
            J({B(10), B(4), B(18), B(11), B(42) + "Totales:", B(5) + "62,34", B(3) + "1300,00",
               B(5) + "30,00", B(4) + "263,00", B(3) + "1655,34"}),
        } + QStringLiteral("NETO GRAVADO 10,5% 200,00|IVA 10,5% 21,00|NETO GRAVADO 21% 1000,00|IVA 21% 210,00|NETO GRAVADO OTROS "
                           "100,00|IVA OTROS 05,00|INGRESOS BRUTOS 30,00|NO GRAVADOS/EXENTOS 62,34|TOTAL 1655,34").split(u'|');
        QCOMPARE(libro::CortarLineas(libro::ComponerLibro(S())), libro::CortarLineas(Texto(esperado)));

        // April has no invoice.
        libro->Periodo(kEmpresa, QStringLiteral("01/04/2026"));
        const QStringList vacio = QStringList{
            kTitulos, kRegla, kSubtitulo, kSubregla,
            J({B(10), B(4), B(18), B(11), B(42) + "Totales:", B(5) + "00,00", B(5) + "00,00",
               B(5) + "00,00", B(5) + "00,00", B(5) + "00,00"}),
            // The two aggregates without grouping always bring a row; their null sums show 00,00.
        } + QStringLiteral("NETO GRAVADO OTROS 00,00|IVA OTROS 00,00|INGRESOS BRUTOS 00,00|NO GRAVADOS/EXENTOS 00,00|TOTAL 00,00").split(u'|');
        QCOMPARE(libro::CortarLineas(libro::ComponerLibro(S())), libro::CortarLineas(Texto(vacio)));

        // A rate whose only line holds no amount sums to null: 00,00 too, as in the spreadsheet.
        libro->Factura(kEmpresa, kFerreteria, "01/04/2026", "02/04/2026", "A", "0001-00000100", 0, 0, 0, 0);
        libro->Ejecutar(QStringLiteral("insert into IVC_DetIVA values ('%1','%2','0001-00000100',1,27,'IVA 27',NULL)")
                            .arg(kEmpresa, kFerreteria));
        QVERIFY(libro::ComponerLibro(S()).contains(QStringLiteral("NETO GRAVADO 27% 00,00\r\nIVA 27% 00,00\r\n")));
    }
    void paginas_data()
    {
        QTest::addColumn<int>("lineas");
        QTest::addColumn<int>("porHoja");
        QTest::addColumn<QList<int>>("cuerpos");
        QTest::addColumn<int>("hojas");
        QTest::newRow("100 at 30") << 100 << 30 << QList<int>{27, 27, 27, 19} << 4;
        QTest::newRow("below 5: one a page") << 2 << 3 << QList<int>{1, 1} << 2;
        // The count says two pages, the body fills one: the second page's header and footer
        // follow on the same sheet, no new page before them.
        QTest::newRow("a page beyond the body") << 27 << 30 << QList<int>{27, 0} << 1;
    }
    void paginas()
    {
        QFETCH(int, lineas);
        QFETCH(int, porHoja);
        QFETCH(QList<int>, cuerpos);
        QFETCH(int, hojas);
        QStringList numeradas;
        for (int i = 1; i <= lineas; ++i)
            numeradas << QStringLiteral("linea %1").arg(i);
        ImpresoraGrabadora imp;
        libro::ImprimirPaginas(imp, numeradas.join(QStringLiteral("\r\n")), QStringLiteral("ENC"), 9, qint16(porHoja));

        QCOMPARE((QStringList{imp.FontName(), QString::number(imp.documentos), QString::number(imp.hojas.size())}),
                 (QStringList{"Courier New", "1", QString::number(hojas)}));
        QStringList textos;
        for (int h = 0; h < cuerpos.size(); ++h) {
            // Every page but the last is full.
            textos << QString() << QStringLiteral("ENC") << QString() << numeradas.mid(cuerpos[0] * h, cuerpos[h]);
            const QString pie = QStringLiteral("Pagina %1 de %2").arg(h + 1).arg(cuerpos.size());
            textos << B(149 - int(pie.size())) + pie;
            if (hojas == cuerpos.size()) // a sheet a page: each sheet ends with its page's footer
                QCOMPARE(imp.Textos(h).size(), 3 + cuerpos[h] + 1);
        }
        QCOMPARE(imp.Textos(), textos);
    }
    void salidasDelComandoImprimir()
    {
        Ancho();
        // 4 + 40 invoices + 1 detail + 8 closing lines + the empty one after the last CR LF = 54 lines; 22 a page.
        ImpresoraGrabadora grabadora;
        QVERIFY(ImprimirLibro(S(), grabadora, 9, 25));
        QCOMPARE(QPair(grabadora.documentos, grabadora.hojas.size()), QPair(1, qsizetype(3)));
        // The first page opens with the company's name in capitals, its CUIT and the period.
        const QString encabezado = QStringLiteral("DISTRIBUIDORA ÑANDÚ DEL LITORAL S.A. - CUIT: 20111111112") + B(56) +
                                   QStringLiteral(" Desde: 01/03/2026 hasta 31/03/2026");
        QCOMPARE(grabadora.Textos(0).mid(0, 4), (QStringList{QString(), encabezado, QString(), kTitulos}));

        // The text file: the recorded pages in Latin-1, a form feed between them.
        const QString txt = libro->Carpeta() + QStringLiteral("libro.txt");
        ImpresoraTexto texto(txt);
        QVERIFY(ImprimirLibro(S(), texto, 9, 25));
        QString esperado;
        for (int h = 0; h < grabadora.hojas.size(); ++h)
            esperado += (h > 0 ? QStringLiteral("\f") : QString()) + Texto(grabadora.Textos(h));
        QCOMPARE(Leer(txt), esperado.toLatin1());

        // A folder that does not exist: no file, and the error trap's critical message.
        const QString perdida = libro->Carpeta() + QStringLiteral("no/existe/libro.pdf");
        QVERIFY(!ImprimirLibro(S(), *ImpresoraQt::Pdf(perdida), 9, 30) && !QFile::exists(perdida));
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
        QVERIFY(libro->Mensajes().Ultimo().startsWith(QStringLiteral("No se puede crear el archivo")));
    }
    void sinImpresorasVaAPdfEnDocumentos()
    {
        if (!QPrinterInfo::availablePrinters().isEmpty())
            QSKIP("this machine has printers: F12 would print on paper");
        QTemporaryDir casa;
        const QByteArray home = qgetenv("HOME"), config = qgetenv("XDG_CONFIG_HOME");
        qputenv("HOME", casa.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", (casa.path() + QStringLiteral("/.config")).toLocal8Bit());
        const bool ok = ImprimirLibro(S(), 9, 30);
        qputenv("HOME", home);
        qputenv("XDG_CONFIG_HOME", config);
        const QString ruta = casa.path() + QStringLiteral("/Documents/Libro IVA Compras 20111111112 2026-03.pdf");
        QVERIFY(ok && Leer(ruta).startsWith("%PDF"));
        QCOMPARE(QPair(libro->Mensajes().UltimoEstilo(), libro->Mensajes().Ultimo().endsWith(ruta)),
                 QPair(int(vb::vbInformation), true));
    }
    void anchoPdf_data()
    {
        QTest::addColumn<double>("fuente");
        for (double f : {6.0, 9.0, 11.0, 14.0, 20.0})
            QTest::addRow("fuente %g", f) << f;
    }
    void anchoPdf()
    {
        QFETCH(double, fuente);
        Ancho();
        const QString ruta = libro->Carpeta() + QStringLiteral("libro.pdf");
        auto pdf = ImpresoraQt::Pdf(ruta);
        QVERIFY(ImprimirLibro(S(), *pdf, fuente, 30) && libro->Mensajes().mostrados.isEmpty());
        Completo(ruta);
        // A fixed-pitch font, embedded; at 9 points the sheet is legal size turned to landscape.
        const QByteArray bytes = Leer(ruta);
        QVERIFY(QFontDatabase::isFixedPitch(pdf->FontName()));
        QVERIFY2(bytes.contains(QString(pdf->FontName()).remove(u' ').toLatin1()), qPrintable(pdf->FontName()));
        const auto caja = QRegularExpression(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"))
                              .match(QString::fromLatin1(bytes));
        if (fuente == 9)
            QCOMPARE(QPointF(caja.captured(1).toDouble(), caja.captured(2).toDouble()), QPointF(1008, 612));
    }
    void papelAngosto()
    {
        Ancho();
        const QString ruta = libro->Carpeta() + QStringLiteral("papel.pdf");
        const auto papel = [&] {
            auto p = std::make_unique<QPrinter>(QPrinter::HighResolution);
            p->setOutputFormat(QPrinter::PdfFormat);
            p->setOutputFileName(ruta);
            return ImpresoraQt::Papel(std::move(p));
        };
        // At 9 the legal sheet holds the lines: nothing is asked.
        QVERIFY(ImprimirLibro(S(), *papel(), 9, 30) && libro->Mensajes().mostrados.isEmpty());
        QFile::remove(ruta);

        libro->Mensajes().Responder(vb::vbNo);
        QVERIFY(!ImprimirLibro(S(), *papel(), 14, 30) && !QFile::exists(ruta));
        const QString pregunta = libro->Mensajes().Ultimo();
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbYesNo + vb::vbQuestion));
        const auto m = QRegularExpression(QStringLiteral("^Con la fuente 14 .*\r\nCon la fuente (\\d+) entra completo"
                                                         ".*con la fuente \\1\\?$"),
                                          QRegularExpression::DotMatchesEverythingOption).match(pregunta);
        QVERIFY2(m.hasMatch() && m.captured(1).toInt() < 14 && m.captured(1).toInt() >= 9, qPrintable(pregunta));

        QVERIFY(ImprimirLibro(S(), *papel(), 14, 30));
        Completo(ruta);
    }

private:
    std::unique_ptr<LibroDePrueba> libro;
    Sesion &S() { return libro->S(); }

    // A long company name and 40 invoices of wide amounts from the supplier of the long name.
    void Ancho()
    {
        S().NombreUsuario = QStringLiteral("Distribuidora Ñandú del Litoral S.A.");
        for (int i = 1; i <= 40; ++i)
            libro->Factura(kEmpresa, kLargo, "01/03/2026", "05/03/2026", "A",
                           QStringLiteral("0001-%1").arg(i, 8, 10, QChar(u'0')), 123456.78, 9876.5, 25925.92, 3703.7);
        libro->LineaIVA(kEmpresa, kLargo, "0001-00000001", 1, 21, "Iva del 21:", 25925.92);
    }
    // The lines that must come out of the PDF whole: the totals line, "hasta" and its date, each
    // footer.
    void Completo(const QString &pdf)
    {
        QProcess p;
        p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        QVERIFY2(p.waitForFinished(60000) && p.exitCode() == 0, qPrintable(p.errorString() + p.readAllStandardError()));
        const QString texto = QString::fromUtf8(p.readAllStandardOutput());
        const QStringList lineas = libro::CortarLineas(libro::ComponerLibro(S()));
        const auto totales = [](const QStringList &l) { return l.filter(u"Totales:").value(0).simplified(); };
        QVERIFY(!totales(lineas).isEmpty());
        QCOMPARE(totales(texto.split(u'\n')), totales(lineas));
        const int paginas = libro::TotalPaginas(lineas.size(), 30);
        QCOMPARE(texto.count(QStringLiteral("hasta ") + S().PeriodoHasta), paginas);
        for (int i = 1; i <= paginas; ++i)
            QVERIFY2(texto.contains(QStringLiteral("Pagina %1 de %2").arg(i).arg(paginas)), qPrintable(texto));
    }
};

QTEST_MAIN(TstLibroImpreso)
#include "tst_libroimpreso.moc"
