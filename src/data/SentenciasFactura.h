#pragma once
// The statement texts that write an invoice: its header, its taxed-amount lines, its VAT lines,
// its gross-income lines and the header totals rewritten from them. The invoice windows build
// their statements here, and so does every other part of the program that writes an invoice
// as those windows would (the loading of the tax authority's list), so both write the same rows.
// Every value goes between quotes through oDB::Q.

#include <QDate>
#include <QString>

namespace oDB {
class clManejo;
}

namespace sentencias {

// The values of an invoice header as the add window writes them: dates "dd-mm-yyyy", amounts
// as the text of their fields.
struct CabeceraIVC {
    QString empresa;
    QString proveedor;
    QString periodo;
    QString fecha;
    QString tipo;
    QString numero;
    QString noGravado;
    QString gravado;
    QString alta;
    QString descripcion;
    QString descripcionExtra;
};

// "insert into IVC (...) values (...)": IVARNI, IVARIN and IVCINGBRU go in as '0'.
QString AltaIVC(const CabeceraIVC &c);

// The three conditions that key the taxed amounts of an invoice (two blanks before each "and").
QString CondicionGravados(const QString &empresa, const QString &proveedor, const QString &numero);
// "select sum(GRAVAD_Valor) as TotalGravados from IVC_Gravado " + the three conditions.
QString TotalGravados(const QString &empresa, const QString &proveedor, const QString &numero);
// "select max(GRAVAD_id) as MaxId from IVC_Gravado " + the three conditions.
QString IdMaximoGravado(const QString &empresa, const QString &proveedor, const QString &numero);
// One taxed amount, its value through cdbl.
QString AltaGravado(const QString &empresa, const QString &proveedor, const QString &numero, int id,
                    const QString &valor);

// The greatest line id of a company and supplier in a line table (over all their invoices).
QString IdMaximoLinea(const QString &tabla, const QString &empresa, const QString &proveedor);
// Runs IdMaximoGravado or IdMaximoLinea and reads its maximum as the invoice windows read it:
// 0 when there is no row or no value yet.
double LeerIdMaximo(oDB::clManejo &db, const QString &sql);

// A VAT line and a gross-income line: every value quoted, numbers as plain number text.
QString AltaLineaIVA(const QString &empresa, const QString &proveedor, const QString &id, const QString &numero,
                     const QString &tasa, const QString &descripcion, const QString &valor);
QString AltaLineaIngBrutos(const QString &empresa, const QString &proveedor, const QString &id,
                           const QString &numero, const QString &tasa, const QString &descripcion,
                           const QString &valor);

// Rewrites a header total (IVARIN, IVCINGBRU) with the sum of the lines formatted "00.00".
QString TotalCabecera(const QString &columna, double suma, const QString &empresa, const QString &proveedor,
                      const QString &numero);

// A supplier as the supplier window adds it: the texts as given, blanks included.
struct AltaDeProveedor {
    QString cuit;
    QString nombre;
    QString domicilio;
    QString telefono;
    QString email;
    QString contacto;
    QDate alta;
};
// "INSERT INTO PRV(...) values (...)": the entry date through datevalue('dd/mm/yyyy').
QString AltaProveedor(const AltaDeProveedor &p);

// The main list's rows: the period's invoices of a company with their supplier's name, dates
// "dd/mm/yy", amounts "00.00", IIBB as stored and the raw VAT totals last; no order. Enter on a
// finding reads one invoice's row through the same columns.
QString FilasListaPeriodo(const QString &empresa, const QString &periodoDesde);

// The duplicate check over all periods: the entry date, invoice date and period of the number.
QString BuscarDuplicado(const QString &empresa, const QString &proveedor, const QString &numero);

} // namespace sentencias
