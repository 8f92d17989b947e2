// Times the import of the old Access books (importar-access) on the fixture books: the whole
// import (three new books made, every table copied and counted, moved into place), the reading
// of the Access files alone, and the making of the three empty books, which is the fixed part.
// Prints the medians and the cost per row. No larger Access file can be made here (nothing
// writes Access files), so the growth is measured on each side apart: the reading, as rows of
// the fixture's largest table read again and again; the writing, as the fixture's invoices and
// VAT lines copied 10, 100 and 1,000 times (numbers made distinct) into new books through the
// import's own copy, up to 400,000 invoices.
//
//   bench_importar [RUNS] [FOLDER...]   RUNS defaults to 9; the folders to the fixture books

#include "Medicion.h"
#include "data/Esquema.h"
#include "data/oDB.h"
#include "import/ImportarAccess.h"
#include "import/LibroAccess.h"

#include <QCoreApplication>
#include <sqlite3.h>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <ctime>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

// The median time of f over the runs, in milliseconds, after one warm-up run.
double Cronometrar(int corridas, const std::function<void()> &f)
{
    std::vector<double> ms;
    f(); // warm-up: the files in the page cache, as for a second run by the user
    for (int i = 0; i < corridas; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    return banco::Mediana(ms);
}

// Every row of every table of the Access files of the folder, read and dropped.
long Leer(const QString &carpeta)
{
    long filas = 0;
    for (const QString &f : QDir(carpeta).entryList({QStringLiteral("*.mdb")}, QDir::Files)) {
        jet::LibroAccess libro(QDir(carpeta).filePath(f));
        for (const QString &t : libro.Tablas()) {
            jet::TablaAccess tabla = libro.Tabla(t);
            QVector<QVariant> fila;
            while (tabla.Siguiente(fila))
                ++filas;
        }
    }
    return filas;
}

// The rows of an Access table, in memory.
struct Tabla {
    QStringList columnas;
    QList<QVector<QVariant>> filas;
};

Tabla Cargar(jet::LibroAccess &libro, const QString &nombre)
{
    Tabla t;
    jet::TablaAccess a = libro.Tabla(nombre);
    for (const jet::ColumnaAccess &c : a.Columnas())
        t.columnas << c.nombre;
    QVector<QVariant> fila;
    while (a.Siguiente(fila))
        t.filas << fila;
    return t;
}

// The invoices and VAT lines of the fixture copied veces times into a new book; the rows.
long Copiar(const QString &dir, const Tabla &ivc, const Tabla &iva, int veces)
{
    QDir().mkpath(dir);
    esquema::CrearBases(dir);
    sqlite3 *db = oDB::clManejo::Abrir(dir + QStringLiteral("/kestrel.mdb"), false);
    // The cache the import gives its own connection.
    sqlite3_exec(db, "PRAGMA cache_size = -262144", nullptr, nullptr, nullptr);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    long filas = 0;
    QStringList avisos;
    for (const Tabla *t : {&ivc, &iva}) {
        const int nro = int(t->columnas.indexOf(QStringLiteral("IVCSNROFAC")));
        long i = 0;
        importar::FuenteFilas fuente{QStringLiteral("fixture"), t->columnas, [&](QVector<QVariant> &f) {
                                         if (i >= long(t->filas.size()) * veces)
                                             return false;
                                         f = t->filas[int(i % t->filas.size())];
                                         f[nro] = f[nro].toString() + u'-' + QString::number(i / t->filas.size());
                                         ++i;
                                         return true;
                                     }};
        filas += importar::CopiarFilas(db, QStringLiteral("kestrel.mdb"), t == &ivc ? QStringLiteral("IVC") : QStringLiteral("IVC_DetIVA"),
                                       fuente, avisos).leidas;
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close_v2(db);
    return filas;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const int corridas = std::max(3, args.isEmpty() ? 9 : args[0].toInt());
    QStringList carpetas = args.mid(1);
    if (carpetas.isEmpty())
        carpetas = {QStringLiteral(IVC_FIXTURAS_ACCESS "/jet4"), QStringLiteral(IVC_FIXTURAS_ACCESS "/jet4-2003")};
    QTemporaryDir tmp;
    int n = 0;
    try {
        const double vacias = Cronometrar(corridas, [&] {
            const QString d = tmp.filePath(QStringLiteral("vacio%1").arg(n++));
            QDir().mkpath(d);
            esquema::CrearBases(d);
        });
        std::printf("importar: tres libros vacíos creados (parte fija): mediana %.1f ms (%d corridas)\n", vacias, corridas);
        for (const QString &origen : carpetas) {
            long filas = 0, facturas = 0;
            const double lectura = Cronometrar(corridas, [&] { filas = Leer(origen); });
            const double total = Cronometrar(corridas, [&] {
                const auto r = importar::ImportarAccess(origen, tmp.filePath(QStringLiteral("libro%1").arg(n++)));
                facturas = r.resumen.facturas;
            });
            std::printf("importar %s: %ld filas (%ld facturas): mediana de la importación %.1f ms, de los que la "
                        "lectura de los archivos de Access es %.1f ms (%.2f us/fila); importación sin la parte fija "
                        "%.1f ms = %.2f us/fila\n",
                        qPrintable(QDir(origen).dirName()), filas, facturas, total, lectura, lectura * 1000 / filas,
                        total - vacias, (total - vacias) * 1000 / filas);
        }
        // The growth, each side apart, on the first folder's kestrel.mdb.
        jet::LibroAccess kestrel(QDir(carpetas[0]).filePath(QStringLiteral("kestrel.mdb")));
        for (int veces : {1, 10, 100}) {
            long filas = 0;
            QElapsedTimer t;
            t.start();
            const std::clock_t cpu0 = std::clock();
            for (int v = 0; v < veces; ++v) {
                jet::TablaAccess ivc = kestrel.Tabla(QStringLiteral("IVC"));
                QVector<QVariant> fila;
                while (ivc.Siguiente(fila))
                    ++filas;
            }
            const double ms = double(t.nsecsElapsed()) / 1e6;
            const double cpu = double(std::clock() - cpu0) * 1000 / CLOCKS_PER_SEC;
            std::printf("importar: lectura de IVC %d %s: %ld filas en %.1f ms = %.2f us/fila (procesador %.2f us/fila)\n",
                        veces, veces == 1 ? "vez" : "veces", filas, ms, ms * 1000 / filas, cpu * 1000 / filas);
        }
        const Tabla ivc = Cargar(kestrel, QStringLiteral("IVC"));
        const Tabla iva = Cargar(kestrel, QStringLiteral("IVC_DetIVA"));
        for (int veces : {10, 100, 1000}) {
            QElapsedTimer t;
            t.start();
            const std::clock_t cpu0 = std::clock();
            const long filas = Copiar(tmp.filePath(QStringLiteral("copia%1").arg(veces)), ivc, iva, veces);
            const double ms = double(t.nsecsElapsed()) / 1e6;
            // The processor time too: on a busy machine the elapsed time is mostly waiting.
            const double cpu = double(std::clock() - cpu0) * 1000 / CLOCKS_PER_SEC;
            std::printf("importar: escritura de %ld facturas y %ld líneas de IVA: %.0f ms = %.2f us/fila "
                        "(procesador %.0f ms = %.2f us/fila)\n",
                        long(ivc.filas.size()) * veces, long(iva.filas.size()) * veces, ms, ms * 1000 / filas, cpu,
                        cpu * 1000 / filas);
            QDir(tmp.filePath(QStringLiteral("copia%1").arg(veces))).removeRecursively();
        }
    } catch (const oDB::ErrorBD &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.descripcion));
        return 1;
    } catch (const jet::ErrorAccess &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.descripcion));
        return 1;
    }
    return 0;
}
