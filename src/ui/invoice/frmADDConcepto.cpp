#include "ui/invoice/frmADDConcepto.h"

#include "app/core/Seguimiento.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "data/oDB.h"
#include "ui/common/ClCntrl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using conv::EsNumerico;
using conv::Format;
using oDB::Q;

frmADDConcepto::frmADDConcepto(Sesion &sesion, Principal *principal, QWidget *parent)
    : VentanaConcepto(sesion, principal, QStringLiteral("frmADDConcepto"), QStringLiteral("Agregar"), parent)
{
    Chk_EnviarASeguimiento = new QCheckBox(QStringLiteral("&Registrar en Seguimiento Proveedores"), this);
    Chk_EnviarASeguimiento->setObjectName(QStringLiteral("Chk_EnviarASeguimiento"));
    zonaPropia()->addWidget(Chk_EnviarASeguimiento);
    MostrarTeclas(QStringLiteral("Limpiar línea de IVA [Esc]"));
    TerminarArmado({Chk_EnviarASeguimiento});

    txtIVARIN->setText(conv::NumeroATexto(S().IvaRIN));
    txtIVARNI->setText(conv::NumeroATexto(S().IvaRNI));
    Inicializar();
    IVAModFin();
    cboProv->setFocus();
}

void frmADDConcepto::Inicializar()
{
    ConTrampa(Seccion(QStringLiteral("Form_Load")), [this] {
        if (cboTipo->count() > 0)
            cboTipo->setCurrentIndex(0);
        TxtFecha->setText(Format(QVariant(conv::Hoy()), QStringLiteral("dd/mm/yyyy")));
        CargarProveedores();
        if (cboIdProv->count() > 0) {
            cboIdProv->setCurrentIndex(0);
            cboProv->setCurrentIndex(0);
        }
    });
}

QString frmADDConcepto::SentenciaInsert() const
{
    return sentencias::AltaIVC({S().CuitUsuario, cboIdProv->currentText(), PeriodoActual(),
                                Format(QVariant(TxtFecha->text()), QStringLiteral("dd-mm-yyyy")),
                                cboTipo->currentText(), TxtNumero->text(), TxtNoGrav->text(), lbGravTotal->text(),
                                Format(QVariant(conv::Hoy()), QStringLiteral("dd-mm-yyyy")), txtDescripcion->text(),
                                txtDescripcionExtra->text()});
}

QString frmADDConcepto::SentenciaUpdate() const
{
    return QStringLiteral("update IVC set ") + QStringLiteral("IVCFPERIOD = datevalue(") + Q(PeriodoActual()) +
           QStringLiteral("),") + QStringLiteral("IVCFCOMPRO = datevalue(") +
           Q(Format(QVariant(TxtFecha->text()), QStringLiteral("dd-mm-yyyy"))) + QStringLiteral("),") +
           QStringLiteral("IVCSTIPFAC = ") + Q(cboTipo->currentText()) + u',' + QStringLiteral("IVCSNROFAC = ") +
           Q(TxtNumero->text()) + u',' + QStringLiteral("IVCDNOGRAV = ") + Q(TxtNoGrav->text()) + u',' +
           QStringLiteral("IVCDGRAVAD = ") + Q(lbGravTotal->text()) + u' ' + QStringLiteral("where ") +
           QStringLiteral("USRSNRCUIT = ") + Q(S().CuitUsuario) + QStringLiteral(" and ") +
           QStringLiteral("PRVSNRCUIT = ") + Q(cboIdProv->currentText()) + QStringLiteral(" and ") +
           QStringLiteral("IVCSNROFAC = ") + Q(Tag(TxtNumero));
}

bool frmADDConcepto::IVAValidar()
{
    try {
        if (!ControlarProveedorYNumero())
            return false;

        if (!guardado_) {
            // Insert: "Gravado" is not checked yet, the amounts are still being entered.
            if (!EsNumerico(TxtNoGrav->text()))
                return Aviso(QStringLiteral("El Valor No Gravado debe ser númerico"));
            if (Duplicado(TxtNumero->text()))
                return false;
            ReemplazarApostrofes();
            // A statement that writes no row leaves the window in insert mode: the next save
            // inserts again.
            if (db().Ejecutar(SentenciaInsert()) > 0) {
                guardado_ = true;
                SetTag(TxtNumero, TxtNumero->text());
                cboIdProv->setCurrentIndex(cboProv->currentIndex());
            }
            return true;
        }

        if (!ControlarImportesYNumero())
            return false;
        // The row stays addressed by the number it was inserted under (the tag is kept).
        db().Ejecutar(SentenciaUpdate());
        return true;
    } catch (const oDB::ErrorBD &) {
        return false;
    } catch (const conv::ErrorConversion &) {
        return false;
    }
}

void frmADDConcepto::SinLineasIngBrutos()
{
    lbIVATotal->setText(QStringLiteral("00.00"));
    EscribirIVARIN(0);
}

void frmADDConcepto::cmdGuardar_Click()
{
    ConTrampa(Seccion(QStringLiteral("cmdGuardar_Click")), [this] {
        // Whatever the save did (written, refused by a check, a duplicate), the main window
        // reloads, and a ticked box posts the invoice again.
        IVAValidar();
        RecargarPrincipal();
        if (Chk_EnviarASeguimiento->isChecked()) {
            // The total as the screen shows it now: lines added later go with the next press.
            const double total = conv::CDbl(TxtNoGrav->text()) + conv::CDbl(lbGravTotal->text()) +
                                 conv::CDbl(lbIVATotal->text()) + conv::CDbl(lbIngBrut->text());
            SP_EnviarASeguimiento(S(), S().CuitUsuario, cboIdProv->currentText(),
                                  Format(QVariant(TxtFecha->text()), QStringLiteral("dd-mm-yyyy")), TxtNumero->text(),
                                  QStringLiteral("Factura ") + cboTipo->currentText(), total);
        }
    });
}

void frmADDConcepto::cmdCerrar_Click()
{
    ConTrampa(Seccion(QStringLiteral("cmdCerrar_Click")), [this] {
        if (guardado_) {
            RecargarPrincipal();
            CerrarVentana();
            return;
        }
        if (!SalirSinGuardar())
            return;
        // Only the taxed amounts go: VAT lines (and the header a VAT line inserted) stay.
        db().Ejecutar(QStringLiteral("delete from IVC_Gravado ") + QStringLiteral("where USRSNRCUIT = ") +
                      Q(S().CuitUsuario) + QStringLiteral("  and PRVSNRCUIT = ") + Q(cboIdProv->currentText()) +
                      QStringLiteral("  and IVCSNROFAC = ") + Q(TxtNumero->text()));
        CerrarVentana();
    });
}

bool frmADDConcepto::TeclaVentana(int tecla)
{
    if (tecla != vb::vbKeyEscape)
        return false;
    IVAModFin();
    return true;
}
