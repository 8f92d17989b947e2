#pragma once
// The company and period window: opened modally at every start and on F6. It connects both
// books, offers the companies, proposes the last company and period used, and on F11 takes
// the choice into the session and the settings store and refreshes the main window.

#include <QDialog>

struct Sesion;
class Principal;
class ClCntrl;
class QComboBox;
class QLineEdit;
class QScrollBar;

class frmOpciones : public QDialog
{
    Q_OBJECT
public:
    // Loads the window: month names, input control, connections, lf_LeerDatos.
    frmOpciones(Sesion &s, Principal *principal, QWidget *parent = nullptr);

    // Fills the lists and proposes company and period.
    void lf_LeerDatos();
    // Takes the choice into the session and remembers it.
    void lf_GuardarDatos();

    // Window keys (seen before the controls): F11 confirms, Esc cancels.
    bool Form_KeyDown(int tecla);

    QComboBox *cboUSR;
    QComboBox *cboIDUSR;
    QComboBox *cboMES;
    QLineEdit *TxtYear;
    QScrollBar *VScroll1;

    // Bounds of the year spin bar.
    static constexpr int kAnioMinimo = 1900;
    static constexpr int kAnioMaximo = 2100;

public slots:
    // Closing the window any other way than F11 is a cancel, as Esc is.
    void reject() override;

protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    void Form_Load();
    void Confirmar();
    void Cancelar();
    void ProponerPeriodo();

    Sesion &s_;
    Principal *principal_;
    ClCntrl *ctlIDUSR_;
    ClCntrl *ctlYear_;
    bool confirmado_ = false;
};
