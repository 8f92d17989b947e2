#pragma once
// The F10 export: the period's purchase ledger as a delimited spreadsheet (".xls") and, next
// to it, the two files of the tax authority's purchases regime (RegistrosAFIP.h). One walk
// over the period's invoices builds the three texts; they are written at the end,
// spreadsheet first, each whole or not at all.

#include "reports/RegistrosAFIP.h"

#include <QString>

class QWidget;
struct Sesion;
namespace oDB {
class clManejo;
class Recordset;
} // namespace oDB

// Dotted amount of the spreadsheet: "00.00" with "." for the decimal comma (1234.5 -> 1234.50).
QString ImportePunto(double importe);

// The spreadsheet's lines; sep is the column separator.
QString EncabezadoPlanilla(const QString &sep);
QString FilaPlanilla(const FacturaExportada &f, const QString &sep);

// Running sums of the period, each increased by the invoice's normalised value.
struct TotalesPlanilla {
    double noGravado = 0;
    double gravado = 0;
    double ingBrutos = 0;
    double iva = 0;
    double total = 0;
    void Sumar(const FacturaExportada &f);
};
QString LineaTotales(const TotalesPlanilla &t, const QString &sep);

// Summary lines by rate. tasa is the rate as the book gives it ("10,5"), grav and iva the
// sums of the query (a null sum reads as 0 and shows 00.00).
QString ResumenTasa(const QString &tasa, double grav, double iva, const QString &sep);
QString ResumenOtras(double grav, double iva, const QString &sep);
QString ResumenNoGravado(double ingBrutos, double noGravado, const QString &sep);
QString ResumenTotal(double total, const QString &sep);

// The statements of the run, as texts. The printed ledger builds its summary with the same
// ones.
QString SqlFacturasPeriodo(const QString &cuit, const QString &periodoDesde);
QString SqlNombreProveedor(const QString &cuitProveedor);
QString SqlAlicuota(const QString &cuit, const QString &numero20, const QString &cuitProveedor);
// tasa is one of "10.5", "21", "27".
QString SqlResumenTasa(const QString &tasa, const QString &cuit, const QString &periodoDesde);
QString SqlResumenOtras(const QString &cuit, const QString &periodoDesde);
QString SqlResumenNoGravado(const QString &cuit, const QString &periodoDesde);
// The sub-query of the summary statements that keeps the VAT lines of the company's invoices of
// the period, without its closing parenthesis; condicionExtra goes right after its "where".
QString ExisteEnPeriodo(const QString &cuit, const QString &periodoDesde,
                        const QString &condicionExtra = QString());

// The chosen path made ready: NUL characters removed and ".xls" appended unless the last three
// characters, lower-cased, are "xls".
QString RutaPlanilla(const QString &elegida);
// The path of a tax-authority file: the spreadsheet path without its last four characters,
// then sufijo (" COMPRAS COMPRBTE.txt" or " COMPRAS ALICUOTAS.txt").
QString RutaArchivoAFIP(const QString &planilla, const QString &sufijo);

// Shows the save dialog of the export (Sesion.dialogo) over propietario; the returned name
// without blanks around it, or the empty text when the user cancels.
QString DialogoGuardarReporte(Sesion &s, QWidget *propietario);

// The run started by F10: asks for the path, stores the separator under KESTREL/Config/SepCol,
// walks the invoices of Sesion.CuitUsuario and Sesion.PeriodoDesde and writes the spreadsheet,
// " COMPRAS COMPRBTE.txt" and " COMPRAS ALICUOTAS.txt". Messages go to Sesion.mensajes.
// True when the three files were written (the window ignores it; the command line uses it).
bool GenerarReporte(Sesion &s, QString &SepCol, QWidget *propietario);
