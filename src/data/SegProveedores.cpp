#include "data/SegProveedores.h"

#include "data/Convenciones.h"
#include "data/Esquema.h"
#include "data/oDB.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <sqlite3.h>

namespace SegProveedoresServices {

namespace {

// The tracking book, opened for one call; its table is created when missing. A missing file
// is an error naming it: the book is created with the others (crear-bases, demo).
class Libro
{
public:
    explicit Libro(const QString &ruta)
    {
        if (!QFileInfo(ruta).isFile())
            throw oDB::ErrorBD{QStringLiteral("No se encuentra la base de seguimiento de proveedores "
                                              "'%1'.").arg(ruta), 3044};
        db_ = oDB::clManejo::Abrir(ruta, false);
        for (const QString &s : esquema::SentenciasProveedores())
            Ejecutar(s);
    }
    ~Libro() { sqlite3_close_v2(db_); }
    sqlite3 *db() const { return db_; }

    void Ejecutar(const QString &sql)
    {
        char *msg = nullptr;
        if (sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &msg) != SQLITE_OK) {
            const QString error = QString::fromUtf8(msg);
            sqlite3_free(msg);
            throw oDB::ErrorBD{error, -2147467259};
        }
    }

private:
    sqlite3 *db_ = nullptr;
};

void Vincular(sqlite3_stmt *st, int i, const QString &s)
{
    const QByteArray b = s.toUtf8();
    sqlite3_bind_text(st, i, b.constData(), int(b.size()), SQLITE_TRANSIENT);
}

} // namespace

void clMAinSP::SP_IMPUTACIONESDESDEFACTURACION(const QString &cuitEmpresa, const QString &cuitProveedor,
                                               const QString &fecha, const QString &numero,
                                               const QString &descripcion, const QString &lado,
                                               double importe)
{
    const auto dia = conv::TextoAFecha(fecha);
    if (!dia)
        throw oDB::ErrorBD{QStringLiteral("La fecha '%1' no es válida.").arg(fecha), 13};
    Libro libro(ruta_);
    sqlite3_stmt *st = nullptr;
    const char *sql = "insert into IMPUTACIONES (USRSNRCUIT, PRVSNRCUIT, FECHA, NUMERO, DESCRIPCION,"
                      " LADO, IMPORTE, REGISTRADO) values (?,?,?,?,?,?,?,?)";
    if (sqlite3_prepare_v2(libro.db(), sql, -1, &st, nullptr) != SQLITE_OK)
        throw oDB::ErrorBD{QString::fromUtf8(sqlite3_errmsg(libro.db())), -2147467259};
    Vincular(st, 1, cuitEmpresa.isEmpty() ? cuit_ : cuitEmpresa);
    Vincular(st, 2, cuitProveedor);
    Vincular(st, 3, dia->toString(Qt::ISODate));
    Vincular(st, 4, numero);
    Vincular(st, 5, descripcion);
    Vincular(st, 6, lado);
    sqlite3_bind_double(st, 7, importe);
    Vincular(st, 8, QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")));
    const int rc = sqlite3_step(st);
    const QString error = QString::fromUtf8(sqlite3_errmsg(libro.db()));
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE)
        throw oDB::ErrorBD{error, -2147467259};
}

QList<Imputacion> clMAinSP::Imputaciones(const QString &proveedor)
{
    QList<Imputacion> out;
    if (!QFileInfo(ruta_).isFile())
        throw oDB::ErrorBD{QStringLiteral("No se encuentra la base de seguimiento de proveedores "
                                          "'%1'.").arg(ruta_), 3044};
    oDB::clManejo db;
    db.setCadenaConexion(QStringLiteral("Data Source=") + ruta_);
    db.Conectar();
    db.ExigirTablas({QStringLiteral("IMPUTACIONES")});
    QString sql = QStringLiteral("select USRSNRCUIT, PRVSNRCUIT, FECHA, NUMERO, DESCRIPCION, LADO, IMPORTE,"
                                 " REGISTRADO from IMPUTACIONES where USRSNRCUIT = ") + oDB::Q(cuit_);
    if (!proveedor.isEmpty())
        sql += QStringLiteral(" and PRVSNRCUIT = ") + oDB::Q(proveedor);
    sql += QStringLiteral(" order by ID");
    oDB::Recordset rs;
    if (!db.CrearRs(rs, sql)) {
        if (!db.UltimoError().isEmpty())
            throw oDB::ErrorBD{QStringLiteral("No se puede leer el archivo '%1': %2").arg(ruta_, db.UltimoError())};
        return out;
    }
    for (; !rs.Eof(); rs.MoveNext())
        out.append({rs(QStringLiteral("USRSNRCUIT")).toString(), rs(QStringLiteral("PRVSNRCUIT")).toString(),
                    rs(QStringLiteral("FECHA")).toDate(), rs(QStringLiteral("NUMERO")).toString(),
                    rs(QStringLiteral("DESCRIPCION")).toString(), rs(QStringLiteral("LADO")).toString(),
                    rs(QStringLiteral("IMPORTE")).toDouble(), rs(QStringLiteral("REGISTRADO")).toString()});
    return out;
}

} // namespace SegProveedoresServices
