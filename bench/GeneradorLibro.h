#pragma once
// A large book for the benchmark programs: 50 companies, 120 monthly periods (January 2016 to
// December 2025), 1,000,000 invoices with about two VAT lines each, their taxed-amount lines and
// some gross-income lines. Most company periods hold about 163 invoices; two chosen ones hold
// 2,000 and 20,000. The book is written once with the bare SQLite API and reused while it is
// complete.

#include <QString>
#include <memory>

struct Sesion;

namespace banco {

// A company and period of the large book.
struct PeriodoMedido {
    QString cuit;         // USRSNRCUIT of the company
    QString nombre;       // USRSNOMBRE
    QString periodo;      // the period as the session holds it, "01/mm/yyyy"
    long facturas = 0;    // invoices of the company in that period
};

struct LibroGrande {
    QString carpeta;              // folder of personal.mdb and kestrel.mdb, ending in "/"
    long facturas = 0;            // invoices of the whole book
    PeriodoMedido periodo2000;    // the company period with 2,000 invoices
    PeriodoMedido periodo20000;   // the company period with 20,000 invoices
    PeriodoMedido periodoComun;   // an ordinary company period (about 163 invoices)
    bool reusado = false;         // the book was already there and complete
};

// The folder used when none is given: $IVC_BENCH_DIR, or "ivacompras-bench" in the system's
// temporary folder.
QString CarpetaPorDefecto();

// Creates the book in carpeta (made when missing), or reuses it when a complete one is there.
// An incomplete book (an interrupted run) is removed and written again. Progress goes to
// standard error. Throws oDB::ErrorBD on failure.
LibroGrande GenerarLibroGrande(const QString &carpeta = CarpetaPorDefecto());

// A session connected to the book with the given company and period current, as the company
// and period window leaves it (company fields, Periodo, PeriodoDesde, PeriodoHasta).
std::unique_ptr<Sesion> AbrirSesion(const LibroGrande &libro, const PeriodoMedido &p);

} // namespace banco
