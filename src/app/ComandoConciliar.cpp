// ivacompras conciliar: the F8 reconciliation of one company and period with the tax
// authority's list of received vouchers; with --cargar, the missing vouchers the book can keep
// are brought in first.

#include "app/Comandos.h"

#include "app/core/Sesion.h"
#include "checks/Conciliacion.h"
#include "data/Convenciones.h"

#include <cstdio>

int ComandoConciliar(const QStringList &args)
{
    const QString archivo = Opcion(args, QStringLiteral("--archivo"));
    const std::optional<bool> enCsv = FormatoCsv(args);
    if (archivo.isEmpty() || !enCsv) {
        std::fprintf(stderr, "uso: ivacompras conciliar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo RUTA "
                             "[--cargar] [--formato texto|csv]\n");
        return 2;
    }
    Sesion s;
    if (!PrepararSesion(s, args))
        return 2;
    recibidos::Lista lista;
    try {
        conciliacion::Resultado r = conciliacion::LeerYConciliar(s, archivo, lista);
        Escribir(stderr, recibidos::DescripcionArchivo(archivo, lista) + u'\n');
        if (TieneOpcion(args, QStringLiteral("--cargar"))) {
            QVector<recibidos::Comprobante> elegidos;
            for (const conciliacion::Faltante &f : r.faltantes)
                if (f.Cargable())
                    elegidos << f.c;
            const int n = conciliacion::Cargar(s, elegidos);
            Escribir(stderr, conciliacion::TextoCargados(s, n) + u'\n');
            r = conciliacion::Conciliar(s, lista);
        }
        Escribir(stdout, conciliacion::Informe(r, *enCsv));
        return r.Coinciden() ? 0 : 1;
    } catch (const recibidos::ErrorLectura &e) {
        Escribir(stderr, e.mensaje + u'\n');
    } catch (const conciliacion::ErrorEmpresa &e) {
        Escribir(stderr, recibidos::DescripcionArchivo(archivo, lista) + u'\n' + e.mensaje + u'\n');
    } catch (const oDB::ErrorBD &e) {
        Escribir(stderr, conciliacion::TextoNoSePudo(e.descripcion) + u'\n');
    } catch (const conv::ErrorConversion &e) {
        Escribir(stderr, conciliacion::TextoNoSePudo(e.descripcion) + u'\n');
    }
    return 2;
}
