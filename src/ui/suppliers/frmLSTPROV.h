#pragma once
// The supplier window: the list of the suppliers (table PRV) and, below it when adding or
// changing one, the frame of the six entry fields. Driven from the keyboard; the key help at
// the bottom tells the keys of the current face.

#include <QWidget>
#include <vector>

struct Sesion;
class ClCntrl;
class QGroupBox;
class QLabel;
class QLineEdit;
class QTableWidget;

class frmLSTPROV : public QWidget
{
    Q_OBJECT
public:
    // Faces of the window.
    enum { kExaminar = 0, kAgregar = 1, kModificar = 2 };

    // Builds and loads the window (not shown): the grid filled, the browse face on.
    explicit frmLSTPROV(Sesion &s, QWidget *parent = nullptr);
    ~frmLSTPROV() override;

    // (Re)loads the grid from PRV in name order; the last row becomes the current one.
    void lpCargarGRD();
    // Switches to the face 0 (browse), 1 (adding) or 2 (modifying); other values do nothing.
    void lpEstado(int estado);
    // Loads the supplier of the given CUIT into the entry fields.
    void lpMostrarDatos(const QString &cuit);
    // Saves the entry fields (insert when adding, update when modifying); true when a row
    // was written.
    bool lpGuardar();
    // Deletes, after asking, the supplier of the grid's current row.
    void plEliminar();

    // Window keys (seen before the controls see them) and the grid's own keys, as key codes
    // (vb::Tecla); true when the key was handled.
    bool Form_KeyDown(int tecla);
    bool cGRID_KeyDown(int tecla);

    int Estado() const { return estado_; }

    // Rows of the grid as it counts them: the heading row and one per supplier.
    int FilasGrilla() const;

    QLabel *lbTitulo;
    QTableWidget *cGRID;
    QGroupBox *Frame1;
    QLineEdit *txtCUIT;
    QLineEdit *txtNombre;
    QLineEdit *txtDomicilio;
    QLineEdit *txtTelefono;
    QLineEdit *txtMail;
    QLineEdit *txtContacto;
    QLabel *lbTeclas;

protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;
    void keyPressEvent(QKeyEvent *e) override;
    void showEvent(QShowEvent *e) override;

private:
    void Form_Load();
    // Fixes the window's size to what the visible face needs, keeping its top-left corner.
    void AjustarAltura();

    Sesion &s_;
    int estado_ = 0;
    bool ubicada_ = false;
    std::vector<ClCntrl *> controladores_;
};
