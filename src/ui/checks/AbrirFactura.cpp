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
    const auto celda = [&rs](int c) { return conv::Texto(rs.Fields(c)); };
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

bool AbrirFactura(Sesion &s, Principal *principal, QWidget *padre, const QString &cuitProveedor,
                  const QString &numero)
{
    const std::optional<FilaFactura> f = FilaDeFactura(s, cuitProveedor, numero);
    if (!f)
        return false;
    s.NroFacSeleccionada = f->numero;
    s.PrvCuitSeleccionado = f->cuit;
    frmMODConcepto m(s, principal, padre);
    m.Cargar(*f);
    m.exec();
    return true;
}
