// ivacompras importar-access ORIGEN DESTINO: the old Access books of ORIGEN as new books in
// DESTINO, with a line per table as it is copied and, at the end, the rows counted in the new
// books and the demo's summary of companies, periods and invoices.

#include "app/Comandos.h"

#include "data/oDB.h"
#include "import/ImportarAccess.h"

#include <cstdio>

namespace {
void Linea(const QString &texto) { Escribir(stdout, texto + u'\n'); }
} // namespace

int ComandoImportarAccess(const QStringList &args)
{
    if (args.size() != 2) {
        std::fprintf(stderr, "uso: ivacompras importar-access ORIGEN DESTINO\n");
        return 2;
    }
    importar::ResultadoImportacion r;
    try {
        Linea(QStringLiteral("Importando los libros de Access de %1").arg(args[0]));
        r = importar::ImportarAccess(args[0], args[1], Linea, true);
    } catch (const oDB::ErrorBD &e) {
        Escribir(stderr, e.descripcion + u'\n');
        Escribir(stderr, QStringLiteral("No se importó nada: '%1' quedó como estaba.\n").arg(args[1]));
        return 1;
    }
    Linea(QStringLiteral("Archivos leídos: %1").arg(r.versiones.join(QStringLiteral(", "))));
    Linea(QStringLiteral("Filas en los libros nuevos:"));
    for (const importar::TablaImportada &t : r.tablas)
        Linea(QStringLiteral("  %1 %2 %3")
                  .arg(t.archivo.leftJustified(16), t.tabla.leftJustified(17), QString::number(t.filas).rightJustified(8)));
    QStringList horas;
    for (const importar::TablaImportada &t : r.tablas) {
        if (t.filasConHora == 0)
            continue;
        QStringList columnas;
        for (const auto &h : t.horas)
            columnas << QStringLiteral("%1 %2").arg(h.first, QString::number(h.second));
        horas << QStringLiteral("  %1: %2 filas (%3)")
                     .arg(t.tabla, QString::number(t.filasConHora), columnas.join(QStringLiteral(", ")));
    }
    if (!horas.isEmpty()) {
        Linea(QStringLiteral("Fechas que tenían hora; se guardan sin ella, como las comparaba el programa anterior:"));
        for (const QString &h : horas)
            Linea(h);
    }
    for (const QString &a : r.avisos)
        Linea(QStringLiteral("Aviso: ") + a);
    Escribir(stdout, r.resumen.Texto(QStringLiteral("Libros importados en %1").arg(r.resumen.carpeta)));
    return 0;
}
