#include "app/Comandos.h"

#include "data/Esquema.h"
#include "data/oDB.h"

#include <cstdio>

int ComandoCrearBases(const QStringList &args)
{
    if (args.size() != 1) {
        std::fprintf(stderr, "uso: ivacompras crear-bases DIR\n");
        return 2;
    }
    try {
        esquema::CrearBases(args[0]);
    } catch (const oDB::ErrorBD &e) {
        std::fprintf(stderr, "%s\n", e.descripcion.toLocal8Bit().constData());
        return 1;
    }
    std::printf("Bases creadas en %s\n", args[0].toLocal8Bit().constData());
    return 0;
}
