// Times the main window's period list on the large book: the totals statement and the list
// statement of gf_IVCXUSRPER_CLIP, through the database component (CrearRs, fields, GetString)
// and, for comparison, the same texts on the bare SQLite API (prepare, step, every column read
// into a string). Prints the medians and their ratio.
//
//   bench_lista [FOLDER] [RUNS]      FOLDER defaults to $IVC_BENCH_DIR or <tmp>/ivacompras-bench

#include "GeneradorLibro.h"
#include "Medicion.h"

#include "app/core/Sesion.h"
#include "data/oDB.h"

#include <sqlite3.h>
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

long PorSQLite(sqlite3 *db, const QByteArray &totales, const QByteArray &lista)
{
    std::vector<std::string> celdas;
    celdas.reserve(30000);
    banco::Directo(db, totales, celdas);
    return banco::Directo(db, lista, celdas);
}

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

    const banco::Medianas m =
        banco::EnTurnos(corridas, [&] { PorComponente(*s); }, [&] { PorSQLite(db, totales, lista); });
    sqlite3_close_v2(db);
    const banco::Objetivo meta{50, 1.5, "< 50 ms, ratio < 1,5"};
    banco::Informar(p, "componente", m, objetivo ? &meta : nullptr);
}

} // namespace

int main(int argc, char **argv)
{
    return banco::Principal(argc, argv, 21, [](const banco::LibroGrande &libro, int corridas) {
        Medir(libro, libro.periodo2000, corridas, true);
        Medir(libro, libro.periodoComun, corridas, false);
        Medir(libro, libro.periodo20000, qMin(corridas, 7), false);
    });
}
