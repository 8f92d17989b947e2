#include "common/Libro.h"
#include "data/Componentes.h"
#include "data/Esquema.h"
#include "data/Intercalacion.h"
#include "data/oDB.h"

#include <QtTest>
#include <sqlite3.h>

// What the book does with the windows' action statements, run through the database component:
// money, rate and id columns written as quoted texts with a decimal comma keep numbers on insert
// and update, dates go in with dashes, a supplier's delete leaves its invoices, and a refused
// statement changes nothing (what the statements show is checked through the windows and
// reports). The recordset the component reads them with. The Spanish order of names, and a book
// written before its declaration: opened by the program, it sorts the Spanish way and keeps its
// rows, its indexes and its unique CUIT keys.
class TstSentencias : public QObject
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

private slots:
    void acciones_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<long>("afectadas");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QStringList>("esperado");

        QTest::newRow("header insert: amounts with comma or point, dates with dashes")
            << "insert into IVC (USRSNRCUIT,PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARNI,IVARIN,IVCINGBRU,IVCFALTA, DESCRIPCION, DESCRIPCIONEXTRA) values ('30-70000001-1','20-33333333-3',datevalue('01-03-2026'),datevalue('25-03-2026'),'NDA','0004-00000001','12,50','00.00','0','0','0',datevalue('21-11-2026'),'Reparación ´urgente´','')"
            << 1L << "select IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCDNOGRAV,IVCDGRAVAD,IVARNI,IVARIN,IVCINGBRU,IVCFALTA,DESCRIPCION,DESCRIPCIONEXTRA,typeof(IVCDNOGRAV),typeof(IVCINGBRU) from IVC where IVCSNROFAC = '0004-00000001'"
            << QStringList{"01/03/2026|25/03/2026|NDA|12,5|0|0|0|0|21/11/2026|Reparación ´urgente´||real|real"};
        QTest::newRow("header update: amounts with comma or point, date with dashes")
            << "update IVC set IVCFCOMPRO = datevalue('16-03-2026'),IVCDNOGRAV = '50,5', IVCDGRAVAD = '1500,00', IVARIN = '2.5', IVCINGBRU = '12,25' where USRSNRCUIT = '30-70000001-1' and PRVSNRCUIT = '30-11111111-1' and IVCSNROFAC = '0003-00012345' "
            << 1L << "select IVCFCOMPRO, IVCDNOGRAV, IVCINGBRU, IVCDGRAVAD + IVARIN, typeof(IVCDNOGRAV), typeof(IVCINGBRU), typeof(IVARIN) from IVC where IVCSNROFAC = '0003-00012345'"
            << QStringList{"16/03/2026|50,5|12,25|1502,5|real|real|real"};
        QTest::newRow("VAT line insert, every value quoted")
            << "insert into IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIVA, IVCDETDSC, IVCDETVLR) values ('30-70000001-1','30-11111111-1','6','0003-00012345','10,5','Iva del 10,5:','10,5')"
            << 1L << "select IVCdetId, IVCDETIVA, IVCDETDSC, IVCDETVLR, typeof(IVCdetId), typeof(IVCDETIVA), typeof(IVCDETVLR) from IVC_DetIVA where IVCdetId = 6"
            << QStringList{"6|10,5|Iva del 10,5:|10,5|integer|real|real"};
        QTest::newRow("IIBB line insert, every value quoted")
            << "insert into IVC_DetIngBrutos (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIB, IVCDETIBDSC, IVCDETIBVLR) values ('30-70000001-1','30-11111111-1','3','0003-00012345','2,5','Ingresos Brutos','30,75')"
            << 1L << "select IVCdetId, IVCDETIB, IVCDETIBVLR, typeof(IVCdetId), typeof(IVCDETIB), typeof(IVCDETIBVLR) from IVC_DetIngBrutos where IVCdetId = 3"
            << QStringList{"3|2,5|30,75|integer|real|real"};
        QTest::newRow("taxed line insert through cdbl")
            << "insert into IVC_Gravado (USRSNRCUIT,PRVSNRCUIT,IVCSNROFAC,GRAVAD_id,GRAVAD_Valor) values ('30-70000001-1','30-11111111-1','0003-00012345',3,cdbl('250,50'))"
            << 1L << "select sum(GRAVAD_Valor), typeof(max(GRAVAD_Valor)) from IVC_Gravado" << QStringList{"1750,5|real"};
        QTest::newRow("supplier delete keeps its invoices")
            << "DELETE FROM PRV WHERE PRVSNRCUIT = '30-22222222-2'" << 1L
            << "select count(*) from IVC where PRVSNRCUIT = '30-22222222-2'" << QStringList{"2"};
        // A statement the engine refuses (afectadas -1) changes nothing, not even its first part.
        const QString montos = QStringLiteral("select sum(IVCDGRAVAD), sum(IVCDNOGRAV), count(*) from IVC");
        QTest::newRow("refused: second statement") << "update IVC set IVCDGRAVAD = 1; delete from IVC" << -1L << montos << QStringList{"1920|50|3"};
        QTest::newRow("refused: date the engine cannot read")
            << "update IVC set IVCDGRAVAD = 1, IVCFCOMPRO = datevalue('32-13-2005')" << -1L << montos << QStringList{"1920|50|3"};
        QTest::newRow("refused: text that is not a number in a money column")
            << "update IVC set IVCDGRAVAD = 1, IVCDNOGRAV = 'abc'" << -1L << montos << QStringList{"1920|50|3"};
    }
    void acciones()
    {
        QFETCH(QString, sql);
        QFETCH(long, afectadas);
        QFETCH(QString, control);
        QFETCH(QStringList, esperado);
        // Supplier 30-11111111-1's invoice 0003-00012345 with the taxed lines 1000 and 500; supplier
        // 30-22222222-2's 0001-00000077 in March and in February, with an IIBB line.
        LibroDePrueba l;
        const QString e = QStringLiteral("30-70000001-1"), p1 = QStringLiteral("30-11111111-1"), p2 = QStringLiteral("30-22222222-2");
        l.Proveedor(p2, "Aceitera Güemes");
        l.Factura(e, p1, "01/03/2026", "15/03/2026", "A", "0003-00012345", 1500, 50, 262.5, 45);
        l.Factura(e, p2, "01/03/2026", "10/03/2026", "B", "0001-00000077", 300, 0, 0, 6);
        l.Factura(e, p2, "01/02/2026", "08/02/2026", "B", "0001-00000077", 120, 0, 0, 0);
        l.LineaIB(e, p2, "0001-00000077", 1, 2, "IIBB", 6);
        l.LineaGravado(e, p1, "0003-00012345", 1, 1000);
        l.LineaGravado(e, p1, "0003-00012345", 2, 500);

        if (afectadas < 0)
            QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, l.S().dbLibro->Ejecutar(sql));
        else
            QCOMPARE(l.S().dbLibro->Ejecutar(sql), afectadas);
        QCOMPARE(l.Filas(control), esperado);
    }
    void recordset()
    {
        LibroDePrueba libro;
        libro.Factura("20-9", "30-1", "01/03/2005", "15/03/2005", "A", "0001-00000012", 100, 0, 21, 5);
        oDB::clManejo &db = *libro.S().dbLibro;
        oDB::Recordset rs;
        // Texts compare without case; field names too.
        QVERIFY(db.CrearRs(rs, QStringLiteral("select IVCFCOMPRO, IVCDGRAVAD, IVCINGBRU, DESCRIPCIONEXTRA, null as nada, IVCSTIPFAC from IVC where IVCSTIPFAC = 'a'")));
        QCOMPARE((QVariantList{qlonglong(rs.RecordCount()), rs.Fields("ivcfcompro").toDate(),
                               rs("IVCDGRAVAD").toDouble(), rs("NADA").isNull()}),
                 (QVariantList{1LL, QDate(2005, 3, 15), 100.0, true}));
        QCOMPARE(rs.GetString(), QStringLiteral("15/03/2005\t100\t5\t\t\tA\r"));
        QVERIFY(rs.Eof());
        // No rows: false, open and at its end; a failed statement: false, closed, with its reason.
        QVERIFY(!db.CrearRs(rs, QStringLiteral("select * from IVC where IVCSNROFAC = 'no'")));
        QVERIFY(rs.Abierto() && rs.Eof() && rs.RecordCount() == 0);
        QVERIFY(!db.CrearRs(rs, QStringLiteral("select * from NOEXISTE")));
        QVERIFY(!rs.Abierto() && !db.UltimoError().isEmpty());
    }
    // The plain Spanish order (ñ after n and nz, accents as their letter) is read through the suppliers'
    // list; here the ties that case and accents leave.
    void orden()
    {
        QCOMPARE((QList<int>{oDB::CompararEspanol("Árbol", "azul"), oDB::CompararEspanol("azul", "Árbol"),
                             oDB::CompararEspanol("Lacteos", "Lácteos"), oDB::CompararEspanol("Lácteos", "Lacteos"),
                             oDB::CompararEspanol("ÁRBOL", "árbol")}),
                 (QList<int>{-1, 1, -1, 1, 0}));
    }

    void libroAnterior()
    {
        QTemporaryDir dir;
        const auto viejas = [](QStringList l) { return l.replaceInStrings("COLLATE ESPANOL", "COLLATE NOCASE"); };
        const QString kestrel = dir.filePath("kestrel.mdb"), personal = dir.filePath("personal.mdb");
        Crudo(kestrel, viejas(esquema::SentenciasKestrel()).mid(0, 3) +
                           QStringList{QStringLiteral("insert into PRV (PRVSNRCUIT,PRVSNOMBRE) values "
                                                      "('1','Limpieza Cristalina'),('2','Granja'),('3','Lácteos La Cañada'),"
                                                      "('4','Gráfica'),('5','Oasis'),('6','Ñandú'),('7','nutria')")});
        Crudo(personal, viejas(esquema::SentenciasPersonal()) +
                            QStringList{QStringLiteral("insert into USR (USRSNRCUIT,USRSNOMBRE) values ('1','Óptica'),('2','Oro')")});

        oDB::clManejo db;
        const auto filas = [&db](const char *sql) {
            oDB::Recordset rs;
            return db.CrearRs(rs, sql) ? rs.GetString("|", ";") : QStringLiteral("falla: ") + db.UltimoError();
        };
        db.setCadenaConexion(CadenaConexion(dir.path() + u'/', QStringLiteral("kestrel.mdb")));
        db.Conectar();
        QCOMPARE(filas("select PRVSNOMBRE from PRV order by PRVSNOMBRE"),
                 QStringLiteral("Gráfica;Granja;Lácteos La Cañada;Limpieza Cristalina;nutria;Ñandú;Oasis;"));
        QCOMPARE(filas("pragma integrity_check"), QStringLiteral("ok;"));
        // The unique key on the CUIT stays (the indexes agree with the rows: the check above).
        QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, db.Ejecutar(QStringLiteral("insert into PRV (PRVSNRCUIT,PRVSNOMBRE) values ('4','Otra')")));

        db.setCadenaConexion(CadenaConexion(dir.path() + u'/', QStringLiteral("personal.mdb")));
        db.Conectar();
        QCOMPARE(filas("select USRSNOMBRE from USR order by USRSNOMBRE"), QStringLiteral("Óptica;Oro;"));
        // Once brought to the new order, opening the book again writes nothing.
        const QString version = filas("pragma schema_version");
        QVERIFY2(version.front().isDigit(), qPrintable(version));
        db.Conectar();
        QCOMPARE(filas("pragma schema_version"), version);
    }
};

QTEST_GUILESS_MAIN(TstSentencias)
#include "tst_sentencias.moc"
