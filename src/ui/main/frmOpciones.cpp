#include "ui/main/frmOpciones.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "ui/common/CerrarVentana.h"
#include "ui/common/ClCntrl.h"
#include "ui/common/Principal.h"
#include "ui/common/Teclas.h"
#include "ui/main/ImportarAccessVentana.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

namespace {

QDate Fecha(const QString &texto)
{
    const auto d = conv::TextoAFecha(texto);
    if (!d)
        throw conv::ErrorConversion{QStringLiteral("No coinciden los tipos")};
    return *d;
}

// "1/" + month + "/" + year of today, as a date text.
QString PrimeroDelMesActual()
{
    const QDate hoy = conv::Hoy();
    return conv::FechaCorta(Fecha(QStringLiteral("1/%1/%2").arg(hoy.month()).arg(hoy.year())));
}

void EnviarTab(QWidget *w)
{
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(w, &tab);
}

} // namespace

frmOpciones::frmOpciones(Sesion &s, Principal *principal, QWidget *parent)
    : QDialog(parent), s_(s), principal_(principal)
{
    setObjectName(QStringLiteral("frmOpciones"));
    setWindowTitle(QStringLiteral("Opciones"));
    setModal(true);

    cboUSR = new QComboBox(this);
    cboUSR->setObjectName(QStringLiteral("cboUSR"));
    cboUSR->setMinimumContentsLength(30);
    cboUSR->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboIDUSR = new QComboBox(this);
    cboIDUSR->setObjectName(QStringLiteral("cboIDUSR"));
    cboIDUSR->hide();
    cboMES = new QComboBox(this);
    cboMES->setObjectName(QStringLiteral("cboMES"));
    TxtYear = new QLineEdit(this);
    TxtYear->setObjectName(QStringLiteral("TxtYear"));
    TxtYear->setFixedWidth(TxtYear->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16);
    VScroll1 = new QScrollBar(Qt::Vertical, this);
    VScroll1->setObjectName(QStringLiteral("VScroll1"));
    VScroll1->setRange(kAnioMinimo, kAnioMaximo);
    // The upper arrow (and the Up key) raises the year.
    VScroll1->setInvertedAppearance(true);
    VScroll1->setInvertedControls(false);
    VScroll1->setFocusPolicy(Qt::StrongFocus);
    VScroll1->setFixedHeight(TxtYear->sizeHint().height());
    connect(VScroll1, &QScrollBar::valueChanged, this,
            [this](int v) { TxtYear->setText(QString::number(v)); });

    auto *ayuda = new QLabel(QStringLiteral("Aceptar [F11] - Cancelar [Esc]"), this);
    ayuda->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    ayuda->setAlignment(Qt::AlignCenter);

    auto *g = new QGridLayout(this);
    g->addWidget(new QLabel(QStringLiteral("Usuario"), this), 0, 0);
    g->addWidget(cboUSR, 0, 1, 1, 4);
    g->addWidget(new QLabel(QStringLiteral("Periodo"), this), 1, 0);
    g->addWidget(cboMES, 1, 1);
    g->addWidget(TxtYear, 1, 2);
    g->addWidget(VScroll1, 1, 3);
    g->setColumnStretch(4, 1);
    g->addWidget(ayuda, 2, 0, 1, 5);

    setTabOrder(cboUSR, cboMES);
    setTabOrder(cboMES, TxtYear);
    setTabOrder(TxtYear, VScroll1);

    Form_Load();

    for (QWidget *w : {static_cast<QWidget *>(cboUSR), static_cast<QWidget *>(cboMES),
                       static_cast<QWidget *>(TxtYear), static_cast<QWidget *>(VScroll1)})
        w->installEventFilter(this);
    cboUSR->setFocus();
}

void frmOpciones::Form_Load()
{
    for (int m = 1; m <= 12; ++m)
        cboMES->addItem(conv::NombreMes(m));
    ctlIDUSR_ = new ClCntrl(this);
    ctlIDUSR_->sLinkCBoBox(cboIDUSR);
    ctlYear_ = new ClCntrl(this);
    ctlYear_->sLinkText(TxtYear);
    for (bool convertido = false;;) {
        try {
            s_.Conectar();
            break;
        } catch (const oDB::ErrorBD &e) {
            // Books of the old program are offered for conversion, and opened once converted.
            const RespuestaAccess r = convertido ? RespuestaAccess::NoEsAccess : OfrecerImportarAccess(s_, this);
            if (r == RespuestaAccess::Convertido) {
                convertido = true;
                continue;
            }
            if (r == RespuestaAccess::NoEsAccess && s_.mensajes)
                MostrarError(*s_.mensajes, e.descripcion, e.numero,
                             QStringLiteral(" - seccion [frmOpciones.Form_Load]"));
            return;
        }
    }
    lf_LeerDatos();
}

void frmOpciones::lf_LeerDatos()
{
    try {
        cboUSR->clear();
        cboIDUSR->clear();
        oDB::Recordset rs;
        s_.dbPersonal->setSQL(QStringLiteral("select USRSNRCUIT,USRSNOMBRE from USR order by USRSNOMBRE"));
        if (!s_.dbPersonal->CrearRs(rs))
            return;
        const cFORMAT::MAIN &f = *s_.oFormato;
        while (!rs.Eof()) {
            cboUSR->addItem(f.EsNull(rs.Fields(QStringLiteral("USRSNOMBRE"))));
            cboIDUSR->addItem(f.EsNull(rs.Fields(QStringLiteral("USRSNRCUIT"))));
            rs.MoveNext();
        }
        rs.Close();

        if (s_.CuitUsuario.isEmpty()) {
            cboUSR->setCurrentIndex(0);
            cboIDUSR->setCurrentIndex(0);
            s_.Periodo = PrimeroDelMesActual();
            ProponerPeriodo();
            return;
        }
        ctlIDUSR_->BuscarCBO(s_.CuitUsuario);
        if (cboIDUSR->currentIndex() < 0) {
            cboIDUSR->setCurrentIndex(0);
            VScroll1->setValue(conv::Hoy().year());
            TxtYear->setText(QString::number(VScroll1->value()));
            s_.Periodo = PrimeroDelMesActual();
        }
        cboUSR->setCurrentIndex(cboIDUSR->currentIndex());
        // The year is formatted as a date serial, so the text is never "1990" and the
        // remembered period (or 1 January 1990) is what gets proposed.
        if (conv::Format(Fecha(s_.Periodo).year(), QStringLiteral("yyyy")) == QLatin1String("1990"))
            s_.Periodo = PrimeroDelMesActual();
        ProponerPeriodo();
    } catch (const oDB::ErrorBD &) {
    } catch (const conv::ErrorConversion &) {
    }
}

void frmOpciones::ProponerPeriodo()
{
    const QDate p = Fecha(s_.Periodo);
    VScroll1->setValue(p.year());
    TxtYear->setText(QString::number(VScroll1->value()));
    cboMES->setCurrentIndex(p.month() - 1);
}

void frmOpciones::lf_GuardarDatos()
{
    try {
        cboIDUSR->setCurrentIndex(cboUSR->currentIndex());
        s_.CuitUsuario = cboIDUSR->currentText();
        s_.NombreUsuario = cboUSR->currentText();
        oDB::Recordset rs;
        s_.dbPersonal->setSQL(QStringLiteral("select * from USR where USRSNRCUIT = ") + oDB::Q(s_.CuitUsuario));
        if (!s_.dbPersonal->CrearRs(rs)) {
            if (s_.mensajes)
                s_.mensajes->MsgBox(QStringLiteral("No se encuentra la información de este usuario."),
                                    vb::vbCritical);
            return;
        }
        const cFORMAT::MAIN &f = *s_.oFormato;
        s_.ConIva = f.EsNull(rs.Fields(QStringLiteral("USRSCONIVA")));
        s_.DomicilioUsuario = f.EsNull(rs.Fields(QStringLiteral("USRSDOMICI")));
        s_.EmailUsuario = f.EsNull(rs.Fields(QStringLiteral("USRSEMAIL")));
        rs.Close();

        s_.MesPeriodo = qint16(cboMES->currentIndex() + 1);
        s_.Periodo = QStringLiteral("01/") + QString::number(s_.MesPeriodo) + u'/' + TxtYear->text();
        CalcularLimitesPeriodo(s_);

        s_.ajustes.GuardarHistorial(s_.CuitUsuario, s_.Periodo);
    } catch (const oDB::ErrorBD &) {
    } catch (const conv::ErrorConversion &) {
    }
}

void frmOpciones::Confirmar()
{
    lf_GuardarDatos();
    s_.Cancelado = false;
    if (principal_ && principal_->RecargarGrilla())
        principal_->MostrarTotales();
    confirmado_ = true;
    CerrarVentana(this);
}

void frmOpciones::Cancelar()
{
    s_.Cancelado = true;
    CerrarVentana(this);
}

void frmOpciones::reject()
{
    if (!confirmado_)
        s_.Cancelado = true;
    QDialog::reject();
}

bool frmOpciones::Form_KeyDown(int tecla)
{
    switch (tecla) {
    case vb::vbKeyF11:
        Confirmar();
        return true;
    case vb::vbKeyEscape:
        Cancelar();
        return true;
    default:
        return false;
    }
}

bool frmOpciones::eventFilter(QObject *obj, QEvent *ev)
{
    const int tecla = TeclaPulsada(ev);
    if (tecla != 0 && Form_KeyDown(tecla))
        return true;
    if (tecla == vb::vbKeyReturn && (obj == cboUSR || obj == cboMES || obj == VScroll1)) {
        EnviarTab(static_cast<QWidget *>(obj));
        return true;
    }
    return QDialog::eventFilter(obj, ev);
}

void frmOpciones::keyPressEvent(QKeyEvent *e)
{
    if (Form_KeyDown(CodigoTecla(e)))
        return;
    QDialog::keyPressEvent(e);
}
