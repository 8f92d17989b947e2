// Times the F10 export on the large book: GenerarReporte from the invoice query to the three
// files written (spreadsheet, vouchers, VAT rates), through the database component, and for
// comparison the same statement texts on the bare SQLite API (prepare, step, every column read
// into a string; nothing formatted, nothing written). Prints the medians and their ratio.
//
//   bench_exportar [FOLDER] [RUNS]   FOLDER defaults to $IVC_BENCH_DIR or <tmp>/ivacompras-bench

#include "GeneradorLibro.h"
#include "Medicion.h"

#include "app/core/DialogoGuardar.h"
#include "app/core/Sesion.h"
#include "data/oDB.h"
#include "reports/Exportar.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <cstdio>
#include <string>
#include <vector>

namespace {

int Columna(sqlite3_stmt *st, const char *nombre)
{
    for (int c = 0; c < sqlite3_column_count(st); ++c)
        if (qstricmp(sqlite3_column_name(st, c), nombre) == 0)
            return c;
    return -1;
}

QString Texto(sqlite3_stmt *st, int c)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, c)), sqlite3_column_bytes(st, c));
}

// The statements of the run: the invoice query, the supplier name and first rate of each
// invoice, the summary by rate, the other rates and the untaxed and gross-income sums.
long PorSQLite(sqlite3 *db, const Sesion &s)
{
    std::vector<std::string> celdas;
    celdas.reserve(400000);
    int cTipo = -1, cNro = -1, cPrv = -1;
    const long facturas = banco::Directo(db, SqlFacturasPeriodo(s.CuitUsuario, s.PeriodoDesde).toUtf8(), celdas, [&](sqlite3_stmt *st) {
        if (cTipo < 0) {
            cTipo = Columna(st, "IVCSTIPFAC");
            cNro = Columna(st, "IVCSNROFAC");
            cPrv = Columna(st, "PRVSNRCUIT");
        }
        const QString tipo = Texto(st, cTipo), prv = Texto(st, cPrv);
        const QString numero20 = CampoNumero(SepararNumero(tipo, Texto(st, cNro)));
        banco::Directo(db, SqlNombreProveedor(prv).toUtf8(), celdas);
        banco::Directo(db, SqlAlicuota(s.CuitUsuario, numero20, prv).toUtf8(), celdas);
    });
    for (const char *tasa : {"10.5", "21", "27"})
        banco::Directo(db, SqlResumenTasa(QString::fromLatin1(tasa), s.CuitUsuario, s.PeriodoDesde).toUtf8(), celdas);
    banco::Directo(db, SqlResumenOtras(s.CuitUsuario, s.PeriodoDesde).toUtf8(), celdas);
    banco::Directo(db, SqlResumenNoGravado(s.CuitUsuario, s.PeriodoDesde).toUtf8(), celdas);
    return facturas;
}

void Medir(const banco::LibroGrande &libro, const banco::PeriodoMedido &p, int corridas, bool objetivo)
{
    banco::ExportacionMedida e(libro, p);
    Sesion *s = e.s.get();
    const QTemporaryDir &dir = e.dir;
    const banco::MensajesContados &mensajes = e.mensajes;
    sqlite3 *db = oDB::clManejo::Abrir(libro.carpeta + QStringLiteral("kestrel.mdb"), false);

    // Both sides see every invoice of the period; the files hold one record per invoice.
    QString tab = QStringLiteral("\t");
    const bool escrito = GenerarReporte(*s, tab, nullptr);
    const qint64 comprobantes = QFileInfo(dir.filePath(QStringLiteral("periodo COMPRAS COMPRBTE.txt"))).size();
    const qint64 alicuotas = QFileInfo(dir.filePath(QStringLiteral("periodo COMPRAS ALICUOTAS.txt"))).size();
    const long filasDirecto = PorSQLite(db, *s);
    if (!escrito || mensajes.textos.value(mensajes.textos.size() - 1) != QLatin1String("Archivos Generados") ||
        comprobantes != 327 * p.facturas || alicuotas != 86 * p.facturas || filasDirecto != p.facturas) {
        std::fprintf(stderr, "resultado inesperado: %s; comprobantes %lld bytes, alicuotas %lld bytes, SQLite %ld filas, esperadas %ld\n",
                     qPrintable(mensajes.textos.join(QStringLiteral(" | "))), comprobantes, alicuotas, filasDirecto,
                     p.facturas);
        std::exit(1);
    }

    const banco::Medianas m =
        banco::EnTurnos(corridas, [&] { GenerarReporte(*s, tab, nullptr); }, [&] { PorSQLite(db, *s); });
    sqlite3_close_v2(db);
    const banco::Objetivo meta{1000, 3, "< 1 s, ratio < 3"};
    banco::Informar(p, "GenerarReporte", m, objetivo ? &meta : nullptr);
}

} // namespace

int main(int argc, char **argv)
{
    return banco::Principal(argc, argv, 7, [](const banco::LibroGrande &libro, int corridas) {
        Medir(libro, libro.periodo20000, corridas, true);
        Medir(libro, libro.periodo2000, corridas, false);
        Medir(libro, libro.periodoComun, corridas, false);
    });
}
