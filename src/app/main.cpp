#include "app/Comandos.h"
#include "app/Programa.h"

#include <QCoreApplication>
#include <QDir>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <QStringList>
#include <cstdio>

namespace {

// The program often runs where no graphical session set up a runtime folder (commands over
// ssh, windows on a remote X display): the one Qt would fall back to, with a warning on every
// run, is made here, private to the user, so the program prints only what it has to say.
void CarpetaDeEjecucion()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QByteArray carpeta = QDir::tempPath().toLocal8Bit() + "/runtime-" + QByteArray::number(::getuid());
    struct stat info;
    if (::mkdir(carpeta.constData(), 0700) != 0 && errno != EEXIST)
        return;
    if (::stat(carpeta.constData(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::getuid() &&
        (info.st_mode & 0777) == 0700)
        qputenv("XDG_RUNTIME_DIR", carpeta);
}

} // namespace

int main(int argc, char **argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const QString comando = args.value(0);
    CarpetaDeEjecucion();
    if (comando == QLatin1String("--version")) {
        std::printf("ivacompras %s\n", IVC_VERSION);
        return 0;
    }
    // The ledger draws its pages without a screen and makes its own application; every other
    // command runs under a plain one.
    if (comando == QLatin1String("imprimir"))
        return ComandoImprimir(args.mid(1));
    static const struct {
        const char *nombre;
        int (*ejecutar)(const QStringList &);
    } comandos[] = {{"demo", ComandoDemo},           {"crear-bases", ComandoCrearBases},
                    {"cuenta", ComandoCuenta},       {"exportar", ComandoExportar},
                    {"verificar", ComandoVerificar}, {"importar-access", ComandoImportarAccess},
                    {"conciliar", ComandoConciliar}};
    for (const auto &c : comandos)
        if (comando == QLatin1String(c.nombre)) {
            QCoreApplication app(argc, argv);
            return c.ejecutar(args.mid(1));
        }
    if (args.isEmpty())
        return EjecutarPrograma(argc, argv, QString());
    if (args.size() == 2 && comando == QLatin1String("--ajustes"))
        return EjecutarPrograma(argc, argv, args[1]);
    std::fprintf(stderr,
                 "uso: ivacompras [--ajustes DIR]\n"
                 "     ivacompras --version\n"
                 "     ivacompras crear-bases DIR\n"
                 "     ivacompras demo DIR\n"
                 "     ivacompras exportar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo RUTA.xls\n"
                 "     ivacompras imprimir --datos DIR --cuit CUIT --periodo MM/AAAA (--pdf RUTA | --texto RUTA)"
                 " [--fuente N] [--lineas N]\n"
                 "     ivacompras cuenta --datos DIR --cuit CUIT [--proveedor CUIT]\n"
                 "     ivacompras verificar --datos DIR --cuit CUIT --periodo MM/AAAA [--formato texto|csv]\n"
                 "     ivacompras importar-access ORIGEN DESTINO\n"
                 "     ivacompras conciliar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo RUTA [--cargar]"
                 " [--formato texto|csv]\n");
    return 2;
}
