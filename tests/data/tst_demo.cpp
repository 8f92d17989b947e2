#include "app/core/Ajustes.h"
#include "app/core/Demo.h"
#include "app/core/Sesion.h"
#include "data/oDB.h"

#include <QTemporaryDir>
#include <QtTest>

// The demo book: what it promises, written in a folder of its own.
class TstDemo : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(tmp.isValid());
        dir = tmp.filePath(QStringLiteral("nueva/demo")); // made by the command
        resumen = demo::CrearDemo(dir);
        QCOMPARE(resumen.carpeta, QDir(dir).absolutePath() + u'/');
        libro.setCadenaConexion(CadenaConexion(resumen.carpeta, QStringLiteral("kestrel.mdb")));
        libro.Conectar();
        QVERIFY(QFileInfo::exists(resumen.carpeta + QStringLiteral("proveedores.mdb")));
    }
    void cuit_data()
    {
        QTest::addColumn<int>("prefijo");
        QTest::addColumn<int>("cuerpo");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("company") << 30 << 71234567 << "30712345671";
        QTest::newRow("remainder 0 gives digit 0") << 20 << 6 << "20000000060";
        QTest::newRow("remainder 1 has no digit") << 20 << 1 << "";
    }
    void cuit()
    {
        QFETCH(int, prefijo);
        QFETCH(int, cuerpo);
        QFETCH(QString, esperado);
        QCOMPARE(demo::Cuit(prefijo, cuerpo), esperado);
        if (!esperado.isEmpty()) {
            QVERIFY(demo::CuitValido(esperado));
            QString otro = esperado;
            otro[10] = QChar(u'0' + (esperado[10].digitValue() + 1) % 10);
            QVERIFY(!demo::CuitValido(otro));
            // The tax authority's files and the ledger take the 11 digits alone.
            QVERIFY(!demo::CuitValido(esperado.left(2) + u'-' + esperado.mid(2, 8) + u'-' + esperado.right(1)));
        }
    }
    void empresasYTiposDeComprobante()
    {
        oDB::clManejo personal;
        personal.setCadenaConexion(CadenaConexion(resumen.carpeta, QStringLiteral("personal.mdb")));
        personal.Conectar();
        const QStringList usr = Filas(personal, QStringLiteral("select USRSNRCUIT from USR"));
        QCOMPARE(usr.size(), 3);
        QCOMPARE(resumen.empresas.size(), 3);
        QStringList empresas;
        for (const QString &c : usr + Filas(libro, QStringLiteral("select PRVSNRCUIT from PRV"))) {
            QVERIFY2(demo::CuitValido(c), qPrintable(c));
            if (usr.contains(c))
                empresas << oDB::Q(c);
        }
        // Every invoice belongs to a known company and supplier, but the one whose supplier was
        // removed from the list for the period check to find.
        QCOMPARE(Filas(libro, QStringLiteral("select IVCSNROFAC from IVC where USRSNRCUIT not in (%1) or PRVSNRCUIT not in (select PRVSNRCUIT from PRV)").arg(empresas.join(u','))),
                 QStringList{"0021-00000345"});
        QCOMPARE(Uno(QStringLiteral("select count(*) from IVC")), QString::number(resumen.facturas));
        // Every voucher type of the list, and one the list does not know.
        QCOMPARE(Filas(libro, QStringLiteral("select distinct IVCSTIPFAC from IVC order by IVCSTIPFAC")),
                 (QStringList{"99", "A", "B", "C", "NDA", "TIQUE", "TIQUE FCA", "TIQUE FCB", "X"}));
        QCOMPARE(Filas(libro, QStringLiteral("select distinct IVCDETIVA from IVC_DetIVA order by IVCDETIVA")), (QStringList{"10,5", "21", "27"}));
    }
    void totalesIgualesALasLineas()
    {
        const QString clave = QStringLiteral("d.USRSNRCUIT = IVC.USRSNRCUIT and d.PRVSNRCUIT = IVC.PRVSNRCUIT and d.IVCSNROFAC = IVC.IVCSNROFAC");
        const QString distinto = QStringLiteral("select count(*) from IVC where abs(%1 - nz((select sum(%2) from %3 d where %4), 0)) > 0.001");
        // But the one left for the period check to find.
        QCOMPARE(Uno(distinto.arg(QStringLiteral("IVARIN"), QStringLiteral("IVCDETVLR"), QStringLiteral("IVC_DetIVA"), clave)), QStringLiteral("1"));
        QCOMPARE(Uno(distinto.arg(QStringLiteral("IVCDGRAVAD"), QStringLiteral("GRAVAD_Valor"), QStringLiteral("IVC_Gravado"), clave)), QStringLiteral("0"));
        // The gross income equals its lines but on the one invoice of the earlier scheme, which has
        // an amount on its header and no lines, and the one left for the period check to find.
        QCOMPARE(Filas(libro, QStringLiteral("select IVCINGBRU, (select count(*) from IVC_DetIngBrutos d where %1) from IVC where abs(IVCINGBRU - nz((select sum(IVCDETIBVLR) from IVC_DetIngBrutos d where %1), 0)) > 0.001").arg(clave)),
                 (QStringList{"150|0", "990|1"}));
        QVERIFY(Uno(QStringLiteral("select count(*) from IVC_DetIngBrutos")).toInt() >= 10);
    }
    void ajustesAbrenElLibro()
    {
        const Ajustes a(dir);
        for (const char *clave : {"FACTURACION", "KESTRELRAS", "PERSONAL", "SYSTABLAS"})
            QCOMPARE(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QString::fromLatin1(clave)), resumen.carpeta);

        // The session the program starts with: the company and period with the most invoices.
        Sesion s{Ajustes(dir)};
        QVERIFY(LeerDatos(s));
        QCOMPARE(s.IvaRIN, 21.0);
        const QString mayor = Uno(QStringLiteral("select USRSNRCUIT, format(IVCFPERIOD,'dd/mm/yyyy') from IVC group by USRSNRCUIT, IVCFPERIOD order by count(*) desc"));
        QCOMPARE(s.CuitUsuario + u'|' + s.Periodo, mayor);
        QCOMPARE(resumen.propuesto.cuit + u'|' + resumen.propuesto.periodo, mayor);
        s.CrearComponentes();
        s.Conectar();
        oDB::Recordset rs;
        QVERIFY(s.dbPersonal->CrearRs(rs, QStringLiteral("select * from USR where USRSNRCUIT = ") + oDB::Q(s.CuitUsuario)));
        // The opened period shows every voucher type, the unknown one and the earlier-scheme invoice.
        QVERIFY(s.dbLibro->CrearRs(rs, QStringLiteral("select count(*) as cant, count(distinct IVCSTIPFAC) as tipos, sum(IVCINGBRU = 150) as previa from IVC where USRSNRCUIT = %1 and IVCFPERIOD = datevalue('%2')")
                                           .arg(oDB::Q(s.CuitUsuario), s.PeriodoDesde)));
        QCOMPARE(rs.GetString(), QStringLiteral("%1\t9\t1\r").arg(resumen.propuesto.facturas));
        QVERIFY(resumen.Texto().contains(QStringLiteral("Facturas: %1").arg(resumen.facturas)));
    }
    void mismoLibroCadaVez()
    {
        const demo::ResumenDemo r = demo::CrearDemo(tmp.filePath(QStringLiteral("otra")));
        oDB::clManejo db;
        db.setCadenaConexion(CadenaConexion(r.carpeta, QStringLiteral("kestrel.mdb")));
        db.Conectar();
        for (const char *sql : {"select * from IVC order by USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC",
                                "select * from IVC_DetIVA order by USRSNRCUIT, PRVSNRCUIT, IVCdetId",
                                "select * from IVC_DetIngBrutos order by USRSNRCUIT, PRVSNRCUIT, IVCdetId",
                                "select * from IVC_Gravado order by USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC, GRAVAD_id"})
            QCOMPARE(Filas(db, QString::fromLatin1(sql)), Filas(libro, QString::fromLatin1(sql)));
    }
    void noSobrescribeUnLibro()
    {
        QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, demo::CrearDemo(dir));
        QCOMPARE(Uno(QStringLiteral("select count(*) from IVC")), QString::number(resumen.facturas));
        // One book file is enough to refuse, and nothing is added beside it.
        QTemporaryDir otra;
        QFile f(otra.filePath(QStringLiteral("kestrel.mdb")));
        QVERIFY(f.open(QIODevice::WriteOnly) && f.write("libro") == 5);
        f.close();
        QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, demo::CrearDemo(otra.path()));
        QCOMPARE(QDir(otra.path()).entryList(QDir::Files), QStringList{"kestrel.mdb"});
    }

private:
    QTemporaryDir tmp;
    QString dir;
    demo::ResumenDemo resumen;
    oDB::clManejo libro;
    static QStringList Filas(oDB::clManejo &db, const QString &sql)
    {
        oDB::Recordset rs;
        db.CrearRs(rs, sql);
        if (!rs.Abierto())
            qFatal("%s in: %s", qPrintable(db.UltimoError()), qPrintable(sql));
        QStringList out = rs.GetString(QStringLiteral("|"), QStringLiteral("\n")).split(u'\n');
        out.removeLast();
        return out;
    }
    QString Uno(const QString &sql) { return Filas(libro, sql).value(0); }
};

QTEST_GUILESS_MAIN(TstDemo)
#include "tst_demo.moc"
