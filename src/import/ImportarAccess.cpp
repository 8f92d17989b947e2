#include "import/ImportarAccess.h"

#include "data/Convenciones.h"
#include "data/Esquema.h"
#include "data/oDB.h"
#include "import/LibroAccess.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimeZone>
#include <algorithm>
#include <memory>
#include <sqlite3.h>

namespace importar {

namespace {

const QStringList kArchivos = {QStringLiteral("personal.mdb"), QStringLiteral("kestrel.mdb"),
                               QStringLiteral("proveedores.mdb")};

// Columns of the supplier-tracking book that its Access file names otherwise.
QString NombreEnElPrograma(const QString &tabla, const QString &columna)
{
    if (tabla.compare(QLatin1String("IMPUTACIONES"), Qt::CaseInsensitive) == 0) {
        if (columna.compare(QLatin1String("CUIT_USUARIO"), Qt::CaseInsensitive) == 0)
            return QStringLiteral("USRSNRCUIT");
        if (columna.compare(QLatin1String("CUIT_PROVEEDOR"), Qt::CaseInsensitive) == 0)
            return QStringLiteral("PRVSNRCUIT");
    }
    return columna;
}

[[noreturn]] void Fallar(const QString &texto) { throw oDB::ErrorBD{texto}; }

// One SQLite book, closed on leaving; a pending transaction is rolled back by the close.
struct Base {
    sqlite3 *db = nullptr;
    bool propia = true;
    explicit Base(const QString &ruta) : db(oDB::clManejo::Abrir(ruta, false)) {}
    explicit Base(sqlite3 *abierta) : db(abierta), propia(false) {}
    ~Base()
    {
        if (propia)
            sqlite3_close_v2(db);
    }
    QString Error() const { return QString::fromUtf8(sqlite3_errmsg(db)); }
    void Ejecutar(const char *sql)
    {
        if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            Fallar(Error());
    }
};

struct Sentencia {
    sqlite3_stmt *st = nullptr;
    Sentencia(Base &b, const QString &sql)
    {
        if (sqlite3_prepare_v2(b.db, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK)
            Fallar(b.Error());
    }
    ~Sentencia() { sqlite3_finalize(st); }
};

struct ColumnaDestino {
    QString nombre;
    QString tipo;   // as declared: TEXT, DATE, REAL, INTEGER
    bool exigida;   // NOT NULL
    bool clave;     // INTEGER PRIMARY KEY: numbered by the book
};

QList<ColumnaDestino> ColumnasDe(Base &b, const QString &tabla)
{
    QList<ColumnaDestino> out;
    Sentencia s(b, QStringLiteral("PRAGMA table_info(%1)").arg(tabla));
    while (sqlite3_step(s.st) == SQLITE_ROW)
        out.append({QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(s.st, 1))),
                    QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(s.st, 2))).toUpper(),
                    sqlite3_column_int(s.st, 3) != 0, sqlite3_column_int(s.st, 5) != 0});
    return out;
}

QStringList TablasDe(Base &b)
{
    QStringList out;
    Sentencia s(b, QStringLiteral("select name from sqlite_master where type = 'table' and name not like 'sqlite%' order by rowid"));
    while (sqlite3_step(s.st) == SQLITE_ROW)
        out << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(s.st, 0)));
    return out;
}

long Contar(Base &b, const QString &tabla)
{
    Sentencia s(b, QStringLiteral("select count(*) from %1").arg(tabla));
    return sqlite3_step(s.st) == SQLITE_ROW ? long(sqlite3_column_int64(s.st, 0)) : -1;
}

void Texto(sqlite3_stmt *st, int i, const QString &s)
{
    const QByteArray b = s.toUtf8();
    sqlite3_bind_text(st, i, b.constData(), int(b.size()), SQLITE_TRANSIENT);
}

// The Access file of that name in the folder, whatever the case of its name.
QString Buscar(const QDir &dir, const QString &archivo)
{
    for (const QString &f : dir.entryList(QDir::Files))
        if (f.compare(archivo, Qt::CaseInsensitive) == 0)
            return dir.filePath(f);
    return QString();
}

} // namespace

TablaImportada CopiarFilas(sqlite3 *db, const QString &archivo, const QString &tabla, const FuenteFilas &origen,
                           QStringList &avisos)
{
    Base base(db);
    TablaImportada r;
    r.archivo = archivo;
    r.tabla = tabla;
    const QList<ColumnaDestino> destino = ColumnasDe(base, tabla);

    // Which Access column goes into which column of the book.
    QList<int> fuente;       // position in the Access row
    QList<ColumnaDestino> columnas;
    for (int i = 0; i < origen.columnas.size(); ++i) {
        const QString nombre = NombreEnElPrograma(tabla, origen.columnas[i]);
        auto it = std::find_if(destino.begin(), destino.end(), [&](const ColumnaDestino &c) {
            return c.nombre.compare(nombre, Qt::CaseInsensitive) == 0;
        });
        if (it == destino.end()) {
            r.omitidas << origen.columnas[i];
            continue;
        }
        if (std::any_of(columnas.begin(), columnas.end(), [&](const ColumnaDestino &c) { return c.nombre == it->nombre; }))
            Fallar(QStringLiteral("La tabla %1 de '%2' tiene dos columnas para %3.").arg(tabla, origen.archivo, it->nombre));
        fuente << i;
        columnas << *it;
    }
    for (const ColumnaDestino &c : destino)
        if (c.exigida && !c.clave &&
            std::none_of(columnas.begin(), columnas.end(), [&](const ColumnaDestino &d) { return d.nombre == c.nombre; }))
            Fallar(QStringLiteral("La tabla %1 de '%2' no tiene la columna %3.").arg(tabla, origen.archivo, c.nombre));
    if (!r.omitidas.isEmpty())
        avisos << QStringLiteral("%1, tabla %2: no se importan las columnas %3, que el programa no usa.")
                      .arg(archivo, tabla, r.omitidas.join(QStringLiteral(", ")));

    QStringList nombres, marcas;
    for (const ColumnaDestino &c : columnas) {
        nombres << c.nombre;
        marcas << QStringLiteral("?");
    }
    Sentencia ins(base, QStringLiteral("insert into %1 (%2) values (%3)")
                            .arg(tabla, nombres.join(u','), marcas.join(u',')));
    QList<long> horas(columnas.size(), 0);
    QVector<QVariant> fila;
    while (origen.siguiente(fila)) {
        ++r.leidas;
        bool conHora = false;
        for (int c = 0; c < columnas.size(); ++c) {
            const QVariant &v = fila[fuente[c]];
            const bool fecha = columnas[c].tipo == QLatin1String("DATE");
            const bool texto = columnas[c].tipo == QLatin1String("TEXT");
            const int i = c + 1;
            switch (v.typeId()) {
            case QMetaType::UnknownType:
                sqlite3_bind_null(ins.st, i);
                break;
            case QMetaType::QDateTime: {
                const QDateTime dt = v.toDateTime();
                if (fecha && dt.time() != QTime(0, 0)) {
                    ++horas[c];
                    conHora = true;
                }
                Texto(ins.st, i, fecha ? dt.date().toString(Qt::ISODate)
                                       : dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
                break;
            }
            case QMetaType::Double:
                if (texto)
                    Texto(ins.st, i, QString::number(v.toDouble(), 'g', 15));
                else
                    sqlite3_bind_double(ins.st, i, v.toDouble());
                break;
            case QMetaType::LongLong:
                if (texto)
                    Texto(ins.st, i, QString::number(v.toLongLong()));
                else
                    sqlite3_bind_int64(ins.st, i, v.toLongLong());
                break;
            case QMetaType::QByteArray: {
                const QByteArray b = v.toByteArray();
                sqlite3_bind_blob(ins.st, i, b.constData(), int(b.size()), SQLITE_TRANSIENT);
                break;
            }
            default: {
                const QString s = v.toString();
                if (fecha && !s.isEmpty()) {
                    // A date kept as text in the old book: read as the program reads dates.
                    const auto d = conv::TextoAFecha(s);
                    if (!d)
                        Fallar(QStringLiteral("%1, tabla %2, fila %3: '%4' no es una fecha (columna %5).")
                                   .arg(archivo, tabla).arg(r.leidas).arg(s, columnas[c].nombre));
                    Texto(ins.st, i, d->toString(Qt::ISODate));
                } else {
                    Texto(ins.st, i, s);
                }
            }
            }
        }
        if (sqlite3_step(ins.st) != SQLITE_DONE)
            Fallar(QStringLiteral("%1, tabla %2, fila %3: %4").arg(archivo, tabla).arg(r.leidas).arg(base.Error()));
        sqlite3_reset(ins.st);
        sqlite3_clear_bindings(ins.st);
        if (conHora)
            ++r.filasConHora;
    }
    for (int c = 0; c < columnas.size(); ++c)
        if (horas[c] > 0)
            r.horas.append({columnas[c].nombre, horas[c]});
    return r;
}

demo::ResumenDemo ResumenLibro(const QString &carpeta)
{
    demo::ResumenDemo r;
    r.carpeta = carpeta;
    Base personal(carpeta + QStringLiteral("personal.mdb"));
    Base libro(carpeta + QStringLiteral("kestrel.mdb"));
    {
        Sentencia s(personal, QStringLiteral("select USRSNRCUIT, USRSNOMBRE from USR order by USRSNOMBRE"));
        while (sqlite3_step(s.st) == SQLITE_ROW)
            r.empresas.append({QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(s.st, 0))),
                               QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(s.st, 1)))});
    }
    r.proveedores = int(Contar(libro, QStringLiteral("PRV")));
    QString ultimo;
    for (const demo::EmpresaDemo &e : r.empresas) {
        Sentencia s(libro, QStringLiteral("select IVCFPERIOD, count(*) from IVC where USRSNRCUIT = ? "
                                          "group by IVCFPERIOD order by IVCFPERIOD"));
        Texto(s.st, 1, e.cuit);
        while (sqlite3_step(s.st) == SQLITE_ROW) {
            const QString iso = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(s.st, 0)));
            const QDate dia = QDate::fromString(iso, Qt::ISODate);
            const demo::PeriodoDemo p{e.cuit, dia.isValid() ? conv::FechaCorta(dia) : iso, sqlite3_column_int(s.st, 1)};
            r.periodos.append(p);
            r.facturas += p.facturas;
            if (dia.isValid() && (iso > ultimo || (iso == ultimo && p.facturas > r.propuesto.facturas))) {
                ultimo = iso;
                r.propuesto = p;
            }
        }
    }
    return r;
}

ResultadoImportacion ImportarAccess(const QString &origen, const QString &destino, const Progreso &progreso,
                                    bool ajustesEnDestino)
{
    ResultadoImportacion res;
    const QDir dirOrigen(origen);
    if (origen.isEmpty() || !dirOrigen.exists())
        Fallar(QStringLiteral("La carpeta de origen '%1' no existe.").arg(origen));
    res.origen = QDir::cleanPath(dirOrigen.absolutePath());
    res.destino = QDir::cleanPath(QDir(destino).absolutePath());
    const QFileInfo infoDestino(res.destino);
    if (destino.isEmpty())
        Fallar(QStringLiteral("Falta la carpeta de destino."));
    if (infoDestino.exists() && !infoDestino.isDir())
        Fallar(QStringLiteral("El destino '%1' existe y no es una carpeta.").arg(res.destino));
    if (infoDestino.isDir() &&
        !QDir(res.destino).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
        Fallar(QStringLiteral("La carpeta de destino '%1' no está vacía: elija una carpeta nueva o vacía.")
                   .arg(res.destino));
    const QString padre = infoDestino.absolutePath();
    if (!QDir().mkpath(padre))
        Fallar(QStringLiteral("No se puede crear la carpeta '%1'.").arg(padre));

    // Every Access file opened and every table found before anything is written.
    std::vector<std::unique_ptr<jet::LibroAccess>> libros;
    try {
        for (const QString &archivo : kArchivos) {
            const QString ruta = Buscar(dirOrigen, archivo);
            if (ruta.isEmpty()) {
                if (archivo != QLatin1String("proveedores.mdb"))
                    Fallar(QStringLiteral("No se encuentra %1 en '%2'.").arg(archivo, res.origen));
                res.avisos << QStringLiteral("No hay proveedores.mdb en '%1': el seguimiento de proveedores "
                                             "queda vacío.").arg(res.origen);
                libros.push_back(nullptr);
                continue;
            }
            QFile f(ruta);
            if (f.open(QIODevice::ReadOnly) && f.read(16) == QByteArray("SQLite format 3\0", 16))
                Fallar(QStringLiteral("'%1' ya es un libro de este programa; no hace falta importarlo.").arg(ruta));
            libros.push_back(std::make_unique<jet::LibroAccess>(ruta));
            res.versiones << QStringLiteral("%1: %2").arg(archivo, libros.back()->Version());
        }
    } catch (const jet::ErrorAccess &e) {
        Fallar(e.descripcion);
    }

    QTemporaryDir tmp(padre + QStringLiteral("/.") + infoDestino.fileName() + QStringLiteral("-importando-XXXXXX"));
    if (!tmp.isValid())
        Fallar(QStringLiteral("No se puede crear una carpeta temporal en '%1'.").arg(padre));
    const QString nueva = tmp.path() + u'/';
    esquema::CrearBases(nueva);

    try {
        // The tables of each new book, all looked for in the Access files before any is copied.
        std::vector<QStringList> tablasDe;
        for (size_t i = 0; i < libros.size(); ++i) {
            const QString archivo = kArchivos[int(i)];
            Base base(nueva + archivo);
            tablasDe.push_back(TablasDe(base));
            if (!libros[i])
                continue;
            const QStringList enAccess = libros[i]->Tablas();
            for (const QString &t : tablasDe.back())
                if (!enAccess.contains(t, Qt::CaseInsensitive))
                    Fallar(QStringLiteral("El archivo '%1' (%2) no tiene la tabla %3; sus tablas son: %4.")
                               .arg(libros[i]->Ruta(), libros[i]->Version(), t,
                                    enAccess.isEmpty() ? QStringLiteral("ninguna") : enAccess.join(QStringLiteral(", "))));
            for (const QString &t : enAccess)
                if (!tablasDe.back().contains(t, Qt::CaseInsensitive))
                    res.avisos << QStringLiteral("%1: no se importa la tabla %2, que el programa no usa.").arg(archivo, t);
        }
        for (size_t i = 0; i < libros.size(); ++i) {
            if (!libros[i])
                continue;
            const QString archivo = kArchivos[int(i)];
            const QStringList &tablas = tablasDe[i];
            Base base(nueva + archivo);
            // A long book is written in one transaction: a cache that holds it (256 MB at most)
            // spares the pages being spilled (and synced) before the commit. Set on this
            // connection only, which is closed with the book.
            base.Ejecutar("PRAGMA cache_size = -262144");
            base.Ejecutar("BEGIN");
            QList<TablaImportada> copiadas;
            for (const QString &t : tablas) {
                jet::TablaAccess tabla = libros[i]->Tabla(t);
                // A long table says how far it has gone every 100,000 rows.
                long leidas = 0;
                FuenteFilas fuente{libros[i]->Ruta(), {}, [&](QVector<QVariant> &f) {
                                       if (!tabla.Siguiente(f))
                                           return false;
                                       if (progreso && ++leidas % 100000 == 0)
                                           progreso(QStringLiteral("%1 %2: %3 filas...").arg(archivo, t).arg(leidas));
                                       return true;
                                   }};
                for (const jet::ColumnaAccess &c : tabla.Columnas())
                    fuente.columnas << c.nombre;
                copiadas << CopiarFilas(base.db, archivo, t, fuente, res.avisos);
                if (progreso)
                    progreso(QStringLiteral("%1 %2: %3 filas").arg(archivo, t).arg(copiadas.last().leidas));
            }
            base.Ejecutar("COMMIT");
            // Counted again from the book written: what arrived, not what was sent.
            for (TablaImportada &c : copiadas) {
                c.filas = Contar(base, c.tabla);
                if (c.filas != c.leidas)
                    Fallar(QStringLiteral("%1, tabla %2: se leyeron %3 filas y el libro nuevo tiene %4.")
                               .arg(archivo, c.tabla).arg(c.leidas).arg(c.filas));
            }
            res.tablas << copiadas;
        }
    } catch (const jet::ErrorAccess &e) {
        Fallar(e.descripcion);
    }

    res.resumen = ResumenLibro(nueva);
    res.resumen.carpeta = res.destino + u'/';
    if (ajustesEnDestino) {
        const Ajustes a(tmp.path());
        a.GuardarCarpetaLibros(res.destino, true);
        if (!res.resumen.propuesto.cuit.isEmpty())
            a.GuardarHistorial(res.resumen.propuesto.cuit, res.resumen.propuesto.periodo);
    }

    // The temporary folder is private to its owner; the books' folder is an ordinary one.
    QFile::setPermissions(tmp.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                          QFileDevice::ReadGroup | QFileDevice::ExeGroup |
                                          QFileDevice::ReadOther | QFileDevice::ExeOther);
    // Into place: an empty destino gives way to the finished folder.
    if (infoDestino.isDir() && !QDir().rmdir(res.destino))
        Fallar(QStringLiteral("No se puede reemplazar la carpeta vacía '%1'.").arg(res.destino));
    if (!QDir().rename(tmp.path(), res.destino)) {
        if (infoDestino.isDir())
            QDir().mkdir(res.destino);
        Fallar(QStringLiteral("No se pueden mover los libros nuevos a '%1'.").arg(res.destino));
    }
    tmp.setAutoRemove(false);
    return res;
}

} // namespace importar
