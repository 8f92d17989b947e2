// The import of the old Access books: every row of every table against the expected content,
// the Jet 3 reading, and the import that fails half way leaving nothing behind. And a book file
// that is an Access book: recognised by its first bytes, and named with the command that
// converts it when the program tries to open it.

#include "app/core/Sesion.h"
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

QList<QJsonObject> Filas(const QString &jsonl)
{
    QList<QJsonObject> out;
    for (const QByteArray &linea : Leer(jsonl).split('\n'))
        if (!linea.isEmpty())
            out << QJsonDocument::fromJson(linea).object();
    return out;
}

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

// The differences between a table of the new book and its expected rows, one text each;
// conHora counts the expected rows with a time in a date column.
QStringList Diferencias(const QString &libro, const QJsonObject &tabla, const QList<QJsonObject> &esperadas, long &conHora)
{
    QStringList dif;
    const QString nombre = tabla[u"name"].toString();
    const QJsonArray columnas = tabla[u"columns"].toArray();
    QStringList select;
    for (const QJsonValue &c : columnas) {
        const QString n = c[u"name"].toString();
        select << (n == u"CUIT_USUARIO" ? QStringLiteral("USRSNRCUIT") : n == u"CUIT_PROVEEDOR" ? QStringLiteral("PRVSNRCUIT") : n);
    }
    sqlite3 *db = nullptr;
    sqlite3_open_v2(libro.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt *st = nullptr;
    sqlite3_prepare_v2(db, QStringLiteral("select %1 from %2 order by rowid").arg(select.join(u','), nombre).toUtf8().constData(),
                       -1, &st, nullptr);
    int fila = 0;
    for (const QJsonObject &e : esperadas) {
        ++fila;
        if (sqlite3_step(st) != SQLITE_ROW) {
            dif << QStringLiteral("%1: falta la fila %2").arg(nombre).arg(fila);
            break;
        }
        bool hora = false;
        for (int i = 0; i < columnas.size(); ++i) {
            const QString col = columnas[i][u"name"].toString();
            const QString tipo = columnas[i][u"type"].toString();
            const QJsonValue v = e[col];
            const int t = sqlite3_column_type(st, i);
            const QString texto = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, i)));
            // A date keeps its day (a time is dropped); currency compares at its four decimals.
            const bool igual =
                v.isNull() ? t == SQLITE_NULL
                : tipo == u"DATETIME" ? t == SQLITE_TEXT && texto == v.toString().left(10)
                : tipo == u"TEXT" || tipo == u"MEMO" ? t == SQLITE_TEXT && texto == v.toString()
                : tipo == u"CURRENCY" ? t == SQLITE_FLOAT && QString::number(sqlite3_column_double(st, i), 'f', 4) ==
                                                                 QString::number(v.toDouble(), 'f', 4)
                : tipo == u"DOUBLE" ? t == SQLITE_FLOAT && sqlite3_column_double(st, i) == v.toDouble()
                                    : t == SQLITE_INTEGER && sqlite3_column_int64(st, i) == v.toInteger();
            hora = hora || (tipo == u"DATETIME" && v.toString().size() > 10);
            if (!igual)
                dif << QStringLiteral("%1 fila %2 %3: '%4' (tipo %5), se esperaba %6")
                           .arg(nombre).arg(fila).arg(col, texto).arg(t)
                           .arg(QString::fromUtf8(QJsonDocument(QJsonArray{v}).toJson(QJsonDocument::Compact)));
        }
        conHora += hora;
    }
    if (dif.isEmpty() && sqlite3_step(st) == SQLITE_ROW)
        dif << QStringLiteral("%1: sobran filas").arg(nombre);
    sqlite3_finalize(st);
    sqlite3_close(db);
    return dif;
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
        int progreso = 0;
        const auto r = importar::ImportarAccess(kFixturas + origen, destino, [&progreso](const QString &) { ++progreso; });
        QCOMPARE(progreso, 7);
        QVERIFY(r.avisos.isEmpty());
        int n = 0;
        for (const QString &libro : {QStringLiteral("personal"), QStringLiteral("kestrel"), QStringLiteral("proveedores")}) {
            const QJsonObject esquema = QJsonDocument::fromJson(Leer(kFixturas + QStringLiteral("expected/%1/schema.json").arg(libro))).object();
            for (const QJsonValue &t : esquema[u"tables"].toArray()) {
                const QString nombre = t[u"name"].toString();
                long conHora = 0;
                const QStringList dif = Diferencias(QStringLiteral("%1/%2.mdb").arg(destino, libro), t.toObject(),
                                                    Filas(kFixturas + QStringLiteral("expected/%1/%2.jsonl").arg(libro, nombre)), conHora);
                QVERIFY2(dif.isEmpty(), qPrintable(dif.mid(0, 5).join(u'\n')));
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
    // The copy's rules on columns and values, from rows given directly (no Access file holds these).
    void columnasYValores_data()
    {
        QTest::addColumn<QStringList>("columnas");
        QTest::addColumn<QVariantList>("valores");
        QTest::addColumn<QString>("resultado"); // the row as stored, or the error
        const QVariant hora = QDateTime(QDate(2005, 3, 15), QTime(23, 59, 59), QTimeZone::utc());
        QTest::newRow("columna desconocida") << QStringList{"prvsnrcuit", "PRVSFAX", "PRVFALTA"}
                                             << QVariantList{u"30-1"_qs, u"555"_qs, hora} << "30-1||2005-03-15|1|PRVSFAX";
        QTest::newRow("fecha en texto") << QStringList{"PRVSNRCUIT", "PRVFALTA"} << QVariantList{u"30-1"_qs, u"15/03/2005"_qs}
                                        << "30-1||2005-03-15|0|";
        QTest::newRow("cuit como número") << QStringList{"PRVSNRCUIT", "PRVSNOMBRE"} << QVariantList{30123LL, QVariant()}
                                          << "30123|||0|";
        QTest::newRow("falta la clave") << QStringList{"PRVSNOMBRE"} << QVariantList{u"Uno"_qs} << "no tiene la columna PRVSNRCUIT";
        QTest::newRow("fecha ilegible") << QStringList{"PRVSNRCUIT", "PRVFALTA"} << QVariantList{u"30-1"_qs, u"ayer"_qs}
                                        << "fila 1: 'ayer' no es una fecha";
    }
    void columnasYValores()
    {
        QFETCH(QStringList, columnas);
        QFETCH(QVariantList, valores);
        QFETCH(QString, resultado);
        QTemporaryDir tmp;
        const QString ruta = tmp.filePath(QStringLiteral("kestrel.mdb"));
        esquema::CrearArchivo(ruta, esquema::SentenciasKestrel());
        sqlite3 *db = oDB::clManejo::Abrir(ruta, false);
        bool dada = false;
        importar::FuenteFilas fuente{ruta, columnas, [&](QVector<QVariant> &f) {
                                         f = QVector<QVariant>(valores.begin(), valores.end());
                                         return !std::exchange(dada, true);
                                     }};
        QStringList avisos;
        QString visto;
        try {
            const auto r = importar::CopiarFilas(db, QStringLiteral("kestrel.mdb"), QStringLiteral("PRV"), fuente, avisos);
            sqlite3_stmt *st = nullptr;
            sqlite3_prepare_v2(db, "select PRVSNRCUIT, PRVSNOMBRE, PRVFALTA from PRV", -1, &st, nullptr);
            sqlite3_step(st);
            for (int i = 0; i < 3; ++i)
                visto += QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, i))) + u'|';
            sqlite3_finalize(st);
            visto += QString::number(r.filasConHora) + u'|' + r.omitidas.join(u',');
            QCOMPARE(avisos.size(), int(r.omitidas.size()));
        } catch (const oDB::ErrorBD &e) {
            visto = e.descripcion;
        }
        sqlite3_close(db);
        QVERIFY2(visto.contains(resultado), qPrintable(visto));
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
    void abrir_data()
    {
        QTest::addColumn<QByteArray>("contenido"); // empty: the file is copied from origen
        QTest::addColumn<QString>("origen");
        QTest::addColumn<bool>("access");
        const QString &f = kFixturas;
        QTest::newRow("Access 2003") << QByteArray() << f + "jet4-2003/kestrel.mdb" << true;
        QTest::newRow("Access 97") << QByteArray() << f + "terceros/testV1997.mdb" << true;
        QTest::newRow("Access 2007") << QByteArray("\x00\x01\x00\x00Standard ACE DB\x00 resto", 26) << QString() << true;
        QTest::newRow("libro del programa") << QByteArray() << QString() << false;
        QTest::newRow("nombre sin su cero") << QByteArray("\x00\x01\x00\x00Standard Jet DBX", 20) << QString() << false;
        QTest::newRow("archivo corto") << QByteArray("\x00\x01\x00\x00Standard", 12) << QString() << false;
    }
    void abrir()
    {
        QFETCH(QByteArray, contenido);
        QFETCH(QString, origen);
        QFETCH(bool, access);
        QTemporaryDir tmp;
        const QString dir = tmp.filePath(QStringLiteral("libros viejos/")), ruta = dir + QStringLiteral("kestrel.mdb");
        QDir().mkpath(dir);
        QFile f(ruta);
        if (!origen.isEmpty())
            QVERIFY(QFile::copy(origen, ruta));
        else if (contenido.isEmpty())
            esquema::CrearArchivo(ruta, esquema::SentenciasKestrel());
        else
            QVERIFY(f.open(QIODevice::WriteOnly) && f.write(contenido) == contenido.size() && f.flush());
        oDB::clManejo db;
        db.setCadenaConexion(CadenaConexion(dir, QStringLiteral("kestrel.mdb")));
        const QString error = ErrorDe([&db] { db.Conectar(); });
        QCOMPARE(error.contains(u"Access"), access);
        // The path with a blank goes between quotes, so the command can be copied as it is.
        QVERIFY2(!access || (error.contains(QStringLiteral("'%1' es un libro de Microsoft Access").arg(ruta)) &&
                             error.contains(QStringLiteral("ivacompras importar-access \"%1\" \"%2\"")
                                                .arg(tmp.filePath(QStringLiteral("libros viejos")),
                                                     tmp.filePath(QStringLiteral("libros viejos-convertido"))))),
                 qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(TstImportarAccess)
#include "tst_importaraccess.moc"
