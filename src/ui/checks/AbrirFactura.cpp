#include "ui/checks/AbrirFactura.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "data/oDB.h"
#include "ui/invoice/frmMODConcepto.h"

std::optional<FilaFactura> FilaDeFactura(Sesion &s, const QString &cuitProveedor, const QString &numero)
{
    if (!s.dbLibro)
        throw oDB::ErrorBD{QStringLiteral("La conexión no está abierta."), 3709};
    oDB::Recordset rs;
    if (!s.dbLibro->Consultar(rs, sentencias::FilasListaPeriodo(s.CuitUsuario, s.PeriodoDesde) +
                                      QStringLiteral(" and IVC.PRVSNRCUIT = ") + oDB::Q(cuitProveedor) +
                                      QStringLiteral(" and IVCSNROFAC = ") + oDB::Q(numero)))
        return std::nullopt;
    // The row as the main list shows it, read back as Enter on the list reads it.
    return FilaFactura::DeCeldas([&rs](int c) { return conv::Texto(rs.Fields(c)); });
}

bool AbrirFactura(Sesion &s, Principal *principal, QWidget *padre, const QString &cuitProveedor,
                  const QString &numero)
{
    const std::optional<FilaFactura> f = FilaDeFactura(s, cuitProveedor, numero);
    if (!f)
        return false;
    frmMODConcepto::Abrir(s, principal, padre, *f);
    return true;
}
