#include "GeneradorLibro.h"

#include "app/core/Azar.h"
#include "app/core/Demo.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/Esquema.h"
#include "data/oDB.h"

#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>
#include <cmath>
#include <cstdio>
#include <vector>

namespace banco {

namespace {

// Raised in user_version of kestrel.mdb by the last step of a complete run. A book of another
// version (written by an older generator: other CUITs, other indexes) is written anew.
constexpr int kVersionCompleta = 20262;

constexpr int kEmpresas = 50;
constexpr int kProveedores = 2000;
constexpr int kAnioInicial = 2016;
constexpr int kPeriodos = 120;
constexpr long kFacturas = 1000000;

// The two chosen company periods (company index, period index from January 2016).
constexpr int kEmpresa2000 = 7, kPeriodo2000 = 86;      // March 2023
constexpr int kEmpresa20000 = 12, kPeriodo20000 = 105;  // October 2024
constexpr int kEmpresaComun = 3, kPeriodoComun = 60;    // January 2021

const char *const kTipos[] = {"A", "A", "A", "A", "B", "B", "C", "99", "NDA", "TIQUE FCA", "TIQUE FCB", "TIQUE"};
const double kTasas[] = {21, 21, 21, 10.5, 10.5, 27};

// Amounts are drawn among a million even steps of their range.
constexpr quint32 kPasosMonto = 1000000;

double R2(double n) { return std::round(n * 100) / 100; }

QDate FechaPeriodo(int p) { return QDate(kAnioInicial + p / 12, p % 12 + 1, 1); }

void Exec(sqlite3 *db, const QString &sql)
{
    char *msg = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &msg) != SQLITE_OK) {
        const QString e = QString::fromUtf8(msg);
        sqlite3_free(msg);
        throw oDB::ErrorBD{e + QStringLiteral(" in: ") + sql};
    }
}

struct Sentencia {
    sqlite3 *db;
    sqlite3_stmt *st = nullptr;
    Sentencia(sqlite3 *d, const char *sql) : db(d)
    {
        if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) != SQLITE_OK)
            throw oDB::ErrorBD{QString::fromUtf8(sqlite3_errmsg(db))};
    }
    ~Sentencia() { sqlite3_finalize(st); }
    Sentencia &T(int i, const QByteArray &v)
    {
        sqlite3_bind_text(st, i, v.constData(), int(v.size()), SQLITE_TRANSIENT);
        return *this;
    }
    Sentencia &N(int i, double v)
    {
        sqlite3_bind_double(st, i, v);
        return *this;
    }
    Sentencia &I(int i, qint64 v)
    {
        sqlite3_bind_int64(st, i, v);
        return *this;
    }
    void Paso()
    {
        if (sqlite3_step(st) != SQLITE_DONE)
            throw oDB::ErrorBD{QString::fromUtf8(sqlite3_errmsg(db))};
        sqlite3_reset(st);
    }
};

// The statements of a file split by kind, so that the rows go in before the indexes and
// triggers exist.
QStringList DeClase(const QStringList &sentencias, const QString &prefijo, bool incluir)
{
    QStringList out;
    for (const QString &s : sentencias)
        if (s.startsWith(prefijo, Qt::CaseInsensitive) == incluir)
            out << s;
    return out;
}

QString CuitValido(int prefijo, int &cuerpo)
{
    QString c;
    while ((c = demo::Cuit(prefijo, cuerpo)).isEmpty())
        ++cuerpo;
    return c;
}

struct Empresas {
    std::vector<QByteArray> cuit, nombre;
};

Empresas ListaEmpresas()
{
    Empresas e;
    int cuerpo = 70012000;
    for (int i = 0; i < kEmpresas; ++i) {
        e.cuit.push_back(CuitValido(30, cuerpo).toUtf8());
        cuerpo += 1013;
        e.nombre.push_back(QStringLiteral("Empresa %1 de Prueba S.R.L.").arg(i + 1, 2, 10, QChar(u'0')).toUtf8());
    }
    return e;
}

PeriodoMedido Medido(const Empresas &e, int empresa, int periodo, long facturas)
{
    return {QString::fromUtf8(e.cuit[empresa]), QString::fromUtf8(e.nombre[empresa]),
            conv::FechaCorta(FechaPeriodo(periodo)), facturas};
}

long FacturasDe(int empresa, int periodo)
{
    if (empresa == kEmpresa2000 && periodo == kPeriodo2000)
        return 2000;
    if (empresa == kEmpresa20000 && periodo == kPeriodo20000)
        return 20000;
    const long resto = kFacturas - 22000;
    const long otros = long(kEmpresas) * kPeriodos - 2;
    // Spread the rest evenly; the first (resto % otros) ordinary periods take one more.
    const long indice = long(periodo) * kEmpresas + empresa;
    return resto / otros + (indice < resto % otros ? 1 : 0);
}

void Escribir(const QString &carpeta, const Empresas &emp)
{
    QElapsedTimer reloj;
    reloj.start();
    const QDir d(carpeta);
    for (const char *f : {"personal.mdb", "kestrel.mdb", "proveedores.mdb"})
        QFile::remove(d.filePath(QString::fromLatin1(f)));

    esquema::CrearArchivo(d.filePath(QStringLiteral("proveedores.mdb")), esquema::SentenciasProveedores());
    esquema::CrearArchivo(d.filePath(QStringLiteral("personal.mdb")), esquema::SentenciasPersonal());
    {
        sqlite3 *db = oDB::clManejo::Abrir(d.filePath(QStringLiteral("personal.mdb")), false);
        Exec(db, QStringLiteral("BEGIN"));
        Sentencia ins(db, "insert into USR values (?,?,'S',?,?)");
        for (int i = 0; i < kEmpresas; ++i)
            ins.T(1, emp.cuit[i]).T(2, emp.nombre[i])
                .T(3, QStringLiteral("Calle %1 %2, Córdoba").arg(i + 1).arg(100 + i * 7).toUtf8())
                .T(4, QStringLiteral("empresa%1@ejemplo.com.ar").arg(i + 1).toUtf8())
                .Paso();
        Exec(db, QStringLiteral("COMMIT"));
        sqlite3_close_v2(db);
    }

    const QString kestrel = d.filePath(QStringLiteral("kestrel.mdb"));
    const QStringList esquemaK = esquema::SentenciasKestrel();
    sqlite3 *db = oDB::clManejo::Abrir(kestrel, true);
    try {
        // One transaction without a journal: a failed run is detected by user_version and
        // written again.
        Exec(db, QStringLiteral("PRAGMA journal_mode=OFF"));
        Exec(db, QStringLiteral("PRAGMA synchronous=OFF"));
        Exec(db, QStringLiteral("PRAGMA cache_size=-400000"));
        Exec(db, QStringLiteral("BEGIN"));
        for (const QString &s : DeClase(esquemaK, QStringLiteral("CREATE TABLE"), true))
            Exec(db, s);

        Azar azar;
        std::vector<QByteArray> prv;
        {
            Sentencia ins(db, "insert into PRV values (?,?,?,?,?,?,?)");
            int cuerpo = 50000000;
            for (int i = 0; i < kProveedores; ++i) {
                const int prefijo = i % 5 == 0 ? 20 : 30;
                prv.push_back(CuitValido(prefijo, cuerpo).toUtf8());
                cuerpo += 9973;
                ins.T(1, prv.back())
                    .T(2, QStringLiteral("Proveedor %1 Compañía S.A.").arg(i + 1, 4, 10, QChar(u'0')).toUtf8())
                    .T(3, QStringLiteral("Av. Belgrano %1").arg(100 + i).toUtf8())
                    .T(4, QStringLiteral("011-4%1").arg(100000 + i, 6, 10, QChar(u'0')).toUtf8())
                    .T(5, QStringLiteral("ventas%1@proveedor.com.ar").arg(i + 1).toUtf8())
                    .T(6, QByteArrayLiteral("Atención al cliente"))
                    .T(7, QByteArrayLiteral("2015-06-01"))
                    .Paso();
            }
        }

        Sentencia ivc(db, "insert into IVC values (?,?,?,?,?,?,?,?,?,0,?,?,?,?)");
        Sentencia iva(db, "insert into IVC_DetIVA values (?,?,?,?,?,?,?)");
        Sentencia ib(db, "insert into IVC_DetIngBrutos values (?,?,?,?,?,?,?)");
        Sentencia grav(db, "insert into IVC_Gravado values (?,?,?,?,?)");

        // Line ids grow per company and supplier; invoice numbers per supplier.
        std::vector<int> idIva(size_t(kEmpresas) * kProveedores, 0), idIb(idIva.size(), 0);
        std::vector<int> numero(kProveedores, 0);
        long escritas = 0;
        for (int p = 0; p < kPeriodos; ++p) {
            const QDate periodo = FechaPeriodo(p);
            const QByteArray periodoIso = periodo.toString(Qt::ISODate).toUtf8();
            std::vector<long> faltan(kEmpresas);
            long total = 0;
            for (int e = 0; e < kEmpresas; ++e)
                total += faltan[e] = FacturasDe(e, p);
            // Invoices of all companies interleaved, as they are entered over the month.
            for (int e = 0; total > 0; e = (e + 1) % kEmpresas) {
                if (faltan[e] == 0)
                    continue;
                --faltan[e];
                --total;
                const int pr = azar.Entre(0, kProveedores - 1);
                const QByteArray &cuitPrv = prv[size_t(pr)];
                const char *tipo = kTipos[azar.Entre(0, 11)];
                const bool conIva = qstrcmp(tipo, "A") == 0 || qstrcmp(tipo, "NDA") == 0 ||
                                    qstrcmp(tipo, "TIQUE FCA") == 0 || qstrcmp(tipo, "99") == 0;
                const QByteArray nro = QString::asprintf("%04d-%08d", 1 + pr % 7, ++numero[size_t(pr)] + 1000).toUtf8();
                const QDate fecha = periodo.addDays(azar.Entre(0, periodo.daysInMonth() - 1));
                const QByteArray &cuitEmp = emp.cuit[size_t(e)];

                double gravado = 0, ivaTotal = 0, ibTotal = 0;
                const int lineas = azar.Entre(1, 3);
                for (int l = 1; l <= lineas; ++l) {
                    const double base = azar.Monto(50, 40000, kPasosMonto);
                    gravado += base;
                    grav.T(1, cuitEmp).T(2, cuitPrv).T(3, nro).I(4, l).N(5, base).Paso();
                    if (conIva) {
                        const double tasa = kTasas[azar.Entre(0, 5)];
                        const double valor = R2(base * tasa / 100);
                        ivaTotal += valor;
                        int &id = idIva[size_t(e) * kProveedores + size_t(pr)];
                        iva.T(1, cuitEmp).T(2, cuitPrv).T(3, nro).I(4, ++id).N(5, tasa)
                            .T(6, QStringLiteral("Iva del %1:").arg(conv::NumeroATexto(tasa)).toUtf8())
                            .N(7, valor).Paso();
                    }
                }
                if (azar.Entre(0, 3) == 0) {
                    const double valor = R2(gravado * 3 / 100);
                    ibTotal = valor;
                    int &id = idIb[size_t(e) * kProveedores + size_t(pr)];
                    ib.T(1, cuitEmp).T(2, cuitPrv).T(3, nro).I(4, ++id).N(5, 3)
                        .T(6, QByteArrayLiteral("Ingresos Brutos")).N(7, valor).Paso();
                }
                const double noGravado = azar.Entre(0, 4) == 0 ? azar.Monto(10, 3000, kPasosMonto) : 0;
                ivc.T(1, cuitEmp).T(2, cuitPrv).T(3, periodoIso).T(4, fecha.toString(Qt::ISODate).toUtf8())
                    .T(5, QByteArray(tipo)).T(6, nro).N(7, R2(gravado)).N(8, noGravado).N(9, R2(ivaTotal))
                    .N(10, ibTotal).T(11, fecha.addDays(azar.Entre(0, 20)).toString(Qt::ISODate).toUtf8())
                    .T(12, QByteArrayLiteral("Mercadería de reventa")).T(13, QByteArray())
                    .Paso();
                if (++escritas % 100000 == 0)
                    std::fprintf(stderr, "  %ld facturas (%.0f s)\n", escritas, reloj.elapsed() / 1000.0);
            }
        }
        std::fprintf(stderr, "  índices...\n");
        for (const QString &s : DeClase(esquemaK, QStringLiteral("CREATE TABLE"), false))
            Exec(db, s);
        Exec(db, QStringLiteral("PRAGMA user_version=%1").arg(kVersionCompleta));
        Exec(db, QStringLiteral("COMMIT"));
    } catch (...) {
        sqlite3_close_v2(db);
        throw;
    }
    sqlite3_close_v2(db);
    std::fprintf(stderr, "  libro escrito en %.0f s\n", reloj.elapsed() / 1000.0);
}

bool Completo(const QString &kestrel)
{
    if (!QFileInfo(kestrel).isFile())
        return false;
    sqlite3 *db = oDB::clManejo::Abrir(kestrel, false);
    sqlite3_stmt *st = nullptr;
    int version = 0;
    if (sqlite3_prepare_v2(db, "PRAGMA user_version", -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
        version = sqlite3_column_int(st, 0);
    sqlite3_finalize(st);
    sqlite3_close_v2(db);
    return version == kVersionCompleta;
}

} // namespace

QString CarpetaPorDefecto()
{
    const QString env = qEnvironmentVariable("IVC_BENCH_DIR");
    return env.isEmpty() ? QDir(QDir::tempPath()).filePath(QStringLiteral("ivacompras-bench")) : env;
}

LibroGrande GenerarLibroGrande(const QString &carpeta)
{
    if (!QDir().mkpath(carpeta))
        throw oDB::ErrorBD{QStringLiteral("No se puede crear la carpeta '%1'.").arg(carpeta)};
    LibroGrande l;
    l.carpeta = QDir(carpeta).absolutePath() + u'/';
    const Empresas emp = ListaEmpresas();
    l.reusado = Completo(l.carpeta + QStringLiteral("kestrel.mdb"));
    if (!l.reusado) {
        std::fprintf(stderr, "Generando el libro de %ld facturas en %s\n", kFacturas, qPrintable(l.carpeta));
        Escribir(l.carpeta, emp);
    }
    l.facturas = kFacturas;
    l.periodo2000 = Medido(emp, kEmpresa2000, kPeriodo2000, 2000);
    l.periodo20000 = Medido(emp, kEmpresa20000, kPeriodo20000, 20000);
    l.periodoComun = Medido(emp, kEmpresaComun, kPeriodoComun, FacturasDe(kEmpresaComun, kPeriodoComun));
    return l;
}

std::unique_ptr<Sesion> AbrirSesion(const LibroGrande &libro, const PeriodoMedido &p)
{
    auto s = std::make_unique<Sesion>();
    s->FechaHoy = conv::Hoy();
    s->SeparadorDecimal = QStringLiteral(",");
    s->RutaFacturacion = s->RutaLibro = s->RutaPersonal = libro.carpeta;
    s->CrearComponentes();
    s->Conectar();
    oDB::Recordset rs;
    if (!s->dbPersonal->CrearRs(rs, QStringLiteral("select * from USR where USRSNRCUIT = ") + oDB::Q(p.cuit)))
        throw oDB::ErrorBD{QStringLiteral("No se encuentra la empresa %1.").arg(p.cuit)};
    s->CuitUsuario = p.cuit;
    s->NombreUsuario = s->oFormato->EsNull(rs(QStringLiteral("USRSNOMBRE")));
    s->ConIva = s->oFormato->EsNull(rs(QStringLiteral("USRSCONIVA")));
    s->DomicilioUsuario = s->oFormato->EsNull(rs(QStringLiteral("USRSDOMICI")));
    s->EmailUsuario = s->oFormato->EsNull(rs(QStringLiteral("USRSEMAIL")));
    s->Periodo = p.periodo;
    s->MesPeriodo = qint16(conv::TextoAFecha(p.periodo)->month());
    CalcularLimitesPeriodo(*s);
    return s;
}

} // namespace banco
