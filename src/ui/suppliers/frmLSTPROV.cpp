#include "ui/suppliers/frmLSTPROV.h"

#include "app/core/Servicios.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "data/oDB.h"
#include "ui/common/CerrarVentana.h"
#include "ui/common/ClCntrl.h"
#include "ui/common/Teclas.h"

#include <QFormLayout>
#include <QFrame>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const QString kTeclasExaminar = QStringLiteral("[INS] Agregar - [ENTER] Modificar - [DEL] Eliminar");
const QString kTeclasAgregar = QStringLiteral("[F11] Agregar - [ESC] Cancelar");
const QString kTeclasModificar = QStringLiteral("[F11] Grabar - [ESC] Cancelar");

// Column widths of the grid's design, in twips (15 to the pixel).
constexpr int kAnchoCuit = 1140;
constexpr int kAnchoNombre = 3135;
constexpr int kTwipsPorPixel = 15;

// Rows the grid shows without scrolling.
constexpr int kFilasVisibles = 14;

QLineEdit *Campo(const char *nombre, QWidget *padre)
{
    auto *txt = new QLineEdit(padre);
    txt->setObjectName(QString::fromLatin1(nombre));
    return txt;
}

} // namespace

frmLSTPROV::frmLSTPROV(Sesion &s, QWidget *parent) : QWidget(parent), s_(s)
{
    setObjectName(QStringLiteral("frmLSTPROV"));
    setWindowTitle(QStringLiteral("Proveedores"));
    if (parent)
        setWindowFlags(Qt::Window);

    lbTitulo = new QLabel(QStringLiteral("Proveedores"), this);
    lbTitulo->setObjectName(QStringLiteral("lbTitulo"));
    QFont ft = lbTitulo->font();
    ft.setBold(true);
    ft.setPointSizeF(ft.pointSizeF() * 1.4);
    lbTitulo->setFont(ft);

    cGRID = new QTableWidget(0, 2, this);
    cGRID->setObjectName(QStringLiteral("cGRID"));
    cGRID->setHorizontalHeaderLabels({QStringLiteral("CUIT"), QStringLiteral("NOMBRE")});
    cGRID->verticalHeader()->hide();
    cGRID->setEditTriggers(QAbstractItemView::NoEditTriggers);
    cGRID->setSelectionBehavior(QAbstractItemView::SelectRows);
    cGRID->setSelectionMode(QAbstractItemView::SingleSelection);
    cGRID->setTabKeyNavigation(false);
    cGRID->setWordWrap(false);
    cGRID->horizontalHeader()->setHighlightSections(false);
    cGRID->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    cGRID->horizontalHeader()->setStretchLastSection(true);
    cGRID->verticalHeader()->setDefaultSectionSize(cGRID->fontMetrics().height() + 6);

    Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    txtCUIT = Campo("txtCUIT", Frame1);
    txtNombre = Campo("txtNombre", Frame1);
    txtDomicilio = Campo("txtDomicilio", Frame1);
    txtTelefono = Campo("txtTelefono", Frame1);
    txtMail = Campo("txtMail", Frame1);
    txtContacto = Campo("txtContacto", Frame1);
    txtCUIT->setMaximumWidth(txtCUIT->fontMetrics().horizontalAdvance(QStringLiteral("00-00000000-00")) + 16);
    txtTelefono->setMaximumWidth(txtTelefono->fontMetrics().horizontalAdvance(QStringLiteral("0000-000000000000")) + 16);
    auto *campos = new QFormLayout(Frame1);
    campos->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    campos->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    campos->addRow(QStringLiteral("CUIT"), txtCUIT);
    campos->addRow(QStringLiteral("Nombre"), txtNombre);
    campos->addRow(QStringLiteral("Domicilio"), txtDomicilio);
    campos->addRow(QStringLiteral("Telefono"), txtTelefono);
    campos->addRow(QStringLiteral("Mail"), txtMail);
    campos->addRow(QStringLiteral("Contacto"), txtContacto);

    lbTeclas = new QLabel(this);
    lbTeclas->setObjectName(QStringLiteral("lbTeclas"));
    lbTeclas->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lbTeclas->setAlignment(Qt::AlignCenter);
    lbTeclas->setMargin(3);

    // The grid keeps the width of its two design columns (widened enough for a full CUIT
    // and the key help) and a fixed number of visible rows.
    const QFontMetrics fm = cGRID->fontMetrics();
    const int anchoCuit = std::max(kAnchoCuit / kTwipsPorPixel,
                                   fm.horizontalAdvance(QStringLiteral("00-00000000-0")) + 16);
    const int anchoNombre = std::max({kAnchoNombre / kTwipsPorPixel, fm.averageCharWidth() * 40,
                                      lbTeclas->fontMetrics().horizontalAdvance(kTeclasExaminar) + 40 - anchoCuit});
    cGRID->setColumnWidth(0, anchoCuit);
    cGRID->setColumnWidth(1, anchoNombre);
    const int marco = 2 * cGRID->frameWidth();
    cGRID->setFixedWidth(anchoCuit + anchoNombre + marco + cGRID->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    cGRID->setFixedHeight(cGRID->horizontalHeader()->sizeHint().height()
                          + kFilasVisibles * cGRID->verticalHeader()->defaultSectionSize() + marco);

    auto *v = new QVBoxLayout(this);
    v->addWidget(lbTitulo);
    v->addWidget(cGRID);
    v->addWidget(Frame1);
    v->addWidget(lbTeclas);
    // The window is as large as its visible face: it grows and shrinks with Frame1.
    v->setSizeConstraint(QLayout::SetFixedSize);

    setTabOrder(cGRID, txtCUIT);
    setTabOrder(txtCUIT, txtNombre);
    setTabOrder(txtNombre, txtDomicilio);
    setTabOrder(txtDomicilio, txtTelefono);
    setTabOrder(txtTelefono, txtMail);
    setTabOrder(txtMail, txtContacto);

    Form_Load();
}

frmLSTPROV::~frmLSTPROV() = default;

void frmLSTPROV::Form_Load()
{
    for (QLineEdit *txt : findChildren<QLineEdit *>()) {
        auto *ctl = new ClCntrl(this);
        ctl->sLinkText(txt);
        controladores_.push_back(ctl);
    }
    // The window sees the keys before its controls: its filter goes in after theirs.
    for (QWidget *w : findChildren<QWidget *>())
        w->installEventFilter(this);

    lpCargarGRD();
    // A face that is none of the three, so that the switch to browse does its work.
    estado_ = 10;
    lpEstado(kExaminar);
}

int frmLSTPROV::FilasGrilla() const { return cGRID->rowCount() + 1; }

void frmLSTPROV::lpCargarGRD()
{
    try {
        cGRID->clearContents();
        cGRID->setRowCount(0);

        oDB::Recordset rs;
        if (s_.dbLibro->CrearRs(rs, QStringLiteral("select PRVSNRCUIT,PRVSNOMBRE from PRV order by PRVSNOMBRE"))) {
            const int filas = int(rs.RecordCount());
            cGRID->setRowCount(filas);
            const QString clip = rs.GetString(QStringLiteral("\t"), QStringLiteral("\r"), QString());
            // The clip fills the block from the first data row, column 0, to the last cell.
            const QStringList renglones = clip.split(u'\r');
            for (int f = 0; f < filas && f < renglones.size(); ++f) {
                const QStringList celdas = renglones[f].split(u'\t');
                for (int c = 0; c < cGRID->columnCount() && c < celdas.size(); ++c)
                    cGRID->setItem(f, c, new QTableWidgetItem(celdas[c]));
            }
            cGRID->setCurrentCell(filas - 1, 0);
            cGRID->scrollToItem(cGRID->item(filas - 1, 0));
        }
        rs.Close();
    } catch (const oDB::ErrorBD &e) {
        MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral(" seccion lpCargarGRD"));
    }
}

void frmLSTPROV::AjustarAltura()
{
    layout()->activate();
}

void frmLSTPROV::lpEstado(int estado)
{
    switch (estado) {
    case kExaminar:
        if (estado_ == kExaminar)
            return;
        ClCntrl::VaciarTxt(Frame1);
        Frame1->hide();
        AjustarAltura();
        lbTeclas->setText(kTeclasExaminar);
        txtCUIT->setEnabled(true);
        estado_ = kExaminar;
        cGRID->setEnabled(true);
        cGRID->setFocus();
        break;
    case kAgregar:
    case kModificar:
        cGRID->setEnabled(false);
        lbTeclas->setText(estado == kAgregar ? kTeclasAgregar : kTeclasModificar);
        Frame1->show();
        AjustarAltura();
        estado_ = estado;
        // The CUIT stays locked when coming from a modification; the name is then first.
        (txtCUIT->isEnabled() ? txtCUIT : txtNombre)->setFocus();
        break;
    default:
        break;
    }
}

void frmLSTPROV::lpMostrarDatos(const QString &cuit)
{
    try {
        oDB::Recordset rs;
        if (!s_.dbLibro->CrearRs(rs, QStringLiteral("select * from PRV where PRVSNRCUIT = ") + oDB::Q(cuit))) {
            s_.mensajes->MsgBox(QStringLiteral("No se encontro la información para el proveedor seleccionado"),
                                vb::vbExclamation | vb::vbOKOnly);
            return;
        }
        txtCUIT->setText(conv::Texto(rs.Fields(QStringLiteral("PRVSNRCUIT"))));
        txtCUIT->setEnabled(false);
        txtNombre->setText(conv::Texto(rs.Fields(QStringLiteral("PRVSNOMBRE"))));
        txtDomicilio->setText(conv::Texto(rs.Fields(QStringLiteral("PRVSDOMICI"))));
        txtTelefono->setText(conv::Texto(rs.Fields(QStringLiteral("PRVSTELFON"))));
        txtMail->setText(conv::Texto(rs.Fields(QStringLiteral("PRVSEMAIL"))));
        txtContacto->setText(conv::Texto(rs.Fields(QStringLiteral("PRVSCONTAC"))));
        rs.Close();
    } catch (const oDB::ErrorBD &e) {
        MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral(" seccion lpMostrarDatos"));
    }
}

bool frmLSTPROV::lpGuardar()
{
    if (estado_ != kAgregar && estado_ != kModificar)
        return false;
    try {
        if (conv::Trim(txtCUIT->text()).isEmpty() || conv::Trim(txtNombre->text()).isEmpty()) {
            s_.mensajes->MsgBox(QStringLiteral("Debe ingresar como mínimo CUIT y NOMBRE."),
                                vb::vbInformation | vb::vbOKOnly);
            return false;
        }
        QString sql;
        if (estado_ == kAgregar) {
            // Values as typed, blanks included.
            sql = sentencias::AltaProveedor({txtCUIT->text(), txtNombre->text(), txtDomicilio->text(),
                                             txtTelefono->text(), txtMail->text(), txtContacto->text(), conv::Hoy()});
        } else {
            // Every value trimmed, the CUIT of the row too.
            sql = QStringLiteral("UPDATE PRV SET ")
                  + QStringLiteral("PRVSNOMBRE=") + oDB::Q(conv::Trim(txtNombre->text())) + u','
                  + QStringLiteral("PRVSDOMICI=") + oDB::Q(conv::Trim(txtDomicilio->text())) + u','
                  + QStringLiteral("PRVSTELFON=") + oDB::Q(conv::Trim(txtTelefono->text())) + u','
                  + QStringLiteral("PRVSEMAIL=") + oDB::Q(conv::Trim(txtMail->text())) + u','
                  + QStringLiteral("PRVSCONTAC=") + oDB::Q(conv::Trim(txtContacto->text())) + u' '
                  + QStringLiteral("WHERE PRVSNRCUIT = ") + oDB::Q(conv::Trim(txtCUIT->text()));
        }
        if (s_.dbLibro->Ejecutar(sql) > 0) {
            s_.mensajes->MsgBox(QStringLiteral("Datos guardatos correctamente."),
                                vb::vbInformation | vb::vbOKOnly);
            lpCargarGRD();
            return true;
        }
        return false;
    } catch (const oDB::ErrorBD &e) {
        MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral("Seccion [frmLSTPROV.lpGuardar]"));
        return false;
    }
}

void frmLSTPROV::plEliminar()
{
    try {
        if (FilasGrilla() < 2)
            return;
        const int fila = std::max(cGRID->currentRow(), 0);
        cGRID->setCurrentCell(fila, 0);
        const QTableWidgetItem *item = cGRID->item(fila, 0);
        const QString cuit = item ? item->text() : QString();
        if (s_.mensajes->MsgBox(QStringLiteral("Confirma eliminar el Proveedor seleccionado con el CUIT ") + cuit,
                                vb::vbYesNo | vb::vbQuestion)
            == vb::vbNo)
            return;
        if (s_.dbLibro->Ejecutar(QStringLiteral("DELETE FROM PRV WHERE PRVSNRCUIT = ") + oDB::Q(cuit)) > 0)
            lpCargarGRD();
        else
            s_.mensajes->MsgBox(QStringLiteral("No se pudo eliminar el Proveedor seleccionado"),
                                vb::vbExclamation | vb::vbOKOnly);
    } catch (const oDB::ErrorBD &e) {
        MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral(" - seccion[frmlstprov.pleliminar]::"));
    }
}

bool frmLSTPROV::Form_KeyDown(int tecla)
{
    switch (tecla) {
    case vb::vbKeyInsert:
        lpEstado(kAgregar);
        return true;
    case vb::vbKeyF11:
        if (lpGuardar())
            lpEstado(kExaminar);
        return true;
    case vb::vbKeyEscape:
        if (estado_ != kExaminar)
            lpEstado(kExaminar);
        else
            CerrarVentana(this);
        return true;
    default:
        return false;
    }
}

bool frmLSTPROV::cGRID_KeyDown(int tecla)
{
    switch (tecla) {
    case vb::vbKeyReturn:
        if (FilasGrilla() > 1) {
            const int fila = cGRID->currentRow();
            const QTableWidgetItem *item = fila >= 0 ? cGRID->item(fila, 0) : nullptr;
            lpEstado(kModificar);
            lpMostrarDatos(item ? item->text() : QString());
            // The locked CUIT passed the focus on before the data came: the field that has
            // it shows its text selected, as on any entry.
            if (auto *txt = qobject_cast<QLineEdit *>(focusWidget()); txt && Frame1->isAncestorOf(txt))
                txt->selectAll();
        }
        return true;
    case vb::vbKeyDelete:
        plEliminar();
        return true;
    default:
        return false;
    }
}

bool frmLSTPROV::eventFilter(QObject *obj, QEvent *ev)
{
    // The window's keys first, then the grid's own.
    const int tecla = TeclaPulsada(ev);
    if (tecla != 0 && (Form_KeyDown(tecla) || (obj == cGRID && cGRID_KeyDown(tecla))))
        return true;
    return QWidget::eventFilter(obj, ev);
}

void frmLSTPROV::showEvent(QShowEvent *e)
{
    // The first time it opens over the window that opened it, its top a little below that
    // window's top, so the frame has room to grow downwards.
    if (!ubicada_ && parentWidget()) {
        ubicada_ = true;
        const QRect padre = parentWidget()->window()->frameGeometry();
        int x = padre.left() + (padre.width() - width()) / 2;
        int y = padre.top() + 40;
        // Both faces stay on the screen.
        if (const QScreen *pantalla = parentWidget()->screen()) {
            const QRect libre = pantalla->availableGeometry();
            const int alto = height() + (Frame1->isVisible() ? 0 : Frame1->sizeHint().height());
            x = std::clamp(x, libre.left(), std::max(libre.left(), libre.right() - width()));
            y = std::clamp(y, libre.top(), std::max(libre.top(), libre.bottom() - alto - 30));
        }
        move(x, y);
    }
    QWidget::showEvent(e);
}

void frmLSTPROV::keyPressEvent(QKeyEvent *e)
{
    if (Form_KeyDown(CodigoTecla(e)))
        return;
    QWidget::keyPressEvent(e);
}
