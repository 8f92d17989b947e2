// ivacompras verificar: the period check of one company and period, printed as an aligned
// table or as CSV, with the count of errors and warnings. Exit status 0 without errors, 1 with
// errors, 2 when the check could not run.

#include "app/Comandos.h"

#include "app/core/Sesion.h"
#include "checks/Csv.h"
#include "checks/Verificacion.h"
#include "data/Convenciones.h"

#include <cstdio>

namespace {

using verificacion::Hallazgo;

QStringList Columnas(const Hallazgo &h)
{
    return {verificacion::TextoSeveridad(h.severidad),
            h.regla,
            conv::FechaCorta(h.fecha),
            h.tipo,
            h.numero,
            h.cuit,
            h.nombre,
            h.mensaje,
            h.accion};
}

const QStringList kCabecera = {QStringLiteral("Severidad"), QStringLiteral("Regla"),     QStringLiteral("Fecha"),
                               QStringLiteral("Tipo"),      QStringLiteral("Número"),    QStringLiteral("CUIT"),
                               QStringLiteral("Proveedor"), QStringLiteral("Hallazgo"), QStringLiteral("Qué hacer")};

// Every column padded to its widest cell; the last one is left as it is.
QString Tabla(const QList<QStringList> &filas)
{
    QList<qsizetype> anchos(kCabecera.size(), 0);
    for (const QStringList &f : filas)
        for (qsizetype c = 0; c < f.size(); ++c)
            anchos[c] = std::max(anchos[c], f[c].size());
    QString out;
    for (const QStringList &f : filas) {
        QString linea;
        for (qsizetype c = 0; c < f.size(); ++c)
            linea += c + 1 < f.size() ? f[c].leftJustified(anchos[c] + 2) : f[c];
        // A control character of a name would break the alignment: it shows as a blank.
        for (QChar &ch : linea)
            if (ch.unicode() < 0x20)
                ch = u' ';
        out += linea + u'\n';
    }
    return out;
}

} // namespace

int ComandoVerificar(const QStringList &args)
{
    const std::optional<bool> enCsv = FormatoCsv(args);
    if (!enCsv) {
        std::fprintf(stderr, "uso: ivacompras verificar --datos DIR --cuit CUIT --periodo MM/AAAA "
                             "[--formato texto|csv]\n");
        return 2;
    }
    Sesion s;
    if (!PrepararSesion(s, args))
        return 2;
    verificacion::Resultado r;
    try {
        r = verificacion::VerificarPeriodo(*s.dbLibro, s.CuitUsuario, s.PeriodoDesde);
    } catch (const oDB::ErrorBD &e) {
        Escribir(stderr, e.descripcion + u'\n');
        return 2;
    }

    QList<QStringList> filas{kCabecera};
    for (const Hallazgo &h : r.hallazgos)
        filas << Columnas(h);
    const QString resumen = QStringLiteral("%1 errores, %2 avisos en %3 facturas de %4, período %5.\n")
                                .arg(QString::number(r.errores), QString::number(r.avisos),
                                     QString::number(r.facturas), s.NombreUsuario,
                                     s.MesAnio());
    if (*enCsv) {
        QString out;
        for (const QStringList &f : filas)
            out += csv::Fila(f);
        Escribir(stdout, out);
        Escribir(stderr, resumen);
    } else {
        Escribir(stdout, (r.hallazgos.isEmpty() ? QString() : Tabla(filas) + u'\n') + resumen);
    }
    return r.errores > 0 ? 1 : 0;
}
