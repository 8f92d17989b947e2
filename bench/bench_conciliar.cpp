// Times the F8 reconciliation on the large book: a list of 20,000 received vouchers (XLSX, the
// current form) read and reconciled with the company period of 20,000 invoices. The list holds
// the period's invoices that have an authority code (every tenth with its untaxed amount off by
// a peso) and, up to 20,000 rows, vouchers the book does not have, so every group of the
// reconciliation is filled. Goal: under 1 s.
//
//   bench_conciliar [FOLDER] [RUNS]   FOLDER defaults to $IVC_BENCH_DIR or <tmp>/ivacompras-bench

#include "GeneradorLibro.h"
#include "Medicion.h"

#include "../tests/checks/ListaRecibida.h"
#include "app/core/Sesion.h"
#include "checks/Conciliacion.h"
#include "data/Convenciones.h"
#include "data/oDB.h"

#include <QElapsedTimer>
#include <QHash>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

QString CodigoDe(const QString &tipo)
{
    for (int c : {1, 2, 6, 11, 81, 82, 83})
        if (recibidos::TipoLibro(c).compare(tipo, Qt::CaseInsensitive) == 0)
            return QStringLiteral("%1 - Comprobante").arg(c);
    return QStringLiteral("1 - Factura A");
}

// The list of the period as the tax authority would publish it: the taxed amount of each rate
// is the one its VAT lines give. Vouchers of type "99" have no authority code and stay out.
QVector<Recibido> ListaDelPeriodo(Sesion &s)
{
    QVector<Recibido> filas;
    QHash<QString, QMap<double, double>> netos;
    oDB::Recordset rs;
    s.dbLibro->CrearRs(rs, QStringLiteral("select d.PRVSNRCUIT, d.IVCSNROFAC, d.IVCDETIVA, d.IVCDETVLR from IVC i "
                                          "inner join IVC_DetIVA d on d.USRSNRCUIT = i.USRSNRCUIT and "
                                          "d.PRVSNRCUIT = i.PRVSNRCUIT and d.IVCSNROFAC = i.IVCSNROFAC where "
                                          "i.USRSNRCUIT = ") +
                               oDB::Q(s.CuitUsuario) + QStringLiteral(" and i.IVCFPERIOD = datevalue(") +
                               oDB::Q(s.PeriodoDesde) + u')');
    for (; !rs.Eof(); rs.MoveNext()) {
        const double tasa = rs.Fields(2).toDouble();
        if (tasa > 0)
            netos[conv::Texto(rs.Fields(0)) + u'|' + conv::Texto(rs.Fields(1))][tasa] += rs.Fields(3).toDouble() * 100 / tasa;
    }
    s.dbLibro->CrearRs(rs, QStringLiteral("select PRVSNRCUIT, IVCSTIPFAC, IVCSNROFAC, IVCFCOMPRO, IVCDGRAVAD, IVCDNOGRAV, "
                                          "IVARIN, IVCINGBRU from IVC where USRSNRCUIT = ") +
                               oDB::Q(s.CuitUsuario) + QStringLiteral(" and IVCFPERIOD = datevalue(") +
                               oDB::Q(s.PeriodoDesde) + u')');
    for (int i = 0; !rs.Eof() && filas.size() < 19900; rs.MoveNext(), ++i) {
        const QString numero = conv::Texto(rs.Fields(2));
        if (recibidos::TipoLibro(CodigoDe(conv::Texto(rs.Fields(1))).section(u' ', 0, 0).toInt()) !=
            conv::Texto(rs.Fields(1)))
            continue;
        Recibido r;
        r.fecha = conv::FechaCorta(rs.Fields(3).toDate());
        r.tipo = CodigoDe(conv::Texto(rs.Fields(1)));
        r.punto = recibidos::Digitos(numero.section(u'-', 0, -2)).toInt();
        r.numero = recibidos::Digitos(numero.section(u'-', -1)).toLongLong();
        r.cuit = recibidos::Digitos(conv::Texto(rs.Fields(0)));
        r.nombre = QStringLiteral("Proveedor");
        r.gravado = s.oFormato->EsNumero(rs.Fields(4));
        r.netos = netos.value(conv::Texto(rs.Fields(0)) + u'|' + numero);
        for (double &n : r.netos)
            n = conv::Redondear(n, 2);
        r.noGravado = s.oFormato->EsNumero(rs.Fields(5)) + (i % 10 == 0 ? 1 : 0);
        r.total = r.gravado + s.oFormato->EsNumero(rs.Fields(5)) + s.oFormato->EsNumero(rs.Fields(6)) + (i % 10 == 0 ? 1 : 0);
        r.otros = s.oFormato->EsNumero(rs.Fields(7));
        r.total += r.otros;
        filas << r;
    }
    for (int i = 0; filas.size() < 20000; ++i)
        filas << Recibido{QStringLiteral("15/") + s.MesAnio(),
                          QStringLiteral("1 - Factura A"), 9999, 90000000 + i, QStringLiteral("30799999990"),
                          QStringLiteral("Nuevo"), {{21, 100}}};
    return filas;
}

} // namespace

int main(int argc, char **argv)
{
    return banco::Principal(argc, argv, 5, [](const banco::LibroGrande &libro, int corridas) {
        const banco::PeriodoMedido &p = libro.periodo20000;
        auto s = banco::AbrirSesion(libro, p);
        QTemporaryDir dir;
        const QString ruta = dir.filePath(QStringLiteral("recibidos.xlsx"));
        if (!EscribirXlsx(ruta, recibidos::Digitos(s->CuitUsuario), ListaDelPeriodo(*s))) {
            std::fprintf(stderr, "no se pudo escribir la lista\n");
            std::exit(1);
        }
        conciliacion::Resultado r;
        // Wall time of the whole (the book is read while the file is); the file's reading and
        // the reconciliation alone, one after the other; and the processor time of the whole
        // process (all threads): on a busy machine it tells the work done.
        std::vector<double> tiempos, lecturas, conciliaciones, cpu;
        double primera = 0;
        auto reloj = [] {
            timespec t;
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
            return t.tv_sec * 1e3 + t.tv_nsec / 1e6;
        };
        for (int i = 0; i <= corridas; ++i) {
            QElapsedTimer t;
            t.start();
            const double c0 = reloj();
            recibidos::Lista lista;
            r = conciliacion::LeerYConciliar(*s, ruta, lista);
            const double total = double(t.nsecsElapsed()) / 1e6, procesador = reloj() - c0;
            t.restart();
            lista = recibidos::Leer(ruta);
            const double leida = double(t.nsecsElapsed()) / 1e6;
            t.restart();
            conciliacion::Conciliar(*s, lista);
            if (i == 0)
                primera = total;
            if (i > 0) { // the first run warms the cache; it is printed apart
                tiempos.push_back(total);
                cpu.push_back(procesador);
                lecturas.push_back(leida);
                conciliaciones.push_back(double(t.nsecsElapsed()) / 1e6);
            }
        }
        const double mediana = banco::Mediana(tiempos);
        std::printf("conciliar %s %s: lista de 20000 comprobantes contra %ld facturas: mediana %.0f ms "
                    "(la primera corrida %.0f ms; procesador %.0f ms; por separado, lectura %.0f ms y conciliación %.0f ms; faltan en el libro "
                    "%lld, faltan en el archivo %lld, con diferencias %lld, iguales %d) - objetivo < 1 s: %s\n",
                    qPrintable(p.cuit), qPrintable(p.periodo), p.facturas, mediana, primera, banco::Mediana(cpu),
                    banco::Mediana(lecturas), banco::Mediana(conciliaciones), qlonglong(r.faltantes.size()),
                    qlonglong(r.soloEnLibro.size()), qlonglong(r.distintas.size()), r.iguales,
                    mediana < 1000 ? "cumplido" : "NO cumplido");
    });
}
