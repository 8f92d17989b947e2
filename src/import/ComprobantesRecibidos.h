#pragma once
// The tax authority's list of the electronic vouchers a company received ("Mis Comprobantes
// Recibidos"), as downloaded from its site: the current XLSX form (one sheet: a title ending in
// "- CUIT " and the company's 11 digits, the headings, one row per voucher) and the older CSV
// form separated by ";". The form is told by the headings, never by the file name.

#include <QDate>
#include <QString>
#include <QVector>

namespace recibidos {

// The VAT of one rate of a voucher: its taxed amount and its VAT.
struct Alicuota {
    double tasa = 0;
    double neto = 0;
    double iva = 0;
};

struct Comprobante {
    int fila = 0;             // row of the file, as a spreadsheet numbers it
    QDate fecha;
    int codigo = 0;           // the authority's voucher code (1 Factura A, 6 Factura B...)
    QString nombreTipo;       // its name as the file gives it ("Factura A")
    QString tipoLibro;        // the book's voucher type; empty when the book cannot keep it
    int puntoVenta = 0;
    qint64 numero = 0;
    QString cuitEmisor;       // the supplier's CUIT, digits only
    QString denominacion;     // the supplier's name
    QString moneda;
    double tipoCambio = 1;
    // Amounts in pesos (a voucher in another currency is converted with its exchange rate).
    double netoGravado = 0;
    double noGravado = 0;
    double exento = 0;
    double otrosTributos = 0;
    double iva = 0;
    double total = 0;
    // The rates with a taxed amount or a VAT, from 0 % to 27 %, in the file's order. The older
    // form gives no breakdown: then porTasa is false and the list is empty.
    QVector<Alicuota> alicuotas;
    bool porTasa = false;

    // The number as the book keeps it: the point of sale with 4 digits (5 when it needs
    // them), "-" and the number with 8 digits ("0008-00064944").
    QString NumeroLibro() const;
    // "tipo 3 - Nota de Crédito A", for the messages about the voucher.
    QString DescripcionTipo() const;
};

struct Lista {
    QString forma;         // the file type and the form of its headings: "XLSX, forma actual",
                           // "CSV, forma anterior"...
    QString cuitReceptor;  // the CUIT of the title (digits); empty when the file has no title
    QVector<Comprobante> comprobantes;
};

// A file that cannot be read as the list: the message says why, in the system's words.
struct ErrorLectura {
    QString mensaje;
};

// Reads the list from a file of either form. Throws ErrorLectura.
Lista Leer(const QString &ruta);

// The file as the reconciliation names it: "Archivo: lista.xlsx (XLSX, forma actual, 12
// comprobantes)".
QString DescripcionArchivo(const QString &ruta, const Lista &lista);

// The book's voucher type of an authority code: 1 A, 2 NDA, 6 B, 11 C, 81 TIQUE FCA,
// 82 TIQUE FCB, 83 TIQUE; empty for any other.
QString TipoLibro(int codigo);

// Digits of a text (a CUIT written with or without dashes).
QString Digitos(const QString &s);

// A heading as it is compared: lower case, without accents and surrounding blanks.
QString NormalizarTitulo(const QString &s);

} // namespace recibidos
