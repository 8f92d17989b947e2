#include "EmpresaDelLibro.h"
#include "common/Archivo.h"
#include "common/ImpresoraGrabadora.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/Impresoras.h"
#include "reports/LibroImpreso.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPdfWriter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QtTest>

// Where the printed ledger goes: a Latin-1 text file, a PDF file, the session's printer, and the
// PDF in the documents folder of a machine without printers.
class TstLibroImpresoSalida : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void textoEnLatin1PorPaginas();
    void pdfApaisadoLegalConLetraFija();
    void pdfHojaLlenaPasaALaSiguiente();
    void pdfEnCarpetaInexistente();
    void lineasEntranEnLaHoja();
    void sinImpresorasVaAPdfEnDocumentos();

private:
    std::unique_ptr<LibroDePrueba> libro;
    Sesion &S() { return libro->S(); }
};

namespace {
const QString kProveedor = QStringLiteral("30222222229");

int PaginasPdf(const QByteArray &pdf)
{
    return int(QString::fromLatin1(pdf).count(QRegularExpression(QStringLiteral("/Type\\s*/Page(?!s)"))));
}
} // namespace

void TstLibroImpresoSalida::init()
{
    libro = std::make_unique<LibroDePrueba>();
    EmpresaDelLibro(*libro);
    libro->Proveedor(kProveedor, QStringLiteral("Ferretería Ñandú"));
    for (int i = 1; i <= 12; ++i) {
        const QString numero = QStringLiteral("0001-%1").arg(i, 8, 10, QLatin1Char('0'));
        libro->Factura(kEmpresa, kProveedor, "01/03/2026", "05/03/2026", "A", numero, 100, 0, 21, 3);
        libro->LineaIB(kEmpresa, kProveedor, numero, 1, 3, "Percepción", 3);
        libro->LineaIVA(kEmpresa, kProveedor, numero, 1, 21, "IVA 21", 21);
    }
}

void TstLibroImpresoSalida::cleanup() { libro.reset(); }

void TstLibroImpresoSalida::textoEnLatin1PorPaginas()
{
    const QString ruta = libro->Carpeta() + QStringLiteral("libro.txt");
    ImpresoraTexto texto(ruta);
    QVERIFY(ImprimirLibro(S(), texto, 9, 25));
    ImpresoraGrabadora grabadora;
    QVERIFY(ImprimirLibro(S(), grabadora, 9, 25));

    // 4 + 36 + 8 closing lines + the empty one after the last CR LF = 49 lines; 22 a page.
    QCOMPARE(grabadora.hojas.size(), 3);
    QString esperado;
    for (int h = 0; h < grabadora.hojas.size(); ++h) {
        if (h > 0)
            esperado += u'\f';
        for (const QString &l : grabadora.Textos(h))
            esperado += l + QStringLiteral("\r\n");
    }
    const QByteArray bytes = Leer(ruta);
    QCOMPARE(bytes, esperado.toLatin1());
    QCOMPARE(bytes.count('\f'), 2);
    QVERIFY(bytes.startsWith("\r\nCOMPA\xD1\xCD" "A \xD1" "AND\xDA S.R.L. - CUIT: 20111111112"));
    QVERIFY(bytes.contains("Ferreter\xED" "a \xD1" "and\xFA"));
    QVERIFY(bytes.endsWith("Pagina 3 de 3\r\n"));
}

void TstLibroImpresoSalida::pdfApaisadoLegalConLetraFija()
{
    const QString ruta = libro->Carpeta() + QStringLiteral("libro.pdf");
    auto pdf = ImpresoraQt::Pdf(ruta);
    QVERIFY(ImprimirLibro(S(), *pdf, 9, 25));
    QVERIFY(libro->Mensajes().mostrados.isEmpty());
    QCOMPARE(pdf->Hojas(), 3);

    const QByteArray bytes = Leer(ruta);
    QVERIFY(bytes.startsWith("%PDF"));
    QCOMPARE(PaginasPdf(bytes), 3);
    // Legal size turned to landscape: 14 x 8.5 inches.
    const auto caja = QRegularExpression(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"))
                          .match(QString::fromLatin1(bytes));
    QVERIFY(caja.hasMatch());
    QCOMPARE(caja.captured(1).toDouble(), 1008.0);
    QCOMPARE(caja.captured(2).toDouble(), 612.0);
    QVERIFY(QFontDatabase::isFixedPitch(pdf->FontName()));
    const QString fuente = pdf->FontName();
    QVERIFY2(bytes.contains(QString(fuente).remove(u' ').toLatin1()), qPrintable(fuente));
}

void TstLibroImpresoSalida::pdfHojaLlenaPasaALaSiguiente()
{
    // 200 lines of one page do not fit on a sheet: the rest continue on new sheets.
    const QString ruta = libro->Carpeta() + QStringLiteral("largo.pdf");
    auto pdf = ImpresoraQt::Pdf(ruta);
    QStringList texto;
    for (int i = 0; i < 200; ++i)
        texto << QStringLiteral("linea %1").arg(i);
    libro::ImprimirPaginas(*pdf, texto.join(QStringLiteral("\r\n")), QStringLiteral("ENC"), 9, 300);
    QVERIFY(pdf->Hojas() >= 3);
    QCOMPARE(PaginasPdf(Leer(ruta)), pdf->Hojas());
}

void TstLibroImpresoSalida::pdfEnCarpetaInexistente()
{
    const QString ruta = libro->Carpeta() + QStringLiteral("no/existe/libro.pdf");
    auto pdf = ImpresoraQt::Pdf(ruta);
    QVERIFY(!ImprimirLibro(S(), *pdf, 9, 30));
    QVERIFY(!QFile::exists(ruta));
    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbCritical));
    QVERIFY(libro->Mensajes().Ultimo().startsWith(QStringLiteral("No se puede crear el archivo")));
}

void TstLibroImpresoSalida::lineasEntranEnLaHoja()
{
    // Measured in points on a page set up as the printers set it up: a main line at 9 points
    // and a header at 10 with a company name of 40 characters and a CUIT with its dashes.
    QBuffer nada;
    nada.open(QIODevice::WriteOnly);
    QPdfWriter hoja(&nada);
    hoja.setResolution(72);
    hoja.setPageLayout(QPageLayout(QPageSize(QPageSize::Legal), QPageLayout::Landscape,
                                   QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
    for (auto [puntos, caracteres] : {std::pair{9.0, libro::kAnchoLinea}, std::pair{10.0, 40 + 9 + 13 + 56 + 35}}) {
        QFont f(ImpresoraQt::FamiliaFija(QStringLiteral("Courier New")));
        f.setPointSizeF(puntos);
        QVERIFY(QFontMetricsF(f, &hoja).horizontalAdvance(QString(caracteres, u'M')) <= hoja.width());
    }
}

void TstLibroImpresoSalida::sinImpresorasVaAPdfEnDocumentos()
{
    if (!QPrinterInfo::availablePrinters().isEmpty())
        QSKIP("this machine has printers: F12 would print on paper");
    QTemporaryDir casa;
    const QByteArray home = qgetenv("HOME"), config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", casa.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (casa.path() + QStringLiteral("/.config")).toLocal8Bit());
    const QString ruta = RutaLibroPdf(S());
    const bool ok = ImprimirLibro(S(), 9, 30);
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", config);

    QVERIFY(ok);
    QCOMPARE(ruta, casa.path() + QStringLiteral("/Documents/Libro IVA Compras 20111111112 2026-03.pdf"));
    QVERIFY(Leer(ruta).startsWith("%PDF"));
    QCOMPARE(libro->Mensajes().mostrados.size(), 1);
    QCOMPARE(libro->Mensajes().UltimoEstilo(), int(vb::vbInformation));
    QVERIFY(libro->Mensajes().Ultimo().endsWith(ruta));
}

QTEST_MAIN(TstLibroImpresoSalida)
#include "tst_libroimpreso_salida.moc"
