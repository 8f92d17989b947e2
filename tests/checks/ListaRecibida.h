#pragma once
// Lists of received vouchers written as the tax authority publishes them: the current XLSX form
// (written with libzip: workbook, its relations, shared strings, styles and one sheet) and the
// older CSV form.

#include <QDate>
#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <cmath>
#include <numeric>
#include <zip.h>

// One voucher of a list. Its VAT by rate is rate x taxed amount; its total the sum of its parts
// unless given.
struct Recibido {
    QString fecha;               // "dd/mm/yyyy"
    QString tipo;                // "1 - Factura A"
    int punto = 1;
    qint64 numero = 1;
    QString cuit;
    QString nombre;
    QMap<double, double> netos;  // rate -> taxed amount
    double noGravado = 0;
    double exento = 0;
    double otros = 0;
    double total = -1;           // -1: the sum of the parts
    double gravado = -1;         // -1: the sum of the taxed amounts by rate
    // VAT of a rate: rate x taxed amount, rounded to cents.
    static double Iva(double tasa, double neto) { return std::round(neto * tasa) / 100; }
    double NetoTotal() const { return gravado >= 0 ? gravado : std::accumulate(netos.cbegin(), netos.cend(), 0.0); }
    double IvaTotal() const
    {
        return std::accumulate(netos.keyValueBegin(), netos.keyValueEnd(), 0.0,
                               [](double n, const auto &t) { return n + Iva(t.first, t.second); });
    }
    double Total() const { return total >= 0 ? total : NetoTotal() + noGravado + exento + otros + IvaTotal(); }
};

// How the cells of the XLSX are written.
struct FormaXlsx {
    bool fechaSerial = true;   // dates as serial day numbers under a date format (else text)
    bool numerosTexto = false; // amounts as text cells "1234,50"
    bool textosEnLinea = false; // texts as inline strings (else shared strings)
};

inline const QStringList kTitulosXlsx = {
    "Fecha", "Tipo", "Punto de Venta", "Número Desde", "Número Hasta", "Cód. Autorización", "Tipo Doc. Emisor",
    "Nro. Doc. Emisor", "Denominación Emisor", "Tipo Doc. Receptor", "Nro. Doc. Receptor", "Tipo Cambio", "Moneda",
    "Neto Grav. IVA 0%", "IVA 2,5%", "Neto Grav. IVA 2,5%", "IVA 5%", "Neto Grav. IVA 5%", "IVA 10,5%",
    "Neto Grav. IVA 10,5%", "IVA 21%", "Neto Grav. IVA 21%", "IVA 27%", "Neto Grav. IVA 27%", "Neto Gravado Total",
    "Neto No Gravado", "Op. Exentas", "Otros Tributos", "Total IVA", "Imp. Total"};

// The cells of one voucher in the 30 columns (amounts as doubles, texts as QString).
inline QVector<QVariant> CeldasXlsx(const Recibido &r, const QString &receptor)
{
    auto n = [&](double tasa) { return QVariant(r.netos.value(tasa)); };
    auto i = [&](double tasa) { return QVariant(Recibido::Iva(tasa, r.netos.value(tasa))); };
    return {r.fecha, r.tipo, double(r.punto), double(r.numero), double(r.numero), QString("75123456789012"),
            QString("80"), r.cuit, r.nombre, QString("80"), receptor, 1.0, QString("$"), n(0), i(2.5), n(2.5),
            i(5), n(5), i(10.5), n(10.5), i(21), n(21), i(27), n(27), r.NetoTotal(), r.noGravado, r.exento,
            r.otros, r.IvaTotal(), r.Total()};
}

// Writes the XLSX file: the title (ending in "- CUIT " + receptor), the headings and the rows.
// False when libzip failed.
inline bool EscribirXlsx(const QString &ruta, const QString &receptor, const QVector<Recibido> &filas,
                         FormaXlsx forma = {})
{
    QStringList compartidos;
    auto texto = [&](const QString &ref, const QString &t) {
        if (forma.textosEnLinea)
            return QStringLiteral("<c r=\"%1\" t=\"inlineStr\"><is><t>%2</t></is></c>").arg(ref, t.toHtmlEscaped());
        compartidos << t;
        return QStringLiteral("<c r=\"%1\" t=\"s\"><v>%2</v></c>").arg(ref).arg(compartidos.size() - 1);
    };
    auto celda = [&](int f, int c, const QVariant &v) {
        // Columns A to AZ: the 30 of the list and a few more.
        const QString ref = (c < 26 ? QString() : QStringLiteral("A")) + QChar(u'A' + c % 26) + QString::number(f);
        if (v.typeId() == QMetaType::QString && c == 0 && f > 2 && forma.fechaSerial) {
            const QDate d = QDate::fromString(v.toString(), QStringLiteral("dd/MM/yyyy"));
            return QStringLiteral("<c r=\"%1\" s=\"1\"><v>%2</v></c>").arg(ref).arg(QDate(1899, 12, 30).daysTo(d));
        }
        if (v.typeId() == QMetaType::Double) {
            if (forma.numerosTexto)
                return texto(ref, QString::number(v.toDouble(), 'f', 2).replace(u'.', u','));
            return QStringLiteral("<c r=\"%1\" s=\"2\"><v>%2</v></c>").arg(ref, QString::number(v.toDouble(), 'g', 15));
        }
        return texto(ref, v.toString());
    };
    const QString ns = QStringLiteral(" xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"");
    QString hoja = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><worksheet" + ns + "><sheetData>";
    QVector<QVector<QVariant>> tabla{{QStringLiteral("Mis Comprobantes Recibidos - CUIT ") + receptor},
                                     QVector<QVariant>(kTitulosXlsx.begin(), kTitulosXlsx.end())};
    for (const Recibido &r : filas)
        tabla << CeldasXlsx(r, receptor);
    for (int f = 0; f < tabla.size(); ++f) {
        hoja += QStringLiteral("<row r=\"%1\">").arg(f + 1);
        for (int c = 0; c < tabla[f].size(); ++c)
            hoja += celda(f + 1, c, tabla[f][c]);
        hoja += QStringLiteral("</row>");
    }
    hoja += QStringLiteral("</sheetData></worksheet>");
    QString textos = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><sst" + ns + '>';
    for (const QString &t : compartidos)
        textos += QStringLiteral("<si><t>%1</t></si>").arg(t.toHtmlEscaped());
    textos += QStringLiteral("</sst>");
    const QVector<std::pair<const char *, QByteArray>> partes = {
        {"xl/workbook.xml",
         ("<workbook" + ns + " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\"><sheets>"
          "<sheet name=\"Recibidos\" sheetId=\"1\" r:id=\"rId7\"/></sheets></workbook>").toUtf8()},
        {"xl/_rels/workbook.xml.rels",
         "<?xml version=\"1.0\"?><Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
         "<Relationship Id=\"rId1\" Type=\"styles\" Target=\"styles.xml\"/>"
         "<Relationship Id=\"rId7\" Type=\"worksheet\" Target=\"worksheets/hoja.xml\"/></Relationships>"},
        {"xl/styles.xml",
         ("<styleSheet" + ns + "><numFmts count=\"2\"><numFmt numFmtId=\"164\" formatCode=\"dd/mm/yyyy\"/>"
          "<numFmt numFmtId=\"165\" formatCode=\"#,##0.00\"/></numFmts><cellXfs count=\"3\"><xf numFmtId=\"0\"/>"
          "<xf numFmtId=\"164\"/><xf numFmtId=\"165\"/></cellXfs></styleSheet>").toUtf8()},
        {"xl/sharedStrings.xml", textos.toUtf8()},
        {"xl/worksheets/hoja.xml", hoja.toUtf8()}};
    QFile::remove(ruta);
    zip_t *z = zip_open(QFile::encodeName(ruta).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (!z)
        return false;
    for (const auto &[nombre, datos] : partes)
        if (zip_source_t *src = zip_source_buffer(z, datos.constData(), zip_uint64_t(datos.size()), 0);
            !src || zip_file_add(z, nombre, src, ZIP_FL_ENC_UTF_8) < 0)
            return zip_source_free(src), zip_discard(z), false;
    return zip_close(z) == 0; // the buffers are read here, while partes still holds them
}

// The older CSV form: the headings of that form, amounts with a decimal comma, Latin-1. The
// first heading may be written as some copies have it, in capitals without accents.
inline bool EscribirCsv(const QString &ruta, const QVector<Recibido> &filas, bool mayusculas = false)
{
    QStringList lineas{QStringLiteral(
        "\"Fecha de Emisión\";\"Tipo de Comprobante\";\"Punto de Venta\";\"Número Desde\";\"Número Hasta\";"
        "\"Cód. Autorización\";\"Tipo Doc. Emisor\";\"Nro. Doc. Emisor\";\"Denominación Emisor\";\"Tipo Cambio\";"
        "\"Moneda\";\"Imp. Neto Gravado\";\"Imp. Neto No Gravado\";\"Imp. Op. Exentas\";\"Otros Tributos\";\"IVA\";"
        "\"Imp. Total\"")};
    if (mayusculas)
        lineas[0].replace(QStringLiteral("\"Fecha de Emisión\""), QStringLiteral(" FECHA DE EMISION "));
    auto m = [](double v) { return QString::number(v, 'f', 2).replace(u'.', u','); };
    for (const Recibido &r : filas)
        lineas << QStringList{r.fecha, r.tipo, QString::number(r.punto), QString::number(r.numero),
                              QString::number(r.numero), "7512", "80", r.cuit, '"' + r.nombre + '"', "1,00", "$",
                              m(r.NetoTotal()), m(r.noGravado), m(r.exento), m(r.otros), m(r.IvaTotal()), m(r.Total())}
                      .join(u';');
    QFile f(ruta);
    return f.open(QIODevice::WriteOnly) && f.write(lineas.join(QStringLiteral("\r\n")).toLatin1() + "\r\n") > 0;
}
