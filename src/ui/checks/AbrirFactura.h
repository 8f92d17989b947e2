#pragma once
// Opening one invoice of the current company and period in the modify window by its key
// (supplier CUIT and invoice number), exactly as Enter on the main list opens the selected row:
// the window is filled with the values the list row would hold, the session remembers the
// selected invoice, and the main window reloads its list when the invoice is saved. The windows
// of the checks use it to take the user from a finding to its invoice.

#include <QString>
#include <optional>

class Principal;
class QWidget;
struct FilaFactura;
struct Sesion;

// The main list's row of that invoice (same columns, same texts, read back as Enter reads
// them); nullopt when the current company and period hold no such invoice with a supplier of
// PRV (the main list would not show it either). Throws oDB::ErrorBD when the book fails.
std::optional<FilaFactura> FilaDeFactura(Sesion &s, const QString &cuitProveedor, const QString &numero);

// Sets Sesion.NroFacSeleccionada and Sesion.PrvCuitSeleccionado, opens frmMODConcepto over
// padre, filled from the row, and returns when the user closes it (modal). principal is the
// main window, which the modify window reloads after a save. False, with nothing opened, when
// FilaDeFactura finds no row; the book's errors (oDB::ErrorBD) pass through, nothing opened.
bool AbrirFactura(Sesion &s, Principal *principal, QWidget *padre, const QString &cuitProveedor,
                  const QString &numero);
