#include "data/oDB.h"

#include "data/ArchivoAccess.h"
#include "data/Convenciones.h"
#include "data/Intercalacion.h"

#include <QFileInfo>
#include <sqlite3.h>
#include <utility>

namespace oDB {

QString Q(const QString &valor)
{
    if (valor.contains(u'\''))
        throw ErrorBD{QStringLiteral("Error de sintaxis en la cadena en la expresión de "
                                     "consulta '%1'.")
                          .arg(valor),
                      -2147217900};
    return u'\'' + valor + u'\'';
}

// ---------------------------------------------------------------------------------------
// Recordset

void Recordset::Exigir() const
{
    if (!abierto_)
        throw ErrorBD{QStringLiteral("No se permite realizar la operación si el objeto "
                                     "está cerrado."),
                      3704};
}

bool Recordset::Eof() const
{
    Exigir();
    return actual_ >= filas_.size();
}

bool Recordset::Bof() const
{
    Exigir();
    return filas_.isEmpty();
}

void Recordset::MoveNext()
{
    Exigir();
    if (actual_ >= filas_.size())
        throw ErrorBD{QStringLiteral("BOF o EOF es True, o el registro actual se eliminó."),
                      3021};
    ++actual_;
}

void Recordset::MoveFirst()
{
    Exigir();
    actual_ = 0;
}

long Recordset::RecordCount() const
{
    Exigir();
    return long(filas_.size());
}

QVariant Recordset::Fields(int indice) const
{
    Exigir();
    if (indice < 0 || indice >= nombres_.size())
        throw ErrorBD{QStringLiteral("No se encontró el elemento en la colección que "
                                     "corresponde al nombre o al ordinal pedido."),
                      3265};
    if (actual_ >= filas_.size())
        throw ErrorBD{QStringLiteral("BOF o EOF es True, o el registro actual se eliminó."),
                      3021};
    return filas_[actual_][indice];
}

QVariant Recordset::Fields(const QString &nombre) const
{
    Exigir();
    for (int i = 0; i < nombres_.size(); ++i)
        if (nombres_[i].compare(nombre, Qt::CaseInsensitive) == 0)
            return Fields(i);
    return Fields(-1);
}

QString Recordset::GetString(const QString &delimCol, const QString &delimFila,
                             const QString &nullExpr)
{
    Exigir();
    QString out;
    out.reserve((filas_.size() - actual_) * nombres_.size() * 12);
    for (; actual_ < filas_.size(); ++actual_) {
        const auto &fila = filas_[actual_];
        for (int c = 0; c < fila.size(); ++c) {
            if (c > 0)
                out += delimCol;
            const QVariant &v = fila[c];
            out += v.isNull() ? nullExpr : conv::Texto(v);
        }
        out += delimFila;
    }
    return out;
}

void Recordset::Close()
{
    // A recordset that a failed statement left closed is closed again without complaint, so
    // the error that failed the statement is the one reported.
    abierto_ = false;
    nombres_.clear();
    filas_.clear();
    actual_ = 0;
}

// ---------------------------------------------------------------------------------------
// Connection

struct clManejo::Preparada {
    sqlite3_stmt *st = nullptr;
    Preparada() = default;
    Preparada(Preparada &&o) noexcept : st(std::exchange(o.st, nullptr)) {}
    Preparada &operator=(Preparada &&o) noexcept
    {
        std::swap(st, o.st);
        return *this;
    }
    ~Preparada() { sqlite3_finalize(st); }
};

clManejo::clManejo() = default;

clManejo::~clManejo() { Desconectar(); }

void clManejo::Desconectar()
{
    if (db_) {
        sqlite3_close_v2(db_);
        db_ = nullptr;
    }
}

QString clManejo::ArchivoDeCadena(const QString &cadena)
{
    const QString clave = QStringLiteral("Data Source=");
    const qsizetype p = cadena.indexOf(clave, 0, Qt::CaseInsensitive);
    if (p < 0)
        return QString();
    QString resto = cadena.mid(p + clave.size());
    const qsizetype fin = resto.indexOf(u';');
    if (fin >= 0)
        resto = resto.left(fin);
    return resto.trimmed();
}

sqlite3 *clManejo::Abrir(const QString &archivo, bool crear)
{
    // A book of the old program is an Access file: say so, and how to convert it.
    if (const QString access = archivoaccess::MensajeArchivoAccess(archivo); !access.isEmpty())
        throw ErrorBD{access, 3343};
    sqlite3 *db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (crear ? SQLITE_OPEN_CREATE : 0);
    const int rc = sqlite3_open_v2(archivo.toUtf8().constData(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        const QString msg = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString();
        sqlite3_close_v2(db);
        throw ErrorBD{QStringLiteral("No se puede abrir la base de datos '%1': %2")
                          .arg(archivo, msg),
                      -2147467259};
    }
    sqlite3_extended_result_codes(db, 1);
    // A second program on the same file waits for its turn instead of failing.
    sqlite3_busy_timeout(db, 10000);
    // A file that is not a book (another program's file, random bytes, a damaged book) is
    // reported as that file at once, not later as a missing company or table.
    if (!crear) {
        const int leido = sqlite3_exec(db, "select count(*) from sqlite_master", nullptr, nullptr, nullptr);
        if (leido != SQLITE_OK) {
            const QString motivo = MotivoIlegible(leido, QString::fromUtf8(sqlite3_errmsg(db)));
            sqlite3_close_v2(db);
            throw ErrorBD{QStringLiteral("No se puede leer el archivo '%1' como libro de IVA Compras: %2.")
                              .arg(archivo, motivo),
                          -2147467259};
        }
    }
    // Every action commits at once and survives a power cut. With the rollback journal, FULL
    // syncs the book and the journal but not the folder after the journal is deleted: a power
    // cut right then could bring the journal back and roll the acknowledged save back on the
    // next open. EXTRA syncs the folder too.
    sqlite3_exec(db, "PRAGMA synchronous=EXTRA", nullptr, nullptr, nullptr);
    sqlite3_exec(db, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    RegistrarFunciones(db);
    PrepararIntercalacion(db);
    return db;
}

QString MotivoIlegible(int codigo, const QString &mensaje)
{
    switch (codigo & 0xff) {
    case SQLITE_NOTADB:
        return QStringLiteral("no es una base de datos de este programa");
    case SQLITE_CORRUPT:
        return QStringLiteral("el archivo está dañado");
    case SQLITE_IOERR:
        return QStringLiteral("error de lectura en el disco");
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_READONLY:
        return QStringLiteral("no tiene permiso para leerlo");
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return QStringLiteral("otro programa lo tiene bloqueado");
    case SQLITE_CANTOPEN:
        return QStringLiteral("no se puede abrir");
    case SQLITE_FULL:
        return QStringLiteral("no queda espacio en el disco");
    case SQLITE_TOOBIG:
        return QStringLiteral("tiene un dato demasiado grande");
    case SQLITE_NOMEM:
        return QStringLiteral("no alcanza la memoria");
    case SQLITE_NOTFOUND:
        return QStringLiteral("no se encuentra");
    case SQLITE_PROTOCOL:
        return QStringLiteral("no se pudo bloquear el archivo (¿está en una carpeta de red?)");
    default:
        // The engine's own words are English: they follow the code, for whoever looks it up.
        return mensaje.isEmpty() ? QStringLiteral("error del motor de datos %1").arg(codigo)
                                 : QStringLiteral("error del motor de datos %1: %2").arg(codigo).arg(mensaje);
    }
}

void clManejo::ExigirTablas(const QStringList &tablas)
{
    for (const QString &tabla : tablas) {
        sqlite3_stmt *st = nullptr;
        sqlite3_prepare_v2(db_, "select 1 from sqlite_master where type = 'table' and name = ? collate nocase",
                           -1, &st, nullptr);
        const QByteArray nombre = tabla.toUtf8();
        sqlite3_bind_text(st, 1, nombre.constData(), int(nombre.size()), SQLITE_TRANSIENT);
        const bool esta = sqlite3_step(st) == SQLITE_ROW;
        sqlite3_finalize(st);
        if (!esta)
            throw ErrorBD{QStringLiteral("El archivo '%1' no es un libro de IVA Compras completo: le falta "
                                         "la tabla %2.")
                              .arg(archivo_, tabla),
                          -2147217865};
    }
}

bool clManejo::Conectar()
{
    Desconectar();
    archivo_ = ArchivoDeCadena(cadena_);
    if (archivo_.isEmpty() || !QFileInfo(archivo_).isFile())
        throw ErrorBD{QStringLiteral("No se encuentra el archivo de base de datos '%1'.")
                          .arg(archivo_),
                      -2147467259};
    db_ = Abrir(archivo_, false);
    return true;
}

namespace {

// The old engine's functions right() and left() share their names with join keywords of
// SQLite; outside quoted texts a call to them is renamed to the registered ivc_right and
// ivc_left, so statements run as they are written.
QString AdaptarDialecto(const QString &sql)
{
    QString out;
    out.reserve(sql.size() + 16);
    bool comillas = false;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql[i];
        if (c == u'\'') {
            comillas = !comillas;
            out += c;
            continue;
        }
        if (!comillas && (c == u'r' || c == u'R' || c == u'l' || c == u'L') &&
            (i == 0 || !(sql[i - 1].isLetterOrNumber() || sql[i - 1] == u'_'))) {
            for (const QLatin1String nombre : {QLatin1String("right"), QLatin1String("left")}) {
                if (sql.mid(i, nombre.size()).compare(nombre, Qt::CaseInsensitive) != 0)
                    continue;
                qsizetype j = i + nombre.size();
                while (j < sql.size() && sql[j].isSpace())
                    ++j;
                if (j < sql.size() && sql[j] == u'(') {
                    out += QStringLiteral("ivc_");
                    break;
                }
            }
        }
        out += c;
    }
    return out;
}

} // namespace

clManejo::Preparada clManejo::Preparar()
{
    ultimoError_.clear();
    if (!db_)
        throw ErrorBD{QStringLiteral("La conexión no está abierta."), 3709};
    Preparada p;
    const QByteArray texto = AdaptarDialecto(sql_).toUtf8();
    const char *cola = nullptr;
    if (sqlite3_prepare_v2(db_, texto.constData(), int(texto.size()), &p.st, &cola) !=
        SQLITE_OK) {
        ultimoError_ = QString::fromUtf8(sqlite3_errmsg(db_));
        throw ErrorBD{ultimoError_, -2147217900};
    }
    // One statement per call: anything but blanks and a closing ";" after it is refused.
    for (const char *c = cola; c && *c; ++c) {
        if (*c != ' ' && *c != '\t' && *c != '\r' && *c != '\n' && *c != ';') {
            ultimoError_ = QStringLiteral("Se encontraron caracteres después del final de "
                                          "la instrucción SQL.");
            throw ErrorBD{ultimoError_, -2147217900};
        }
    }
    if (!p.st) {
        ultimoError_ = QStringLiteral("La instrucción SQL está vacía.");
        throw ErrorBD{ultimoError_, -2147217900};
    }
    return p;
}

namespace {

// The date a column declared DATE keeps as "yyyy-mm-dd"; invalid when the text is not one.
QDate FechaIso(const unsigned char *t, int n)
{
    if (n != 10 || t[4] != '-' || t[7] != '-')
        return QDate::fromString(QString::fromUtf8(reinterpret_cast<const char *>(t), n), Qt::ISODate);
    int v[3] = {0, 0, 0};
    for (int i = 0, parte = 0; i < 10; ++i) {
        if (i == 4 || i == 7) {
            ++parte;
            continue;
        }
        if (t[i] < '0' || t[i] > '9')
            return QDate();
        v[parte] = v[parte] * 10 + (t[i] - '0');
    }
    return QDate(v[0], v[1], v[2]);
}

QVariant LeerColumna(sqlite3_stmt *st, int c, bool fecha)
{
    switch (sqlite3_column_type(st, c)) {
    case SQLITE_NULL:
        return QVariant();
    case SQLITE_INTEGER:
        return QVariant(qlonglong(sqlite3_column_int64(st, c)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_column_double(st, c));
    default:
        break;
    }
    const unsigned char *t = sqlite3_column_text(st, c);
    const int n = sqlite3_column_bytes(st, c);
    if (fecha) {
        const QDate d = FechaIso(t, n);
        if (d.isValid())
            return QVariant(d);
    }
    return QVariant(QString::fromUtf8(reinterpret_cast<const char *>(t), n));
}

} // namespace

bool clManejo::CrearRs(Recordset &rs)
{
    rs = Recordset();
    Preparada p;
    try {
        p = Preparar();
    } catch (const ErrorBD &) {
        return false;
    }
    const int columnas = sqlite3_column_count(p.st);
    QStringList nombres;
    // Columns declared DATE come back as dates.
    QVector<bool> fecha(columnas);
    for (int c = 0; c < columnas; ++c) {
        nombres << QString::fromUtf8(sqlite3_column_name(p.st, c));
        const char *tipo = sqlite3_column_decltype(p.st, c);
        fecha[c] = tipo && qstricmp(tipo, "DATE") == 0;
    }
    QVector<QVector<QVariant>> filas;
    int rc;
    while ((rc = sqlite3_step(p.st)) == SQLITE_ROW) {
        QVector<QVariant> fila;
        fila.reserve(columnas);
        for (int c = 0; c < columnas; ++c)
            fila.append(LeerColumna(p.st, c, fecha[c]));
        filas.append(std::move(fila));
    }
    if (rc != SQLITE_DONE) {
        ultimoError_ = QString::fromUtf8(sqlite3_errmsg(db_));
        return false;
    }
    rs.abierto_ = true;
    rs.nombres_ = nombres;
    rs.filas_ = std::move(filas);
    rs.actual_ = 0;
    return !rs.filas_.isEmpty();
}

bool clManejo::Consultar(Recordset &rs, const QString &sql)
{
    if (CrearRs(rs, sql))
        return true;
    if (!rs.Abierto())
        throw ErrorBD{ultimoError_, -2147217900};
    return false;
}

namespace {

void Directa(sqlite3 *db, const char *sql)
{
    if (!db)
        throw ErrorBD{QStringLiteral("La conexión no está abierta."), 3709};
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw ErrorBD{QString::fromUtf8(sqlite3_errmsg(db)), -2147467259};
}

} // namespace

void clManejo::Empezar() { Directa(db_, "BEGIN IMMEDIATE"); }

void clManejo::Confirmar() { Directa(db_, "COMMIT"); }

void clManejo::Deshacer()
{
    // After a failed COMMIT the engine may already have rolled back.
    if (db_ && !sqlite3_get_autocommit(db_))
        Directa(db_, "ROLLBACK");
}

long clManejo::Ejecutar()
{
    Preparada p = Preparar();
    int rc;
    while ((rc = sqlite3_step(p.st)) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) {
        ultimoError_ = QString::fromUtf8(sqlite3_errmsg(db_));
        const int codigo = sqlite3_extended_errcode(db_);
        if (codigo == SQLITE_CONSTRAINT_UNIQUE || codigo == SQLITE_CONSTRAINT_PRIMARYKEY) {
            // A second row with the key of another: said in the words of the row it repeats.
            const QString clave = ultimoError_.section(u':', 1).trimmed();
            if (clave.compare(QLatin1String("PRV.PRVSNRCUIT"), Qt::CaseInsensitive) == 0)
                ultimoError_ = QStringLiteral("Ya existe un proveedor con ese CUIT. No se guardó.");
            else if (clave.compare(QLatin1String("USR.USRSNRCUIT"), Qt::CaseInsensitive) == 0)
                ultimoError_ = QStringLiteral("Ya existe una empresa con ese CUIT. No se guardó.");
            else
                ultimoError_ = QStringLiteral("Ya existe un registro con el mismo valor de %1. No se guardó.").arg(clave);
            throw ErrorBD{ultimoError_, 3022};
        }
        throw ErrorBD{ultimoError_, -2147217900};
    }
    return sqlite3_changes(db_);
}

} // namespace oDB
