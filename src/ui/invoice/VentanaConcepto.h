#pragma once
// What the add and modify invoice windows share: the header fields, the taxed-amount lines
// (IVC_Gravado), the VAT lines (IVC_DetIVA), the gross-income lines (IVC_DetIngBrutos), the
// invoice totals and the window keys. Every line is written to or deleted from the book the
// moment it is entered or removed; the header is written by the window's own header save,
// IVAValidar.
//
// The few places where the two windows behave differently are virtual members, overridden by
// the window that differs.

#include <QDialog>
#include <QString>
#include <functional>
#include <vector>

class ClCntrl;
class Principal;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;
struct Sesion;
namespace oDB {
class clManejo;
class Recordset;
}

// The text of the combo entry that stands for the sum of all taxed amounts.
inline constexpr const char *kTotalGravados = "[Total Gravados]";

class VentanaConcepto : public QDialog
{
    Q_OBJECT
public:
    ~VentanaConcepto() override;

    // Header save: true when the header was written (or nothing more is to be done), false
    // when a check stopped it. Each window has its own.
    virtual bool IVAValidar() = 0;

    // VAT lines.
    void IVADet_Add();
    void IVADet_Eliminar();
    void IVADet_List();
    void IVAModFin();

    // Gross-income lines. A line is given by its percentage, or by its amount alone (the
    // percentage then comes from the taxed amount picked in cboGravadoIngBru); IVCINGBRU of the
    // header is rewritten from the lines after every change.
    void IngBrutosDet_Add();
    void IngresosBrutosDet_Eliminar();
    void IBRDet_List();

    // Taxed amounts and invoice totals.
    void Gravados_Add();
    void Gravados_Del();
    double getTotalGravados() const;
    void CalcularIVA();
    void CalcularIB();
    void calcularTOTAL();

    // "Guardar" and "Cerrar".
    virtual void cmdGuardar_Click() = 0;
    virtual void cmdCerrar_Click() = 0;

    // The saved flag: true after a header save that wrote the row.
    bool Guardado() const { return guardado_; }
    // The VAT total of the lines as the form keeps it for its save.
    double TotalIVA() const { return totalIVA_; }
    // The gross-income total of the lines, kept the same way.
    double TotalIngBrutos() const { return totalIngBrutos_; }

    // Header.
    QLabel *lbTitulo = nullptr;
    QComboBox *cboProv = nullptr;
    QComboBox *cboIdProv = nullptr; // hidden twin of cboProv holding the supplier CUITs
    QLineEdit *TxtFecha = nullptr;
    QComboBox *cboTipo = nullptr;
    QLineEdit *TxtNumero = nullptr;
    QLineEdit *TxtNoGrav = nullptr;
    QLineEdit *txtIVARNI = nullptr;
    QLineEdit *txtIVARIN = nullptr;
    QLineEdit *txtDescripcion = nullptr;
    QLineEdit *txtDescripcionExtra = nullptr;
    // Taxed amounts.
    QLineEdit *TxtGrav = nullptr;
    QListWidget *lstGravado = nullptr;
    QListWidget *lstIdGravado = nullptr; // hidden, the GRAVAD_id of each amount
    QLabel *lbGravTotal = nullptr;
    // VAT lines.
    QComboBox *cboGravadoIVA = nullptr;
    QLineEdit *txtIVCDETIVA = nullptr;
    QLineEdit *txtIVCDETDSC = nullptr;
    QLineEdit *txtIVCDETVLR = nullptr;
    QTreeWidget *lstIVC_DetIVA = nullptr;
    QLabel *lbIVATotal = nullptr;
    // Gross-income lines.
    QGroupBox *fraIngBrutos = nullptr;
    QComboBox *cboGravadoIngBru = nullptr;
    QLineEdit *txtIVC_IngB = nullptr;
    QLineEdit *txtIVC_IngBDesc = nullptr;
    QLineEdit *txtIVC_IngBValor = nullptr;
    QTreeWidget *lstIVC_detIngBru = nullptr;
    QLabel *lbIngBrut = nullptr;
    // Totals, buttons and the key help line.
    QLabel *lbTotalFactura = nullptr;
    QLabel *lbTeclas = nullptr;
    QPushButton *cmdGuardar = nullptr;
    QPushButton *cmdCerrar = nullptr;

protected:
    VentanaConcepto(Sesion &sesion, Principal *principal, const QString &nombre,
                    const QString &titulo, QWidget *parent);

    // --- What differs between the windows -------------------------------------------------
    // The invoice number under which IVADet_List reads the lines (the add window: the number
    // the header was saved under, kept in TxtNumero's tag).
    virtual QString NumeroListadoIVA() const;
    // Before IVADet_List reads the lines (the modify window brings cboProv to cboIdProv).
    virtual void AntesDeListarIVA() {}
    // IVADet_List when the invoice has no VAT lines (the modify window also writes IVARIN 0).
    virtual void SinLineasIVA() {}
    // After a VAT line was deleted and the list reloaded (the modify window refocuses it).
    virtual void TrasEliminarIVA() {}
    // IBRDet_List when the invoice has no gross-income lines: IVCINGBRU 0 is written on the
    // header (the add window does otherwise).
    virtual void SinLineasIngBrutos();
    // IngBrutosDet_Add, for a line given by its percentage, before its values are taken (the
    // modify window retires the amount of an earlier-version invoice there).
    virtual void AntesDeTomarPorcentajeIB() {}
    // Gravados_Add before the amount is written (the add window brings cboProv to cboIdProv).
    virtual void AntesDeAgregarGravado() {}
    // Whether a combo text is the "[Total Gravados]" entry.
    virtual bool EsTotalGravados(const QString &texto) const;
    // CalcularIVA's message when no taxed amount is picked.
    virtual QString MsgSinGravadoIVA() const;
    // The combos linked to the input controller.
    virtual QList<QComboBox *> CombosEnlazados() const;
    // A key of the window (its code as CodigoTecla gives it), seen before its controls; true
    // when it was handled.
    virtual bool TeclaVentana(int tecla) = 0;

    // --- Building --------------------------------------------------------------------------
    // The area under the detail lines where each window puts what only it has.
    QHBoxLayout *zonaPropia() const { return zonaPropia_; }
    // The row under the gross-income lines, beside their total.
    QHBoxLayout *pieIngBrutos() const { return pieIngBrutos_; }
    // Links the input controller, sets the focus order (extra widgets go before the buttons)
    // and takes the window keys; called once by each window when its own controls exist.
    void TerminarArmado(const QList<QWidget *> &extra);
    // The key help line: the keys of the lines, the same on both windows, then the window's own.
    void MostrarTeclas(const QString &propias);
    // A field, a combo and a caption made as every one of the windows is: a named field (an
    // amount right-aligned, a width when given), a named combo (a least width when given), a
    // caption whose Alt + underlined letter moves to its field.
    static QLineEdit *Caja(QWidget *padre, const char *nombre, bool monto = false, int ancho = 0);
    static QComboBox *Combo(QWidget *padre, const char *nombre, int ancho = 0);
    static QLabel *Rotulo(QWidget *padre, const QString &texto, QWidget *campo);

    // --- Shared steps ----------------------------------------------------------------------
    Sesion &S() const { return s_; }
    oDB::clManejo &db() const;
    // A message box with the exclamation icon, OK, no title; false, for "return Aviso(...)".
    bool Aviso(const QString &texto) const;
    // The error report of a procedure's error trap.
    void ReportarError(const QString &descripcion, int numero, const QString &seccion) const;
    QString Seccion(const QString &procedimiento) const;
    // The section text of the gross-income procedures, written all in lower case.
    QString SeccionIB(const QString &procedimiento) const;
    // An error of a calculation (a division by zero), reported by the error trap as the book's
    // and the conversions' errors are.
    struct ErrorCalculo {
        QString descripcion;
        int numero;
    };
    // Runs a procedure under its error trap: an error of the book, of a conversion or of a
    // calculation is reported with the procedure's section text and ends the procedure.
    void ConTrampa(const QString &seccion, const std::function<void()> &f);

    // The session's period formatted "dd-mm-yyyy", the value written into IVCFPERIOD.
    QString PeriodoActual() const;
    // The three conditions that key the taxed amounts of the invoice on screen.
    QString CondicionGravados() const;
    // Fills cboProv and cboIdProv from PRV.
    void CargarProveedores();
    void SincronizarProvDesdeId();
    // The duplicate check over all periods; true on a hit (the message has been shown).
    bool Duplicado(const QString &numero);
    // The first checks of a header save: a supplier (cboIdProv brought to cboProv) and an
    // invoice number; false once the message of the first that fails has been shown.
    bool ControlarProveedorYNumero();
    // The checks of a save over a header already written: both amounts numeric and a changed
    // number not used yet; false once the message of the first that fails has been shown.
    bool ControlarImportesYNumero();
    // "Desea salir sin guardar los datos": true when the user answers yes.
    bool SalirSinGuardar() const;
    // Replaces the apostrophes of both descriptions by "´" and shows the result.
    void ReemplazarApostrofes();
    // Locks TxtNumero while taxed amounts exist.
    void BloquearNumero();
    // Re-reads the sum of the taxed amounts into lbGravTotal.
    void LeerTotalGravados();
    // Rewrites the header's VAT total IVARIN (the invoice saved under TxtNumero's tag).
    void EscribirIVARIN(double suma);
    // Rewrites the header's gross-income total IVCINGBRU (the same row).
    void EscribirIVCINGBRU(double suma);
    // The supplier cannot change while the invoice has VAT or gross-income lines: both are
    // keyed by it.
    void BloquearProveedor();
    // Appends "[Total Gravados]" to a combo, keeping "no entry picked" when none was.
    static void AgregarAlCombo(QComboBox *cbo, int indice, const QString &texto);
    // Appends an amount to a list of amounts, right-aligned.
    static void AgregarMonto(QListWidget *lista, const QString &monto);
    // The main window reloads its list and, when that completed, its totals.
    void RecargarPrincipal();
    // Closes the window (the dialog ends).
    void CerrarVentana();

    bool guardado_ = false;
    double totalIVA_ = 0;
    double totalIngBrutos_ = 0;

    bool eventFilter(QObject *obj, QEvent *ev) override;
    void reject() override;
    void closeEvent(QCloseEvent *ev) override;

private:
    void Armar(const QString &titulo);
    // A key on one of the shared controls (the same key codes); true when it was handled.
    bool TeclaControl(QObject *obj, int tecla);
    // Fills a list of lines from its rows (id, rate, description, value); the sum of the values.
    double LlenarLineas(QTreeWidget *lista, oDB::Recordset &rs, const QString &tasa, const QString &descripcion,
                        const QString &valor) const;
    // The greatest line id of the company and supplier in a line table (over all their
    // invoices); 0 when they have none.
    double IdMaximo(const QString &tabla, const QString &proveedor);
    // Asks for and deletes the selected line of a list from its table; true when a row went.
    bool BorrarLineaElegida(QTreeWidget *lista, const QString &tabla);
    // Writes a total of the lines into a column of the header row.
    void EscribirTotal(const QString &columna, double suma);
    // CalcularIVA and CalcularIB: a line proposed from a taxed amount and a rate.
    void Calcular(QComboBox *base, QLineEdit *tasa, QLineEdit *descripcion, QLineEdit *valor,
                  const QString &sinBase, const QString &prefijo, const QString &medio);

    Sesion &s_;
    Principal *principal_;
    QHBoxLayout *zonaPropia_ = nullptr;
    QHBoxLayout *pieIngBrutos_ = nullptr;
    std::vector<ClCntrl *> controladores_;
    bool cerrando_ = false;
};
