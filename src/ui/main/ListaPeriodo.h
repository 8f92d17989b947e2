#pragma once
// The period list of the main window: the totals and rows of the current company and period,
// the grid that shows them and the deletion of an invoice. Everything runs on Sesion.dbLibro.

#include <QString>

struct Sesion;
class GrillaFlex;

// The statements, as they are sent to the book.
QString SqlTotalesPeriodo(const Sesion &s);
QString SqlListaPeriodo(const Sesion &s);
QString SqlEliminarDetIVA(const QString &nroFac, const QString &cuitPrv, const QString &cuitUsr);
QString SqlEliminarIVC(const QString &nroFac, const QString &cuitPrv, const QString &cuitUsr);
QString SqlEliminarGravado(const QString &nroFac, const QString &cuitPrv, const QString &cuitUsr);

// Computes the period totals into the session (TotIvaNoInscripto is always 0) and returns the
// period's invoice rows as a clip text (TAB between fields, CR after each row, NULL as empty);
// filas receives their number. An error ends it quietly with what was computed so far.
QString gf_IVCXUSRPER_CLIP(Sesion &s, long &filas);

// Formats the grid (11 columns) and fills it with the period's rows, the newest in view;
// an empty period shows one blank row. True when it completed.
bool gf_IVCCRGGRDXCLIP(Sesion &s, GrillaFlex &grd);

// Deletes an invoice's VAT lines, its header and its taxed-amount lines (not its gross-income
// lines, and whatever the period); the rows deleted by the last statement, 0 on error.
qint32 gf_IVCELIMCONCEPT(Sesion &s, const QString &nroFac, const QString &cuitPrv,
                         const QString &cuitUsr);

// The grid's columns: header text, width in twips, alignment.
namespace grilla {
constexpr int kColumnas = 11;
struct Columna {
    const char *cabecera; // nullptr: no header
    int twips;            // 0: hidden
    bool izquierdaArriba; // otherwise centred
};
extern const Columna kColumna[kColumnas];
} // namespace grilla
