#pragma once
// F8 on the main window: the reconciliation of the period with the tax authority's list of
// received vouchers. The file is asked for with the open dialog; the window shows the three
// groups in one grid, a check box on each missing voucher that can be brought in (all ticked),
// and brings the ticked ones in with F11.

#include "checks/Conciliacion.h"

#include <QDialog>

class Principal;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;
struct Sesion;

class frmCONCILIAR : public QDialog
{
    Q_OBJECT
public:
    // Asks for the file, reads and reconciles it, and shows the window (modal) over padre. A
    // file that cannot be read, or that belongs to another company, is reported in a message
    // box and nothing opens. principal is reloaded after vouchers are brought in.
    static void Abrir(Sesion &s, Principal *principal, QWidget *padre);

    // The window over the list read from archivo and its reconciliation r.
    frmCONCILIAR(Sesion &s, Principal *principal, const QString &archivo, const recibidos::Lista &lista,
                 const conciliacion::Resultado &r, QWidget *padre = nullptr);

    // Space: ticks or clears the box of the current row (only missing vouchers have one).
    void Marcar();
    // F11: brings the ticked vouchers in, reloads the main window and the grid.
    void CargarMarcados();
    // Enter on a book invoice: opens it in the modify window; the grid is read again after.
    void AbrirElegida();

    QLabel *lbArchivo = nullptr;
    QLabel *lbResumen = nullptr;
    QTreeWidget *grdConciliacion = nullptr;
    QLabel *lbTeclas = nullptr;

    // Grid columns.
    enum Columna { cCarga, cFecha, cTipo, cNumero, cCuit, cNombre, cConcepto, cLibro, cArchivo, cDiferencia,
                   cObservacion, cColumnas };

protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;

private:
    // Reconciles again and refills the grid.
    void Conciliar();
    void Llenar();
    QTreeWidgetItem *Grupo(const QString &titulo, int cantidad);

    Sesion &s_;
    Principal *principal_;
    recibidos::Lista lista_;
    conciliacion::Resultado r_;
};
