// Times the main window's period list on the large book: the totals statement and the list
// statement of gf_IVCXUSRPER_CLIP, through the database component (CrearRs, fields, GetString)
// and, for comparison, the same texts on the bare SQLite API (prepare, step, every column read
// into a string). Prints the medians and their ratio.
//
//   bench_lista [FOLDER] [RUNS]      FOLDER defaults to $IVC_BENCH_DIR or <tmp>/ivacompras-bench

#include "GeneradorLibro.h"

#include "app/core/Sesion.h"
#include "data/oDB.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <sqlite3.h>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

QString SqlTotales(const Sesion &s)
{
    return QStringLiteral("select count(*) as cant,sum(IVCDGRAVAD) as grav,sum(IVCDNOGRAV) as nograv,sum(IVARIN) as ivai,'00.00' as ivan,sum(IVCINGBRU) as inbr from IVC where USRSNRCUIT = '") +
           s.CuitUsuario + QStringLiteral("' and IVCFPERIOD = datevalue('") + s.PeriodoDesde + QStringLiteral("')");
}

QString SqlLista(const Sesion &s)
{
    return QStringLiteral("select format(IVCFCOMPRO,'dd/mm/yy') ,IVCSTIPFAC,IVCSNROFAC,PRV.PRVSNRCUIT,PRV.PRVSNOMBRE,format(IVCDGRAVAD,'00.00'),format(IVCDNOGRAV,'00.00'),format(IVARIN,'00.00'),IVCINGBRU,format(IVCDGRAVAD+IVCDNOGRAV+IVARIN+IVCINGBRU,'00.00') as total,ivarin,ivarni from IVC,PRV where IVC.PRVSNRCUIT = PRV.PRVSNRCUIT AND USRSNRCUIT = '") +
           s.CuitUsuario + QStringLiteral("' and IVCFPERIOD = datevalue('") + s.PeriodoDesde +
           QStringLiteral("') order by IVCFCOMPRO,val(IVCSNROFAC)");
}

// The period totals and the clip text of the list, as the main window loads them.
long PorComponente(Sesion &s)
{
    oDB::clManejo &db = *s.dbLibro;
    oDB::Recordset rs;
    db.CrearRs(rs, SqlTotales(s));
    if (s.oFormato->EsNumero(rs(QStringLiteral("cant"))) > 0) {
        s.TotGravado = s.oFormato->EsNumero(rs(QStringLiteral("grav")));
        s.TotNoGravado = s.oFormato->EsNumero(rs(QStringLiteral("nograv")));
        s.TotIva = s.oFormato->EsNumero(rs(QStringLiteral("ivai")));
        s.TotIngBrutos = s.oFormato->EsNumero(rs(QStringLiteral("inbr")));
    }
    rs.Close();
    db.CrearRs(rs, SqlLista(s));
    const long filas = rs.RecordCount();
    const QString clip = filas > 0 ? rs.GetString(QStringLiteral("\t"), QStringLiteral("\r"), QString()) : QString();
    rs.Close();
    return filas + long(clip.size() > 0);
}

long Directo(sqlite3 *db, const QByteArray &sql, std::vector<std::string> &celdas)
{
    sqlite3_stmt *st = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &st, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db));
        std::exit(1);
    }
    long filas = 0;
    const int n = sqlite3_column_count(st);
    while (sqlite3_step(st) == SQLITE_ROW) {
        ++filas;
        for (int c = 0; c < n; ++c) {
            const unsigned char *t = sqlite3_column_text(st, c);
            celdas.emplace_back(t ? reinterpret_cast<const char *>(t) : "", size_t(sqlite3_column_bytes(st, c)));
        }
    }
    sqlite3_finalize(st);
    return filas;
}

long PorSQLite(sqlite3 *db, const QByteArray &totales, const QByteArray &lista)
{
    std::vector<std::string> celdas;
    celdas.reserve(30000);
    Directo(db, totales, celdas);
    return Directo(db, lista, celdas);
}

double Mediana(std::vector<double> ms)
{
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

double Ms(const QElapsedTimer &t) { return t.nsecsElapsed() / 1e6; }

void Medir(const banco::LibroGrande &libro, const banco::PeriodoMedido &p, int corridas, bool objetivo)
{
    auto s = banco::AbrirSesion(libro, p);
    sqlite3 *db = oDB::clManejo::Abrir(libro.carpeta + QStringLiteral("kestrel.mdb"), false);
    const QByteArray totales = SqlTotales(*s).toUtf8(), lista = SqlLista(*s).toUtf8();

    const long filasComp = [&] {
        oDB::Recordset rs;
        s->dbLibro->CrearRs(rs, SqlLista(*s));
        return rs.RecordCount();
    }();
    const long filasDirecto = PorSQLite(db, totales, lista);
    if (filasComp != p.facturas || filasDirecto != p.facturas) {
        std::fprintf(stderr, "filas inesperadas: componente %ld, SQLite %ld, esperadas %ld\n", filasComp, filasDirecto, p.facturas);
        std::exit(1);
    }

    // Warm-up (pages in the cache, as for a user who has the book open), then both ways in
    // turn, so that a busy machine weighs on both alike.
    PorComponente(*s);
    PorSQLite(db, totales, lista);
    std::vector<double> tComp, tDirecto;
    for (int i = 0; i < corridas; ++i) {
        QElapsedTimer t;
        t.start();
        PorComponente(*s);
        tComp.push_back(Ms(t));
        t.start();
        PorSQLite(db, totales, lista);
        tDirecto.push_back(Ms(t));
    }
    const double comp = Mediana(tComp), directo = Mediana(tDirecto);
    sqlite3_close_v2(db);
    const double ratio = comp / directo;
    std::printf("%-28s %6ld facturas  componente %8.2f ms  SQLite %8.2f ms  ratio %.2f%s\n",
                qPrintable(QStringLiteral("%1 %2").arg(p.cuit, p.periodo.mid(3))), p.facturas, comp, directo, ratio,
                objetivo ? (comp < 50 && ratio < 1.5 ? "  [objetivo: < 50 ms, ratio < 1,5: cumplido]"
                                                     : "  [objetivo: < 50 ms, ratio < 1,5: NO cumplido]")
                         : "");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const QString carpeta = args.value(0, banco::CarpetaPorDefecto());
    const int corridas = qMax(3, args.value(1, QStringLiteral("21")).toInt());
    try {
        const banco::LibroGrande libro = banco::GenerarLibroGrande(carpeta);
        std::printf("Libro de %ld facturas en %s%s; mediana de %d corridas\n", libro.facturas,
                    qPrintable(libro.carpeta), libro.reusado ? " (reusado)" : "", corridas);
        Medir(libro, libro.periodo2000, corridas, true);
        Medir(libro, libro.periodoComun, corridas, false);
        Medir(libro, libro.periodo20000, qMin(corridas, 7), false);
    } catch (const oDB::ErrorBD &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.descripcion));
        return 1;
    }
    return 0;
}
