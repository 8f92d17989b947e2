#include "Medicion.h"

#include "data/oDB.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>
#include <algorithm>

namespace banco {

double Mediana(std::vector<double> ms)
{
    if (ms.empty())
        return 0;
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

namespace {

double Ms(const QElapsedTimer &t) { return t.nsecsElapsed() / 1e6; }

} // namespace

Medianas EnTurnos(int corridas, const std::function<void()> &componente, const std::function<void()> &directo)
{
    componente();
    directo();
    std::vector<double> tComp, tDirecto;
    for (int i = 0; i < corridas; ++i) {
        QElapsedTimer t;
        t.start();
        componente();
        tComp.push_back(Ms(t));
        t.start();
        directo();
        tDirecto.push_back(Ms(t));
    }
    return {Mediana(tComp), Mediana(tDirecto)};
}

void Informar(const PeriodoMedido &p, const char *camino, const Medianas &m, const Objetivo *objetivo)
{
    const double ratio = m.componente / m.directo;
    QByteArray meta;
    if (objetivo) {
        const bool cumplido = m.componente < objetivo->ms && ratio < objetivo->ratio;
        meta = QByteArray("  [objetivo: ") + objetivo->texto + (cumplido ? ": cumplido]" : ": NO cumplido]");
    }
    std::printf("%-28s %6ld facturas  %s %8.2f ms  SQLite %8.2f ms  ratio %.2f%s\n",
                qPrintable(QStringLiteral("%1 %2").arg(p.cuit, p.periodo.mid(3))), p.facturas, camino, m.componente,
                m.directo, ratio, meta.constData());
}

int Principal(int argc, char **argv, int corridasPorDefecto,
              const std::function<void(const LibroGrande &, int)> &medir)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const QString carpeta = args.value(0, CarpetaPorDefecto());
    const int corridas = qMax(3, args.value(1, QString::number(corridasPorDefecto)).toInt());
    try {
        const LibroGrande libro = GenerarLibroGrande(carpeta);
        std::printf("Libro de %ld facturas en %s%s; mediana de %d corridas\n", libro.facturas,
                    qPrintable(libro.carpeta), libro.reusado ? " (reusado)" : "", corridas);
        medir(libro, corridas);
    } catch (const oDB::ErrorBD &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.descripcion));
        return 1;
    }
    return 0;
}

} // namespace banco
