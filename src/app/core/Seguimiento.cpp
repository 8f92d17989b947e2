#include "app/core/Seguimiento.h"

#include "app/core/Sesion.h"
#include "data/SegProveedores.h"

QVariant SP_EnviarASeguimiento(Sesion &s, const QString &cuitEmpresa, const QString &cuitProveedor,
                               const QString &fecha, const QString &numero,
                               const QString &descripcion, double importe)
{
    try {
        SegProveedoresServices::clMAinSP sp;
        sp.setsp_pcuituser(cuitEmpresa);
        sp.setPathDB(s.RutaFacturacion + QStringLiteral("proveedores.mdb"));
        sp.SP_IMPUTACIONESDESDEFACTURACION(cuitEmpresa, cuitProveedor, fecha, numero, descripcion,
                                           QStringLiteral("DEBE"), importe);
    } catch (const oDB::ErrorBD &e) {
        if (s.mensajes)
            MostrarError(*s.mensajes, e.descripcion, e.numero,
                         QStringLiteral(" - seccion [MORLA.SP_EnviarASeguimiento (modGBPROC)]"));
    }
    return QVariant();
}
