#pragma once
// The modify-invoice window: changes an invoice that exists in IVC. The main window fills it
// from the selected row of its list (Cargar) and shows it; every save is an update of the row
// found by the supplier and number the invoice had when the window opened (the tags of
// cboIdProv and TxtNumero). It can also move the invoice to another period ("Cambiar").

#include "ui/invoice/VentanaConcepto.h"

#include <functional>

class QScrollBar;

// The values of the main list's selected row that the window opens with.
struct FilaFactura {
    QString fecha;  // "dd/mm/yy", as the list shows it
    QString tipo;
    QString numero;
    QString cuit;   // supplier CUIT
    double gravado = 0;
    double noGravado = 0;
    double ingBrutos = 0;
    double total = 0;
    double ivarin = 0;

    // The row from the texts of the main list's cells, by column (0 date, 1 type, 2 number,
    // 3 CUIT, 5 taxed, 6 untaxed, 8 gross income, 9 total, 10 IVARIN).
    static FilaFactura DeCeldas(const std::function<QString(int)> &celda);
};

class frmMODConcepto : public VentanaConcepto
{
    Q_OBJECT
public:
    frmMODConcepto(Sesion &sesion, Principal *principal, QWidget *parent = nullptr);

    // Fills the header fields and the tags from the selected row; the window reads the rest
    // when it is first shown.
    void Cargar(const FilaFactura &fila);
    // Opens the window over padre on that row, as Enter on the main list does: the session
    // remembers the invoice, and the call returns when the user closes the window.
    static void Abrir(Sesion &s, Principal *principal, QWidget *padre, const FilaFactura &fila);

    bool IVAValidar() override;
    void cmdGuardar_Click() override;
    void cmdCerrar_Click() override;
    void cmdCambiarPeriodo_Click();

    void MostrarDescripcion();
    void Grav_DetList();
    // Decides, once the gross-income lines are listed, whether the invoice is one of the
    // earlier single-amount scheme: an amount in txtINGBRUOld (the list row's) and no lines.
    // Such an invoice shows that amount, read-only, until it is given up.
    void EstablecerTipoIngB();

    // The legacy flag: the invoice opened with a gross-income amount stored on its header.
    bool LegadoIngBrutos() const { return legadoIngBrutos_; }

    QLabel *lbINGBOld = nullptr;
    QLineEdit *txtINGBRUOld = nullptr;
    QComboBox *cboMES = nullptr;
    QLineEdit *TxtYear = nullptr;
    QScrollBar *VScroll = nullptr;
    QPushButton *cmdCambiarPeriodo = nullptr;

protected:
    // The lines are read under the number on screen; the IVARIN rewrite keeps the opening one.
    QString NumeroListadoIVA() const override;
    void AntesDeListarIVA() override { SincronizarProvDesdeId(); }
    // An invoice without VAT lines gets IVARIN 0 written on its header.
    void SinLineasIVA() override { EscribirIVARIN(0); }
    void TrasEliminarIVA() override;
    // "[Total Gravados]" is recognised as written, case included.
    bool EsTotalGravados(const QString &texto) const override;
    QString MsgSinGravadoIVA() const override;
    // This window links its two taxed-amount combos to the input controller as well.
    QList<QComboBox *> CombosEnlazados() const override;
    // An invoice with no gross-income lines gets IVCINGBRU 0 written on its header, except one
    // of the earlier single-amount scheme whose amount has not been given up yet: opening it
    // must not lose that amount before the user answers the question of the save.
    void SinLineasIngBrutos() override;
    // A gross-income line given by its percentage retires the earlier-version amount.
    void AntesDeTomarPorcentajeIB() override { RetirarIngBrutosAnterior(); }
    // F11 saves; Esc closes at once (reloading the main window after a save).
    bool TeclaVentana(int tecla) override;
    void showEvent(QShowEvent *ev) override;

private:
    void Activar();
    // The earlier-version amount given up: "0", and the field and its label hidden.
    void RetirarIngBrutosAnterior();

    bool tipoIngBEstablecido_ = false;
    QString cuitApertura_;
    QString tipoApertura_;
    bool activado_ = false;
    bool legadoIngBrutos_ = false;
};
