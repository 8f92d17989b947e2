#pragma once
// The printed purchase ledger (F12): the period's invoices of the current company in fixed
// character columns for a fixed-pitch font, with their gross-income and VAT detail lines, the
// totals and the summary by rate; cut into pages with a header and a footer and sent to a
// printer. Composition and pagination are plain functions; the printer is an Impresora.

#include <QString>
#include <QStringList>

struct Sesion;
class Impresora;

// Column alignment: "I" left-justifies texto in ancho characters (blanks after it), "D"
// right-justifies it (blanks before it). A text longer than ancho is first cut to its first
// ancho characters, and the caller's variable keeps the cut text. Any other mode gives
// "Error en align".
QString align(QString &texto, const QString &modo, qint16 ancho);

namespace libro {

// Width of a main line of the ledger: ten columns separated by one blank.
constexpr int kAnchoLinea = 152;
// Width in which the page footer is right-aligned.
constexpr int kAnchoPie = 149;

// The ledger's own "other rates" statement: zero joins the excluded rates in the list, and the
// sub-query is the plain one of the other summary statements (no condition on the rate).
QString SqlResumenOtrasLibro(const QString &cuit, const QString &periodoDesde);

// The ledger of the session's company (CuitUsuario) and period (PeriodoDesde) as text, every
// line ended by CR LF. Throws oDB::ErrorBD when a statement cannot be built or run.
QString ComponerLibro(Sesion &s);

// The text cut into lines at CR LF. A text ending in CR LF gives an empty last line, as the old
// platform's Split did; it takes its place in the page count like any other line.
QStringList CortarLineas(const QString &texto);

// Pages for n text lines at lineas lines per page: P = n / lineas rounded up, then
// (P * 4 + n) / lineas rounded up (four lines of every page go to the header).
// Throws oDB::ErrorBD ("División por cero", 11) when lineas is 0.
int TotalPaginas(qsizetype n, qint16 lineas);

// Page header: company name in capitals, " - CUIT: ", CUIT, 56 blanks, " Desde: ", first day,
// " hasta ", last day of the period.
QString Encabezado(const Sesion &s);
// Page footer "Pagina n de m", right-aligned in kAnchoPie characters.
QString PiePagina(int pagina, int total);

// Prints the text page by page: "Courier New" at size fuente; on each page the header
// (an empty line and the header line at fuente + 1, then an empty line at fuente), up to
// lineas - 3 body lines (one when lineas is below 5) continuing where the previous page
// stopped, and the footer. A new page follows only while body lines remain; pages of the
// count that the body does not reach still print their header and footer. Ends the document.
void ImprimirPaginas(Impresora &imp, const QString &texto, const QString &encabezado,
                     double fuente, qint16 lineas);

} // namespace libro

// Print entry of the main window: composes the ledger of the session's company and period and
// prints it on imp at the given font size and lines per page. Any failure ends it through its
// error trap (a critical box naming the section, through s.mensajes); what was printed before
// the failure is released. True when the document was printed to its end.
bool ImprimirLibro(Sesion &s, Impresora &imp, double fuente, qint16 lineas);

// F12: prints on s.impresora when the session has one; otherwise on the machine's default
// printer. A machine without any printer gets a PDF file in the user's documents folder
// (RutaLibroPdf), and a message says where it is.
bool ImprimirLibro(Sesion &s, double fuente, qint16 lineas);

// The PDF file of the ledger when there is no printer: "Libro IVA Compras <CUIT> <yyyy-mm>.pdf"
// in the user's documents folder (created when missing).
QString RutaLibroPdf(const Sesion &s);
