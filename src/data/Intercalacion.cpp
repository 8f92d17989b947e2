#include "data/Intercalacion.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>
#include <algorithm>
#include <sqlite3.h>

namespace oDB {

namespace {

// Weight of a character by its letter alone: its plain letter in small type, doubled so that
// "ñ" fits between "n" and "o". The second weight tells an accented letter from its plain one
// (0 for the plain one).
struct Peso {
    uint primario;
    uint secundario;
};

Peso PesoDe(QChar c)
{
    const QChar chica = c.toLower();
    if (chica == QChar(0x00F1)) // ñ: a letter of its own, right after n
        return {uint(u'n') * 2 + 1, 0};
    if (chica.unicode() < 0x80)
        return {uint(chica.unicode()) * 2, 0};
    QChar base = chica;
    if (chica.decompositionTag() == QChar::Canonical) {
        const QString d = chica.decomposition();
        if (!d.isEmpty())
            base = d.at(0).toLower();
    }
    return {uint(base.unicode()) * 2, base == chica ? 0u : uint(chica.unicode())};
}

QVector<Peso> Pesos(const QString &texto)
{
    const QString t = texto.normalized(QString::NormalizationForm_C);
    QVector<Peso> p;
    p.reserve(t.size());
    for (const QChar c : t)
        if (!c.isMark())
            p.append(PesoDe(c));
    return p;
}

int Signo(qint64 d) { return d < 0 ? -1 : (d > 0 ? 1 : 0); }

bool Ascii(const void *s, int n)
{
    const auto *b = static_cast<const unsigned char *>(s);
    for (int i = 0; i < n; ++i)
        if (b[i] >= 0x80)
            return false;
    return true;
}

int Minuscula(unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; }

int Comparar(void *, int n1, const void *s1, int n2, const void *s2)
{
    // Plain ASCII texts need no decoding: their order is that of their small letters. The
    // capitals are folded here rather than by tolower, which follows the process's C locale
    // (set from the machine's by the windows) and could disagree with the full comparison.
    if (Ascii(s1, n1) && Ascii(s2, n2)) {
        const auto *a = static_cast<const unsigned char *>(s1);
        const auto *b = static_cast<const unsigned char *>(s2);
        for (int i = 0; i < n1 && i < n2; ++i) {
            const int d = Minuscula(a[i]) - Minuscula(b[i]);
            if (d != 0)
                return d;
        }
        return Signo(qint64(n1) - n2);
    }
    return CompararEspanol(QString::fromUtf8(static_cast<const char *>(s1), n1),
                           QString::fromUtf8(static_cast<const char *>(s2), n2));
}

struct Columna {
    const char *tabla;
    const char *columna;
};
constexpr Columna kNombres[] = {{"USR", "USRSNOMBRE"}, {"PRV", "PRVSNOMBRE"}};

QStringList Textos(sqlite3 *db, const QString &sql, const QString &valor)
{
    QStringList out;
    sqlite3_stmt *st = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK)
        return out;
    const QByteArray v = valor.toUtf8();
    sqlite3_bind_text(st, 1, v.constData(), int(v.size()), SQLITE_TRANSIENT);
    while (sqlite3_step(st) == SQLITE_ROW)
        out << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    return out;
}

bool Ejecutar(sqlite3 *db, const QString &sql)
{
    return sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

// Rebuilds a table from its new definition: the rows copied, then its indexes and triggers
// made again (they are dropped with the old table).
bool Reconstruir(sqlite3 *db, const QString &tabla, QString definicion)
{
    const QStringList otros = Textos(db,
                                     QStringLiteral("select sql from sqlite_master where tbl_name = ?1 collate nocase "
                                                    "and type in ('index','trigger') and sql is not null"),
                                     tabla);
    const QString nueva = QStringLiteral("ivc_espanol_") + tabla;
    static const QRegularExpression cabeza(QStringLiteral("^\\s*CREATE\\s+TABLE\\s+(\"?)\\w+\\1"),
                                           QRegularExpression::CaseInsensitiveOption);
    definicion.replace(cabeza, QStringLiteral("CREATE TABLE ") + nueva);
    if (!Ejecutar(db, definicion) ||
        !Ejecutar(db, QStringLiteral("INSERT INTO %1 SELECT * FROM %2").arg(nueva, tabla)) ||
        !Ejecutar(db, QStringLiteral("DROP TABLE %1").arg(tabla)) ||
        !Ejecutar(db, QStringLiteral("ALTER TABLE %1 RENAME TO %2").arg(nueva, tabla)))
        return false;
    for (const QString &o : otros)
        if (!Ejecutar(db, o))
            return false;
    return true;
}

} // namespace

int CompararEspanol(const QString &a, const QString &b)
{
    const QVector<Peso> pa = Pesos(a);
    const QVector<Peso> pb = Pesos(b);
    const qsizetype n = std::min(pa.size(), pb.size());
    for (qsizetype i = 0; i < n; ++i)
        if (pa[i].primario != pb[i].primario)
            return pa[i].primario < pb[i].primario ? -1 : 1;
    if (pa.size() != pb.size())
        return pa.size() < pb.size() ? -1 : 1;
    for (qsizetype i = 0; i < n; ++i)
        if (pa[i].secundario != pb[i].secundario)
            return pa[i].secundario < pb[i].secundario ? -1 : 1;
    return 0;
}

void PrepararIntercalacion(sqlite3 *db)
{
    sqlite3_create_collation_v2(db, kIntercalacion, SQLITE_UTF8, nullptr, Comparar, nullptr);

    // Tables whose name column is still declared with the plain case-blind collation. A book
    // already brought to ESPANOL costs two reads of its schema here and is not written.
    QList<QPair<QString, QString>> pendientes;
    for (const Columna &c : kNombres) {
        const QString tabla = QString::fromLatin1(c.tabla);
        QString sql = Textos(db, QStringLiteral("select sql from sqlite_master where type = 'table' and name = ?1 collate nocase"),
                             tabla)
                          .value(0);
        const QRegularExpression vieja(QStringLiteral("\\b%1(\\s+TEXT\\s+COLLATE\\s+)NOCASE\\b").arg(QLatin1String(c.columna)),
                                       QRegularExpression::CaseInsensitiveOption);
        if (sql.isEmpty() || !vieja.match(sql).hasMatch())
            continue;
        sql.replace(vieja, QLatin1String(c.columna) + QStringLiteral("\\1") + QLatin1String(kIntercalacion));
        pendientes.append({tabla, sql});
    }
    // A book that cannot be written now (a read-only folder or disc, a copy on a CD, another
    // program holding it) keeps its old declaration: it still opens and reads, and its names
    // sort as they always did, case-blind with the accents after. So a failure here is not
    // reported; the upgrade is tried again the next time the book is opened.
    if (pendientes.isEmpty() || !Ejecutar(db, QStringLiteral("BEGIN IMMEDIATE")))
        return;
    bool ok = true;
    for (const auto &[tabla, sql] : pendientes)
        ok = ok && Reconstruir(db, tabla, sql);
    Ejecutar(db, ok ? QStringLiteral("COMMIT") : QStringLiteral("ROLLBACK"));
}

} // namespace oDB
