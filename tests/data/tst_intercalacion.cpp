// The Spanish order of names, and a book written before its declaration: opened by the program,
// it sorts the Spanish way and keeps its rows, its indexes and its unique CUIT keys.

#include "common/Libro.h"
#include "data/Esquema.h"
#include "data/Intercalacion.h"
#include "data/oDB.h"

#include <QtTest>
#include <sqlite3.h>

class TstIntercalacion : public QObject
{
    Q_OBJECT

    // Runs statements on a file without the program's component (as an older program would).
    static void Crudo(const QString &ruta, const QStringList &sentencias)
    {
        sqlite3 *db = nullptr;
        QCOMPARE(sqlite3_open(ruta.toUtf8().constData(), &db), SQLITE_OK);
        for (const QString &s : sentencias)
            QVERIFY2(sqlite3_exec(db, s.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(db));
        sqlite3_close(db);
    }
    static QStringList Viejas(QStringList sentencias)
    {
        sentencias.replaceInStrings(QStringLiteral("COLLATE ESPANOL"), QStringLiteral("COLLATE NOCASE"));
        return sentencias;
    }

private slots:
    void orden_data()
    {
        QTest::addColumn<QString>("antes");
        QTest::addColumn<QString>("despues");
        QTest::newRow("á con a") << "Lácteos La Cañada" << "Limpieza Cristalina";
        QTest::newRow("á con a, otra") << "Gráfica" << "Granja";
        QTest::newRow("ñ después de n") << "Nutria" << "Ñandú";
        QTest::newRow("ñ antes de o") << "Ñandú" << "Oasis";
        QTest::newRow("ñ después de nz") << "Penz" << "Peña";
        QTest::newRow("mayúscula acentuada") << "Árbol" << "azul";
        QTest::newRow("letra simple antes que acentuada") << "Lacteos" << "Lácteos";
    }
    void orden()
    {
        QFETCH(QString, antes);
        QFETCH(QString, despues);
        QCOMPARE(oDB::CompararEspanol(antes, despues), -1);
        QCOMPARE(oDB::CompararEspanol(despues, antes), 1);
        QCOMPARE(oDB::CompararEspanol(antes.toUpper(), antes.toLower()), 0);
    }

    void libroAnterior()
    {
        QTemporaryDir dir;
        const QString kestrel = dir.filePath(QStringLiteral("kestrel.mdb"));
        const QString personal = dir.filePath(QStringLiteral("personal.mdb"));
        Crudo(kestrel, Viejas(esquema::SentenciasKestrel()).mid(0, 3) +
                           QStringList{QStringLiteral("insert into PRV (PRVSNRCUIT,PRVSNOMBRE) values "
                                                      "('1','Limpieza Cristalina'),('2','Granja'),('3','Lácteos La Cañada'),"
                                                      "('4','Gráfica'),('5','Oasis'),('6','Ñandú'),('7','nutria')")});
        Crudo(personal, Viejas(esquema::SentenciasPersonal()) +
                            QStringList{QStringLiteral("insert into USR (USRSNRCUIT,USRSNOMBRE) values ('1','Óptica'),('2','Oro')")});

        oDB::clManejo db;
        db.setCadenaConexion(CadenaConexion(dir.path() + u'/', QStringLiteral("kestrel.mdb")));
        db.Conectar();
        oDB::Recordset rs;
        QVERIFY(db.CrearRs(rs, QStringLiteral("select PRVSNOMBRE from PRV order by PRVSNOMBRE")));
        QCOMPARE(rs.GetString(QStringLiteral("|"), QStringLiteral(";")),
                 QStringLiteral("Gráfica;Granja;Lácteos La Cañada;Limpieza Cristalina;nutria;Ñandú;Oasis;"));
        QVERIFY(db.CrearRs(rs, QStringLiteral("pragma integrity_check")));
        QCOMPARE(rs.GetString(), QStringLiteral("ok\r"));
        // The unique key on the CUIT and the lookups by CUIT stay as they were.
        QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db.Ejecutar(QStringLiteral("insert into PRV (PRVSNRCUIT,PRVSNOMBRE) values ('4','Otra')")));
        QVERIFY(db.CrearRs(rs, QStringLiteral("select PRVSNOMBRE from PRV where PRVSNRCUIT = '6'")));
        QCOMPARE(rs.GetString(), QStringLiteral("Ñandú\r"));

        db.setCadenaConexion(CadenaConexion(dir.path() + u'/', QStringLiteral("personal.mdb")));
        db.Conectar();
        QVERIFY(db.CrearRs(rs, QStringLiteral("select USRSNOMBRE from USR order by USRSNOMBRE")));
        QCOMPARE(rs.GetString(QStringLiteral("|"), QStringLiteral(";")), QStringLiteral("Óptica;Oro;"));
        // Once brought to the new order, opening the book again writes nothing.
        QVERIFY(db.CrearRs(rs, QStringLiteral("pragma schema_version")));
        const QString version = rs.GetString();
        db.Conectar();
        QVERIFY(db.CrearRs(rs, QStringLiteral("pragma schema_version")));
        QCOMPARE(rs.GetString(), version);
    }
};

QTEST_GUILESS_MAIN(TstIntercalacion)
#include "tst_intercalacion.moc"
