#include "app/core/Sesion.h"

#include "data/Convenciones.h"

#include <cmath>

QString CadenaConexion(const QString &carpeta, const QString &archivo)
{
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;Data Source=") +
           carpeta + archivo;
}

void Sesion::CrearComponentes()
{
    dbPersonal = std::make_unique<oDB::clManejo>();
    dbLibro = std::make_unique<oDB::clManejo>();
    oFormato = std::make_unique<cFORMAT::MAIN>();
}

QString Sesion::MesAnio() const { return conv::Format(QVariant(PeriodoDesde), QStringLiteral("mm/yyyy")); }

void Sesion::Conectar()
{
    if (!dbPersonal || !dbLibro)
        CrearComponentes();
    dbPersonal->setCadenaConexion(CadenaConexion(RutaPersonal, QStringLiteral("personal.mdb")));
    dbPersonal->Conectar();
    dbPersonal->ExigirTablas({QStringLiteral("USR")});
    dbLibro->setCadenaConexion(CadenaConexion(RutaLibro, QStringLiteral("kestrel.mdb")));
    dbLibro->Conectar();
    dbLibro->ExigirTablas({QStringLiteral("PRV"), QStringLiteral("IVC"), QStringLiteral("IVC_DetIVA"),
                           QStringLiteral("IVC_DetIngBrutos"), QStringLiteral("IVC_Gravado")});
}

void CalcularLimitesPeriodo(Sesion &s)
{
    const auto periodo = conv::TextoAFecha(s.Periodo);
    if (!periodo)
        throw conv::ErrorConversion{QStringLiteral("No coinciden los tipos")};
    const int mes = periodo->month();
    const int anio = periodo->year();
    const auto desde = conv::TextoAFecha(QStringLiteral("1-%1-%2").arg(mes).arg(anio));
    s.PeriodoDesde = conv::FechaCorta(*desde);
    const auto d = conv::TextoAFecha(QStringLiteral("1-%1-%2").arg(mes + 1).arg(anio));
    s.PeriodoHasta = conv::FechaCorta(d->addDays(-d->day()));
}

bool LeerDatos(Sesion &s)
{
    try {
        oUTL::clMAIN utl;
        oUTL::clINI ini;
        (void)ini;
        s.FechaHoy = conv::Hoy();
        s.NombrePC = utl.LEERNOMBREPC();
        s.SeparadorDecimal = utl.LEERSEPARADORDECIMAL();

        const Ajustes &a = s.ajustes;
        const QString blanco = QStringLiteral(" ");
        const QString fac = conv::Trim(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"),
                                              QStringLiteral("FACTURACION"), blanco));
        const QString kes = conv::Trim(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"),
                                              QStringLiteral("KESTRELRAS"), blanco));
        const QString sys = conv::Trim(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"),
                                              QStringLiteral("SYSTABLAS"), blanco));
        // A trimmed text is never one blank: the message is kept but never shows.
        if (fac == blanco || kes == blanco || sys == blanco) {
            if (s.mensajes)
                s.mensajes->MsgBox(QStringLiteral("Falta algunas ubicaciones de las Bases.\r\n\r\n"
                                                  "Verifique la configuración del Sistema"),
                                   vb::vbCritical + vb::vbSystemModal);
            return false;
        }
        s.RutaFacturacion = a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QStringLiteral("FACTURACION"));
        s.RutaLibro = a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QStringLiteral("KESTRELRAS"));
        s.RutaPersonal = a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QStringLiteral("PERSONAL"));
        s.IvaRIN = conv::CDbl(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("DATOS"), QStringLiteral("IVARIN"), QStringLiteral("0")));
        s.IvaRNI = conv::CDbl(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("DATOS"), QStringLiteral("IVARNI"), QStringLiteral("0")));
        s.CuitUsuario = a.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("USRSNROCUIT"));
        const QString periodo = a.Leer(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("IVCFPERIOD"));
        s.Periodo = conv::EsFecha(periodo)
                        ? periodo
                        : conv::FechaCorta(*conv::TextoAFecha(QStringLiteral("01-01-1990")));
        s.ImpFuente = conv::CDbl(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN"), QStringLiteral("9")));
        s.ImpLineasHoja = qint16(std::lround(conv::CDbl(
            a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPLIXP"), QStringLiteral("30")))));
        CalcularLimitesPeriodo(s);
        return true;
    } catch (const conv::ErrorConversion &) {
        // The error trap ends the procedure quietly, keeping what was already read.
        return false;
    }
}
