#include "app/Comandos.h"

#include "app/core/Demo.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/Esquema.h"
#include "data/SegProveedores.h"
#include "data/oDB.h"

#include <QDir>
#include <QRegularExpression>
#include <cstdio>

namespace {
QString Carpeta(const QString &dir)
{
    QString c = QDir(dir).absolutePath();
    return c.endsWith(u'/') ? c : c + u'/';
}
} // namespace

QString Opcion(const QStringList &args, const QString &nombre)
{
    const qsizetype i = args.indexOf(nombre);
    return i >= 0 && i + 1 < args.size() ? args[i + 1] : QString();
}

QString Opcion(const QStringList &args, const QString &nombre, const QString &porDefecto)
{
    return args.contains(nombre) ? Opcion(args, nombre) : porDefecto;
}

bool TieneOpcion(const QStringList &args, const QString &nombre) { return args.contains(nombre); }

std::optional<bool> FormatoCsv(const QStringList &args)
{
    const QString formato = Opcion(args, QStringLiteral("--formato"), QStringLiteral("texto"));
    if (formato == QLatin1String("texto") || formato == QLatin1String("csv"))
        return formato == QLatin1String("csv");
    return std::nullopt;
}

void Escribir(std::FILE *f, const QString &texto)
{
    std::fputs(texto.toLocal8Bit().constData(), f);
    std::fflush(f);
}

void Error(const QString &texto) { Escribir(stderr, texto + u'\n'); }

bool PrepararSesion(Sesion &s, const QStringList &args)
{
    const QString datos = Opcion(args, QStringLiteral("--datos"));
    const QString cuit = Opcion(args, QStringLiteral("--cuit"));
    const QString periodo = Opcion(args, QStringLiteral("--periodo"));
    if (datos.isEmpty() || cuit.isEmpty() || periodo.isEmpty()) {
        Error(QStringLiteral("Faltan --datos, --cuit o --periodo."));
        return false;
    }
    static const QRegularExpression mesAnio(QStringLiteral("^(\\d{1,2})/(\\d{4})$"));
    const auto m = mesAnio.match(periodo);
    if (!m.hasMatch() || m.captured(1).toInt() < 1 || m.captured(1).toInt() > 12) {
        Error(QStringLiteral("El periodo debe escribirse MM/AAAA: '%1'.").arg(periodo));
        return false;
    }
    if (!s.mensajes) {
        static MensajesConsola consola;
        s.mensajes = &consola;
    }
    s.FechaHoy = conv::Hoy();
    s.SeparadorDecimal = QStringLiteral(",");
    s.RutaFacturacion = s.RutaLibro = s.RutaPersonal = Carpeta(datos);
    try {
        s.CrearComponentes();
        s.Conectar();
        oDB::Recordset rs;
        if (!s.dbPersonal->CrearRs(rs, QStringLiteral("select * from USR where USRSNRCUIT = ") + oDB::Q(cuit))) {
            const QString error = s.dbPersonal->UltimoError();
            Error(error.isEmpty() ? QStringLiteral("No se encuentra la información de este usuario.")
                                  : QStringLiteral("No se puede leer el archivo '%1': %2")
                                        .arg(s.dbPersonal->Archivo(), error));
            return false;
        }
        s.CuitUsuario = cuit;
        s.NombreUsuario = s.oFormato->EsNull(rs(QStringLiteral("USRSNOMBRE")));
        s.ConIva = s.oFormato->EsNull(rs(QStringLiteral("USRSCONIVA")));
        s.DomicilioUsuario = s.oFormato->EsNull(rs(QStringLiteral("USRSDOMICI")));
        s.EmailUsuario = s.oFormato->EsNull(rs(QStringLiteral("USRSEMAIL")));
        s.MesPeriodo = qint16(m.captured(1).toInt());
        s.Periodo = QStringLiteral("01/%1/%2").arg(QString::number(s.MesPeriodo), m.captured(2));
        CalcularLimitesPeriodo(s);
    } catch (const oDB::ErrorBD &e) {
        Error(e.descripcion);
        return false;
    } catch (const conv::ErrorConversion &e) {
        Error(QStringLiteral("El periodo '%1' no es una fecha válida: %2").arg(periodo, e.descripcion));
        return false;
    }
    return true;
}

int ComandoCrearBases(const QStringList &args)
{
    if (args.size() != 1) {
        std::fprintf(stderr, "uso: ivacompras crear-bases DIR\n");
        return 2;
    }
    try {
        // A folder that is not there yet is created, as the demo command does; books already
        // there are never overwritten.
        if (!QDir().mkpath(args[0]))
            throw oDB::ErrorBD{QStringLiteral("No se puede crear la carpeta '%1'.").arg(args[0])};
        esquema::CrearBases(args[0]);
    } catch (const oDB::ErrorBD &e) {
        Error(e.descripcion);
        return 1;
    }
    std::printf("Bases creadas en %s\n", args[0].toLocal8Bit().constData());
    return 0;
}

int ComandoCuenta(const QStringList &args)
{
    const QString datos = Opcion(args, QStringLiteral("--datos"));
    const QString cuit = Opcion(args, QStringLiteral("--cuit"));
    if (datos.isEmpty() || cuit.isEmpty()) {
        Error(QStringLiteral("uso: ivacompras cuenta --datos DIR --cuit CUIT [--proveedor CUIT]"));
        return 2;
    }
    const QString ruta = Carpeta(datos) + QStringLiteral("proveedores.mdb");
    SegProveedoresServices::clMAinSP sp;
    sp.setsp_pcuituser(cuit);
    sp.setPathDB(ruta);
    try {
        const auto imputaciones = sp.Imputaciones(Opcion(args, QStringLiteral("--proveedor")));
        std::printf("%-10s %-15s %-20s %-22s %-5s %14s  %s\n", "Fecha", "Proveedor", "Numero",
                    "Descripcion", "Lado", "Importe", "Registrado");
        double total = 0;
        for (const auto &i : imputaciones) {
            std::printf("%-10s %-15s %-20s %-22s %-5s %14s  %s\n",
                        conv::FechaCorta(i.fecha).toLocal8Bit().constData(),
                        i.proveedor.toLocal8Bit().constData(), i.numero.toLocal8Bit().constData(),
                        i.descripcion.toLocal8Bit().constData(), i.lado.toLocal8Bit().constData(),
                        conv::Format(i.importe, QStringLiteral("0.00")).toLocal8Bit().constData(),
                        i.registrado.toLocal8Bit().constData());
            total += i.importe;
        }
        std::printf("%d imputaciones, total %s\n", int(imputaciones.size()),
                    conv::Format(total, QStringLiteral("0.00")).toLocal8Bit().constData());
    } catch (const oDB::ErrorBD &e) {
        Error(e.descripcion);
        return 1;
    }
    return 0;
}

int ComandoDemo(const QStringList &args)
{
    if (args.size() != 1) {
        Error(QStringLiteral("uso: ivacompras demo DIR"));
        return 2;
    }
    try {
        const demo::ResumenDemo r = demo::CrearDemo(args[0]);
        std::fputs(r.Texto().toLocal8Bit().constData(), stdout);
    } catch (const oDB::ErrorBD &e) {
        Error(e.descripcion);
        return 1;
    }
    return 0;
}
