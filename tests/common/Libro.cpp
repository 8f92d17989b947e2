#include "common/Libro.h"

#include "common/MensajesGuion.h"
#include "data/Convenciones.h"
#include "data/Esquema.h"

#include <QDir>
#include <sqlite3.h>
#include <stdexcept>

int MensajesGuion::MsgBox(const QString &texto, int estilo, const QString &titulo)
{
    mostrados.append({texto, estilo, titulo});
    if ((estilo & 7) == vb::vbYesNo || (estilo & 7) == vb::vbOKCancel)
        return respuestas_.isEmpty() ? int(vb::vbYes) : respuestas_.takeFirst();
    return vb::vbOK;
}

LibroDePrueba::LibroDePrueba()
{
    if (!dir_.isValid())
        throw std::runtime_error("no temporary folder");
    esquema::CrearBases(dir_.path());
    QDir().mkpath(CarpetaAjustes());
    EscribirUbicaciones();
    conv::FijarHoy(QDate(2026, 11, 21));
    mensajes_ = std::make_unique<MensajesGuion>();
    sesion_ = std::make_unique<Sesion>(Ajustes(CarpetaAjustes()));
    sesion_->mensajes = mensajes_.get();
    sesion_->FechaHoy = conv::Hoy();
    sesion_->SeparadorDecimal = QStringLiteral(",");
    sesion_->RutaFacturacion = sesion_->RutaLibro = sesion_->RutaPersonal = Carpeta();
    sesion_->CrearComponentes();
    sesion_->Conectar();
}

LibroDePrueba::~LibroDePrueba() = default;

void LibroDePrueba::EscribirUbicaciones() const
{
    const Ajustes a(CarpetaAjustes());
    for (const char *clave : {"FACTURACION", "KESTRELRAS", "PERSONAL", "SYSTABLAS"})
        a.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QString::fromLatin1(clave), Carpeta());
}

void LibroDePrueba::Recordar(const QString &cuit, const QString &periodo) const
{
    const Ajustes &a = sesion_->ajustes;
    if (!cuit.isEmpty())
        a.Guardar(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("USRSNROCUIT"), cuit);
    if (!periodo.isEmpty())
        a.Guardar(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("IVCFPERIOD"), periodo);
}

void LibroDePrueba::Periodo(const QString &cuit, const QString &periodo)
{
    sesion_->CuitUsuario = cuit;
    sesion_->Periodo = periodo;
    CalcularLimitesPeriodo(*sesion_);
}

void LibroDePrueba::Ejecutar(const QString &archivo, const QStringList &sentencias) const
{
    oDB::clManejo db;
    db.setCadenaConexion(CadenaConexion(Carpeta(), archivo));
    db.Conectar();
    for (const QString &s : sentencias) {
        try {
            db.Ejecutar(s);
        } catch (const oDB::ErrorBD &e) {
            throw std::runtime_error((e.descripcion + QStringLiteral(" in: ") + s).toStdString());
        }
    }
}

QStringList LibroDePrueba::Filas(const QString &sql, const QString &archivo) const
{
    oDB::clManejo db;
    db.setCadenaConexion(CadenaConexion(Carpeta(), archivo));
    db.Conectar();
    oDB::Recordset rs;
    db.CrearRs(rs, sql);
    if (!rs.Abierto())
        throw std::runtime_error((db.UltimoError() + QStringLiteral(" in: ") + sql).toStdString());
    QStringList out = rs.GetString(QStringLiteral("|"), QStringLiteral("\n")).split(u'\n');
    out.removeLast();
    return out;
}

long LibroDePrueba::Contar(const QString &tabla, const QString &where) const
{
    const QStringList f = Filas(QStringLiteral("select count(*) from ") + tabla +
                                (where.isEmpty() ? QString() : QStringLiteral(" where ") + where));
    return f.value(0).toLong();
}

namespace {
QString N(double n) { return QString::number(n, 'g', 15); }
QString Iso(const QString &fecha) { return conv::TextoAFecha(fecha)->toString(Qt::ISODate); }
} // namespace

void LibroDePrueba::Empresa(const QString &cuit, const QString &nombre, const QString &conIva)
{
    Ejecutar(QStringLiteral("personal.mdb"),
             {QStringLiteral("insert into USR values ('%1','%2','%3','Calle 1','info@empresa.com.ar')")
                  .arg(cuit, nombre, conIva)});
}

void LibroDePrueba::Proveedor(const QString &cuit, const QString &nombre)
{
    Ejecutar(QStringLiteral("insert into PRV values ('%1','%2','Av. Siempreviva 742','4444-5555','p@x.com','Juan','2020-01-01')")
                 .arg(cuit, nombre));
}

void LibroDePrueba::Factura(const QString &empresa, const QString &proveedor, const QString &periodo,
                            const QString &fecha, const QString &tipo, const QString &numero,
                            double gravado, double noGravado, double iva, double ingBrutos)
{
    Ejecutar(QStringLiteral("insert into IVC values ('%1','%2','%3','%4','%5','%6',%7,%8,%9,0,%10,'2026-11-01','','')")
                 .arg(empresa, proveedor, Iso(periodo), Iso(fecha), tipo, numero, N(gravado), N(noGravado), N(iva))
                 .arg(N(ingBrutos)));
}

void LibroDePrueba::LineaIVA(const QString &empresa, const QString &proveedor, const QString &numero,
                             int id, double tasa, const QString &descripcion, double valor)
{
    Ejecutar(QStringLiteral("insert into IVC_DetIVA values ('%1','%2','%3',%4,%5,'%6',%7)")
                 .arg(empresa, proveedor, numero).arg(id).arg(N(tasa), descripcion, N(valor)));
}

void LibroDePrueba::LineaIB(const QString &empresa, const QString &proveedor, const QString &numero,
                            int id, double tasa, const QString &descripcion, double valor)
{
    Ejecutar(QStringLiteral("insert into IVC_DetIngBrutos values ('%1','%2','%3',%4,%5,'%6',%7)")
                 .arg(empresa, proveedor, numero).arg(id).arg(N(tasa), descripcion, N(valor)));
}

void LibroDePrueba::LineaGravado(const QString &empresa, const QString &proveedor, const QString &numero,
                                 int id, double valor)
{
    Ejecutar(QStringLiteral("insert into IVC_Gravado values ('%1','%2','%3',%4,%5)")
                 .arg(empresa, proveedor, numero).arg(id).arg(N(valor)));
}
