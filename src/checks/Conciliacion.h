#pragma once
// The reconciliation of the book with the tax authority's list of received vouchers: what the
// list holds and the book does not, what the book holds for the period and the list does not,
// and what both hold with different amounts. Vouchers are matched by supplier CUIT, type and
// the numeric point of sale and number ("0008-00064944" is "8-64944"), over every period.
// Also the loading of the missing vouchers into the current period, as the add window would
// have left each one.

#include "import/ComprobantesRecibidos.h"

#include <QDate>
#include <QString>
#include <QVector>

struct Sesion;

namespace conciliacion {

// One amount compared: the book's value, the file's and their difference (file - book).
struct Diferencia {
    QString concepto; // "Gravado", "No gravado", "IVA", "IVA 21%", "Total"
    double libro = 0;
    double archivo = 0;
    double Importe() const { return archivo - libro; }
};

// A voucher of the file that the book does not hold in this period.
struct Faltante {
    recibidos::Comprobante c;
    QString periodoCargada; // "mm/yyyy" when the book holds it in another period
    // Why it cannot be brought in ("no se puede cargar (tipo 3 - Nota de Crédito A)", "ya
    // cargada en el período 10/2026"); empty when it can.
    QString Observacion() const;
    bool Cargable() const { return Observacion().isEmpty(); }
    // Its "Otros Tributos" go into a gross-income line, to be reviewed.
    bool Revisar() const { return c.otrosTributos != 0; }
    // The remark of Revisar() ("Revisar: otros tributos 30,00 como Ingresos Brutos"); empty
    // when there is nothing to review.
    QString Revision() const;
    // Observacion() and Revision(), those not empty, joined by " - ": what the list shows.
    QString Observaciones() const;
};

// An invoice of the book as the reconciliation reads it.
struct FacturaLibro {
    QString proveedor;       // PRVSNRCUIT as the book keeps it
    QString nombre;          // PRVSNOMBRE
    QString tipo;            // IVCSTIPFAC
    QString numero;          // IVCSNROFAC
    QDate fecha;
    double gravado = 0, noGravado = 0, iva = 0, ingBrutos = 0;
    double Total() const { return gravado + noGravado + iva + ingBrutos; }
};

struct Distinta {
    recibidos::Comprobante c;
    FacturaLibro libro;
    QVector<Diferencia> diferencias;
};

struct Resultado {
    QVector<Faltante> faltantes;          // in the file, not in the book (this period)
    QVector<FacturaLibro> soloEnLibro;    // in the book for this period, not in the file
    QVector<Distinta> distintas;          // in both, with different amounts
    int iguales = 0;                      // in both, equal
    bool Coinciden() const { return faltantes.isEmpty() && soloEnLibro.isEmpty() && distintas.isEmpty(); }
};

// The file's title names another company than the current one.
struct ErrorEmpresa {
    QString mensaje;
};

// Reconciles the list with the session's company and period. A voucher's untaxed amount is
// its untaxed plus exempt amounts and what its total holds beyond its parts, as Cargar keeps
// it. Throws ErrorEmpresa when the title's CUIT is not the company's; the book's errors
// (oDB::ErrorBD) pass through.
Resultado Conciliar(Sesion &s, const recibidos::Lista &lista);
// Reads the file (recibidos::Leer, into lista) and reconciles it, the book being read at the
// same time. Throws as Leer and Conciliar do.
Resultado LeerYConciliar(Sesion &s, const QString &archivo, recibidos::Lista &lista);

// The three groups and their counts as text lines, or as CSV rows (checks/Csv.h) with a heading
// (enCsv), for the command line.
QString Informe(const Resultado &r, bool enCsv);

// Brings the chosen missing vouchers into the session's period, in one transaction: all or
// none. Suppliers missing from PRV are created with the name of the file. A voucher whose
// number the supplier already has in any period is left out. Returns how many went in.
// Throws oDB::ErrorBD (nothing written then).
int Cargar(Sesion &s, const QVector<recibidos::Comprobante> &elegidos);

// "Comprobantes cargados en el período 11/2026: 2.", after Cargar in the session's period.
QString TextoCargados(const Sesion &s, int cargados);
// "No se pudo conciliar: " and why.
QString TextoNoSePudo(const QString &motivo);


} // namespace conciliacion
