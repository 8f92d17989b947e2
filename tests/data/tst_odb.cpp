#include "common/Libro.h"
#include "data/oDB.h"

#include <QtTest>

// The database component against a real book file.
class TstODB : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { libro.reset(); }
    void recordset();
    void rechazos_data();
    void rechazos();

private:
    std::unique_ptr<LibroDePrueba> libro;
    oDB::clManejo &db() { return *libro->S().dbLibro; }
};

void TstODB::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Peña S.A."));
    libro->Factura(QStringLiteral("20-9"), QStringLiteral("30-1"), QStringLiteral("01/03/2005"),
                   QStringLiteral("15/03/2005"), QStringLiteral("A"), QStringLiteral("0001-00000012"), 100, 0, 21, 5);
}

void TstODB::recordset()
{
    oDB::Recordset rs;
    // Texts compare without case; field names too.
    QVERIFY(db().CrearRs(rs, QStringLiteral("select IVCFCOMPRO, IVCDGRAVAD, IVCINGBRU, DESCRIPCIONEXTRA, null as nada, IVCSTIPFAC from IVC where IVCSTIPFAC = 'a'")));
    QCOMPARE(rs.RecordCount(), 1L);
    QCOMPARE(rs.Fields(QStringLiteral("ivcfcompro")).toDate(), QDate(2005, 3, 15));
    QCOMPARE(rs(QStringLiteral("IVCDGRAVAD")).toDouble(), 100.0);
    QVERIFY(rs(QStringLiteral("NADA")).isNull());
    QCOMPARE(rs.GetString(), QStringLiteral("15/03/2005\t100\t5\t\t\tA\r"));
    QVERIFY(rs.Eof());
    rs.Close();
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, rs.Eof());
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, rs.Fields(QStringLiteral("IVCDGRAVAD")));
    // No rows: false, open and at its end; a failed statement: false, closed, with its reason.
    QVERIFY(!db().CrearRs(rs, QStringLiteral("select * from IVC where IVCSNROFAC = 'no'")));
    QVERIFY(rs.Abierto() && rs.Eof());
    QCOMPARE(rs.RecordCount(), 0L);
    QVERIFY(!db().CrearRs(rs, QStringLiteral("select * from NOEXISTE")));
    QVERIFY(!rs.Abierto());
    QVERIFY(!db().UltimoError().isEmpty());
}

// A statement the engine refuses changes nothing.
void TstODB::rechazos_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("second statement") << "update IVC set IVCDGRAVAD = 1; delete from IVC";
    QTest::newRow("text that is not a number in a money column") << "update IVC set IVCDGRAVAD = 1, IVCDNOGRAV = 'abc'";
    QTest::newRow("date the engine cannot read") << "update IVC set IVCDGRAVAD = 1, IVCFCOMPRO = datevalue('32-13-2005')";
}

void TstODB::rechazos()
{
    QFETCH(QString, sql);
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(sql));
    QCOMPARE(libro->Filas(QStringLiteral("select IVCDGRAVAD, IVCFCOMPRO, count(*) from IVC")), QStringList{"100|15/03/2005|1"});
}

QTEST_GUILESS_MAIN(TstODB)
#include "tst_odb.moc"
