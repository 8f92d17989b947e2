// The import of the old Access books: every row of every table against the expected content,
// the Jet 3 reading, and the import that fails half way leaving nothing behind. And a book file
// that is an Access book: recognised by its first bytes, and named with the command that
// converts it when the program tries to open it.

#include "common/Archivo.h"
#include "data/ArchivoAccess.h"
#include "data/Esquema.h"
#include "data/oDB.h"
#include "import/ImportarAccess.h"
#include "import/LibroAccess.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QtTest>
#include <sqlite3.h>

namespace {

const QString kFixturas = QStringLiteral(IVC_FIXTURAS "/access/");

// The bytes of every file under a folder, by relative path.
QMap<QString, QByteArray> Contenido(const QString &dir)
{
    QMap<QString, QByteArray> out;
    for (QDirIterator it(dir, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); it.hasNext();) {
        const QString f = it.next();
        out.insert(QDir(dir).relativeFilePath(f), Leer(f));
    }
    return out;
}

// A table of the new book and its expected rows, a line each, every value as its storage class and
// text, worked out by SQLite alike for both: a date keeps its day (a time is dropped), currency
// compares at four decimals. horas counts the expected rows with a time in a date column.
QPair<QStringList, QStringList> Tabla(const QString &libro, const QJsonObject &tabla, const QString &jsonl, long &horas)
{
    QStringList leida, esperada, hora{QStringLiteral("0")}, leidas, esperadas;
    for (const QJsonValue &c : tabla[u"columns"].toArray()) {
        const QString n = c[u"name"].toString(), tipo = c[u"type"].toString();
        const QString col = n == u"CUIT_USUARIO" ? u"USRSNRCUIT"_qs : n == u"CUIT_PROVEEDOR" ? u"PRVSNRCUIT"_qs : n;
        const QString json = QStringLiteral("json_extract(?1, '$.%1')").arg(n);
        const QString texto = tipo == u"CURRENCY" ? QStringLiteral("printf('%.4f', %1)")
                              : tipo == u"DOUBLE" ? QStringLiteral("printf('%.17g', %1)")
                                                  : QStringLiteral("%1");
        const QString valor = QStringLiteral("typeof(%1) || ':' || ifnull(%2, '')");
        leida << valor.arg(col, texto.arg(col));
        const QString e = tipo == u"DATETIME" ? QStringLiteral("substr(%1, 1, 10)").arg(json) : json;
        esperada << valor.arg(e, texto.arg(e));
        if (tipo == u"DATETIME")
            hora << QStringLiteral("length(%1) > 10").arg(json);
    }
    sqlite3 *db = nullptr;
    sqlite3_open_v2(libro.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    const auto filas = [db](const QString &sql, const QByteArray &json, QStringList &out) {
        sqlite3_stmt *st = nullptr;
        if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK)
            qFatal("%s in: %s", sqlite3_errmsg(db), qPrintable(sql));
        sqlite3_bind_text(st, 1, json.constData(), int(json.size()), SQLITE_STATIC);
        long conHora = 0;
        while (sqlite3_step(st) == SQLITE_ROW) {
            out << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, 0)));
            conHora += sqlite3_column_int(st, 1);
        }
        sqlite3_finalize(st);
        return conHora;
    };
    const QString sep = QStringLiteral(" || '|' || ");
    const QString sql = QStringLiteral("select %1, 0 from %2 order by rowid");
    filas(sql.arg(leida.join(sep), tabla[u"name"].toString()), {}, leidas);
    const QString expresiones = QStringLiteral("select %1, %2").arg(esperada.join(sep), hora.join(u" or "));
    for (const QByteArray &linea : Leer(jsonl).split('\n'))
        if (!linea.isEmpty())
            horas += filas(expresiones, linea, esperadas);
    sqlite3_close(db);
    return {leidas, esperadas};
}

// The description of the error f throws; empty when it throws none.
template <class F> QString ErrorDe(F &&f)
{
    try {
        f();
    } catch (const oDB::ErrorBD &e) {
        return e.descripcion;
    }
    return {};
}

// The rows given copied into the suppliers of a new book: the rows as stored (CUIT and date), then
// the rows with a time, the columns left out and the warnings.
QStringList Copiar(const QStringList &columnas, const QList<QVariantList> &filas)
{
    QTemporaryDir tmp;
    const QString ruta = tmp.filePath(QStringLiteral("kestrel.mdb"));
    esquema::CrearArchivo(ruta, esquema::SentenciasKestrel());
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(oDB::clManejo::Abrir(ruta, false), sqlite3_close);
    qsizetype n = 0;
    const importar::FuenteFilas fuente{ruta, columnas, [&](QVector<QVariant> &f) {
                                           f = filas.value(n).toVector();
                                           return n++ < filas.size();
                                       }};
    QStringList avisos, out;
    const auto r = importar::CopiarFilas(db.get(), u"kestrel.mdb"_qs, u"PRV"_qs, fuente, avisos);
    sqlite3_stmt *st = nullptr;
    sqlite3_prepare_v2(db.get(), "select PRVSNRCUIT || '|' || ifnull(PRVFALTA, '') from PRV", -1, &st, nullptr);
    while (sqlite3_step(st) == SQLITE_ROW)
        out << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    return out << u"%1 %2 %3"_qs.arg(r.filasConHora).arg(r.omitidas.join(u',')).arg(avisos.size());
}

} // namespace

class TstImportarAccess : public QObject
{
    Q_OBJECT
private slots:
    void filasComoEnAccess_data()
    {
        QTest::addColumn<QString>("origen");
        QTest::newRow("Access 2000") << "jet4";
        QTest::newRow("Access 2002-2003") << "jet4-2003";
    }
    void filasComoEnAccess()
    {
        QFETCH(QString, origen);
        QTemporaryDir tmp;
        const QString destino = tmp.filePath(QStringLiteral("libros"));
        const auto r = importar::ImportarAccess(kFixturas + origen, destino, [](const QString &) {});
        QVERIFY(r.avisos.isEmpty());
        int n = 0;
        for (const QString &libro : {QStringLiteral("personal"), QStringLiteral("kestrel"), QStringLiteral("proveedores")}) {
            const QString esperado = kFixturas + QStringLiteral("expected/") + libro;
            const QJsonObject esquema = QJsonDocument::fromJson(Leer(esperado + u"/schema.json"_qs)).object();
            for (const QJsonValue &t : esquema[u"tables"].toArray()) {
                const QString nombre = t[u"name"].toString();
                long conHora = 0;
                const auto [leidas, esperadas] = Tabla(destino + u'/' + libro + QStringLiteral(".mdb"), t.toObject(),
                                                       esperado + u'/' + nombre + QStringLiteral(".jsonl"), conHora);
                QCOMPARE(leidas, esperadas);
                // The rows counted in the new book and those reported with a time dropped.
                const importar::TablaImportada ti = r.tablas.value(n++);
                QCOMPARE(ti.tabla + u' ' + QString::number(ti.filas) + u' ' + QString::number(ti.filasConHora),
                         nombre + u' ' + QString::number(t[u"rows"].toInt()) + u' ' + QString::number(conHora));
            }
        }
        QCOMPARE(n, int(r.tablas.size()));
    }
    void jet3()
    {
        auto libro = std::make_unique<jet::LibroAccess>(kFixturas + QStringLiteral("terceros/testV1997.mdb"));
        QCOMPARE(libro->Version(), QStringLiteral("Jet 3"));
        QCOMPARE(libro->Tablas(), (QStringList{"Table1", "Table2", "Table3", "Table4"}));
        jet::TablaAccess t = libro->Tabla(QStringLiteral("table1"));
        libro.reset(); // the table keeps the file open
        QStringList tipos;
        for (const jet::ColumnaAccess &c : t.Columnas())
            tipos << c.nombre + u' ' + c.nombreTipo;
        QCOMPARE(tipos, (QStringList{"A Text", "B Text", "C Byte", "D Integer", "E Long Integer", "F Double", "G DateTime",
                                     "H Currency", "I Yes/No"}));
        const auto fecha = [](int a, int m, int d) { return QVariant(QDateTime(QDate(a, m, d), QTime(0, 0), QTimeZone::utc())); };
        QVector<QVariant> fila;
        QList<QVector<QVariant>> filas;
        while (t.Siguiente(fila))
            filas << fila;
        const QList<QVector<QVariant>> esperadas = {
            {u"a"_qs, u"b"_qs, 0LL, 0LL, 0LL, 0.0, fecha(1981, 12, 12), 0.0, 0LL},
            {u"abcdefg"_qs, u"hijklmnop"_qs, 2LL, 222LL, 333333333LL, 444.555, fecha(1974, 9, 21), 3.5, 1LL}};
        QCOMPARE(filas, esperadas);
    }
    // The copy's rules on columns and values, from rows given directly (no Access file holds these):
    // a column the program does not know is left out and reported, a date keeps its day (a time is
    // counted), a date kept as text is read, a CUIT stored as a number arrives as its digits.
    void columnasYValores()
    {
        const QVariant hora = QDateTime(QDate(2005, 3, 15), QTime(23, 59, 59), QTimeZone::utc());
        QCOMPARE(Copiar({"prvsnrcuit", "PRVSFAX", "PRVFALTA"},
                        {{u"30-1"_qs, u"555"_qs, hora}, {u"30-2"_qs, {}, u"15/03/2005"_qs}, {30123LL, 5LL, {}}}),
                 (QStringList{"30-1|2005-03-15", "30-2|2005-03-15", "30123|", "1 PRVSFAX 1"}));
        QString error = ErrorDe([] { Copiar({"PRVSNOMBRE"}, {{u"Uno"_qs}}); });
        QVERIFY2(error.contains(u"no tiene la columna PRVSNRCUIT"), qPrintable(error));
        error = ErrorDe([] { Copiar({"PRVSNRCUIT", "PRVFALTA"}, {{u"30-1"_qs, u"ayer"_qs}}); });
        QVERIFY2(error.contains(u"fila 1: 'ayer' no es una fecha"), qPrintable(error));
    }
    void fallaSinDejarNada_data()
    {
        QTest::addColumn<QString>("falla");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("a mitad de kestrel.mdb") << "progreso" << "cortado";
        QTest::newRow("falta una tabla") << "jet3" << "no tiene la tabla PRV";
        QTest::newRow("destino con archivos") << "destino" << "no está vacía";
        QTest::newRow("ya es un libro del programa") << "sqlite" << "ya es un libro de este programa";
    }
    void fallaSinDejarNada()
    {
        QFETCH(QString, falla);
        QFETCH(QString, mensaje);
        QTemporaryDir tmp;
        const QString origen = tmp.filePath(QStringLiteral("viejos"));
        QDir().mkpath(origen);
        for (const QString &f : QDir(kFixturas + QStringLiteral("jet4")).entryList(QDir::Files))
            QFile::copy(kFixturas + QStringLiteral("jet4/") + f, origen + u'/' + f);
        if (falla == u"jet3" && QFile::remove(origen + QStringLiteral("/kestrel.mdb")))
            QFile::copy(kFixturas + QStringLiteral("terceros/testV1997.mdb"), origen + QStringLiteral("/kestrel.mdb"));
        if (falla == u"sqlite" && QFile::remove(origen + QStringLiteral("/personal.mdb")))
            esquema::CrearArchivo(origen + QStringLiteral("/personal.mdb"), esquema::SentenciasPersonal());
        const QString destino = tmp.filePath(QStringLiteral("nuevos"));
        QDir().mkpath(destino);
        if (falla == u"destino")
            QFile(destino + QStringLiteral("/nota.txt")).open(QIODevice::WriteOnly);
        const auto antes = Contenido(tmp.path());

        const QString error = ErrorDe([&] {
            importar::ImportarAccess(origen, destino, [&falla](const QString &linea) {
                if (falla == u"progreso" && linea.contains(u"IVC_DetIVA"))
                    throw oDB::ErrorBD{QStringLiteral("cortado")};
            });
        });
        QVERIFY2(error.contains(mensaje), qPrintable(error));
        // Neither origen nor destino changed, and no temporary folder is left beside destino.
        QCOMPARE(Contenido(tmp.path()), antes);
        QCOMPARE(QDir(tmp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                 (QStringList{"nuevos", "viejos"}));
    }
    // An Access book is told by its first bytes (the Jet 4 ones share those of Access 97), and the
    // message names the command that converts its folder, the paths between quotes when they hold
    // blanks so that it can be copied as it is. Opening one names it: see the commands' tests.
    void archivoAccess_data()
    {
        QTest::addColumn<QByteArray>("contenido");
        QTest::addColumn<bool>("access");
        QTest::newRow("Access 97") << Leer(kFixturas + "terceros/testV1997.mdb") << true;
        QTest::newRow("Access 2007") << QByteArray("\x00\x01\x00\x00Standard ACE DB\x00 resto", 26) << true;
        QTest::newRow("nombre sin su cero") << QByteArray("\x00\x01\x00\x00Standard Jet DBX", 20) << false;
        QTest::newRow("archivo corto") << QByteArray("\x00\x01\x00\x00Standard", 12) << false;
    }
    void archivoAccess()
    {
        QFETCH(QByteArray, contenido);
        QFETCH(bool, access);
        QTemporaryDir tmp;
        const QString dir = tmp.filePath(QStringLiteral("libros viejos"));
        QDir().mkpath(dir);
        EscribirArchivo(dir + QStringLiteral("/kestrel.mdb"), contenido);
        const QString mensaje = archivoaccess::MensajeArchivoAccess(dir + QStringLiteral("/kestrel.mdb"));
        QVERIFY2(mensaje.contains(u"ivacompras importar-access \"%1\" \"%1-convertido\""_qs.arg(dir)) == access,
                 qPrintable(mensaje));
    }
};

QTEST_GUILESS_MAIN(TstImportarAccess)
#include "tst_importaraccess.moc"
