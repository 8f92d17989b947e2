// Times the period check (F9, ivacompras verificar) on the large book against the F10 export of
// the same period: VerificarPeriodo from its first statement to the sorted findings, and
// GenerarReporte from the invoice query to the three files written. The check must take less
// than the export. Prints the medians and their ratio.
//
//   bench_verificar [FOLDER] [RUNS]  FOLDER defaults to $IVC_BENCH_DIR or <tmp>/ivacompras-bench

#include "GeneradorLibro.h"
#include "Medicion.h"

#include "app/core/DialogoGuardar.h"
#include "app/core/Sesion.h"
#include "checks/Verificacion.h"
#include "reports/Exportar.h"

#include <QTemporaryDir>
#include <cstdio>

namespace {

void Medir(const banco::LibroGrande &libro, const banco::PeriodoMedido &p, int corridas, bool objetivo)
{
    banco::ExportacionMedida e(libro, p);
    Sesion *s = e.s.get();
    QString tab = QStringLiteral("\t");

    // Both see every invoice of the period.
    const verificacion::Resultado r = verificacion::VerificarPeriodo(*s->dbLibro, s->CuitUsuario, s->PeriodoDesde);
    if (r.facturas != p.facturas || !GenerarReporte(*s, tab, nullptr)) {
        std::fprintf(stderr, "resultado inesperado: %d facturas verificadas, esperadas %ld\n", r.facturas, p.facturas);
        std::exit(1);
    }

    const banco::Medianas m = banco::EnTurnos(
        corridas, [&] { verificacion::VerificarPeriodo(*s->dbLibro, s->CuitUsuario, s->PeriodoDesde); },
        [&] { GenerarReporte(*s, tab, nullptr); });
    QByteArray meta;
    if (objetivo)
        meta = m.componente < m.directo ? "  [objetivo: verificar < exportar: cumplido]"
                                        : "  [objetivo: verificar < exportar: NO cumplido]";
    std::printf("%-28s %6ld facturas  VerificarPeriodo %8.2f ms (%d errores, %d avisos)  GenerarReporte %8.2f ms  "
                "ratio %.2f%s\n",
                qPrintable(QStringLiteral("%1 %2").arg(p.cuit, p.periodo.mid(3))), p.facturas, m.componente, r.errores,
                r.avisos, m.directo, m.componente / m.directo, meta.constData());
}

} // namespace

int main(int argc, char **argv)
{
    return banco::Principal(argc, argv, 5, [](const banco::LibroGrande &libro, int corridas) {
        Medir(libro, libro.periodo20000, corridas, true);
        Medir(libro, libro.periodo2000, corridas, false);
        Medir(libro, libro.periodoComun, corridas, false);
    });
}
