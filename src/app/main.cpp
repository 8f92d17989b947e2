#include "app/Comandos.h"
#include "app/Programa.h"

#include <QCoreApplication>
#include <QStringList>
#include <cstdio>

int main(int argc, char **argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const QString comando = args.value(0);
    if (comando == QLatin1String("demo")) {
        QCoreApplication app(argc, argv);
        return ComandoDemo(args.mid(1));
    }
    if (comando == QLatin1String("crear-bases")) {
        QCoreApplication app(argc, argv);
        return ComandoCrearBases(args.mid(1));
    }
    if (comando == QLatin1String("imprimir"))
        return ComandoImprimir(args.mid(1));
    if (comando == QLatin1String("cuenta")) {
        QCoreApplication app(argc, argv);
        return ComandoCuenta(args.mid(1));
    }
    if (comando == QLatin1String("exportar")) {
        QCoreApplication app(argc, argv);
        return ComandoExportar(args.mid(1));
    }
    if (comando == QLatin1String("conciliar")) {
        QCoreApplication app(argc, argv);
        return ComandoConciliar(args.mid(1));
    }
    if (args.isEmpty())
        return EjecutarPrograma(argc, argv, QString());
    if (args.size() == 2 && comando == QLatin1String("--ajustes"))
        return EjecutarPrograma(argc, argv, args[1]);
    std::fprintf(stderr,
                 "uso: ivacompras [--ajustes DIR]\n"
                 "     ivacompras crear-bases DIR\n"
                 "     ivacompras demo DIR\n"
                 "     ivacompras exportar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo RUTA.xls\n"
                 "     ivacompras imprimir --datos DIR --cuit CUIT --periodo MM/AAAA (--pdf RUTA | --texto RUTA)"
                 " [--fuente N] [--lineas N]\n"
                 "     ivacompras cuenta --datos DIR --cuit CUIT [--proveedor CUIT]\n"
                 "     ivacompras conciliar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo FILE [--cargar]"
                 " [--formato texto|csv]\n");
    return 2;
}
