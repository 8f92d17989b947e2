#include "data/Esquema.h"

#include "data/oDB.h"

#include <QDir>
#include <QFileInfo>
#include <sqlite3.h>

namespace esquema {

namespace {

// A money (or rate) column keeps a number even when the statement writes it as text with a
// decimal comma ('12,50'): the trigger converts it, and a text that is not a number fails the
// statement.
QStringList TriggersMonto(const QString &tabla, const QStringList &columnas)
{
    QStringList cond, set;
    for (const QString &c : columnas) {
        cond << QStringLiteral("typeof(NEW.%1) = 'text'").arg(c);
        set << QStringLiteral("%1 = ivc_monto(NEW.%1)").arg(c);
    }
    const QString cuerpo = QStringLiteral(" WHEN %1 BEGIN UPDATE %2 SET %3 WHERE rowid = NEW.rowid; END")
                               .arg(cond.join(QStringLiteral(" OR ")), tabla, set.join(QStringLiteral(", ")));
    return {QStringLiteral("CREATE TRIGGER %1_monto_ins AFTER INSERT ON %1 FOR EACH ROW").arg(tabla) + cuerpo,
            QStringLiteral("CREATE TRIGGER %1_monto_upd AFTER UPDATE OF %2 ON %1 FOR EACH ROW")
                    .arg(tabla, columnas.join(u',')) + cuerpo};
}

} // namespace

QStringList SentenciasPersonal()
{
    return {QStringLiteral("CREATE TABLE USR ("
                           "USRSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                           "USRSNOMBRE TEXT COLLATE ESPANOL,"
                           "USRSCONIVA TEXT COLLATE NOCASE,"
                           "USRSDOMICI TEXT COLLATE NOCASE,"
                           "USRSEMAIL TEXT COLLATE NOCASE)"),
            QStringLiteral("CREATE UNIQUE INDEX USR_CUIT ON USR (USRSNRCUIT)"),
            QStringLiteral("CREATE INDEX USR_NOMBRE ON USR (USRSNOMBRE)")};
}

QStringList SentenciasKestrel()
{
    QStringList s = {
        QStringLiteral("CREATE TABLE PRV ("
                       "PRVSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "PRVSNOMBRE TEXT COLLATE ESPANOL,"
                       "PRVSDOMICI TEXT COLLATE NOCASE,"
                       "PRVSTELFON TEXT COLLATE NOCASE,"
                       "PRVSEMAIL TEXT COLLATE NOCASE,"
                       "PRVSCONTAC TEXT COLLATE NOCASE,"
                       "PRVFALTA DATE)"),
        QStringLiteral("CREATE UNIQUE INDEX PRV_CUIT ON PRV (PRVSNRCUIT)"),
        QStringLiteral("CREATE INDEX PRV_NOMBRE ON PRV (PRVSNOMBRE)"),
        QStringLiteral("CREATE TABLE IVC ("
                       "USRSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "PRVSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "IVCFPERIOD DATE,"
                       "IVCFCOMPRO DATE,"
                       "IVCSTIPFAC TEXT COLLATE NOCASE,"
                       "IVCSNROFAC TEXT COLLATE NOCASE NOT NULL,"
                       "IVCDGRAVAD REAL DEFAULT 0,"
                       "IVCDNOGRAV REAL DEFAULT 0,"
                       "IVARIN REAL DEFAULT 0,"
                       "IVARNI REAL DEFAULT 0,"
                       "IVCINGBRU REAL DEFAULT 0,"
                       "IVCFALTA DATE,"
                       "DESCRIPCION TEXT COLLATE NOCASE,"
                       "DESCRIPCIONEXTRA TEXT COLLATE NOCASE)"),
        QStringLiteral("CREATE INDEX IVC_CLAVE ON IVC (USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC)"),
        QStringLiteral("CREATE INDEX IVC_PERIODO ON IVC (USRSNRCUIT, IVCFPERIOD, IVCFCOMPRO)"),
        QStringLiteral("CREATE TABLE IVC_DetIVA ("
                       "USRSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "PRVSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "IVCSNROFAC TEXT COLLATE NOCASE NOT NULL,"
                       "IVCdetId INTEGER,"
                       "IVCDETIVA REAL,"
                       "IVCDETDSC TEXT COLLATE NOCASE,"
                       "IVCDETVLR REAL)"),
        // Lines of an invoice come in the order they were entered; the rate in the index lets
        // the export read each invoice's rates without reading the rows.
        QStringLiteral("CREATE INDEX IVC_DetIVA_CLAVE ON IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC, IVCdetId, IVCDETIVA)"),
        QStringLiteral("CREATE INDEX IVC_DetIVA_ID ON IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCdetId)"),
        QStringLiteral("CREATE INDEX IVC_DetIVA_TASA ON IVC_DetIVA (USRSNRCUIT, IVCDETIVA)"),
        QStringLiteral("CREATE TABLE IVC_DetIngBrutos ("
                       "USRSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "PRVSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "IVCSNROFAC TEXT COLLATE NOCASE NOT NULL,"
                       "IVCdetId INTEGER,"
                       "IVCDETIB REAL,"
                       "IVCDETIBDSC TEXT COLLATE NOCASE,"
                       "IVCDETIBVLR REAL)"),
        QStringLiteral("CREATE INDEX IVC_DetIngBrutos_CLAVE ON IVC_DetIngBrutos (USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC)"),
        QStringLiteral("CREATE INDEX IVC_DetIngBrutos_ID ON IVC_DetIngBrutos (USRSNRCUIT, PRVSNRCUIT, IVCdetId)"),
        QStringLiteral("CREATE TABLE IVC_Gravado ("
                       "USRSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "PRVSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                       "IVCSNROFAC TEXT COLLATE NOCASE NOT NULL,"
                       "GRAVAD_id INTEGER,"
                       "GRAVAD_Valor REAL)"),
        QStringLiteral("CREATE INDEX IVC_Gravado_CLAVE ON IVC_Gravado (USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC)"),
    };
    s << TriggersMonto(QStringLiteral("IVC"),
                       {QStringLiteral("IVCDGRAVAD"), QStringLiteral("IVCDNOGRAV"), QStringLiteral("IVARIN"),
                        QStringLiteral("IVARNI"), QStringLiteral("IVCINGBRU")});
    s << TriggersMonto(QStringLiteral("IVC_DetIVA"),
                       {QStringLiteral("IVCdetId"), QStringLiteral("IVCDETIVA"), QStringLiteral("IVCDETVLR")});
    s << TriggersMonto(QStringLiteral("IVC_DetIngBrutos"),
                       {QStringLiteral("IVCdetId"), QStringLiteral("IVCDETIB"), QStringLiteral("IVCDETIBVLR")});
    s << TriggersMonto(QStringLiteral("IVC_Gravado"),
                       {QStringLiteral("GRAVAD_id"), QStringLiteral("GRAVAD_Valor")});
    return s;
}

QStringList SentenciasProveedores()
{
    // The supplier accounts of the invoicing system: one row per posting.
    return {QStringLiteral("CREATE TABLE IF NOT EXISTS IMPUTACIONES ("
                           "ID INTEGER PRIMARY KEY AUTOINCREMENT,"
                           "USRSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                           "PRVSNRCUIT TEXT COLLATE NOCASE NOT NULL,"
                           "FECHA DATE,"
                           "NUMERO TEXT COLLATE NOCASE,"
                           "DESCRIPCION TEXT COLLATE NOCASE,"
                           "LADO TEXT COLLATE NOCASE,"
                           "IMPORTE REAL,"
                           "REGISTRADO TEXT)"),
            QStringLiteral("CREATE INDEX IF NOT EXISTS IMPUTACIONES_CUENTA ON IMPUTACIONES (USRSNRCUIT, PRVSNRCUIT)")};
}

void CrearArchivo(const QString &ruta, const QStringList &sentencias)
{
    if (QFileInfo::exists(ruta))
        throw oDB::ErrorBD{QStringLiteral("El archivo '%1' ya existe; no se sobrescribe.").arg(ruta)};
    sqlite3 *db = oDB::clManejo::Abrir(ruta, true);
    QString error;
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    for (const QString &s : sentencias) {
        char *msg = nullptr;
        if (sqlite3_exec(db, s.toUtf8().constData(), nullptr, nullptr, &msg) != SQLITE_OK) {
            error = QString::fromUtf8(msg);
            sqlite3_free(msg);
            break;
        }
    }
    sqlite3_exec(db, error.isEmpty() ? "COMMIT" : "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close_v2(db);
    if (!error.isEmpty()) {
        QFile::remove(ruta);
        throw oDB::ErrorBD{QStringLiteral("No se pudo crear '%1': %2").arg(ruta, error)};
    }
}

void CrearBases(const QString &dir)
{
    const QDir d(dir);
    if (!d.exists())
        throw oDB::ErrorBD{QStringLiteral("La carpeta '%1' no existe.").arg(dir)};
    const QString personal = d.filePath(QStringLiteral("personal.mdb"));
    const QString kestrel = d.filePath(QStringLiteral("kestrel.mdb"));
    const QString proveedores = d.filePath(QStringLiteral("proveedores.mdb"));
    for (const QString &f : {personal, kestrel, proveedores})
        if (QFileInfo::exists(f))
            throw oDB::ErrorBD{QStringLiteral("El archivo '%1' ya existe; no se sobrescribe.").arg(f)};
    CrearArchivo(personal, SentenciasPersonal());
    CrearArchivo(kestrel, SentenciasKestrel());
    CrearArchivo(proveedores, SentenciasProveedores());
}

} // namespace esquema
