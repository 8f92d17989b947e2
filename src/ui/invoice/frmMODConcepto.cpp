#include "ui/invoice/frmMODConcepto.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/oDB.h"
#include "ui/common/ClCntrl.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>

using conv::Format;
using conv::Trim;
using oDB::Q;

frmMODConcepto::frmMODConcepto(Sesion &sesion, Principal *principal, QWidget *parent)
    : VentanaConcepto(sesion, principal, QStringLiteral("frmMODConcepto"), QStringLiteral("Modificar"), parent)
{
    // The gross-income amount of an earlier-version invoice, beside the lines' total.
    txtINGBRUOld = Caja(fraIngBrutos, "txtINGBRUOld", true, 100);
    txtINGBRUOld->setReadOnly(true);
    lbINGBOld = Rotulo(fraIngBrutos, QStringLiteral("Ing Brutos"), txtINGBRUOld);
    lbINGBOld->setObjectName(QStringLiteral("lbINGBOld"));
    pieIngBrutos()->insertWidget(0, lbINGBOld);
    pieIngBrutos()->insertWidget(1, txtINGBRUOld);
    lbINGBOld->setVisible(false);
    txtINGBRUOld->setVisible(false);

    // Period change.
    auto *fraPeriodo = new QGroupBox(QStringLiteral("Cambio de Período de la Compra Actual"), this);
    auto *h = new QHBoxLayout(fraPeriodo);
    cboMES = Combo(fraPeriodo, "cboMES");
    for (int m = 1; m <= 12; ++m)
        cboMES->addItem(conv::NombreMes(m));
    TxtYear = Caja(fraPeriodo, "TxtYear", true, 60);
    VScroll = new QScrollBar(Qt::Vertical, fraPeriodo);
    VScroll->setObjectName(QStringLiteral("VScroll"));
    VScroll->setRange(1990, 2100);
    VScroll->setSingleStep(1);
    VScroll->setPageStep(1);
    // The arrow up (and the Up key) goes to the next year.
    VScroll->setInvertedAppearance(true);
    VScroll->setInvertedControls(false);
    VScroll->setFixedHeight(TxtYear->sizeHint().height());
    VScroll->setFocusPolicy(Qt::StrongFocus);
    cmdCambiarPeriodo = new QPushButton(QStringLiteral("Cambiar"), fraPeriodo);
    cmdCambiarPeriodo->setObjectName(QStringLiteral("cmdCambiarPeriodo"));
    cmdCambiarPeriodo->setAutoDefault(false);
    h->addWidget(Rotulo(fraPeriodo, QStringLiteral("&Mes"), cboMES));
    h->addWidget(cboMES);
    h->addWidget(Rotulo(fraPeriodo, QStringLiteral("&Año"), TxtYear));
    h->addWidget(TxtYear);
    h->addWidget(VScroll);
    h->addWidget(cmdCambiarPeriodo);
    zonaPropia()->addWidget(fraPeriodo);

    const QDate periodo = conv::TextoAFecha(S().PeriodoDesde).value_or(conv::Hoy());
    cboMES->setCurrentIndex(periodo.month() - 1);
    VScroll->setValue(periodo.year());
    TxtYear->setText(QString::number(periodo.year()));
    connect(VScroll, &QScrollBar::valueChanged, this, [this](int v) { TxtYear->setText(QString::number(v)); });
    connect(cmdCambiarPeriodo, &QPushButton::clicked, this, [this] { cmdCambiarPeriodo_Click(); });

    MostrarTeclas(QStringLiteral("Guardar [F11] - Salir [Esc]"));
    TerminarArmado({txtINGBRUOld, cboMES, TxtYear, VScroll, cmdCambiarPeriodo});
}

FilaFactura FilaFactura::DeCeldas(const std::function<QString(int)> &celda)
{
    const cFORMAT::MAIN formato;
    FilaFactura f;
    f.fecha = celda(0);
    f.tipo = celda(1);
    f.numero = celda(2);
    f.cuit = celda(3);
    f.gravado = formato.EsNumero(celda(5));
    f.noGravado = formato.EsNumero(celda(6));
    f.ingBrutos = formato.EsNumero(celda(8));
    f.total = formato.EsNumero(celda(9));
    f.ivarin = formato.EsNumero(celda(10));
    return f;
}

void frmMODConcepto::Abrir(Sesion &s, Principal *principal, QWidget *padre, const FilaFactura &fila)
{
    s.NroFacSeleccionada = fila.numero;
    s.PrvCuitSeleccionado = fila.cuit;
    frmMODConcepto m(s, principal, padre);
    m.Cargar(fila);
    m.exec();
}

void frmMODConcepto::Cargar(const FilaFactura &fila)
{
    cuitApertura_ = fila.cuit;
    SetTag(cboIdProv, fila.cuit);
    TxtNumero->setText(fila.numero);
    SetTag(TxtNumero, fila.numero);
    TxtFecha->setText(fila.fecha);
    lbGravTotal->setText(conv::NumeroATexto(fila.gravado));
    TxtNoGrav->setText(conv::NumeroATexto(fila.noGravado));
    lbTotalFactura->setText(conv::NumeroATexto(fila.total));
    txtIVARIN->setText(conv::NumeroATexto(fila.ivarin));
    txtINGBRUOld->setText(conv::NumeroATexto(fila.ingBrutos));
    tipoApertura_ = fila.tipo;
}

void frmMODConcepto::showEvent(QShowEvent *ev)
{
    VentanaConcepto::showEvent(ev);
    if (activado_)
        return;
    activado_ = true;
    Activar();
}

void frmMODConcepto::Activar()
{
    ConTrampa(Seccion(QStringLiteral("Form_Activate")), [this] {
        cboProv->clear();
        cboIdProv->clear();
        CargarProveedores();
        const int i = cboIdProv->findText(cuitApertura_, Qt::MatchFixedString);
        if (i >= 0) {
            cboIdProv->setCurrentIndex(i);
            SincronizarProvDesdeId();
        } else if (cboIdProv->count() > 0) {
            cboIdProv->setCurrentIndex(0);
            cboProv->setCurrentIndex(0);
        }
        // A type outside the list (books written by other programs have them) is shown as it
        // is, so that saving the invoice does not change it behind the user's back.
        int t = cboTipo->findText(tipoApertura_, Qt::MatchFixedString);
        if (t < 0 && !tipoApertura_.isEmpty()) {
            cboTipo->addItem(tipoApertura_);
            t = cboTipo->count() - 1;
        }
        if (t >= 0)
            cboTipo->setCurrentIndex(t);
    });
    MostrarDescripcion();
    IVADet_List();
    IBRDet_List();
    Grav_DetList();
    EstablecerTipoIngB();
    calcularTOTAL();
    (cboProv->isEnabled() ? static_cast<QWidget *>(cboProv) : TxtFecha)->setFocus();
}

void frmMODConcepto::MostrarDescripcion()
{
    ConTrampa(Seccion(QStringLiteral("MostrarDescripcion")), [this] {
        oDB::Recordset rs;
        if (db().CrearRs(rs, QStringLiteral("select descripcion, descripcionextra from IVC ") + CondicionGravados())) {
            txtDescripcion->setText(Trim(S().oFormato->EsNull(rs(QStringLiteral("Descripcion")))));
            txtDescripcionExtra->setText(Trim(S().oFormato->EsNull(rs(QStringLiteral("descripcionextra")))));
        }
        rs.Close();
    });
}

void frmMODConcepto::Grav_DetList()
{
    ConTrampa(Seccion(QStringLiteral("Grav_DetList")), [this] {
        LeerTotalGravados();
        oDB::Recordset rs;
        if (db().CrearRs(rs, QStringLiteral("select GRAVAD_Valor,GRAVAD_id from IVC_Gravado ") + CondicionGravados() +
                                 QStringLiteral(" order by GRAVAD_id"))) {
            for (; !rs.Eof(); rs.MoveNext()) {
                lstIdGravado->addItem(conv::NumeroATexto(S().oFormato->EsNumero(rs(QStringLiteral("GRAVAD_id")))));
                const QString monto = Format(rs(QStringLiteral("GRAVAD_Valor")), QStringLiteral("00.00"));
                AgregarMonto(lstGravado, monto);
                AgregarAlCombo(cboGravadoIVA, cboGravadoIVA->count(), monto);
                AgregarAlCombo(cboGravadoIngBru, cboGravadoIngBru->count(), monto);
            }
        }
        rs.Close();
        if (cboGravadoIVA->count() > 0) {
            TxtNumero->setReadOnly(true);
            AgregarAlCombo(cboGravadoIngBru, cboGravadoIngBru->count(), QString::fromLatin1(kTotalGravados));
            AgregarAlCombo(cboGravadoIVA, cboGravadoIVA->count(), QString::fromLatin1(kTotalGravados));
        }
    });
}

void frmMODConcepto::EstablecerTipoIngB()
{
    tipoIngBEstablecido_ = true;
    legadoIngBrutos_ =
        S().oFormato->EsNumero(txtINGBRUOld->text()) > 0 && lstIVC_detIngBru->topLevelItemCount() == 0;
    lbINGBOld->setVisible(legadoIngBrutos_);
    txtINGBRUOld->setVisible(legadoIngBrutos_);
    txtINGBRUOld->setReadOnly(legadoIngBrutos_);
    // Locked, it looks locked: the window's colour instead of an entry field's white, and the
    // focus passes it by.
    QPalette p = txtINGBRUOld->palette();
    p.setColor(QPalette::Base, legadoIngBrutos_ ? palette().color(QPalette::Window) : palette().color(QPalette::Base));
    txtINGBRUOld->setPalette(p);
    txtINGBRUOld->setFocusPolicy(legadoIngBrutos_ ? Qt::NoFocus : Qt::StrongFocus);
}

void frmMODConcepto::SinLineasIngBrutos()
{
    // While the invoice opens its type is not known yet; an amount on the header with no lines
    // is then exactly the earlier scheme.
    const bool anteriorPendiente = legadoIngBrutos_ || !tipoIngBEstablecido_;
    if (anteriorPendiente && S().oFormato->EsNumero(txtINGBRUOld->text()) > 0)
        return;
    VentanaConcepto::SinLineasIngBrutos();
}

void frmMODConcepto::RetirarIngBrutosAnterior()
{
    txtINGBRUOld->setText(QStringLiteral("0"));
    txtINGBRUOld->setVisible(false);
    lbINGBOld->setVisible(false);
}

QString frmMODConcepto::NumeroListadoIVA() const { return TxtNumero->text(); }

void frmMODConcepto::TrasEliminarIVA() { lstIVC_DetIVA->setFocus(); }

bool frmMODConcepto::EsTotalGravados(const QString &texto) const { return texto == QLatin1String(kTotalGravados); }

QString frmMODConcepto::MsgSinGravadoIVA() const { return QStringLiteral("debe seleccionar un valor gravado"); }

QList<QComboBox *> frmMODConcepto::CombosEnlazados() const
{
    return {cboProv, cboTipo, cboGravadoIngBru, cboGravadoIVA};
}

bool frmMODConcepto::IVAValidar()
{
    try {
        bool escribirIngBrutos = false;
        // Legacy gross income (the flag comes from EstablecerTipoIngB): an invoice of the
        // earlier single-amount scheme without gross-income lines is saved only once its old
        // amount is given up; its header then takes the lines' total.
        if (legadoIngBrutos_ && lstIVC_detIngBru->topLevelItemCount() == 0 &&
            S().oFormato->EsNumero(txtINGBRUOld->text()) > 0) {
            if (S().mensajes->MsgBox(QStringLiteral("Esta factura tiene Ingresos brutos guardados con una versión "
                                                    "anterior, desea cargar en cero(0)?."),
                                     vb::vbYesNo + vb::vbQuestion) != vb::vbYes)
                return false;
            RetirarIngBrutosAnterior();
            escribirIngBrutos = true;
        }
        // A changed supplier alone is not checked: only a changed number.
        if (!ControlarProveedorYNumero() || !ControlarImportesYNumero())
            return false;
        ReemplazarApostrofes();

        const QString fecha = Format(QVariant(TxtFecha->text()), QStringLiteral("dd-mm-yyyy"));
        QString sql = QStringLiteral("update IVC set ") + QStringLiteral("IVCFPERIOD = datevalue(") + Q(PeriodoActual()) +
                      QStringLiteral("),") + QStringLiteral("IVCFCOMPRO = datevalue(") + Q(fecha) + QStringLiteral("),") +
                      QStringLiteral("PRVSNRCUIT = ") + Q(cboIdProv->currentText()) + QStringLiteral(", ") +
                      QStringLiteral("IVCSTIPFAC = ") + Q(cboTipo->currentText()) + u',' +
                      QStringLiteral("IVCSNROFAC = ") + Q(TxtNumero->text()) + u',' +
                      QStringLiteral("IVCDNOGRAV = ") + Q(TxtNoGrav->text()) + u',' +
                      QStringLiteral("Descripcion = ") + Q(txtDescripcion->text()) + u',' +
                      QStringLiteral("DescripcionExtra = ") + Q(txtDescripcionExtra->text()) + u',' +
                      QStringLiteral("IVCDGRAVAD = ") + Q(lbGravTotal->text()) + u' ';
        if (escribirIngBrutos)
            sql += QStringLiteral(", IVCINGBRU = ") + Q(lbIngBrut->text()) + u' ';
        // The row is found by what it was when the window opened; the tags are kept.
        sql += QStringLiteral("where ") + QStringLiteral("USRSNRCUIT = ") + Q(S().CuitUsuario) + QStringLiteral(" and ") +
               QStringLiteral("PRVSNRCUIT = ") + Q(Tag(cboIdProv)) + QStringLiteral(" and ") +
               QStringLiteral("IVCSNROFAC = ") + Q(Tag(TxtNumero)) + u' ';
        db().Ejecutar(sql);
        guardado_ = true;
        return true;
    } catch (const oDB::ErrorBD &e) {
        ReportarError(e.descripcion, e.numero, QStringLiteral(" - seccion [MORLA.frmModConcepto.IVAValidad]"));
    } catch (const conv::ErrorConversion &e) {
        ReportarError(e.descripcion, 13, QStringLiteral(" - seccion [MORLA.frmModConcepto.IVAValidad]"));
    }
    return false;
}

void frmMODConcepto::cmdGuardar_Click()
{
    IVAValidar();
    RecargarPrincipal();
}

void frmMODConcepto::cmdCerrar_Click()
{
    if (!guardado_) {
        if (!SalirSinGuardar())
            return;
    } else {
        RecargarPrincipal();
    }
    activado_ = false;
    CerrarVentana();
}

void frmMODConcepto::cmdCambiarPeriodo_Click()
{
    ConTrampa(Seccion(QStringLiteral("cmdCambiarPeriodo_Click")), [this] {
        const QString periodo =
            QStringLiteral("01/") + QString::number(cboMES->currentIndex() + 1) + u'/' + TxtYear->text();
        // The supplier on screen, not the opening one; nothing else of the header is written.
        db().Ejecutar(QStringLiteral("update IVC set IVCFPERIOD = ") + QStringLiteral("datevalue(") +
                      Q(Format(QVariant(periodo), QStringLiteral("dd-mm-yyyy"))) + u')' +
                      QStringLiteral(" where USRSNRCUIT = ") + Q(S().CuitUsuario) +
                      QStringLiteral(" and PRVSNRCUIT = ") + Q(cboIdProv->currentText()) +
                      QStringLiteral(" and IVCSNROFAC = ") + Q(Tag(TxtNumero)));
        S().mensajes->MsgBox(QStringLiteral("Se ha cambiado CORRECTAMENTE el período"), vb::vbInformation);
        RecargarPrincipal();
        CerrarVentana();
    });
}

bool frmMODConcepto::TeclaVentana(int tecla)
{
    if (tecla == vb::vbKeyF11) {
        cmdGuardar_Click();
        return true;
    }
    if (tecla == vb::vbKeyEscape) {
        // Unlike "Cerrar", Esc asks nothing.
        if (guardado_)
            RecargarPrincipal();
        CerrarVentana();
        return true;
    }
    return false;
}
