#include "common/Libro.h"
#include "data/oDB.h"

#include <QtTest>

// The recordset of the database component, read from a real book file.
class TstODB : public QObject
{
    Q_OBJECT
private slots:
    void recordset();
};

void TstODB::recordset()
{
    LibroDePrueba libro;
    libro.Factura(QStringLiteral("20-9"), QStringLiteral("30-1"), QStringLiteral("01/03/2005"), QStringLiteral("15/03/2005"),
                  QStringLiteral("A"), QStringLiteral("0001-00000012"), 100, 0, 21, 5);
    oDB::clManejo &db = *libro.S().dbLibro;
    oDB::Recordset rs;
    // Texts compare without case; field names too.
    QVERIFY(db.CrearRs(rs, QStringLiteral("select IVCFCOMPRO, IVCDGRAVAD, IVCINGBRU, DESCRIPCIONEXTRA, null as nada, IVCSTIPFAC from IVC where IVCSTIPFAC = 'a'")));
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
    QVERIFY(!db.CrearRs(rs, QStringLiteral("select * from IVC where IVCSNROFAC = 'no'")));
    QVERIFY(rs.Abierto() && rs.Eof());
    QCOMPARE(rs.RecordCount(), 0L);
    QVERIFY(!db.CrearRs(rs, QStringLiteral("select * from NOEXISTE")));
    QVERIFY(!rs.Abierto());
    QVERIFY(!db.UltimoError().isEmpty());
}

QTEST_GUILESS_MAIN(TstODB)
#include "tst_odb.moc"
