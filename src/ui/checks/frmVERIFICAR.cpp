#include "ui/checks/frmVERIFICAR.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "ui/checks/AbrirFactura.h"
#include "ui/common/Teclas.h"

#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

using verificacion::Hallazgo;
using verificacion::Severidad;

namespace {

const char *const kColumnas[] = {"Severidad", "Fecha", "Tipo", "Nro", "CUIT", "Nombre", "Hallazgo"};

QLabel *Rotulo(const char *nombre, QWidget *padre)
{
    auto *l = new QLabel(padre);
    l->setObjectName(QString::fromLatin1(nombre));
    l->setTextFormat(Qt::PlainText);
    return l;
}

} // namespace

frmVERIFICAR::frmVERIFICAR(Sesion &s, Principal *principal, QWidget *parent)
    : QWidget(parent), s_(s), principal_(principal)
{
    setObjectName(QStringLiteral("frmVERIFICAR"));
    setWindowTitle(QStringLiteral("Verificación del período"));
    if (parent)
        setWindowFlags(Qt::Window);

    lbTitulo = Rotulo("lbTitulo", this);
    lbTitulo->setText(QStringLiteral("Verificación del período"));
    QFont ft = lbTitulo->font();
    ft.setBold(true);
    ft.setPointSizeF(ft.pointSizeF() * 1.4);
    lbTitulo->setFont(ft);
    lbResumen = Rotulo("lbResumen", this);

    grdHallazgos = new QTableWidget(0, int(std::size(kColumnas)), this);
    grdHallazgos->setObjectName(QStringLiteral("grdHallazgos"));
    QStringList cabeceras;
    for (const char *c : kColumnas)
        cabeceras << QString::fromLatin1(c);
    grdHallazgos->setHorizontalHeaderLabels(cabeceras);
    grdHallazgos->verticalHeader()->hide();
    grdHallazgos->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grdHallazgos->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdHallazgos->setSelectionMode(QAbstractItemView::SingleSelection);
    grdHallazgos->setTabKeyNavigation(false);
    grdHallazgos->setWordWrap(false);
    grdHallazgos->horizontalHeader()->setHighlightSections(false);
    grdHallazgos->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    grdHallazgos->horizontalHeader()->setStretchLastSection(true);
    grdHallazgos->verticalHeader()->setDefaultSectionSize(grdHallazgos->fontMetrics().height() + 6);
    const QFontMetrics fm = grdHallazgos->fontMetrics();
    const int anchos[] = {fm.horizontalAdvance(QStringLiteral("Severidad")), fm.horizontalAdvance(QStringLiteral("00/00/0000")),
                          fm.horizontalAdvance(QStringLiteral("TIQUE FCB")), fm.horizontalAdvance(QStringLiteral("0000-00000000")),
                          fm.horizontalAdvance(QStringLiteral("00000000000")), fm.averageCharWidth() * 30};
    for (int c = 0; c < int(std::size(anchos)); ++c)
        grdHallazgos->setColumnWidth(c, anchos[c] + 16);

    // The whole text of the current finding: what was found and what to do.
    lbDetalle = Rotulo("lbDetalle", this);
    lbDetalle->setWordWrap(true);
    lbDetalle->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lbDetalle->setMargin(4);
    lbDetalle->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lbDetalle->setMinimumHeight(fm.height() * 4 + 12);

    lbTeclas = Rotulo("lbTeclas", this);
    lbTeclas->setText(QStringLiteral("Abrir la factura [Enter] - Salir [Esc]"));
    lbTeclas->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lbTeclas->setAlignment(Qt::AlignCenter);
    lbTeclas->setMargin(3);

    auto *v = new QVBoxLayout(this);
    v->addWidget(lbTitulo);
    v->addWidget(lbResumen);
    v->addWidget(grdHallazgos, 1);
    v->addWidget(lbDetalle);
    v->addWidget(lbTeclas);

    grdHallazgos->installEventFilter(this);
    connect(grdHallazgos, &QTableWidget::currentCellChanged, this, [this] { MostrarDetalle(); });
    grdHallazgos->setFocus();
    resize(1100, 520);
    Cargar();
}

void frmVERIFICAR::Cargar()
{
    const int fila = std::max(0, grdHallazgos->currentRow());
    verificacion::Resultado r;
    fallo_.clear();
    try {
        if (!s_.dbLibro)
            throw oDB::ErrorBD{QStringLiteral("La conexión no está abierta."), 3709};
        r = verificacion::VerificarPeriodo(*s_.dbLibro, s_.CuitUsuario, s_.PeriodoDesde);
    } catch (const oDB::ErrorBD &e) {
        r = {};
        fallo_ = QStringLiteral("No se pudo verificar el período: ") + e.descripcion;
        if (s_.mensajes)
            MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral(" - seccion [frmVERIFICAR.Cargar]"));
    }
    hallazgos_ = r.hallazgos;
    const QString periodo = s_.MesAnio();
    lbResumen->setText(fallo_.isEmpty()
                           ? QStringLiteral("%1 - Periodo %2:  %3 errores, %4 avisos en %5 facturas")
                                 .arg(s_.NombreUsuario, periodo, QString::number(r.errores),
                                      QString::number(r.avisos), QString::number(r.facturas))
                           : QStringLiteral("%1 - Periodo %2:  %3").arg(s_.NombreUsuario, periodo, fallo_));

    grdHallazgos->setRowCount(int(hallazgos_.size()));
    for (int i = 0; i < hallazgos_.size(); ++i) {
        const Hallazgo &h = hallazgos_[i];
        const QStringList celdas = {verificacion::TextoSeveridad(h.severidad),
                                    conv::FechaCorta(h.fecha),
                                    h.tipo,
                                    h.numero,
                                    h.cuit,
                                    h.DeEmpresa() ? s_.NombreUsuario : h.nombre,
                                    h.mensaje};
        for (int c = 0; c < celdas.size(); ++c) {
            auto *item = new QTableWidgetItem(celdas[c]);
            item->setToolTip(h.mensaje + u'\n' + h.accion);
            if (h.severidad == Severidad::error && c == 0) {
                QFont f = item->font();
                f.setBold(true);
                item->setFont(f);
                item->setForeground(QColor(170, 0, 0));
            }
            grdHallazgos->setItem(i, c, item);
        }
    }
    if (!hallazgos_.isEmpty())
        grdHallazgos->setCurrentCell(std::min(fila, int(hallazgos_.size()) - 1), 0);
    MostrarDetalle();
}

void frmVERIFICAR::MostrarDetalle()
{
    const int fila = grdHallazgos->currentRow();
    if (fila < 0 || fila >= hallazgos_.size()) {
        lbDetalle->setText(!fallo_.isEmpty()        ? fallo_
                           : hallazgos_.isEmpty() ? QStringLiteral("No se encontraron errores ni avisos en el período.")
                                                  : QString());
        return;
    }
    const Hallazgo &h = hallazgos_[fila];
    lbDetalle->setText(h.mensaje + QStringLiteral("\nQué hacer: ") + h.accion);
}

void frmVERIFICAR::AbrirHallazgo()
{
    const int fila = grdHallazgos->currentRow();
    if (fila < 0 || fila >= hallazgos_.size())
        return;
    const Hallazgo h = hallazgos_[fila];
    if (h.DeEmpresa()) {
        if (s_.mensajes)
            s_.mensajes->MsgBox(QStringLiteral("Este hallazgo es de la empresa, no de una factura: ") + h.accion,
                                vb::vbInformation);
        return;
    }
    bool abierta = false;
    try {
        abierta = AbrirFactura(s_, principal_, this, h.cuit, h.numero);
    } catch (const oDB::ErrorBD &e) {
        if (s_.mensajes)
            MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral(" - seccion [frmVERIFICAR.AbrirHallazgo]"));
        return;
    }
    if (!abierta) {
        if (s_.mensajes)
            s_.mensajes->MsgBox(QStringLiteral("No se puede abrir la factura %1: su proveedor %2 no está en la lista "
                                               "de proveedores o la factura ya no está en el período.")
                                    .arg(h.numero, h.cuit),
                                vb::vbExclamation);
        return;
    }
    Cargar();
    activateWindow();
    grdHallazgos->setFocus();
}

bool frmVERIFICAR::Form_KeyDown(int tecla)
{
    switch (tecla) {
    case vb::vbKeyEscape:
        close();
        return true;
    default:
        return false;
    }
}

bool frmVERIFICAR::eventFilter(QObject *obj, QEvent *ev)
{
    const int tecla = TeclaPulsada(ev);
    if (tecla != 0 && obj == grdHallazgos) {
        if (Form_KeyDown(tecla))
            return true;
        if (tecla == vb::vbKeyReturn) {
            AbrirHallazgo();
            return true;
        }
    }
    return QWidget::eventFilter(obj, ev);
}

void frmVERIFICAR::keyPressEvent(QKeyEvent *e)
{
    if (Form_KeyDown(CodigoTecla(e)))
        return;
    QWidget::keyPressEvent(e);
}

void AbrirVerificacion(Sesion &s, Principal *principal, QWidget *dueno)
{
    // A closed one may still wait for its deletion: only a shown one counts. The one shown is
    // checked again, since the book may have changed since it opened.
    frmVERIFICAR *v = nullptr;
    for (frmVERIFICAR *w : dueno->findChildren<frmVERIFICAR *>(QString(), Qt::FindDirectChildrenOnly))
        if (w->isVisible())
            v = w;
    if (v) {
        v->Cargar();
    } else {
        v = new frmVERIFICAR(s, principal, dueno);
        v->setAttribute(Qt::WA_DeleteOnClose);
        // Over the main window, a little below its top, and whole on the screen.
        const QRect padre = dueno->window()->frameGeometry();
        QRect r(QPoint(padre.left() + (padre.width() - v->width()) / 2, padre.top() + 40), v->size());
        if (const QScreen *pantalla = dueno->screen()) {
            const QRect libre = pantalla->availableGeometry().adjusted(0, 0, 0, -30);
            r.setSize(r.size().boundedTo(libre.size()));
            r.moveLeft(std::clamp(r.left(), libre.left(), std::max(libre.left(), libre.right() - r.width())));
            r.moveTop(std::clamp(r.top(), libre.top(), std::max(libre.top(), libre.bottom() - r.height())));
        }
        v->resize(r.size());
        v->move(r.topLeft());
    }
    v->show();
    v->raise();
    v->activateWindow();
}
