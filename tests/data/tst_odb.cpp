#include "common/Libro.h"
#include "data/Componentes.h"
#include "data/oDB.h"

#include <QtTest>
#include <cerrno>
#include <sqlite3.h>

// The recordset of the database component, read from a real book file.
class TstODB : public QObject
{
    Q_OBJECT
private slots:
    void recordset();
    void motivos_data();
    void motivos();
};

// The reasons of an unreadable book and of a failed write, in Spanish; the ones without words of
// their own keep their code.
void TstODB::motivos_data()
{
    QTest::addColumn<QString>("motivo");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("disco lleno") << oDB::MotivoIlegible(SQLITE_FULL, "database or disk is full")
                                 << "no queda espacio en el disco";
    QTest::newRow("lectura, código extendido") << oDB::MotivoIlegible(SQLITE_IOERR_READ, "disk I/O error")
                                               << "error de lectura en el disco";
    QTest::newRow("otro del motor") << oDB::MotivoIlegible(SQLITE_MISMATCH, "datatype mismatch")
                                    << "error del motor de datos 20: datatype mismatch";
    QTest::newRow("sistema, conocido") << oFILES::DescripcionError(EMFILE) << "hay demasiados archivos abiertos";
    QTest::newRow("sistema, otro") << oFILES::DescripcionError(EXDEV) << QStringLiteral("error del sistema %1").arg(EXDEV);
}

void TstODB::motivos()
{
    QFETCH(QString, motivo);
    QFETCH(QString, esperado);
    QCOMPARE(motivo, esperado);
}

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
