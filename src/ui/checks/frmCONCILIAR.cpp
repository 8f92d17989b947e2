#include "ui/checks/frmCONCILIAR.h"

#include "app/core/Servicios.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/oDB.h"
#include "reports/RegistrosAFIP.h"
#include "ui/checks/AbrirFactura.h"
#include "ui/checks/DialogoAbrirQt.h"
#include "ui/common/Principal.h"
#include "ui/common/Teclas.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString kTeclas = QStringLiteral("Marcar [Espacio] - Cargar marcados [F11] - Abrir factura [Enter] - Salir [Esc]");
constexpr int kRolProveedor = Qt::UserRole;     // book invoice: supplier CUIT
constexpr int kRolNumero = Qt::UserRole + 1;    // book invoice: number
constexpr int kRolFaltante = Qt::UserRole + 2;  // missing voucher: its index

void Avisar(Sesion &s, const QString &texto) { s.mensajes->MsgBox(texto, vb::vbExclamation); }

} // namespace

void frmCONCILIAR::Abrir(Sesion &s, Principal *principal, QWidget *padre)
{
    static DialogoAbrirQt estandar;
    DialogoAbrir *dialogo = s.dialogoAbrir ? s.dialogoAbrir : &estandar;
    const QString archivo = dialogo->Abrir(QStringLiteral("Mis Comprobantes Recibidos"),
                                           {{QStringLiteral("Mis Comprobantes Recibidos"), QStringLiteral("*.xlsx *.csv")},
                                            {QStringLiteral("Todos los archivos"), QStringLiteral("*")}},
                                           QString(), padre);
    if (archivo.isEmpty())
        return;
    try {
        recibidos::Lista lista;
        const conciliacion::Resultado r = conciliacion::LeerYConciliar(s, archivo, lista);
        frmCONCILIAR w(s, principal, archivo, lista, r, padre);
        w.exec();
    } catch (const recibidos::ErrorLectura &e) {
        Avisar(s, e.mensaje);
    } catch (const conciliacion::ErrorEmpresa &e) {
        Avisar(s, e.mensaje);
    } catch (const oDB::ErrorBD &e) {
        Avisar(s, conciliacion::TextoNoSePudo(e.descripcion));
    }
}

frmCONCILIAR::frmCONCILIAR(Sesion &s, Principal *principal, const QString &archivo, const recibidos::Lista &lista,
                           const conciliacion::Resultado &r, QWidget *padre)
    : QDialog(padre), s_(s), principal_(principal), lista_(lista), r_(r)
{
    setObjectName(QStringLiteral("frmCONCILIAR"));
    setWindowTitle(QStringLiteral("IVA Compras - Conciliar con Mis Comprobantes Recibidos"));
    setModal(true);
    lbArchivo = new QLabel(recibidos::DescripcionArchivo(archivo, lista) + QStringLiteral(" - Periodo ") +
                               s.MesAnio(),
                           this);
    lbArchivo->setObjectName(QStringLiteral("lbArchivo"));
    lbResumen = new QLabel(this);
    lbResumen->setObjectName(QStringLiteral("lbResumen"));
    grdConciliacion = new QTreeWidget(this);
    grdConciliacion->setObjectName(QStringLiteral("grdConciliacion"));
    grdConciliacion->setHeaderLabels({QStringLiteral("Cargar"), QStringLiteral("Fecha"), QStringLiteral("Tipo"),
                                      QStringLiteral("Número"), QStringLiteral("CUIT"), QStringLiteral("Proveedor"),
                                      QStringLiteral("Concepto"), QStringLiteral("Libro"), QStringLiteral("Archivo"),
                                      QStringLiteral("Diferencia"), QStringLiteral("Observación")});
    grdConciliacion->setRootIsDecorated(false);
    grdConciliacion->setUniformRowHeights(true);
    grdConciliacion->setAllColumnsShowFocus(true);
    grdConciliacion->setSelectionMode(QAbstractItemView::SingleSelection);
    const QFontMetrics fm = grdConciliacion->fontMetrics();
    const int anchos[cColumnas] = {60, fm.horizontalAdvance(QStringLiteral("00/00/0000")) + 16,
                                   fm.horizontalAdvance(QStringLiteral("TIQUE FCA")) + 16,
                                   fm.horizontalAdvance(QStringLiteral("00000-00000000")) + 16,
                                   fm.horizontalAdvance(QStringLiteral("00000000000")) + 16, 200,
                                   fm.horizontalAdvance(QStringLiteral("No gravado")) + 24, 90, 90, 90, 340};
    for (int c = 0; c < cColumnas; ++c)
        grdConciliacion->setColumnWidth(c, anchos[c]);
    for (int c : {cLibro, cArchivo, cDiferencia})
        grdConciliacion->headerItem()->setTextAlignment(c, Qt::AlignRight);
    lbTeclas = new QLabel(kTeclas, this);
    lbTeclas->setObjectName(QStringLiteral("lbTeclas"));
    lbTeclas->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lbTeclas->setAlignment(Qt::AlignCenter);
    auto *v = new QVBoxLayout(this);
    v->addWidget(lbArchivo);
    v->addWidget(lbResumen);
    v->addWidget(grdConciliacion, 1);
    v->addWidget(lbTeclas);
    grdConciliacion->installEventFilter(this);
    int ancho = 40;
    for (int w : anchos)
        ancho += w;
    // Never wider than the screen: the grid then scrolls sideways to the remarks (also whole in
    // their tooltip).
    if (const QScreen *pantalla = screen())
        ancho = std::min(ancho, pantalla->availableGeometry().width());
    resize(ancho, 560);
    Llenar();
    grdConciliacion->setFocus();
}

QTreeWidgetItem *frmCONCILIAR::Grupo(const QString &titulo, int cantidad)
{
    auto *g = new QTreeWidgetItem(grdConciliacion);
    // The heading spans the row from the first column.
    g->setText(cCarga, QStringLiteral("%1: %2").arg(titulo, QString::number(cantidad)));
    g->setFirstColumnSpanned(true);
    QFont f = g->font(cCarga);
    f.setBold(true);
    g->setFont(cCarga, f);
    g->setBackground(cCarga, palette().alternateBase());
    g->setFlags(Qt::ItemIsEnabled);
    return g;
}

void frmCONCILIAR::Llenar()
{
    grdConciliacion->clear();
    lbResumen->setText(QStringLiteral("En el archivo y no en el libro: %1 - En el libro y no en el archivo: %2 - "
                                      "Con diferencias: %3 - Iguales: %4")
                           .arg(QString::number(r_.faltantes.size()), QString::number(r_.soloEnLibro.size()),
                                QString::number(r_.distintas.size()), QString::number(r_.iguales)));
    auto fila = [&](const QDate &fecha, const QString &tipo, const QString &numero, const QString &cuit,
                    const QString &nombre) {
        auto *i = new QTreeWidgetItem(grdConciliacion);
        i->setText(cFecha, conv::FechaCorta(fecha));
        i->setText(cTipo, tipo);
        i->setText(cNumero, numero);
        i->setText(cCuit, cuit);
        i->setText(cNombre, nombre);
        for (int c : {cLibro, cArchivo, cDiferencia})
            i->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
        return i;
    };
    Grupo(QStringLiteral("En el archivo y no en el libro"), int(r_.faltantes.size()));
    for (int k = 0; k < r_.faltantes.size(); ++k) {
        const conciliacion::Faltante &f = r_.faltantes[k];
        auto *i = fila(f.c.fecha, f.c.tipoLibro.isEmpty() ? QString::number(f.c.codigo) : f.c.tipoLibro,
                       f.c.NumeroLibro(), f.c.cuitEmisor, f.c.denominacion);
        i->setText(cConcepto, QStringLiteral("Total"));
        i->setText(cArchivo, Monto(f.c.total));
        const QString obs = f.Observaciones();
        i->setText(cObservacion, obs);
        i->setToolTip(cObservacion, obs);
        if (f.Cargable()) {
            i->setCheckState(cCarga, Qt::Checked);
            i->setData(cCarga, kRolFaltante, k);
        }
    }
    Grupo(QStringLiteral("En el libro y no en el archivo"), int(r_.soloEnLibro.size()));
    for (const conciliacion::FacturaLibro &b : r_.soloEnLibro) {
        auto *i = fila(b.fecha, b.tipo, b.numero, b.proveedor, b.nombre);
        i->setText(cConcepto, QStringLiteral("Total"));
        i->setText(cLibro, Monto(b.Total()));
        i->setData(cCarga, kRolProveedor, b.proveedor);
        i->setData(cCarga, kRolNumero, b.numero);
    }
    Grupo(QStringLiteral("En ambos con diferencias"), int(r_.distintas.size()));
    for (const conciliacion::Distinta &d : r_.distintas) {
        bool primera = true;
        for (const conciliacion::Diferencia &x : d.diferencias) {
            auto *i = primera ? fila(d.libro.fecha, d.libro.tipo, d.libro.numero, d.libro.proveedor, d.libro.nombre)
                              : fila(QDate(), QString(), QString(), QString(), QString());
            primera = false;
            i->setText(cConcepto, x.concepto);
            i->setText(cLibro, Monto(x.libro));
            i->setText(cArchivo, Monto(x.archivo));
            i->setText(cDiferencia, Monto(x.Importe()));
            i->setData(cCarga, kRolProveedor, d.libro.proveedor);
            i->setData(cCarga, kRolNumero, d.libro.numero);
        }
    }
    // The first row that is not a group heading.
    for (int k = 0; k < grdConciliacion->topLevelItemCount(); ++k)
        if (grdConciliacion->topLevelItem(k)->flags() & Qt::ItemIsSelectable) {
            grdConciliacion->setCurrentItem(grdConciliacion->topLevelItem(k));
            break;
        }
}

void frmCONCILIAR::Conciliar()
{
    try {
        r_ = conciliacion::Conciliar(s_, lista_);
    } catch (const oDB::ErrorBD &e) {
        Avisar(s_, conciliacion::TextoNoSePudo(e.descripcion));
    }
    Llenar();
}

void frmCONCILIAR::Marcar()
{
    QTreeWidgetItem *i = grdConciliacion->currentItem();
    if (!i || !i->data(cCarga, kRolFaltante).isValid())
        return;
    i->setCheckState(cCarga, i->checkState(cCarga) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

void frmCONCILIAR::CargarMarcados()
{
    QVector<recibidos::Comprobante> elegidos;
    for (int k = 0; k < grdConciliacion->topLevelItemCount(); ++k) {
        const QTreeWidgetItem *i = grdConciliacion->topLevelItem(k);
        if (i->data(cCarga, kRolFaltante).isValid() && i->checkState(cCarga) == Qt::Checked)
            elegidos << r_.faltantes[i->data(cCarga, kRolFaltante).toInt()].c;
    }
    if (elegidos.isEmpty()) {
        Avisar(s_, QStringLiteral("No hay comprobantes marcados para cargar."));
        return;
    }
    try {
        const int n = conciliacion::Cargar(s_, elegidos);
        s_.mensajes->MsgBox(conciliacion::TextoCargados(s_, n), vb::vbInformation);
    } catch (const oDB::ErrorBD &e) {
        Avisar(s_, QStringLiteral("No se cargó ningún comprobante: ") + e.descripcion);
        return;
    }
    if (principal_ && principal_->RecargarGrilla())
        principal_->MostrarTotales();
    Conciliar();
}

void frmCONCILIAR::AbrirElegida()
{
    const QTreeWidgetItem *i = grdConciliacion->currentItem();
    if (!i || !i->data(cCarga, kRolNumero).isValid())
        return;
    const int fila = grdConciliacion->indexOfTopLevelItem(grdConciliacion->currentItem());
    bool abierta = false;
    try {
        abierta = AbrirFactura(s_, principal_, this, i->data(cCarga, kRolProveedor).toString(),
                               i->data(cCarga, kRolNumero).toString());
    } catch (const oDB::ErrorBD &e) {
        MostrarError(*s_.mensajes, e.descripcion, e.numero, QStringLiteral(" - seccion [frmCONCILIAR.AbrirElegida]"));
    }
    if (abierta) {
        Conciliar();
        if (fila >= 0 && fila < grdConciliacion->topLevelItemCount())
            grdConciliacion->setCurrentItem(grdConciliacion->topLevelItem(fila));
    }
    activateWindow();
    grdConciliacion->setFocus();
}

bool frmCONCILIAR::eventFilter(QObject *obj, QEvent *ev)
{
    if (obj == grdConciliacion && ev->type() == QEvent::KeyPress) {
        const auto *k = static_cast<QKeyEvent *>(ev);
        if (k->key() == Qt::Key_Space) {
            Marcar();
            return true;
        }
        switch (CodigoTecla(k)) {
        case vb::vbKeyF11:
            CargarMarcados();
            return true;
        case vb::vbKeyReturn:
            AbrirElegida();
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(obj, ev);
}
