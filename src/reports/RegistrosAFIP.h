#pragma once
// The two fixed-width files of the tax authority's purchases regime: the vouchers file
// (one 325-character record per invoice) and the VAT-rates file (one 84-character record per
// invoice), each record followed by CR LF. Everything here is a plain function of the invoice
// values, so the layouts can be checked without a window or a book.

#include <QString>
#include <optional>

// The text without its leading "0" characters ("000" gives the empty text).
QString TrimLZ(const QString &texto);

// count copies of ch; a negative count is the run-time error the platform raised for it
// (oDB::ErrorBD number 5).
QString Repetir(int cantidad, QChar ch);
// The text left-padded with ch to width characters; a text longer than width fails as above.
QString RellenarIzquierda(const QString &texto, int ancho, QChar ch = u'0');

// An amount as the program writes it: formatted with "00.00" ("1234,50").
QString Monto(double importe);
// An amount as the program keeps it: Monto read back (two decimals).
double Normalizar(double importe);

// The 15-digit amount: "00.00" without its comma (a whole number of cents), left-padded with
// "0" to 15. A negative amount keeps its sign inside the padding (-12,50 -> 0000000000-1250).
QString Importe15(double importe);

// Tax-authority code of an invoice type: "A" 001, "B" 006, "C" 011, "99" 099, "TIQUE FCA" 081,
// "TIQUE FCB" 082, "TIQUE" 083, "NDA" 002; empty for any other type (the records then come out
// three characters short).
QString CodigoTipoComprobante(const QString &tipo);

// Tax-authority code of the first VAT rate of the invoice, compared as text ("2,5" 0009,
// "21" 0005, "10,5" 0004, "27" 0006); "0003" for any other rate or when the invoice has no rate
// line (nullopt), and only then sinAlicuota is set.
QString CodigoAlicuota(const std::optional<QString> &tasa, bool &sinAlicuota);

// Types whose untaxed and taxed amounts go into the files ("A", "NDA", "TIQUE FCA", "99");
// the others write zeros there.
bool DiscriminaImportes(const QString &tipo);

// Point of sale and number of an invoice number text.
struct NumeroComprobante {
    QString texto;      // the number text, with "0000-" in front for a type "99" without "-"
    QString puntoVenta; // the last 4 characters of the part before "-", or "0001"
    QString numero;     // the last 6 characters of the part after "-", or the whole text
};
NumeroComprobante SepararNumero(const QString &tipo, const QString &numeroTexto);
// The written fields: "0" + point of sale, and the number left-padded with "0" to 20.
QString CampoPuntoVenta(const NumeroComprobante &n);
QString CampoNumero(const NumeroComprobante &n);

// Field 15 of the voucher record: number of rates and operation code ("1 ", "1n" or "0n").
QString CantidadAlicuotasYOperacion(const QString &tipo, double noGravado, double gravado,
                                    double ingBrutos, bool sinAlicuota, bool gravadoCero);

// One invoice as the export reads it: texts as the formatting component gives them, amounts
// already normalised.
struct FacturaExportada {
    QString fecha;  // IVCFCOMPRO as "dd/mm/yyyy"
    QString tipo;   // IVCSTIPFAC
    QString numero; // IVCSNROFAC as stored
    QString cuit;   // PRVSNRCUIT
    QString nombre; // PRVSNOMBRE, or "desconocido!"
    double noGravado = 0;
    double gravado = 0;
    double iva = 0;
    double ingBrutos = 0;
    std::optional<QString> alicuota; // text of the first IVCDETIVA found; nullopt: no line
    QString descripcion;
    QString descripcionExtra;

    double Total() const { return Normalizar(noGravado + gravado + iva + ingBrutos); }
};

// What one record depends on from the invoices before it: GravadoCero is set or cleared only
// by the invoices of the types that discriminate their amounts and otherwise carries over.
struct EstadoRegistros {
    bool GravadoCero = false;
};

struct RegistrosFactura {
    QString comprobante; // voucher record and CR LF
    QString alicuota;    // rate record and CR LF
};

// The two records of one invoice, in the run's order; updates the state for the next one.
RegistrosFactura ArmarRegistros(const FacturaExportada &f, EstadoRegistros &estado);
