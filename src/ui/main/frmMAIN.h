#pragma once
// The main window: the current company and period, the period's invoices and totals, the
// print settings, and the keys that open every other window.

#include "ui/common/Principal.h"

#include <QWidget>

struct Sesion;
class GrillaFlex;
class QLabel;
class QLineEdit;

class frmMAIN : public QWidget, public Principal
{
    Q_OBJECT
public:
    explicit frmMAIN(Sesion &s, QWidget *parent = nullptr);

    // The start-up sequence: components, date, settings, the company and period window
    // (modal), then labels, print fields, list and totals. False when the user left the
    // company and period window with Esc: the program ends then, and this window is never
    // shown.
    bool Form_Load();

    bool RecargarGrilla() override;
    void MostrarTotales() override;

    // Window keys (seen before the controls see them) and the grid's own keys, as key codes
    // (vb::Tecla); true when the key was handled.
    bool Form_KeyDown(int tecla);
    bool Grd_KeyDown(int tecla);

    // The print fields must be numeric (Esc and F12): false after the message of the first
    // field that is not.
    bool ValidarCamposImpresion();

    // Delete on the grid: removes the selected invoice at once.
    void lp_IVCELIMINAR();
    // Enter on the grid: the modify window, filled from the selected row, modal.
    void lp_Modificar();

    Sesion &sesion() const { return s_; }

    QLabel *lbFecha;
    QLabel *lbUSRSNOMBR;
    QLabel *lbIVCFPERIOD;
    QLabel *lbTGrav;
    QLabel *lbTNoGrav;
    QLabel *lbIva21;
    QLabel *lbINGBRU;
    QLabel *LbTot;
    QLabel *Label2;
    QLabel *lbTeclasRevision;
    QLineEdit *txtIMPFuente;
    QLineEdit *txtIMPLinxHoja;
    GrillaFlex *Grd;

protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;
    void keyPressEvent(QKeyEvent *e) override;
    void closeEvent(QCloseEvent *e) override;

private:
    void AbrirOpciones();
    void GuardarYSalir();

    Sesion &s_;
};
