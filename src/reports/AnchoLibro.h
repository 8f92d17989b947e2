#pragma once
// The ledger across the page: no figure of a line may be lost at the edge of the sheet. A PDF
// page grows to hold the widest line; on paper that cannot hold it at the chosen size the
// user is asked whether to print at the largest size that fits.

#include <QString>
#include <optional>

struct Sesion;
class Impresora;

namespace libro {

// Whether every line of the ledger fits across imp's page at size fuente (the body and the
// footer at fuente, the header at fuente + 1); a page that can grow makes room for them.
bool Cabe(Impresora &imp, const QString &texto, const QString &encabezado, double fuente);

// The size to print at: fuente when the whole lines fit; otherwise, after the user agreed in a
// Yes/No box naming it, the largest whole size below fuente at which they fit. nullopt when
// the user said no or no size fits (a message then says so).
std::optional<double> FuenteParaElPapel(Sesion &s, Impresora &imp, const QString &texto,
                                        const QString &encabezado, double fuente);

} // namespace libro
