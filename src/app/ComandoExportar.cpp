// ivacompras exportar: the F10 export of one company and period, with the path given on the
// command line in place of the save dialog.

#include "app/Comandos.h"

#include "app/core/DialogoGuardar.h"
#include "app/core/Sesion.h"
#include "reports/Exportar.h"

#include <cstdio>

namespace {

// The save dialog of the command line: it answers the path it was given.
class DialogoRuta : public DialogoGuardar
{
public:
    explicit DialogoRuta(const QString &ruta) : ruta_(ruta) {}
    QString GuardarComo(const QString &, const QList<FiltroArchivo> &, const QString &,
                        const QString &, QWidget *) override
    {
        return ruta_;
    }

private:
    QString ruta_;
};

} // namespace

int ComandoExportar(const QStringList &args)
{
    const QString archivo = Opcion(args, QStringLiteral("--archivo"));
    if (archivo.isEmpty()) {
        std::fprintf(stderr, "uso: ivacompras exportar --datos DIR --cuit CUIT --periodo MM/AAAA "
                             "--archivo RUTA.xls [--ajustes DIR]\n");
        return 2;
    }
    Sesion s{Ajustes(Opcion(args, QStringLiteral("--ajustes")))};
    DialogoRuta dialogo(archivo);
    s.dialogo = &dialogo;
    if (!PrepararSesion(s, args))
        return 1;
    // The separator the main window passes on F10.
    QString separador = QStringLiteral("\t");
    return GenerarReporte(s, separador, nullptr) ? 0 : 1;
}
