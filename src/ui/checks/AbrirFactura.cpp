#include "ui/checks/AbrirFactura.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/oDB.h"
#include "ui/invoice/frmMODConcepto.h"

namespace {

// The columns of the main list (dates "dd/mm/yy", amounts "00.00", IIBB as stored, the raw
// VAT total last), for the one invoice of the key.
QString SqlFilaFactura(const Sesion &s, const QString &cuitProveedor, const QString &numero)
{
    return QStringLiteral("select format(IVCFCOMPRO,'dd/mm/yy') ,IVCSTIPFAC,IVCSNROFAC,PRV.PRVSNRCUIT,"
                          "PRV.PRVSNOMBRE,format(IVCDGRAVAD,'00.00'),format(IVCDNOGRAV,'00.00'),"
                          "format(IVARIN,'00.00'),IVCINGBRU,"
                          "format(IVCDGRAVAD+IVCDNOGRAV+IVARIN+IVCINGBRU,'00.00') as total,ivarin "
                          "from IVC,PRV where IVC.PRVSNRCUIT = PRV.PRVSNRCUIT AND USRSNRCUIT = ") +
           oDB::Q(s.CuitUsuario) + QStringLiteral(" and IVCFPERIOD = datevalue(") + oDB::Q(s.PeriodoDesde) +
           QStringLiteral(") and IVC.PRVSNRCUIT = ") + oDB::Q(cuitProveedor) +
           QStringLiteral(" and IVCSNROFAC = ") + oDB::Q(numero);
}

} // namespace

std::optional<FilaFactura> FilaDeFactura(Sesion &s, const QString &cuitProveedor, const QString &numero)
{
    if (!s.dbLibro)
        throw oDB::ErrorBD{QStringLiteral("La conexión no está abierta."), 3709};
    oDB::Recordset rs;
    s.dbLibro->setSQL(SqlFilaFactura(s, cuitProveedor, numero));
    if (!s.dbLibro->CrearRs(rs)) {
        if (!rs.Abierto())
            throw oDB::ErrorBD{s.dbLibro->UltimoError(), -2147217900};
        return std::nullopt;
    }
    // The cells as the list shows them, read back as Enter on the list reads them.
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
