// Times the F10 export on the large book: GenerarReporte from the invoice query to the three
// files written (spreadsheet, vouchers, VAT rates), through the database component, and for
// comparison the same statement texts on the bare SQLite API (prepare, step, every column read
// into a string; nothing formatted, nothing written). Prints the medians and their ratio.
//
//   bench_exportar [FOLDER] [RUNS]   FOLDER defaults to $IVC_BENCH_DIR or <tmp>/ivacompras-bench

#include "GeneradorLibro.h"

#include "app/core/DialogoGuardar.h"
#include "app/core/Sesion.h"
#include "data/oDB.h"
#include "reports/Exportar.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

class DialogoFijo : public DialogoGuardar
{
public:
    QString ruta;
    QString GuardarComo(const QString &, const QList<FiltroArchivo> &, const QString &, const QString &,
                        QWidget *) override
    {
        return ruta;
    }
};

class MensajesContados : public Mensajes
{
public:
    QStringList textos;
    int MsgBox(const QString &texto, int, const QString &) override
    {
        textos << texto;
        return vb::vbOK;
    }
};

// Runs a statement and keeps every column of every row as text; calls porFila after each row.
template <typename F>
long Directo(sqlite3 *db, const QString &sql, std::vector<std::string> &celdas, F porFila)
{
    const QByteArray texto = sql.toUtf8();
    sqlite3_stmt *st = nullptr;
    if (sqlite3_prepare_v2(db, texto.constData(), int(texto.size()), &st, nullptr) != SQLITE_OK) {
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
        porFila(st);
    }
    sqlite3_finalize(st);
    return filas;
}

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
    const auto nada = [](sqlite3_stmt *) {};
    int cTipo = -1, cNro = -1, cPrv = -1;
    const long facturas = Directo(db, SqlFacturasPeriodo(s.CuitUsuario, s.PeriodoDesde), celdas, [&](sqlite3_stmt *st) {
        if (cTipo < 0) {
            cTipo = Columna(st, "IVCSTIPFAC");
            cNro = Columna(st, "IVCSNROFAC");
            cPrv = Columna(st, "PRVSNRCUIT");
        }
        const QString tipo = Texto(st, cTipo), prv = Texto(st, cPrv);
        const QString numero20 = CampoNumero(SepararNumero(tipo, Texto(st, cNro)));
        Directo(db, SqlNombreProveedor(prv), celdas, nada);
        Directo(db, SqlAlicuota(s.CuitUsuario, numero20, prv), celdas, nada);
    });
    for (const char *tasa : {"10.5", "21", "27"})
        Directo(db, SqlResumenTasa(QString::fromLatin1(tasa), s.CuitUsuario, s.PeriodoDesde), celdas, nada);
    Directo(db, SqlResumenOtras(s.CuitUsuario, s.PeriodoDesde), celdas, nada);
    Directo(db, SqlResumenNoGravado(s.CuitUsuario, s.PeriodoDesde), celdas, nada);
    return facturas;
}

template <typename F> double Mediana(int corridas, F f)
{
    f(); // warm-up: pages in the cache, as for a user who has the book open
    std::vector<double> ms;
    for (int i = 0; i < corridas; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        ms.push_back(t.nsecsElapsed() / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

void Medir(const banco::LibroGrande &libro, const banco::PeriodoMedido &p, int corridas, bool objetivo)
{
    QTemporaryDir dir;
    auto s = banco::AbrirSesion(libro, p);
    s->ajustes = Ajustes(dir.path());
    DialogoFijo dialogo;
    dialogo.ruta = dir.filePath(QStringLiteral("periodo.xls"));
    MensajesContados mensajes;
    s->dialogo = &dialogo;
    s->mensajes = &mensajes;
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

    const double comp = Mediana(corridas, [&] { GenerarReporte(*s, tab, nullptr); });
    const double directo = Mediana(corridas, [&] { PorSQLite(db, *s); });
    sqlite3_close_v2(db);
    const double ratio = comp / directo;
    std::printf("%-28s %6ld facturas  GenerarReporte %8.2f ms  SQLite %8.2f ms  ratio %.2f%s\n",
                qPrintable(QStringLiteral("%1 %2").arg(p.cuit, p.periodo.mid(3))), p.facturas, comp, directo, ratio,
                objetivo ? (comp < 1000 && ratio < 3 ? "  [objetivo: < 1 s, ratio < 3: cumplido]"
                                                      : "  [objetivo: < 1 s, ratio < 3: NO cumplido]")
                         : "");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const QString carpeta = args.value(0, banco::CarpetaPorDefecto());
    const int corridas = qMax(3, args.value(1, QStringLiteral("7")).toInt());
    try {
        const banco::LibroGrande libro = banco::GenerarLibroGrande(carpeta);
        std::printf("Libro de %ld facturas en %s%s; mediana de %d corridas\n", libro.facturas,
                    qPrintable(libro.carpeta), libro.reusado ? " (reusado)" : "", corridas);
        Medir(libro, libro.periodo20000, corridas, true);
        Medir(libro, libro.periodo2000, corridas, false);
        Medir(libro, libro.periodoComun, corridas, false);
    } catch (const oDB::ErrorBD &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.descripcion));
        return 1;
    }
    return 0;
}
