#pragma once
// "Verificación del período" (F9 on the main window): the findings of the period check of the
// current company and period in a grid, errors first, and under it the whole text of the
// current finding. Not modal. Enter on a finding opens its invoice in the modify window, as
// Enter on the main list does; when that window closes the period is checked again. Esc closes.

#include "checks/Verificacion.h"

#include <QWidget>

class Principal;
class QLabel;
class QTableWidget;
struct Sesion;

class frmVERIFICAR : public QWidget
{
    Q_OBJECT
public:
    // Builds the window and checks the period (not shown). principal is the main window, which
    // the modify window reloads after a save.
    frmVERIFICAR(Sesion &s, Principal *principal, QWidget *parent = nullptr);

    // Checks the period again and refills the grid, keeping the current row where it can.
    void Cargar();
    // Enter on the grid: the invoice of the current finding in the modify window (modal), then
    // the check again.
    void AbrirHallazgo();

    bool Form_KeyDown(int tecla);
    const QList<verificacion::Hallazgo> &Hallazgos() const { return hallazgos_; }

    QLabel *lbTitulo;
    QLabel *lbResumen;
    QTableWidget *grdHallazgos;
    QLabel *lbDetalle;
    QLabel *lbTeclas;

protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    void MostrarDetalle();

    Sesion &s_;
    Principal *principal_;
    QList<verificacion::Hallazgo> hallazgos_;
    QString fallo_; // why the last check could not run; empty when it ran
};

// F9 on the main window: the window of the period check over dueno, brought to the front when
// it is already open, or made and shown.
void AbrirVerificacion(Sesion &s, Principal *principal, QWidget *dueno);
