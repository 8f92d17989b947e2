// The printed ledger across the page at every font size: read back from the PDF as text
// (pdftotext -layout), the totals line ends with its last amount and every footer and header is
// whole. On paper that cannot hold the lines the user is asked first, and a "no" prints nothing.

#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/Impresoras.h"
#include "reports/LibroImpreso.h"

#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QString kEmpresa = QStringLiteral("20111111112");
const QString kProveedor = QStringLiteral("30111111118");

// The PDF as pdftotext lays it out.
QString Texto(const QString &pdf)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        qFatal("pdftotext failed: %s", qPrintable(p.errorString() + p.readAllStandardError()));
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace

class TstAnchoPagina : public QObject
{
    Q_OBJECT

    std::unique_ptr<LibroDePrueba> libro;
    QTemporaryDir dir;

    // The lines that must come out whole: the totals line, "hasta" and its date, each footer.
    void Completo(const QString &pdf)
    {
        const QString texto = Texto(pdf);
        const QString ledger = libro::ComponerLibro(libro->S());
        const int paginas = libro::TotalPaginas(libro::CortarLineas(ledger).size(), 30);
        const QString totales = libro::CortarLineas(ledger).filter(QStringLiteral("Totales:")).value(0).simplified();
        QVERIFY(!totales.isEmpty());
        const QString leido = texto.split(u'\n').filter(QStringLiteral("Totales:")).value(0).simplified();
        QCOMPARE(leido, totales);
        QCOMPARE(texto.count(QStringLiteral("hasta ") + libro->S().PeriodoHasta), paginas);
        for (int i = 1; i <= paginas; ++i)
            QVERIFY2(texto.contains(QStringLiteral("Pagina %1 de %2").arg(i).arg(paginas)), qPrintable(texto));
    }

private slots:
    void init()
    {
        libro = std::make_unique<LibroDePrueba>();
        libro->Empresa(kEmpresa, QStringLiteral("Distribuidora Ñandú del Litoral S.A."));
        libro->Proveedor(kProveedor, QStringLiteral("Lácteos La Cañada Sociedad Anónima Comercial e Indust"));
        for (int i = 1; i <= 40; ++i)
            libro->Factura(kEmpresa, kProveedor, QStringLiteral("01/11/2026"), QStringLiteral("05/11/2026"), QStringLiteral("A"),
                           QStringLiteral("0001-%1").arg(i, 8, 10, QLatin1Char('0')), 123456.78, 9876.5, 25925.92, 3703.7);
        libro->LineaIVA(kEmpresa, kProveedor, QStringLiteral("0001-00000001"), 1, 21, QStringLiteral("Iva del 21:"), 25925.92);
        libro->Periodo(kEmpresa, QStringLiteral("01/11/2026"));
        libro->S().NombreUsuario = QStringLiteral("Distribuidora Ñandú del Litoral S.A.");
    }

    void pdf_data()
    {
        QTest::addColumn<double>("fuente");
        for (double f : {6.0, 9.0, 11.0, 14.0, 20.0})
            QTest::addRow("fuente %g", f) << f;
    }
    void pdf()
    {
        QFETCH(double, fuente);
        const QString ruta = dir.filePath(QStringLiteral("libro.pdf"));
        QVERIFY(ImprimirLibro(libro->S(), *ImpresoraQt::Pdf(ruta), fuente, 30));
        QVERIFY(libro->Mensajes().mostrados.isEmpty());
        Completo(ruta);
    }

    void papelAngosto()
    {
        const QString ruta = dir.filePath(QStringLiteral("papel.pdf"));
        const auto papel = [&] {
            auto p = std::make_unique<QPrinter>(QPrinter::HighResolution);
            p->setOutputFormat(QPrinter::PdfFormat);
            p->setOutputFileName(ruta);
            return ImpresoraQt::Papel(std::move(p));
        };
        // At 9 the legal sheet holds the lines: nothing is asked.
        QVERIFY(ImprimirLibro(libro->S(), *papel(), 9, 30));
        QVERIFY(libro->Mensajes().mostrados.isEmpty());
        QFile::remove(ruta);

        libro->Mensajes().Responder(vb::vbNo);
        QVERIFY(!ImprimirLibro(libro->S(), *papel(), 14, 30));
        QVERIFY(!QFile::exists(ruta));
        const QString pregunta = libro->Mensajes().Ultimo();
        QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbYesNo + vb::vbQuestion));
        const auto m = QRegularExpression(QStringLiteral("^Con la fuente 14 el libro no entra en el ancho del papel de la "
                                                         "impresora: se perderían columnas.\r\nCon la fuente (\\d+) entra "
                                                         "completo.\r\n\r\n¿Desea imprimirlo con la fuente \\1\\?$"))
                           .match(pregunta);
        QVERIFY2(m.hasMatch(), qPrintable(pregunta));
        QVERIFY(m.captured(1).toInt() < 14 && m.captured(1).toInt() >= 9);

        QVERIFY(ImprimirLibro(libro->S(), *papel(), 14, 30));
        Completo(ruta);
    }
};

QTEST_MAIN(TstAnchoPagina)
#include "tst_anchopagina.moc"
