#include "ui/main/frmMAIN.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "reports/Exportar.h"
#include "reports/LibroImpreso.h"
#include "ui/checks/frmVERIFICAR.h"
#include "ui/checks/frmCONCILIAR.h"
#include "ui/common/CerrarVentana.h"
#include "ui/common/Teclas.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/invoice/frmMODConcepto.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/ListaPeriodo.h"
#include "ui/main/frmOpciones.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <cmath>

namespace {

QLabel *Etiqueta(const QString &texto, QWidget *padre)
{
    auto *l = new QLabel(texto, padre);
    l->setTextFormat(Qt::PlainText);
    return l;
}

// A label that shows a value: sunken frame, the value's own object name.
QLabel *Valor(const char *nombre, QWidget *padre, Qt::Alignment alineacion = Qt::AlignRight)
{
    auto *l = new QLabel(padre);
    l->setObjectName(QString::fromLatin1(nombre));
    l->setTextFormat(Qt::PlainText);
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    l->setAlignment(alineacion | Qt::AlignVCenter);
    l->setMinimumWidth(l->fontMetrics().horizontalAdvance(QStringLiteral("0000000,00")) + 12);
    return l;
}

} // namespace

frmMAIN::frmMAIN(Sesion &s, QWidget *parent) : QWidget(parent), s_(s)
{
    setObjectName(QStringLiteral("frmMAIN"));
    setWindowTitle(QStringLiteral("IVA COMPRAS"));

    auto *titulo = Etiqueta(QStringLiteral("IVA COMPRAS"), this);
    QFont ft = titulo->font();
    ft.setBold(true);
    ft.setPointSizeF(ft.pointSizeF() * 1.6);
    titulo->setFont(ft);
    lbFecha = Etiqueta(QString(), this);
    lbFecha->setObjectName(QStringLiteral("lbFecha"));
    lbFecha->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    lbUSRSNOMBR = Valor("lbUSRSNOMBR", this, Qt::AlignLeft);
    lbUSRSNOMBR->setMinimumWidth(lbUSRSNOMBR->fontMetrics().horizontalAdvance(QLatin1Char('M')) * 24);
    lbIVCFPERIOD = Valor("lbIVCFPERIOD", this, Qt::AlignLeft);

    Grd = new GrillaFlex(this);
    Grd->setObjectName(QStringLiteral("Grd"));

    lbTGrav = Valor("lbTGrav", this);
    lbTNoGrav = Valor("lbTNoGrav", this);
    lbIva21 = Valor("lbIva21", this);
    lbINGBRU = Valor("lbINGBRU", this);
    LbTot = Valor("LbTot", this);

    txtIMPFuente = new QLineEdit(this);
    txtIMPFuente->setObjectName(QStringLiteral("txtIMPFuente"));
    txtIMPLinxHoja = new QLineEdit(this);
    txtIMPLinxHoja->setObjectName(QStringLiteral("txtIMPLinxHoja"));
    const int anchoCampo = txtIMPFuente->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16;
    txtIMPFuente->setFixedWidth(anchoCampo);
    txtIMPLinxHoja->setFixedWidth(anchoCampo);

    Label2 = Etiqueta(QStringLiteral("Proveedores [F5] - Agregar [Insert] - Modificar [Enter] - "
                                     "Eliminar [Delete] - Opciones [F6] - Salir [Esc]"),
                      this);
    Label2->setObjectName(QStringLiteral("Label2"));
    Label2->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    Label2->setAlignment(Qt::AlignCenter);

    // Layout: title and date; company and period; the list; totals; print fields; key help.
    auto *cabecera = new QHBoxLayout;
    cabecera->addWidget(titulo);
    cabecera->addStretch();
    cabecera->addWidget(lbFecha);

    auto *empresa = new QHBoxLayout;
    empresa->addWidget(Etiqueta(QStringLiteral("Usuario"), this));
    empresa->addWidget(lbUSRSNOMBR, 1);
    empresa->addSpacing(24);
    empresa->addWidget(Etiqueta(QStringLiteral("Periodo"), this));
    empresa->addWidget(lbIVCFPERIOD);

    auto *totales = new QGridLayout;
    const struct {
        const char *caption;
        QLabel *valor;
    } columnas[] = {{"Gravado", lbTGrav},     {"No Gravado", lbTNoGrav}, {"Total IVA", lbIva21},
                    {"Ing. Brutos", lbINGBRU}, {"Total", LbTot}};
    int col = 0;
    totales->setColumnStretch(col++, 1);
    for (const auto &c : columnas) {
        auto *cap = Etiqueta(QString::fromUtf8(c.caption), this);
        cap->setAlignment(Qt::AlignCenter);
        totales->addWidget(cap, 0, col);
        totales->addWidget(c.valor, 1, col);
        ++col;
    }

    auto *impresion = new QHBoxLayout;
    impresion->addWidget(Etiqueta(QStringLiteral("Fuente"), this));
    impresion->addWidget(txtIMPFuente);
    impresion->addSpacing(16);
    impresion->addWidget(Etiqueta(QStringLiteral("Lineas x Hoja"), this));
    impresion->addWidget(txtIMPLinxHoja);
    impresion->addStretch();

    auto *pie = new QHBoxLayout;
    pie->addLayout(impresion, 0);
    pie->addLayout(totales, 1);

    auto *v = new QVBoxLayout(this);
    v->addLayout(cabecera);
    v->addLayout(empresa);
    v->addWidget(Grd, 1);
    v->addLayout(pie);
    v->addWidget(Label2);
    // A second help line: the keys of the period check and of the reconciliation.
    lbTeclasRevision = Etiqueta(QStringLiteral("Verificar [F9] - Conciliar [F8]"), this);
    lbTeclasRevision->setObjectName(QStringLiteral("lbTeclasRevision"));
    lbTeclasRevision->setAlignment(Qt::AlignCenter);
    v->addWidget(lbTeclasRevision);

    // The grid gets an empty, formatted look until the first load.
    Grd->setCols(grilla::kColumnas);
    for (int c = 0; c < grilla::kColumnas; ++c) {
        Grd->setColWidth(c, grilla::kColumna[c].twips);
        if (grilla::kColumna[c].cabecera)
            Grd->setTextMatrix(0, c, QString::fromUtf8(grilla::kColumna[c].cabecera));
    }
    Grd->AjustarAnchos();

    setTabOrder(Grd, txtIMPFuente);
    setTabOrder(txtIMPFuente, txtIMPLinxHoja);
    for (QWidget *w : {static_cast<QWidget *>(Grd), static_cast<QWidget *>(txtIMPFuente),
                       static_cast<QWidget *>(txtIMPLinxHoja)})
        w->installEventFilter(this);
    Grd->setFocus();

    const int anchoHelp = Label2->fontMetrics().horizontalAdvance(Label2->text()) + 40;
    resize(std::max(anchoHelp, 900), 600);
}

bool frmMAIN::Form_Load()
{
    try {
        s_.CrearComponentes();
        lbFecha->setText(conv::FechaLarga(conv::Hoy()));
        LeerDatos(s_);
        // As if F6 were pressed: the company and period window, modal.
        Form_KeyDown(vb::vbKeyF6);
        if (s_.Cancelado)
            return false;
        lbUSRSNOMBR->setText(s_.NombreUsuario);
        lbIVCFPERIOD->setText(s_.Periodo);
        txtIMPFuente->setText(conv::NumeroATexto(s_.ImpFuente));
        txtIMPLinxHoja->setText(QString::number(s_.ImpLineasHoja));
        if (RecargarGrilla())
            MostrarTotales();
    } catch (const oDB::ErrorBD &) {
    } catch (const conv::ErrorConversion &) {
    }
    Grd->setFocus();
    return true;
}

bool frmMAIN::RecargarGrilla() { return gf_IVCCRGGRDXCLIP(s_, *Grd); }

void frmMAIN::MostrarTotales()
{
    const QString patron = QStringLiteral("00.00");
    lbTGrav->setText(conv::Format(s_.TotGravado, patron));
    lbTNoGrav->setText(conv::Format(s_.TotNoGravado, patron));
    lbIva21->setText(conv::Format(s_.TotIva, patron));
    lbINGBRU->setText(conv::Format(s_.TotIngBrutos, patron));
    // TotIvaNoInscripto is always 0.
    LbTot->setText(conv::Format(s_.TotGravado + s_.TotNoGravado + s_.TotIva + s_.TotIngBrutos +
                                    s_.TotIvaNoInscripto,
                                patron));
}

bool frmMAIN::Form_KeyDown(int tecla)
{
    switch (tecla) {
    case vb::vbKeyF5: {
        // The supplier window, not modal; when it is already open it comes to the front.
        // (A closed one may still wait for its deletion: only a shown one counts.)
        frmLSTPROV *prov = nullptr;
        for (frmLSTPROV *p : findChildren<frmLSTPROV *>(QString(), Qt::FindDirectChildrenOnly))
            if (p->isVisible())
                prov = p;
        if (!prov) {
            prov = new frmLSTPROV(s_, this);
            prov->setAttribute(Qt::WA_DeleteOnClose);
        }
        prov->show();
        prov->raise();
        prov->activateWindow();
        return true;
    }
    case vb::vbKeyF6:
        AbrirOpciones();
        return true;
    case vb::vbKeyInsert: {
        frmADDConcepto f(s_, this, this);
        f.exec();
        return true;
    }
    case vb::vbKeyF9:
        AbrirVerificacion(s_, this, this);
        return true;
    case vb::vbKeyF8:
        frmCONCILIAR::Abrir(s_, this, this);
        return true;
    case vb::vbKeyF10: {
        // The spreadsheet and the two tax-authority files of the period, columns separated by
        // a TAB; the save dialog belongs to this window.
        QString separador = QStringLiteral("\t");
        GenerarReporte(s_, separador, this);
        return true;
    }
    case vb::vbKeyF12:
        // The ledger with the print fields as they are on screen; nothing is saved. Lines per
        // page beyond a 16-bit integer end the key quietly.
        if (ValidarCamposImpresion()) {
            const double lineas = std::nearbyint(conv::CDbl(txtIMPLinxHoja->text()));
            if (lineas >= -32768 && lineas <= 32767)
                ImprimirLibro(s_, conv::CDbl(txtIMPFuente->text()), qint16(lineas));
        }
        return true;
    case vb::vbKeyEscape:
        GuardarYSalir();
        return true;
    default:
        return false;
    }
}

bool frmMAIN::Grd_KeyDown(int tecla)
{
    switch (tecla) {
    case vb::vbKeyDelete:
        lp_IVCELIMINAR();
        return true;
    case vb::vbKeyReturn:
        lp_Modificar();
        return true;
    default:
        return false;
    }
}

bool frmMAIN::ValidarCamposImpresion()
{
    if (!conv::EsNumerico(txtIMPFuente->text())) {
        if (s_.mensajes)
            s_.mensajes->MsgBox(QStringLiteral("El campo FUENTE debe ser Númerico"), vb::vbCritical);
        return false;
    }
    if (!conv::EsNumerico(txtIMPLinxHoja->text())) {
        if (s_.mensajes)
            s_.mensajes->MsgBox(QStringLiteral("El campo LINEAS x HOJA debe ser Númerico"), vb::vbCritical);
        return false;
    }
    return true;
}

void frmMAIN::lp_IVCELIMINAR()
{
    if (Grd->Rows() == 1)
        return;
    const int fila = Grd->Row();
    const QString nro = Grd->TextMatrix(fila, 2);
    const QString cuit = Grd->TextMatrix(fila, 3);
    if (nro.isEmpty() || cuit.isEmpty()) {
        Grd->SeleccionarFila(fila);
        return;
    }
    // The totals labels keep their text until the next refresh.
    if (gf_IVCELIMCONCEPT(s_, nro, cuit, s_.CuitUsuario) > 0)
        gf_IVCCRGGRDXCLIP(s_, *Grd);
}

void frmMAIN::lp_Modificar()
{
    if (Grd->Rows() == 1)
        return;
    const int fila = Grd->Row();
    const FilaFactura f = FilaFactura::DeCeldas([&](int c) { return Grd->TextMatrix(fila, c); });
    Grd->SeleccionarFila(fila);
    if (!f.numero.isEmpty() && !f.cuit.isEmpty())
        frmMODConcepto::Abrir(s_, this, this, f);
}

void frmMAIN::AbrirOpciones()
{
    auto *f = new frmOpciones(s_, this, this);
    f->setAttribute(Qt::WA_DeleteOnClose);
    f->exec();
}

void frmMAIN::GuardarYSalir()
{
    if (!ValidarCamposImpresion())
        return;
    s_.ajustes.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN"),
                       txtIMPFuente->text());
    s_.ajustes.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPLIXP"),
                       txtIMPLinxHoja->text());
    CerrarVentana(this);
}

bool frmMAIN::eventFilter(QObject *obj, QEvent *ev)
{
    // The window's keys first, then the grid's own.
    const int tecla = TeclaPulsada(ev);
    if (tecla != 0 && (Form_KeyDown(tecla) || (obj == Grd && Grd_KeyDown(tecla))))
        return true;
    return QWidget::eventFilter(obj, ev);
}

void frmMAIN::keyPressEvent(QKeyEvent *e)
{
    if (Form_KeyDown(CodigoTecla(e)))
        return;
    QWidget::keyPressEvent(e);
}

void frmMAIN::closeEvent(QCloseEvent *e)
{
    // Unload: the book connections are released, the book first.
    s_.dbLibro.reset();
    s_.dbPersonal.reset();
    e->accept();
}
