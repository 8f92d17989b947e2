#include "ui/invoice/VentanaConcepto.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "data/oDB.h"
#include "ui/common/ClCntrl.h"
#include "ui/common/Principal.h"
#include "ui/common/Teclas.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QAbstractItemView>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <cmath>

using conv::CDbl;
using conv::EsNumerico;
using conv::Format;
using conv::Trim;
using oDB::Q;

namespace {

const QString kMoneda = QStringLiteral("00.00");

QString FormatMonto(double n) { return Format(QVariant(n), kMoneda); }
QString FormatTexto(const QString &s, const QString &patron) { return Format(QVariant(s), patron); }

QLabel *Total(QWidget *padre, const char *nombre, const QString &inicial)
{
    auto *l = new QLabel(inicial, padre);
    l->setObjectName(QString::fromLatin1(nombre));
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setMinimumWidth(90);
    l->setFrameShape(QFrame::StyledPanel);
    l->setFrameShadow(QFrame::Sunken);
    l->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

// A report-style list of lines: id, rate, description, value.
QTreeWidget *ListaLineas(QWidget *padre, const char *nombre, const QString &tasa)
{
    auto *l = new QTreeWidget(padre);
    l->setObjectName(QString::fromLatin1(nombre));
    l->setHeaderLabels({QStringLiteral("Id"), tasa, QStringLiteral("Descripcion"), QStringLiteral("Valor")});
    l->setRootIsDecorated(false);
    l->setUniformRowHeights(true);
    l->setAllColumnsShowFocus(true);
    l->setSelectionMode(QAbstractItemView::SingleSelection);
    l->header()->setStretchLastSection(false);
    l->header()->setSectionResizeMode(QHeaderView::Interactive);
    l->header()->setSectionResizeMode(2, QHeaderView::Stretch);
    l->setColumnWidth(0, 40);
    l->setColumnWidth(1, 60);
    l->setColumnWidth(3, 90);
    l->headerItem()->setTextAlignment(1, Qt::AlignRight);
    l->headerItem()->setTextAlignment(3, Qt::AlignRight);
    l->setMinimumHeight(100);
    return l;
}

} // namespace

QLineEdit *VentanaConcepto::Caja(QWidget *padre, const char *nombre, bool monto, int ancho)
{
    auto *t = new QLineEdit(padre);
    t->setObjectName(QString::fromLatin1(nombre));
    if (monto)
        t->setAlignment(Qt::AlignRight);
    if (ancho > 0)
        t->setMaximumWidth(ancho);
    return t;
}

QComboBox *VentanaConcepto::Combo(QWidget *padre, const char *nombre, int ancho)
{
    auto *c = new QComboBox(padre);
    c->setObjectName(QString::fromLatin1(nombre));
    if (ancho > 0)
        c->setMinimumWidth(ancho);
    return c;
}

QLabel *VentanaConcepto::Rotulo(QWidget *padre, const QString &texto, QWidget *campo)
{
    auto *l = new QLabel(texto, padre);
    l->setBuddy(campo);
    return l;
}

VentanaConcepto::VentanaConcepto(Sesion &sesion, Principal *principal, const QString &nombre,
                                 const QString &titulo, QWidget *parent)
    : QDialog(parent), s_(sesion), principal_(principal)
{
    setObjectName(nombre);
    setModal(true);
    Armar(titulo);
}

VentanaConcepto::~VentanaConcepto() = default;

void VentanaConcepto::Armar(const QString &titulo)
{
    setWindowTitle(QStringLiteral("IVA Compras - ") + titulo);
    auto *raiz = new QVBoxLayout(this);

    lbTitulo = new QLabel(titulo, this);
    lbTitulo->setObjectName(QStringLiteral("lbTitulo"));
    QFont ft = lbTitulo->font();
    ft.setBold(true);
    ft.setPointSizeF(ft.pointSizeF() * 1.5);
    lbTitulo->setFont(ft);
    raiz->addWidget(lbTitulo);

    // Header.
    auto *fraFactura = new QGroupBox(QStringLiteral("Factura"), this);
    auto *g = new QGridLayout(fraFactura);
    cboProv = Combo(fraFactura, "cboProv", 260);
    // The supplier list takes the room its row has, never the room of the fields beside it.
    cboProv->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboProv->setMinimumContentsLength(24);
    cboProv->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    cboIdProv = Combo(fraFactura, "cboIdProv");
    cboIdProv->setVisible(false);
    cboIdProv->setFocusPolicy(Qt::NoFocus);
    TxtFecha = Caja(fraFactura, "TxtFecha", false, 110);
    cboTipo = Combo(fraFactura, "cboTipo", 110);
    cboTipo->addItems({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("99"),
                       QStringLiteral("NDA"), QStringLiteral("TIQUE FCA"), QStringLiteral("TIQUE FCB"),
                       QStringLiteral("TIQUE")});
    TxtNumero = Caja(fraFactura, "TxtNumero", false, 170);
    TxtNoGrav = Caja(fraFactura, "TxtNoGrav", true, 110);
    txtIVARNI = Caja(fraFactura, "txtIVARNI", true, 110);
    txtIVARIN = Caja(fraFactura, "txtIVARIN", true, 110);
    txtDescripcion = Caja(fraFactura, "txtDescripcion");
    txtDescripcionExtra = Caja(fraFactura, "txtDescripcionExtra");
    g->addWidget(Rotulo(fraFactura, QStringLiteral("&Proveedor"), cboProv), 0, 0);
    g->addWidget(cboProv, 0, 1, 1, 3);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("&Fecha"), TxtFecha), 0, 4);
    g->addWidget(TxtFecha, 0, 5);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("&Tipo"), cboTipo), 1, 0);
    g->addWidget(cboTipo, 1, 1);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("&Número"), TxtNumero), 1, 2);
    g->addWidget(TxtNumero, 1, 3);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("No &Gravado"), TxtNoGrav), 1, 4);
    g->addWidget(TxtNoGrav, 1, 5);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("&Descripcion"), txtDescripcion), 2, 0);
    g->addWidget(txtDescripcion, 2, 1, 1, 3);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("IVA RNI"), txtIVARNI), 2, 4);
    g->addWidget(txtIVARNI, 2, 5);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("Descripcion E&xtra"), txtDescripcionExtra), 3, 0);
    g->addWidget(txtDescripcionExtra, 3, 1, 1, 3);
    g->addWidget(Rotulo(fraFactura, QStringLiteral("IVA RIN"), txtIVARIN), 3, 4);
    g->addWidget(txtIVARIN, 3, 5);
    g->setColumnStretch(3, 1);
    raiz->addWidget(fraFactura);

    auto *detalle = new QGridLayout;
    raiz->addLayout(detalle, 1);

    // Taxed amounts.
    auto *fraGravados = new QGroupBox(QStringLiteral("Gravados"), this);
    auto *vg = new QVBoxLayout(fraGravados);
    TxtGrav = Caja(fraGravados, "TxtGrav", true);
    lstGravado = new QListWidget(fraGravados);
    lstGravado->setObjectName(QStringLiteral("lstGravado"));
    lstGravado->setMinimumWidth(130);
    lstIdGravado = new QListWidget(fraGravados);
    lstIdGravado->setObjectName(QStringLiteral("lstIdGravado"));
    lstIdGravado->setVisible(false);
    lstIdGravado->setFocusPolicy(Qt::NoFocus);
    lbGravTotal = Total(fraGravados, "lbGravTotal", QStringLiteral("00.00"));
    auto *filaGrav = new QHBoxLayout;
    filaGrav->addWidget(Rotulo(fraGravados, QStringLiteral("Gra&vado"), TxtGrav));
    filaGrav->addWidget(TxtGrav);
    vg->addLayout(filaGrav);
    vg->addWidget(lstGravado, 1);
    auto *pieGrav = new QHBoxLayout;
    pieGrav->addWidget(new QLabel(QStringLiteral("Total Gravado:"), fraGravados));
    pieGrav->addWidget(lbGravTotal);
    vg->addLayout(pieGrav);
    detalle->addWidget(fraGravados, 0, 0, 2, 1);

    // VAT lines.
    auto *fraIVA = new QGroupBox(QStringLiteral("IVA"), this);
    auto *vi = new QVBoxLayout(fraIVA);
    cboGravadoIVA = Combo(fraIVA, "cboGravadoIVA", 130);
    txtIVCDETIVA = Caja(fraIVA, "txtIVCDETIVA", true, 60);
    txtIVCDETDSC = Caja(fraIVA, "txtIVCDETDSC");
    txtIVCDETVLR = Caja(fraIVA, "txtIVCDETVLR", true, 100);
    lstIVC_DetIVA = ListaLineas(fraIVA, "lstIVC_DetIVA", QStringLiteral("IVA %"));
    lbIVATotal = Total(fraIVA, "lbIVATotal", QStringLiteral("00.00"));
    auto *filaIVA = new QHBoxLayout;
    filaIVA->addWidget(Rotulo(fraIVA, QStringLiteral("&Sobre"), cboGravadoIVA));
    filaIVA->addWidget(cboGravadoIVA);
    filaIVA->addWidget(Rotulo(fraIVA, QStringLiteral("&IVA %"), txtIVCDETIVA));
    filaIVA->addWidget(txtIVCDETIVA);
    filaIVA->addWidget(Rotulo(fraIVA, QStringLiteral("Descripcion"), txtIVCDETDSC));
    filaIVA->addWidget(txtIVCDETDSC, 1);
    filaIVA->addWidget(Rotulo(fraIVA, QStringLiteral("Valor"), txtIVCDETVLR));
    filaIVA->addWidget(txtIVCDETVLR);
    vi->addLayout(filaIVA);
    vi->addWidget(lstIVC_DetIVA, 1);
    auto *pieIVA = new QHBoxLayout;
    pieIVA->addStretch(1);
    pieIVA->addWidget(new QLabel(QStringLiteral("Iva Total"), fraIVA));
    pieIVA->addWidget(lbIVATotal);
    vi->addLayout(pieIVA);
    detalle->addWidget(fraIVA, 0, 1);

    // Gross-income lines.
    fraIngBrutos = new QGroupBox(QStringLiteral("Ingresos Brutos"), this);
    auto *vb = new QVBoxLayout(fraIngBrutos);
    cboGravadoIngBru = Combo(fraIngBrutos, "cboGravadoIngBru", 130);
    txtIVC_IngB = Caja(fraIngBrutos, "txtIVC_IngB", true, 60);
    txtIVC_IngBDesc = Caja(fraIngBrutos, "txtIVC_IngBDesc");
    txtIVC_IngBValor = Caja(fraIngBrutos, "txtIVC_IngBValor", true, 100);
    lstIVC_detIngBru = ListaLineas(fraIngBrutos, "lstIVC_detIngBru", QStringLiteral("Ing B %"));
    lbIngBrut = Total(fraIngBrutos, "lbIngBrut", QStringLiteral("00.00"));
    auto *filaIB = new QHBoxLayout;
    filaIB->addWidget(Rotulo(fraIngBrutos, QStringLiteral("S&obre"), cboGravadoIngBru));
    filaIB->addWidget(cboGravadoIngBru);
    filaIB->addWidget(Rotulo(fraIngBrutos, QStringLiteral("Ing &B %"), txtIVC_IngB));
    filaIB->addWidget(txtIVC_IngB);
    filaIB->addWidget(Rotulo(fraIngBrutos, QStringLiteral("Descripcion"), txtIVC_IngBDesc));
    filaIB->addWidget(txtIVC_IngBDesc, 1);
    filaIB->addWidget(Rotulo(fraIngBrutos, QStringLiteral("Valor"), txtIVC_IngBValor));
    filaIB->addWidget(txtIVC_IngBValor);
    vb->addLayout(filaIB);
    vb->addWidget(lstIVC_detIngBru, 1);
    pieIngBrutos_ = new QHBoxLayout;
    pieIngBrutos_->addStretch(1);
    pieIngBrutos_->addWidget(new QLabel(QStringLiteral("Ing Brutos Total"), fraIngBrutos));
    pieIngBrutos_->addWidget(lbIngBrut);
    vb->addLayout(pieIngBrutos_);
    detalle->addWidget(fraIngBrutos, 1, 1);
    detalle->setColumnStretch(1, 1);

    // What only one of the windows has, the invoice total and the buttons.
    auto *pie = new QHBoxLayout;
    zonaPropia_ = new QHBoxLayout;
    pie->addLayout(zonaPropia_);
    pie->addStretch(1);
    auto *rotTotal = new QLabel(QStringLiteral("Total Factura:"), this);
    QFont fg = rotTotal->font();
    fg.setBold(true);
    fg.setPointSizeF(fg.pointSizeF() * 1.2);
    rotTotal->setFont(fg);
    lbTotalFactura = Total(this, "lbTotalFactura", QStringLiteral("00,00"));
    lbTotalFactura->setFont(fg);
    lbTotalFactura->setMinimumWidth(120);
    pie->addWidget(rotTotal);
    pie->addWidget(lbTotalFactura);
    pie->addSpacing(16);
    cmdGuardar = new QPushButton(QStringLiteral("Guardar"), this);
    cmdGuardar->setObjectName(QStringLiteral("cmdGuardar"));
    cmdCerrar = new QPushButton(QStringLiteral("Cerrar"), this);
    cmdCerrar->setObjectName(QStringLiteral("cmdCerrar"));
    // Enter is the entry keys' own: no button of this window is pressed by Enter elsewhere.
    for (QPushButton *b : {cmdGuardar, cmdCerrar}) {
        b->setAutoDefault(false);
        b->setDefault(false);
    }
    pie->addWidget(cmdGuardar);
    pie->addWidget(cmdCerrar);
    raiz->addLayout(pie);

    lbTeclas = new QLabel(this);
    lbTeclas->setObjectName(QStringLiteral("lbTeclas"));
    lbTeclas->setWordWrap(true);
    raiz->addWidget(lbTeclas);

    // The entry boxes whose Enter does something keep it (the input controller leaves it).
    for (QLineEdit *t : {TxtGrav, txtIVCDETIVA, txtIVCDETVLR, txtIVC_IngB, txtIVC_IngBValor})
        SetTag(t, QStringLiteral("BLOCK"));

    // The twin list of CUITs always stands at the supplier picked in cboProv.
    connect(cboProv, &QComboBox::currentIndexChanged, this, [this](int i) {
        cboIdProv->setCurrentIndex(i);
        cboProv->setToolTip(cboProv->currentText());
    });
    connect(cmdGuardar, &QPushButton::clicked, this, [this] { cmdGuardar_Click(); });
    connect(cmdCerrar, &QPushButton::clicked, this, [this] { cmdCerrar_Click(); });

    resize(1000, 700);
}

QList<QComboBox *> VentanaConcepto::CombosEnlazados() const { return {cboProv, cboTipo}; }

void VentanaConcepto::MostrarTeclas(const QString &propias)
{
    // As the main window writes them: the action, then its key by the name on the keyboard.
    // An action and its key never part at the end of a line: only the " - " between them may.
    QStringList teclas = {QStringLiteral("Agregar gravado [Enter]"), QStringLiteral("Calcular desde el gravado [Enter]"),
                          QStringLiteral("Agregar línea (en Valor) [Enter]"),
                          QStringLiteral("Eliminar línea de una lista [Delete]")};
    teclas << propias.split(QStringLiteral(" - "));
    teclas.replaceInStrings(QStringLiteral(" "), QStringLiteral("\u00A0"));
    lbTeclas->setText(teclas.join(QStringLiteral(" - ")));
}

void VentanaConcepto::TerminarArmado(const QList<QWidget *> &extra)
{
    for (QLineEdit *t : {TxtFecha, TxtGrav, TxtNoGrav, TxtNumero, txtIVARNI, txtIVARIN, txtIVCDETIVA,
                         txtIVCDETDSC, txtIVCDETVLR, txtIVC_IngB, txtIVC_IngBDesc, txtIVC_IngBValor}) {
        auto *c = new ClCntrl(this);
        c->sLinkText(t);
        controladores_.push_back(c);
    }
    for (QComboBox *cbo : CombosEnlazados()) {
        auto *c = new ClCntrl(this);
        c->sLinkCBoBox(cbo);
        controladores_.push_back(c);
    }

    // Focus order: the order in which an invoice is entered.
    QList<QWidget *> orden = {cboProv,       TxtFecha,         cboTipo,         TxtNumero,
                              TxtGrav,       lstGravado,       TxtNoGrav,       cboGravadoIVA,
                              txtIVCDETIVA,  txtIVCDETDSC,     txtIVCDETVLR,    lstIVC_DetIVA,
                              cboGravadoIngBru, txtIVC_IngB,   txtIVC_IngBDesc, txtIVC_IngBValor,
                              lstIVC_detIngBru, txtDescripcion, txtDescripcionExtra, txtIVARNI,
                              txtIVARIN};
    orden << extra << cmdGuardar << cmdCerrar;
    for (qsizetype i = 1; i < orden.size(); ++i)
        setTabOrder(orden[i - 1], orden[i]);

    // The window sees its keys before its controls do (installed last, so it runs first).
    installEventFilter(this);
    for (QWidget *w : findChildren<QWidget *>())
        w->installEventFilter(this);
}

oDB::clManejo &VentanaConcepto::db() const { return *s_.dbLibro; }

bool VentanaConcepto::Aviso(const QString &texto) const
{
    s_.mensajes->MsgBox(texto, vb::vbExclamation);
    return false;
}

void VentanaConcepto::ReportarError(const QString &descripcion, int numero, const QString &seccion) const
{
    MostrarError(*s_.mensajes, descripcion, numero, seccion);
}

QString VentanaConcepto::Seccion(const QString &procedimiento) const
{
    return QStringLiteral(" - seccion [MORLA") + objectName() + u'.' + procedimiento + u']';
}

void VentanaConcepto::ConTrampa(const QString &seccion, const std::function<void()> &f)
{
    try {
        f();
    } catch (const oDB::ErrorBD &e) {
        ReportarError(e.descripcion, e.numero, seccion);
    } catch (const conv::ErrorConversion &e) {
        ReportarError(e.descripcion, 13, seccion);
    } catch (const ErrorCalculo &e) {
        ReportarError(e.descripcion, e.numero, seccion);
    }
}

QString VentanaConcepto::SeccionIB(const QString &procedimiento) const
{
    return QStringLiteral(" - seccion [morla.") + objectName().toLower() + u'.' + procedimiento.toLower() + u']';
}

QString VentanaConcepto::PeriodoActual() const { return FormatTexto(s_.PeriodoDesde, QStringLiteral("dd-mm-yyyy")); }

QString VentanaConcepto::CondicionGravados() const
{
    return sentencias::CondicionGravados(s_.CuitUsuario, cboIdProv->currentText(), TxtNumero->text());
}

void VentanaConcepto::CargarProveedores()
{
    oDB::Recordset rs;
    if (db().CrearRs(rs, QStringLiteral("select PRVSNRCUIT,PRVSNOMBRE from PRV order by PRVSNOMBRE"))) {
        for (; !rs.Eof(); rs.MoveNext()) {
            cboProv->addItem(s_.oFormato->EsNull(rs(QStringLiteral("PRVSNOMBRE"))));
            cboIdProv->addItem(s_.oFormato->EsNull(rs(QStringLiteral("PRVSNRCUIT"))));
        }
    }
    rs.Close();
    // A long name shows whole in the drop-down (as wide as the screen allows) and as the
    // tooltip of its entry and of the list; the list itself keeps its width in the window.
    const QFontMetrics fm(cboProv->view()->font());
    int ancho = 0;
    for (int i = 0; i < cboProv->count(); ++i) {
        cboProv->setItemData(i, cboProv->itemText(i), Qt::ToolTipRole);
        ancho = std::max(ancho, fm.horizontalAdvance(cboProv->itemText(i)));
    }
    const int pantalla = screen() ? screen()->availableGeometry().width() - 40 : ancho + 60;
    cboProv->view()->setMinimumWidth(std::min(ancho + 60, pantalla));
    cboProv->setToolTip(cboProv->currentText());
}

void VentanaConcepto::SincronizarProvDesdeId() { cboProv->setCurrentIndex(cboIdProv->currentIndex()); }

bool VentanaConcepto::Duplicado(const QString &numero)
{
    oDB::Recordset rs;
    if (!db().CrearRs(rs, sentencias::BuscarDuplicado(s_.CuitUsuario, cboIdProv->currentText(), numero)))
        return false;
    const QString crlf = QStringLiteral("\r\n");
    Aviso(QStringLiteral("Este Numero de factura ya fue cargada [ ") + TxtNumero->text() + QStringLiteral(" ]") + crlf +
          QStringLiteral("EL DIA ") + conv::Texto(rs(QStringLiteral("alta"))) + crlf +
          QStringLiteral("FECHA DE FACTURA ") + conv::Texto(rs(QStringLiteral("fechafac"))) + crlf +
          QStringLiteral("EL PERIODO ") + Format(rs(QStringLiteral("periodo")), QStringLiteral("mm/yyyy")));
    return true;
}

bool VentanaConcepto::ControlarProveedorYNumero()
{
    cboIdProv->setCurrentIndex(cboProv->currentIndex());
    if (cboIdProv->count() == 0)
        return Aviso(QStringLiteral("Debe seleccionar un Proveedor"));
    if (Trim(TxtNumero->text()).isEmpty())
        return Aviso(QStringLiteral("Debe ingresar un número de factura"));
    return true;
}

bool VentanaConcepto::ControlarImportesYNumero()
{
    if (!EsNumerico(TxtGrav->text()))
        return Aviso(QStringLiteral("El Valor Gravado debe ser númerico"));
    if (!EsNumerico(TxtNoGrav->text()))
        return Aviso(QStringLiteral("El Valor No Gravado debe ser númerico"));
    if (Trim(Tag(TxtNumero)) != Trim(TxtNumero->text()) && Duplicado(TxtNumero->text()))
        return false;
    return true;
}

bool VentanaConcepto::SalirSinGuardar() const
{
    return s_.mensajes->MsgBox(QStringLiteral("Desea salir sin guardar los datos"), vb::vbYesNo + vb::vbQuestion,
                               QStringLiteral("Confirmación")) == vb::vbYes;
}

void VentanaConcepto::ReemplazarApostrofes()
{
    for (QLineEdit *t : {txtDescripcion, txtDescripcionExtra})
        t->setText(QString(t->text()).replace(u'\'', QStringLiteral("´")));
}

void VentanaConcepto::BloquearNumero() { TxtNumero->setReadOnly(lstGravado->count() > 0); }

void VentanaConcepto::LeerTotalGravados()
{
    oDB::Recordset rs;
    db().CrearRs(rs, sentencias::TotalGravados(s_.CuitUsuario, cboIdProv->currentText(), TxtNumero->text()));
    lbGravTotal->setText(FormatMonto(s_.oFormato->EsNumero(rs(QStringLiteral("totalgravados")))));
}

void VentanaConcepto::EscribirTotal(const QString &columna, double suma)
{
    db().Ejecutar(sentencias::TotalCabecera(columna, suma, s_.CuitUsuario, cboIdProv->currentText(), Tag(TxtNumero)));
}

void VentanaConcepto::EscribirIVARIN(double suma) { EscribirTotal(QStringLiteral("IVARIN"), suma); }

void VentanaConcepto::EscribirIVCINGBRU(double suma) { EscribirTotal(QStringLiteral("IVCINGBRU"), suma); }

void VentanaConcepto::BloquearProveedor()
{
    const bool hayLineas = lstIVC_DetIVA->topLevelItemCount() > 0 || lstIVC_detIngBru->topLevelItemCount() > 0;
    cboProv->setEnabled(!hayLineas);
    cboIdProv->setEnabled(!hayLineas);
}

void VentanaConcepto::AgregarAlCombo(QComboBox *cbo, int indice, const QString &texto)
{
    // A combo that had no entry picked keeps none: the user picks the base.
    const bool ninguno = cbo->currentIndex() < 0;
    cbo->insertItem(indice, texto);
    if (ninguno)
        cbo->setCurrentIndex(-1);
}

void VentanaConcepto::AgregarMonto(QListWidget *lista, const QString &monto)
{
    auto *item = new QListWidgetItem(monto, lista);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void VentanaConcepto::RecargarPrincipal()
{
    if (principal_ && principal_->RecargarGrilla())
        principal_->MostrarTotales();
}

void VentanaConcepto::CerrarVentana()
{
    cerrando_ = true;
    done(QDialog::Accepted);
}

// ---------------------------------------------------------------------------------------------
// VAT lines

QString VentanaConcepto::NumeroListadoIVA() const { return Tag(TxtNumero); }

void VentanaConcepto::IVADet_List()
{
    lstIVC_DetIVA->setVisible(false);
    ConTrampa(Seccion(QStringLiteral("IVADet_List")), [this] {
        lstIVC_DetIVA->clear();
        AntesDeListarIVA();
        oDB::Recordset rs;
        double suma = 0;
        if (!db().CrearRs(rs, QStringLiteral("select * from IVC_DetIVA where USRSNRCUIT = ") + Q(s_.CuitUsuario) +
                                  QStringLiteral(" and PRVSNRCUIT = ") + Q(cboIdProv->currentText()) +
                                  QStringLiteral(" and IVCSNROFAC = ") + Q(NumeroListadoIVA()))) {
            BloquearProveedor();
            lbIVATotal->setText(FormatMonto(0));
            SinLineasIVA();
        } else {
            SetTag(lstIVC_DetIVA, QString());
            suma = LlenarLineas(lstIVC_DetIVA, rs, QStringLiteral("IVCDETIVA"), QStringLiteral("IVCDETDSC"),
                                QStringLiteral("IVCDETVLR"));
            BloquearProveedor();
            EscribirIVARIN(suma);
        }
        rs.Close();
        totalIVA_ = CDbl(FormatMonto(suma));
        lbIVATotal->setText(FormatMonto(suma));
    });
    lstIVC_DetIVA->setVisible(true);
}

void VentanaConcepto::IVADet_Add()
{
    ConTrampa(Seccion(QStringLiteral("IVADet_Add")), [this] {
        if (!EsNumerico(txtIVCDETIVA->text())) {
            s_.mensajes->MsgBox(QStringLiteral("Debe ingresar un valor númerico"), vb::vbCritical);
            return;
        }
        if (!EsNumerico(txtIVCDETVLR->text())) {
            s_.mensajes->MsgBox(QStringLiteral("Debe ingresar un valor númerico"), vb::vbOKOnly);
            return;
        }
        if (Trim(txtIVCDETDSC->text()).isEmpty())
            txtIVCDETDSC->setText(QStringLiteral("Iva del ") + txtIVCDETIVA->text() + u':');
        if (!IVAValidar())
            return;

        const double tasa = CDbl(FormatTexto(txtIVCDETIVA->text(), kMoneda));
        const QString descripcion = QString(txtIVCDETDSC->text()).replace(u'\'', u' ');
        const double valor = CDbl(FormatTexto(txtIVCDETVLR->text(), kMoneda));
        const QString proveedor = cboIdProv->currentText();

        const long id = std::lround(IdMaximo(QStringLiteral("IVC_DetIVA"), proveedor) + 1);
        const long n = db().Ejecutar(sentencias::AltaLineaIVA(s_.CuitUsuario, proveedor, QString::number(id),
                                                              TxtNumero->text(), conv::NumeroATexto(tasa), descripcion,
                                                              conv::NumeroATexto(valor)));
        if (n > 0) {
            txtIVCDETIVA->clear();
            txtIVCDETDSC->clear();
            txtIVCDETVLR->clear();
            IVADet_List();
            txtIVCDETIVA->setFocus();
            calcularTOTAL();
        }
    });
}

void VentanaConcepto::IVADet_Eliminar()
{
    ConTrampa(Seccion(QStringLiteral("IVADet_Eliminar")), [this] {
        if (BorrarLineaElegida(lstIVC_DetIVA, QStringLiteral("IVC_DetIVA"))) {
            IVADet_List();
            TrasEliminarIVA();
            calcularTOTAL();
        }
    });
}

void VentanaConcepto::IVAModFin()
{
    SetTag(lstIVC_DetIVA, QString());
    txtIVCDETIVA->clear();
    txtIVCDETDSC->clear();
    txtIVCDETVLR->clear();
    lstIVC_DetIVA->setEnabled(true);
    lstIVC_DetIVA->setFocus();
}

// ---------------------------------------------------------------------------------------------
// What the VAT and the gross-income lines do alike

double VentanaConcepto::LlenarLineas(QTreeWidget *lista, oDB::Recordset &rs, const QString &tasa,
                                     const QString &descripcion, const QString &valor) const
{
    const cFORMAT::MAIN &f = *s_.oFormato;
    double suma = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        auto *item = new QTreeWidgetItem(lista);
        item->setText(0, conv::NumeroATexto(f.EsNumero(rs(QStringLiteral("IVCdetId")))));
        item->setText(1, conv::NumeroATexto(f.EsNumero(rs(tasa))));
        item->setText(2, f.EsNull(rs(descripcion)));
        item->setText(3, conv::NumeroATexto(f.EsNumero(rs(valor))));
        item->setTextAlignment(1, Qt::AlignRight);
        item->setTextAlignment(3, Qt::AlignRight);
        suma += f.EsNumero(rs(valor));
    }
    if (lista->topLevelItemCount() > 0)
        lista->setCurrentItem(lista->topLevelItem(0));
    return suma;
}

double VentanaConcepto::IdMaximo(const QString &tabla, const QString &proveedor)
{
    // Line ids grow over all the invoices of the company and supplier.
    return sentencias::LeerIdMaximo(db(), sentencias::IdMaximoLinea(tabla, s_.CuitUsuario, proveedor));
}

bool VentanaConcepto::BorrarLineaElegida(QTreeWidget *lista, const QString &tabla)
{
    if (lista->topLevelItemCount() == 0)
        return false;
    if (s_.mensajes->MsgBox(QStringLiteral("Confirma eliminar el concepto seleccinado?"), vb::vbYesNo + vb::vbQuestion) !=
        vb::vbYes)
        return false;
    QTreeWidgetItem *item = lista->currentItem();
    if (!item)
        item = lista->topLevelItem(0);
    // Ids are unique per company and supplier: the invoice number is not part of the condition.
    const auto id = qint16(std::lround(CDbl(item->text(0))));
    return db().Ejecutar(QStringLiteral("delete from ") + tabla + QStringLiteral(" where USRSNRCUIT = ") +
                         Q(s_.CuitUsuario) + QStringLiteral(" and PRVSNRCUIT = ") + Q(cboIdProv->currentText()) +
                         QStringLiteral(" and IVCdetId = ") + QString::number(id)) > 0;
}

// ---------------------------------------------------------------------------------------------
// Gross-income lines

void VentanaConcepto::SinLineasIngBrutos() { EscribirIVCINGBRU(0); }

void VentanaConcepto::IBRDet_List()
{
    lstIVC_detIngBru->setVisible(false);
    ConTrampa(SeccionIB(QStringLiteral("IBRDet_List")), [this] {
        lstIVC_detIngBru->clear();
        oDB::Recordset rs;
        double suma = 0;
        // The lines of the number on screen; the header total goes to the row saved under the tag.
        if (!db().CrearRs(rs, QStringLiteral("select * from IVC_DetIngBrutos where USRSNRCUIT = ") +
                                  Q(s_.CuitUsuario) + QStringLiteral(" and PRVSNRCUIT = ") +
                                  Q(cboIdProv->currentText()) + QStringLiteral(" and IVCSNROFAC = ") +
                                  Q(TxtNumero->text()))) {
            BloquearProveedor();
            SinLineasIngBrutos();
        } else {
            SetTag(lstIVC_detIngBru, QString());
            suma = LlenarLineas(lstIVC_detIngBru, rs, QStringLiteral("IVCDETIB"), QStringLiteral("IVCDETIBDSC"),
                                QStringLiteral("IVCDETIBVLR"));
            BloquearProveedor();
            EscribirIVCINGBRU(suma);
        }
        rs.Close();
        totalIngBrutos_ = CDbl(FormatMonto(suma));
        lbIngBrut->setText(FormatMonto(suma));
    });
    lstIVC_detIngBru->setVisible(true);
}

void VentanaConcepto::IngBrutosDet_Add()
{
    ConTrampa(QStringLiteral(" - seccion [morla.ingbrutosdet_add]"), [this] {
        double porcentaje = 0;
        QString descripcion;
        double valor = 0;
        if (EsNumerico(txtIVC_IngB->text())) {
            // Given by its percentage.
            if (!EsNumerico(txtIVC_IngBValor->text())) {
                s_.mensajes->MsgBox(QStringLiteral("Debe ingresar un valor númerico"), vb::vbOKOnly);
                return;
            }
            // The default description is the VAT lines' own, from the VAT rate box.
            if (Trim(txtIVC_IngBDesc->text()).isEmpty())
                txtIVC_IngBDesc->setText(QStringLiteral("Iva del ") + txtIVCDETIVA->text() + u':');
            AntesDeTomarPorcentajeIB();
            porcentaje = CDbl(FormatTexto(txtIVC_IngB->text(), kMoneda));
            descripcion = QString(txtIVC_IngBDesc->text()).replace(u'\'', u' ');
            valor = CDbl(FormatTexto(txtIVC_IngBValor->text(), kMoneda));
        } else {
            // Given by its amount: the percentage is that of the amount over the picked base.
            descripcion = QString(txtIVC_IngBDesc->text()).replace(u'\'', u' ');
            valor = CDbl(FormatTexto(txtIVC_IngBValor->text(), kMoneda));
            // Here "[Total Gravados]" is recognised whatever its case, on both windows.
            const QString texto = cboGravadoIngBru->currentText();
            const double base = VentanaConcepto::EsTotalGravados(texto) ? getTotalGravados() : CDbl(texto);
            if (Trim(descripcion).isEmpty())
                descripcion = QStringLiteral("Ingresos Brutos");
            // A base of 0 is not checked: the division fails and ends the procedure.
            if (base == 0)
                throw valor == 0 ? ErrorCalculo{QStringLiteral("Desbordamiento"), 6}
                                 : ErrorCalculo{QStringLiteral("División por cero"), 11};
            porcentaje = CDbl(FormatMonto(valor * 100 / base));
        }
        if (!IVAValidar())
            return;

        const QString proveedor = cboIdProv->currentText();
        const double id = IdMaximo(QStringLiteral("IVC_detIngBrutos"), proveedor) + 1;
        const long n = db().Ejecutar(sentencias::AltaLineaIngBrutos(s_.CuitUsuario, proveedor, conv::NumeroATexto(id),
                                                                    TxtNumero->text(), conv::NumeroATexto(porcentaje),
                                                                    descripcion, conv::NumeroATexto(valor)));
        if (n > 0) {
            txtIVC_IngB->clear();
            txtIVC_IngBDesc->clear();
            txtIVC_IngBValor->clear();
            IBRDet_List();
            txtIVC_IngB->setFocus();
            calcularTOTAL();
        }
    });
}

void VentanaConcepto::IngresosBrutosDet_Eliminar()
{
    ConTrampa(SeccionIB(QStringLiteral("IngresosBrutosDet_Eliminar")), [this] {
        if (BorrarLineaElegida(lstIVC_detIngBru, QStringLiteral("IVC_DetIngBrutos"))) {
            IBRDet_List();
            lstIVC_detIngBru->setFocus();
            calcularTOTAL();
        }
    });
}

// ---------------------------------------------------------------------------------------------
// Taxed amounts and totals

void VentanaConcepto::Gravados_Add()
{
    ConTrampa(QStringLiteral(" - seccion [MORLA.frmADDConcepto.Gravamentes_Add]"), [this] {
        if (Trim(TxtNumero->text()).isEmpty()) {
            Aviso(QStringLiteral("Primero debe ingresar número de factura"));
            return;
        }
        if (!EsNumerico(TxtGrav->text())) {
            Aviso(QStringLiteral("Debe ingresar un valor númerico."));
            return;
        }
        const double monto = CDbl(TxtGrav->text());
        if (monto == 0) {
            Aviso(QStringLiteral("Debe ingresar un valor mayor a cero"));
            return;
        }
        AntesDeAgregarGravado();
        TxtGrav->setText(FormatMonto(monto));

        const QString maximo = sentencias::IdMaximoGravado(s_.CuitUsuario, cboIdProv->currentText(), TxtNumero->text());
        const auto id = qint16(sentencias::LeerIdMaximo(db(), maximo) + 1);

        const long n = db().Ejecutar(
            sentencias::AltaGravado(s_.CuitUsuario, cboIdProv->currentText(), TxtNumero->text(), id, TxtGrav->text()));
        if (n <= 0)
            return;
        for (QComboBox *cbo : {cboGravadoIngBru, cboGravadoIVA})
            if (cbo->count() == 0)
                AgregarAlCombo(cbo, 0, QString::fromLatin1(kTotalGravados));
        AgregarMonto(lstGravado, TxtGrav->text());
        lstIdGravado->addItem(QString::number(id));
        lstGravado->setCurrentRow(lstGravado->count() - 1);
        // Each amount goes just before "[Total Gravados]", which stays last.
        for (QComboBox *cbo : {cboGravadoIVA, cboGravadoIngBru})
            AgregarAlCombo(cbo, cbo->count() - 1, TxtGrav->text());
        LeerTotalGravados();
        BloquearNumero();
        calcularTOTAL();
    });
}

void VentanaConcepto::Gravados_Del()
{
    ConTrampa(Seccion(QStringLiteral("Gravados_Del")), [this] {
        const int i = lstGravado->currentRow();
        if (i < 0) {
            Aviso(QStringLiteral("Debe seleccionar un valor Gravado"));
            return;
        }
        if (s_.mensajes->MsgBox(QStringLiteral("Confirma eliminar el Gravado ") + lstGravado->item(i)->text(),
                                vb::vbYesNo + vb::vbQuestion) != vb::vbYes)
            return;
        const auto id = qint16(std::lround(CDbl(lstIdGravado->item(i)->text())));
        const long n = db().Ejecutar(QStringLiteral("delete from IVC_Gravado ") + CondicionGravados() +
                                     QStringLiteral("  and GRAVAD_id = ") + QString::number(id));
        if (n <= 0)
            return;
        cboGravadoIVA->removeItem(i);
        cboGravadoIngBru->removeItem(i);
        delete lstIdGravado->takeItem(i);
        delete lstGravado->takeItem(i);
        BloquearNumero();
        LeerTotalGravados();
        calcularTOTAL();
    });
}

double VentanaConcepto::getTotalGravados() const
{
    double suma = 0;
    for (int i = 0; i < lstGravado->count(); ++i)
        suma += CDbl(lstGravado->item(i)->text());
    return CDbl(FormatMonto(suma));
}

bool VentanaConcepto::EsTotalGravados(const QString &texto) const
{
    return texto.toLower() == QStringLiteral("[total gravados]");
}

QString VentanaConcepto::MsgSinGravadoIVA() const { return QStringLiteral("debe seleccionar un valor gravado IVA"); }

void VentanaConcepto::Calcular(QComboBox *base, QLineEdit *tasa, QLineEdit *descripcion, QLineEdit *valor,
                               const QString &sinBase, const QString &prefijo, const QString &medio)
{
    if (base->currentIndex() < 0) {
        Aviso(sinBase);
        return;
    }
    if (!EsNumerico(tasa->text())) {
        Aviso(QStringLiteral("El valor IVA debe ser númerico"));
        return;
    }
    const double b = EsTotalGravados(base->currentText()) ? getTotalGravados() : CDbl(base->currentText());
    const double t = CDbl(tasa->text());
    const double importe = CDbl(FormatMonto(t * b / 100));
    if (Trim(descripcion->text()).isEmpty())
        descripcion->setText(prefijo + FormatMonto(b) + medio + conv::NumeroATexto(t));
    valor->setText(FormatMonto(importe));
}

void VentanaConcepto::CalcularIVA()
{
    ConTrampa(Seccion(QStringLiteral("CalcularIVA")), [this] {
        Calcular(cboGravadoIVA, txtIVCDETIVA, txtIVCDETDSC, txtIVCDETVLR, MsgSinGravadoIVA(),
                 QStringLiteral("Gravado "), QStringLiteral(" IVA del "));
    });
}

void VentanaConcepto::CalcularIB()
{
    ConTrampa(Seccion(QStringLiteral("CalcularIB")), [this] {
        Calcular(cboGravadoIngBru, txtIVC_IngB, txtIVC_IngBDesc, txtIVC_IngBValor,
                 QStringLiteral("debe seleccionar un valor gravado"), QString(), QStringLiteral(" Ing Brutos del "));
    });
}

void VentanaConcepto::calcularTOTAL()
{
    ConTrampa(Seccion(QStringLiteral("calcularTOTAL")), [this] {
        if (!EsNumerico(TxtNoGrav->text()))
            TxtNoGrav->setText(QStringLiteral("0"));
        for (QLabel *l : {lbGravTotal, lbIVATotal, lbIngBrut})
            if (!EsNumerico(l->text()))
                l->setText(QStringLiteral("0"));
        lbTotalFactura->setText(FormatMonto(CDbl(TxtNoGrav->text()) + CDbl(lbGravTotal->text()) +
                                            CDbl(lbIVATotal->text()) + CDbl(lbIngBrut->text())));
    });
}

// ---------------------------------------------------------------------------------------------
// Keys

bool VentanaConcepto::TeclaControl(QObject *obj, int tecla)
{
    if (tecla == vb::vbKeyReturn) {
        if (obj == TxtGrav)
            Gravados_Add();
        else if (obj == txtIVCDETIVA)
            CalcularIVA();
        else if (obj == txtIVCDETVLR)
            IVADet_Add();
        else if (obj == txtIVC_IngB)
            CalcularIB();
        else if (obj == txtIVC_IngBValor)
            IngBrutosDet_Add();
        else if (auto *b = qobject_cast<QPushButton *>(obj))
            b->click();
        else
            return false;
        return true;
    }
    if (tecla == vb::vbKeyDelete) {
        if (obj == lstGravado)
            Gravados_Del();
        else if (obj == lstIVC_DetIVA)
            IVADet_Eliminar();
        else if (obj == lstIVC_detIngBru)
            IngresosBrutosDet_Eliminar();
        else
            return false;
        return true;
    }
    return false;
}

bool VentanaConcepto::eventFilter(QObject *obj, QEvent *ev)
{
    if (ev->type() == QEvent::KeyPress && obj->isWidgetType() && static_cast<QWidget *>(obj)->window() == this) {
        const int tecla = CodigoTecla(static_cast<QKeyEvent *>(ev));
        if (TeclaVentana(tecla) || TeclaControl(obj, tecla))
            return true;
    } else if (ev->type() == QEvent::KeyRelease && obj == TxtNoGrav) {
        calcularTOTAL();
    }
    return QDialog::eventFilter(obj, ev);
}

void VentanaConcepto::reject() { TeclaVentana(vb::vbKeyEscape); }

void VentanaConcepto::closeEvent(QCloseEvent *ev)
{
    if (cerrando_) {
        ev->accept();
        return;
    }
    // The window's close button is "Cerrar".
    ev->ignore();
    cmdCerrar_Click();
}
