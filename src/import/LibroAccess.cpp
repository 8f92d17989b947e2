// libmdb (and the glib it includes) comes before Qt, whose keyword macros it does not expect.
#include <glib.h>
#include <mdbtools.h>

#include "import/LibroAccess.h"

#include <QDate>
#include <QDateTime>
#include <QFileInfo>
#include <QTime>
#include <QTimeZone>
#include <algorithm>

namespace jet {

namespace {

// The format in which libmdb writes dates: four-digit years, month before day, 24-hour time.
constexpr const char *kFormatoFecha = "%Y-%m-%d %H:%M:%S";

QString NombreTipo(int tipo)
{
    switch (tipo) {
    case MDB_BOOL: return QStringLiteral("Yes/No");
    case MDB_BYTE: return QStringLiteral("Byte");
    case MDB_INT: return QStringLiteral("Integer");
    case MDB_LONGINT: return QStringLiteral("Long Integer");
    case MDB_MONEY: return QStringLiteral("Currency");
    case MDB_FLOAT: return QStringLiteral("Single");
    case MDB_DOUBLE: return QStringLiteral("Double");
    case MDB_DATETIME: return QStringLiteral("DateTime");
    case MDB_BINARY: return QStringLiteral("Binary");
    case MDB_TEXT: return QStringLiteral("Text");
    case MDB_OLE: return QStringLiteral("OLE");
    case MDB_MEMO: return QStringLiteral("Memo");
    case MDB_REPID: return QStringLiteral("Replication ID");
    case MDB_NUMERIC: return QStringLiteral("Decimal");
    case MDB_COMPLEX: return QStringLiteral("Complex");
    default: return QStringLiteral("tipo %1").arg(tipo);
    }
}

// A text that libmdb allocated, taken as UTF-8 and freed.
QString Tomar(char *texto)
{
    const QString s = QString::fromUtf8(texto);
    g_free(texto);
    return s;
}

} // namespace

// ---------------------------------------------------------------------------------------

struct LibroAccess::Datos {
    MdbHandle *mdb = nullptr;
    ~Datos()
    {
        if (mdb)
            mdb_close(mdb);
    }
};

struct TablaAccess::Datos {
    // The book's file stays open while a table of it is read, even after the LibroAccess
    // that gave the table is gone; the table's definition is freed first.
    std::shared_ptr<LibroAccess::Datos> libro;
    MdbTableDef *tabla = nullptr;
    MdbHandle *mdb = nullptr;
    QString archivo;
    long fila = 0;
    std::vector<MdbField> campos;
    ~Datos()
    {
        if (tabla)
            mdb_free_tabledef(tabla);
    }
};

LibroAccess::LibroAccess(const QString &ruta) : d_(std::make_shared<Datos>()), ruta_(ruta)
{
    if (!QFileInfo(ruta).isFile())
        throw ErrorAccess{QStringLiteral("No se encuentra el archivo '%1'.").arg(ruta)};
    d_->mdb = mdb_open(QFile::encodeName(ruta).constData(), MDB_NOFLAGS);
    if (!d_->mdb)
        throw ErrorAccess{QStringLiteral("El archivo '%1' no es un libro de Access que se pueda leer.").arg(ruta)};
    mdb_set_date_fmt(d_->mdb, kFormatoFecha);
    mdb_set_shortdate_fmt(d_->mdb, kFormatoFecha);
    if (!mdb_read_catalog(d_->mdb, MDB_TABLE))
        throw ErrorAccess{QStringLiteral("No se puede leer la lista de tablas de '%1'.").arg(ruta)};
}

LibroAccess::~LibroAccess() = default;

QString LibroAccess::Version() const
{
    switch (d_->mdb->f->jet_version) {
    case MDB_VER_JET3: return QStringLiteral("Jet 3");
    case MDB_VER_JET4: return QStringLiteral("Jet 4");
    case MDB_VER_ACCDB_2007: return QStringLiteral("ACE 12");
    case MDB_VER_ACCDB_2010: return QStringLiteral("ACE 14");
    case MDB_VER_ACCDB_2013: return QStringLiteral("ACE 15");
    case MDB_VER_ACCDB_2016: return QStringLiteral("ACE 16");
    default: return QStringLiteral("ACE");
    }
}

QStringList LibroAccess::Tablas() const
{
    QStringList out;
    for (unsigned i = 0; i < d_->mdb->num_catalog; ++i) {
        auto *e = static_cast<MdbCatalogEntry *>(g_ptr_array_index(d_->mdb->catalog, i));
        if (e->object_type == MDB_TABLE && mdb_is_user_table(e))
            out << QString::fromUtf8(e->object_name);
    }
    return out;
}

TablaAccess LibroAccess::Tabla(const QString &nombre)
{
    for (unsigned i = 0; i < d_->mdb->num_catalog; ++i) {
        auto *e = static_cast<MdbCatalogEntry *>(g_ptr_array_index(d_->mdb->catalog, i));
        if (e->object_type != MDB_TABLE || !mdb_is_user_table(e) ||
            QString::fromUtf8(e->object_name).compare(nombre, Qt::CaseInsensitive) != 0)
            continue;
        auto d = std::make_unique<TablaAccess::Datos>();
        d->libro = d_;
        d->mdb = d_->mdb;
        d->archivo = QFileInfo(ruta_).fileName();
        d->tabla = mdb_read_table(e);
        if (!d->tabla || !mdb_read_columns(d->tabla))
            throw ErrorAccess{QStringLiteral("No se puede leer la tabla %1 de '%2'.").arg(nombre, ruta_)};
        mdb_rewind_table(d->tabla);
        QList<ColumnaAccess> columnas;
        for (unsigned c = 0; c < d->tabla->num_cols; ++c) {
            auto *col = static_cast<MdbColumn *>(g_ptr_array_index(d->tabla->columns, c));
            columnas.append({QString::fromUtf8(col->name), col->col_type, NombreTipo(col->col_type)});
        }
        d->campos.resize(std::max(1u, d->tabla->num_cols));
        return TablaAccess(std::move(d), QString::fromUtf8(e->object_name), columnas);
    }
    throw ErrorAccess{QStringLiteral("El archivo '%1' no tiene la tabla %2.").arg(ruta_, nombre)};
}

// ---------------------------------------------------------------------------------------

TablaAccess::TablaAccess(std::unique_ptr<Datos> d, const QString &nombre, QList<ColumnaAccess> columnas)
    : d_(std::move(d)), nombre_(nombre), columnas_(std::move(columnas))
{
}

TablaAccess::~TablaAccess() = default;
TablaAccess::TablaAccess(TablaAccess &&) noexcept = default;

long TablaAccess::FilasAnunciadas() const { return long(d_->tabla->num_rows); }

bool TablaAccess::Siguiente(QVector<QVariant> &fila)
{
    MdbTableDef *t = d_->tabla;
    MdbHandle *mdb = d_->mdb;
    // No column is bound: the fetch only finds the next live row and leaves its page in
    // pg_buf; the row is then split into its fields, which tell NULL from a zero-length text.
    if (!mdb_fetch_row(t))
        return false;
    ++d_->fila;
    auto falla = [&](const QString &motivo) {
        return ErrorAccess{QStringLiteral("%1, tabla %2, fila %3: %4").arg(d_->archivo, nombre_).arg(d_->fila).arg(motivo)};
    };
    int inicio = 0;
    size_t largo = 0;
    if (mdb_find_row(mdb, int(t->cur_row) - 1, &inicio, &largo) != 0)
        throw falla(QStringLiteral("no se encuentra la fila en su página"));
    inicio &= 0x1fff; // the row's offset without its flags
    const int n = mdb_crack_row(t, inicio, largo, d_->campos.data());
    if (n < 0)
        throw falla(QStringLiteral("la fila no se puede separar en sus columnas"));

    fila.fill(QVariant(), columnas_.size());
    unsigned char *pagina = mdb->pg_buf;
    for (unsigned i = 0; i < t->num_cols; ++i) {
        const MdbField &f = d_->campos[i];
        if (f.colnum < 0 || f.colnum >= int(columnas_.size()))
            continue;
        const int tipo = columnas_[f.colnum].tipo;
        QVariant &v = fila[f.colnum];
        if (tipo == MDB_BOOL) {
            // A yes/no value lives in the row's null mask: a set bit is "yes".
            v = qlonglong(f.is_null ? 0 : 1);
            continue;
        }
        if (f.is_null)
            continue;
        switch (tipo) {
        case MDB_TEXT:
            v = f.siz > 0 ? Tomar(mdb_col_to_string(mdb, pagina, f.start, MDB_TEXT, f.siz)) : QString(u""_qs);
            break;
        case MDB_MEMO: {
            // The memo is converted into a buffer of the bind size: made large enough for the
            // whole text (three bytes of UTF-8 for each byte stored at most).
            const size_t tamano = mdb->bind_size;
            if (f.siz >= 12)
                mdb_set_bind_size(mdb, std::max<size_t>(tamano, size_t(mdb_get_int32(pagina, f.start) & 0x3fffffff) * 3 + 16));
            v = Tomar(mdb_col_to_string(mdb, pagina, f.start, MDB_MEMO, f.siz));
            mdb_set_bind_size(mdb, tamano);
            break;
        }
        case MDB_DATETIME: {
            const QString texto = Tomar(mdb_col_to_string(mdb, pagina, f.start, MDB_DATETIME, f.siz));
            const QDate dia = QDate::fromString(texto.left(10), Qt::ISODate);
            const QTime hora = QTime::fromString(texto.mid(11), QStringLiteral("HH:mm:ss"));
            if (!dia.isValid() || !hora.isValid())
                throw falla(QStringLiteral("la fecha de %1 está fuera del calendario (%2)")
                                .arg(columnas_[f.colnum].nombre, QString::number(mdb_get_double(pagina, f.start), 'g', 17)));
            v = QDateTime(dia, hora, QTimeZone::utc());
            break;
        }
        case MDB_MONEY: {
            char *texto = mdb_money_to_string(mdb, f.start);
            bool ok = false;
            v = QByteArray(texto).toDouble(&ok);
            g_free(texto);
            if (!ok)
                throw falla(QStringLiteral("importe ilegible en %1").arg(columnas_[f.colnum].nombre));
            break;
        }
        case MDB_NUMERIC: {
            const auto *col = static_cast<MdbColumn *>(g_ptr_array_index(t->columns, f.colnum));
            char *texto = mdb_numeric_to_string(mdb, f.start, col->col_scale, col->col_prec);
            v = QByteArray(texto).toDouble();
            g_free(texto);
            break;
        }
        case MDB_DOUBLE: v = mdb_get_double(pagina, f.start); break;
        case MDB_FLOAT: v = double(mdb_get_single(pagina, f.start)); break;
        case MDB_BYTE: v = qlonglong(mdb_get_byte(pagina, f.start)); break;
        case MDB_INT: v = qlonglong(qint16(mdb_get_int16(pagina, f.start))); break;
        case MDB_LONGINT:
        case MDB_COMPLEX: v = qlonglong(qint32(mdb_get_int32(pagina, f.start))); break;
        case MDB_REPID: v = Tomar(mdb_uuid_to_string(pagina, f.start)); break;
        case MDB_BINARY: v = QByteArray(reinterpret_cast<const char *>(pagina) + f.start, f.siz); break;
        default: break; // OLE objects are not read: no book of the program keeps one.
        }
    }
    return true;
}

} // namespace jet
