#include "common/Libro.h"
#include "data/Convenciones.h"
#include "data/Esquema.h"
#include "data/oDB.h"

#include <QtTest>

// The database component against a real book file.
class TstODB : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void dineroConComaSeGuardaComoNumero();
    void recordsetValoresYClip();
    void crearRsFalsoSinFilasOFallida();
    void ejecutarCuentaSoloSuSentencia();
    void rechazos_data();
    void rechazos();
    void archivoInexistenteNombraLaRuta();
    void crearBasesNoSobrescribe();
    void funciones_data();
    void funciones();

private:
    std::unique_ptr<LibroDePrueba> libro;
    oDB::clManejo &db() { return *libro->S().dbLibro; }
};

void TstODB::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Peña S.A."));
    libro->Factura(QStringLiteral("20-9"), QStringLiteral("30-1"), QStringLiteral("01/03/2005"),
                   QStringLiteral("15/03/2005"), QStringLiteral("A"), QStringLiteral("0001-00000012"),
                   100, 0, 21, 5);
}

void TstODB::cleanup() { libro.reset(); }

void TstODB::dineroConComaSeGuardaComoNumero()
{
    QCOMPARE(db().Ejecutar(QStringLiteral("update IVC set IVCDGRAVAD = '12,50', IVARIN = '2.5' where IVCSNROFAC = '0001-00000012'")), 1L);
    QCOMPARE(libro->Filas(QStringLiteral("select typeof(IVCDGRAVAD), IVCDGRAVAD + IVARIN from IVC")),
             QStringList{QStringLiteral("real|15")});
    db().Ejecutar(QStringLiteral("insert into IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIVA, IVCDETDSC, IVCDETVLR) values ('20-9','30-1','1','0001-00000012','10,5','Iva del 10,5:','10,5')"));
    QCOMPARE(libro->Filas(QStringLiteral("select IVCdetId, typeof(IVCdetId), IVCDETIVA, sum((100 * IVCDETVLR)/IVCDETIVA) from IVC_DetIVA")),
             QStringList{QStringLiteral("1|integer|10,5|100")});
    // A text that is not a number cannot go into a money column.
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(QStringLiteral("update IVC set IVCDNOGRAV = 'abc'")));
    QCOMPARE(libro->Filas(QStringLiteral("select IVCDNOGRAV from IVC")), QStringList{QStringLiteral("0")});
}

void TstODB::recordsetValoresYClip()
{
    oDB::Recordset rs;
    QVERIFY(db().CrearRs(rs, QStringLiteral("select IVCFCOMPRO, IVCDGRAVAD, IVCINGBRU, DESCRIPCIONEXTRA, null as nada, IVCSTIPFAC from IVC")));
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
    QVERIFY(rs.Abierto());
    QVERIFY(rs.Eof());
    QCOMPARE(rs.RecordCount(), 0L);
    QVERIFY(!db().CrearRs(rs, QStringLiteral("select * from NOEXISTE")));
    QVERIFY(!rs.Abierto());
    QVERIFY(!db().UltimoError().isEmpty());
}

void TstODB::ejecutarCuentaSoloSuSentencia()
{
    libro->Factura(QStringLiteral("20-9"), QStringLiteral("30-1"), QStringLiteral("01/04/2005"),
                   QStringLiteral("15/04/2005"), QStringLiteral("B"), QStringLiteral("0001-00000013"), 1, 1, 1, 1);
    // The triggers that keep money as numbers do not add to the count.
    QCOMPARE(db().Ejecutar(QStringLiteral("update IVC set IVCDGRAVAD = '1,5' where USRSNRCUIT = '20-9'")), 2L);
    QCOMPARE(db().Ejecutar(QStringLiteral("delete from IVC where IVCSNROFAC = 'nada'")), 0L);
    QCOMPARE(db().Ejecutar(QStringLiteral("delete from IVC where IVCFPERIOD = datevalue('01/04/2005')")), 1L);
}

void TstODB::rechazos_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("second statement") << "update IVC set IVCDGRAVAD = 1; delete from IVC";
    QTest::newRow("date the engine cannot read") << "update IVC set IVCFCOMPRO = datevalue('32-13-2005')";
    QTest::newRow("syntax") << "update IVC set";
}

void TstODB::rechazos()
{
    QFETCH(QString, sql);
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(sql));
    QCOMPARE(libro->Filas(QStringLiteral("select IVCDGRAVAD, IVCFCOMPRO from IVC")),
             QStringList{QStringLiteral("100|15/03/2005")});
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
    // The apostrophe in a value is refused before anything runs.
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, oDB::Q(QStringLiteral("O'Brien")));
    QCOMPARE(oDB::Q(QStringLiteral("Peña")), QStringLiteral("'Peña'"));
}

void TstODB::crearBasesNoSobrescribe()
{
    // A supplier's CUIT is its key: a second row with it is refused.
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db().Ejecutar(QStringLiteral("INSERT INTO PRV(PRVSNRCUIT,PRVSNOMBRE) values ('30-1','Otra')")));
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 1L);
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, esquema::CrearBases(libro->Carpeta()));
    QCOMPARE(libro->Contar(QStringLiteral("IVC")), 1L);
}

void TstODB::funciones_data()
{
    QTest::addColumn<QString>("expr");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("format money") << "format(IVCDGRAVAD,'00.00')" << "100,00";
    QTest::newRow("format date") << "format(IVCFCOMPRO,'dd/mm/yy')" << "15/03/05";
    QTest::newRow("val right") << "val(right(IVCSNROFAC,8))" << "12";
    QTest::newRow("val whole") << "val(IVCSNROFAC)" << "1";
    QTest::newRow("cdbl comma") << "cdbl('12,5') * 2" << "25";
    QTest::newRow("datevalue compares") << "IVCFPERIOD = datevalue('01/03/2005')" << "1";
    QTest::newRow("datevalue dashes") << "IVCFPERIOD = datevalue('01-03-2005')" << "1";
    QTest::newRow("nocase text") << "PRVSNRCUIT = '30-1' and IVCSTIPFAC = 'a'" << "1";
    QTest::newRow("like") << "IVCSNROFAC like '%12'" << "1";
}

void TstODB::funciones()
{
    QFETCH(QString, expr);
    QFETCH(QString, esperado);
    QCOMPARE(libro->Filas(QStringLiteral("select ") + expr + QStringLiteral(" from IVC")), QStringList{esperado});
}

QTEST_GUILESS_MAIN(TstODB)
#include "tst_odb.moc"
