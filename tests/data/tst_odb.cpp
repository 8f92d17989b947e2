#include "common/Libro.h"
#include "data/Esquema.h"
#include "data/oDB.h"

#include <QtTest>

// The database component against a real book file.
class TstODB : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { libro.reset(); }
    void dineroConComaSeGuardaComoNumero();
    void recordsetValoresYClip();
    void crearRsFalsoSinFilasOFallida();
    void rechazos_data();
    void rechazos();
    void archivoInexistenteNombraLaRuta();
    void claveRepetidaYBasesExistentes();

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

void TstODB::dineroConComaSeGuardaComoNumero()
{
    QCOMPARE(db().Ejecutar(QStringLiteral("update IVC set IVCDGRAVAD = '12,50', IVARIN = '2.5' where IVCSNROFAC = '0001-00000012'")), 1L);
    QCOMPARE(libro->Filas(QStringLiteral("select typeof(IVCDGRAVAD), IVCDGRAVAD + IVARIN from IVC")), QStringList{"real|15"});
    // A text that is not a number cannot go into a money column.
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(QStringLiteral("update IVC set IVCDNOGRAV = 'abc'")));
    QCOMPARE(libro->Filas(QStringLiteral("select IVCDNOGRAV from IVC")), QStringList{"0"});
}

void TstODB::recordsetValoresYClip()
{
    oDB::Recordset rs;
    // Texts compare without case.
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
}

void TstODB::crearRsFalsoSinFilasOFallida()
{
    oDB::Recordset rs;
    QVERIFY(!db().CrearRs(rs, QStringLiteral("select * from IVC where IVCSNROFAC = 'no'")));
    QVERIFY(rs.Abierto() && rs.Eof());
    QCOMPARE(rs.RecordCount(), 0L);
    QVERIFY(!db().CrearRs(rs, QStringLiteral("select * from NOEXISTE")));
    QVERIFY(!rs.Abierto());
    QVERIFY(!db().UltimoError().isEmpty());
}

void TstODB::rechazos_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("valor");
    QTest::newRow("apostrophe in a value") << "update IVC set IVCDGRAVAD = 1, DESCRIPCION = %1" << "O'Brien";
    QTest::newRow("second statement") << "update IVC set IVCDGRAVAD = 1; delete from IVC" << "";
    QTest::newRow("date the engine cannot read") << "update IVC set IVCFCOMPRO = datevalue('32-13-2005')" << "";
    QTest::newRow("syntax") << "update IVC set" << "";
}

void TstODB::rechazos()
{
    QFETCH(QString, sql);
    QFETCH(QString, valor);
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(valor.isEmpty() ? sql : sql.arg(oDB::Q(valor))));
    QCOMPARE(libro->Filas(QStringLiteral("select IVCDGRAVAD, IVCFCOMPRO, count(*) from IVC")), QStringList{"100|15/03/2005|1"});
}

void TstODB::archivoInexistenteNombraLaRuta()
{
    oDB::clManejo otra;
    const QString ruta = libro->Carpeta() + QStringLiteral("sub/kestrel.mdb");
    otra.setCadenaConexion(CadenaConexion(libro->Carpeta() + QStringLiteral("sub/"), QStringLiteral("kestrel.mdb")));
    try {
        otra.Conectar();
        QFAIL("connected to a missing file");
    } catch (const oDB::ErrorBD &e) {
        QVERIFY2(e.descripcion.contains(ruta), qPrintable(e.descripcion));
    }
    QVERIFY(!QFileInfo::exists(ruta));
}

void TstODB::claveRepetidaYBasesExistentes()
{
    // A supplier's CUIT is its key: a second row with it is refused.
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(QStringLiteral("INSERT INTO PRV(PRVSNRCUIT,PRVSNOMBRE) values ('30-1','Otra')")));
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 1L);
    // Creating the books over existing ones is refused and keeps their rows.
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, esquema::CrearBases(libro->Carpeta()));
    QCOMPARE(libro->Contar(QStringLiteral("IVC")), 1L);
}

QTEST_GUILESS_MAIN(TstODB)
#include "tst_odb.moc"
