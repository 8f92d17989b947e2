#include "data/SentenciasFactura.h"

#include "data/Convenciones.h"
#include "data/oDB.h"

#include <QStringList>

using oDB::Q;

namespace sentencias {

namespace {

QString Valores(const QStringList &valores)
{
    QStringList citados;
    for (const QString &v : valores)
        citados << Q(v);
    return citados.join(u',') + u')';
}

QString DeEmpresaYProveedor(const QString &empresa, const QString &proveedor)
{
    return QStringLiteral(" where USRSNRCUIT = ") + Q(empresa) + QStringLiteral(" and PRVSNRCUIT = ") + Q(proveedor);
}

} // namespace

QString AltaIVC(const CabeceraIVC &c)
{
    const QString coma = QStringLiteral(",");
    return QStringLiteral("insert into IVC (USRSNRCUIT,PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,"
                          "IVCDNOGRAV,IVCDGRAVAD,IVARNI,IVARIN,IVCINGBRU,IVCFALTA, DESCRIPCION, DESCRIPCIONEXTRA) "
                          "values (") +
           Q(c.empresa) + coma + Q(c.proveedor) + coma + QStringLiteral("datevalue(") + Q(c.periodo) +
           QStringLiteral("),") + QStringLiteral("datevalue(") + Q(c.fecha) + QStringLiteral("),") + Q(c.tipo) + coma +
           Q(c.numero) + coma + Q(c.noGravado) + coma + Q(c.gravado) + coma + QStringLiteral("'0','0','0',") +
           QStringLiteral("datevalue(") + Q(c.alta) + QStringLiteral("),") + Q(c.descripcion) + coma +
           Q(c.descripcionExtra) + u')';
}

QString CondicionGravados(const QString &empresa, const QString &proveedor, const QString &numero)
{
    return QStringLiteral("where USRSNRCUIT = ") + Q(empresa) + QStringLiteral("  and PRVSNRCUIT = ") + Q(proveedor) +
           QStringLiteral("  and IVCSNROFAC = ") + Q(numero);
}

QString TotalGravados(const QString &empresa, const QString &proveedor, const QString &numero)
{
    return QStringLiteral("select sum(GRAVAD_Valor) as TotalGravados from IVC_Gravado ") +
           CondicionGravados(empresa, proveedor, numero);
}

QString IdMaximoGravado(const QString &empresa, const QString &proveedor, const QString &numero)
{
    return QStringLiteral("select max(GRAVAD_id) as MaxId from IVC_Gravado ") +
           CondicionGravados(empresa, proveedor, numero);
}

QString AltaGravado(const QString &empresa, const QString &proveedor, const QString &numero, int id,
                    const QString &valor)
{
    return QStringLiteral("insert into IVC_Gravado (USRSNRCUIT,PRVSNRCUIT,IVCSNROFAC,GRAVAD_id,GRAVAD_Valor) values (") +
           Q(empresa) + u',' + Q(proveedor) + u',' + Q(numero) + u',' + QString::number(id) + u',' +
           QStringLiteral("cdbl(") + Q(valor) + QStringLiteral("))");
}

QString IdMaximoLinea(const QString &tabla, const QString &empresa, const QString &proveedor)
{
    return QStringLiteral("select max(IVCdetId) as idmax from ") + tabla + DeEmpresaYProveedor(empresa, proveedor);
}

double LeerIdMaximo(oDB::clManejo &db, const QString &sql)
{
    oDB::Recordset rs;
    db.CrearRs(rs, sql);
    const QString maximo = rs.Abierto() && !rs.Eof() ? conv::Texto(rs.Fields(0)) : QString();
    return conv::Val(maximo);
}

QString AltaLineaIVA(const QString &empresa, const QString &proveedor, const QString &id, const QString &numero,
                     const QString &tasa, const QString &descripcion, const QString &valor)
{
    return QStringLiteral("insert into IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCdetId, "
                          "IVCSNROFAC, IVCDETIVA, IVCDETDSC, IVCDETVLR) values (") +
           Valores({empresa, proveedor, id, numero, tasa, descripcion, valor});
}

QString AltaLineaIngBrutos(const QString &empresa, const QString &proveedor, const QString &id,
                           const QString &numero, const QString &tasa, const QString &descripcion,
                           const QString &valor)
{
    return QStringLiteral("insert into IVC_DetIngBrutos (USRSNRCUIT, PRVSNRCUIT, IVCdetId, "
                          "IVCSNROFAC, IVCDETIB, IVCDETIBDSC, IVCDETIBVLR) values (") +
           Valores({empresa, proveedor, id, numero, tasa, descripcion, valor});
}

QString TotalCabecera(const QString &columna, double suma, const QString &empresa, const QString &proveedor,
                      const QString &numero)
{
    return QStringLiteral("update IVC set ") + columna + QStringLiteral(" = ") +
           Q(conv::Format(QVariant(suma), QStringLiteral("00.00"))) + DeEmpresaYProveedor(empresa, proveedor) +
           QStringLiteral(" and IVCSNROFAC = ") + Q(numero);
}

QString AltaProveedor(const AltaDeProveedor &p)
{
    return QStringLiteral("INSERT INTO PRV(PRVSNRCUIT,PRVSNOMBRE,PRVSDOMICI,PRVSTELFON,PRVSEMAIL,PRVSCONTAC,PRVFALTA) "
                          "values (") +
           Q(p.cuit) + u',' + Q(p.nombre) + u',' + Q(p.domicilio) + u',' + Q(p.telefono) + u',' + Q(p.email) + u',' +
           Q(p.contacto) + u',' + QStringLiteral("datevalue('") + conv::FechaCorta(p.alta) + QStringLiteral("'))");
}

QString BuscarDuplicado(const QString &empresa, const QString &proveedor, const QString &numero)
{
    return QStringLiteral("select IVCFALTA as alta, IVCFCOMPRO as fechafac, IVCFPERIOD as periodo "
                          "from IVC where USRSNRCUIT = ") +
           Q(empresa) + QStringLiteral(" and PRVSNRCUIT = ") + Q(proveedor) + QStringLiteral(" and IVCSNROFAC = ") +
           Q(numero);
}

QString FilasListaPeriodo(const QString &empresa, const QString &periodoDesde)
{
    return QStringLiteral("select format(IVCFCOMPRO,'dd/mm/yy') ,IVCSTIPFAC,IVCSNROFAC,PRV.PRVSNRCUIT,"
                          "PRV.PRVSNOMBRE,format(IVCDGRAVAD,'00.00'),format(IVCDNOGRAV,'00.00'),"
                          "format(IVARIN,'00.00'),IVCINGBRU,"
                          "format(IVCDGRAVAD+IVCDNOGRAV+IVARIN+IVCINGBRU,'00.00') as total,ivarin,ivarni "
                          "from IVC,PRV where IVC.PRVSNRCUIT = PRV.PRVSNRCUIT AND USRSNRCUIT = ") +
           oDB::Q(empresa) + QStringLiteral(" and IVCFPERIOD = datevalue(") + oDB::Q(periodoDesde) + u')';
}

} // namespace sentencias
