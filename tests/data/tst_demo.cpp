#include "app/core/Ajustes.h"
#include "app/core/Demo.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/oDB.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

// The demo book: what it promises, written in a folder of its own.
class TstDemo : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cuit_data();
    void cuit();
    void empresasYProveedores();
    void facturasDeTodosLosTipos();
    void totalesIgualesALasLineas();
    void lineasComoLasComponeElPrograma();
    void ajustesAbrenElLibro();
    void mismoLibroCadaVez();
    void noSobrescribeUnLibro();

private:
    QTemporaryDir tmp;
    QString dir;
    demo::ResumenDemo resumen;
    oDB::clManejo libro, personal;
    QStringList Filas(oDB::clManejo &db, const QString &sql);
    QString Uno(oDB::clManejo &db, const QString &sql) { return Filas(db, sql).value(0); }
};

QStringList TstDemo::Filas(oDB::clManejo &db, const QString &sql)
{
    oDB::Recordset rs;
    db.CrearRs(rs, sql);
    if (!rs.Abierto())
        qFatal("%s in: %s", qPrintable(db.UltimoError()), qPrintable(sql));
    QStringList out = rs.GetString(QStringLiteral("|"), QStringLiteral("\n")).split(u'\n');
    out.removeLast();
    return out;
}

void TstDemo::initTestCase()
{
    QVERIFY(tmp.isValid());
    dir = tmp.filePath(QStringLiteral("nueva/demo")); // made by the command
    resumen = demo::CrearDemo(dir);
    QCOMPARE(resumen.carpeta, QDir(dir).absolutePath() + u'/');
    personal.setCadenaConexion(CadenaConexion(resumen.carpeta, QStringLiteral("personal.mdb")));
    personal.Conectar();
    libro.setCadenaConexion(CadenaConexion(resumen.carpeta, QStringLiteral("kestrel.mdb")));
    libro.Conectar();
    QVERIFY(QFileInfo::exists(resumen.carpeta + QStringLiteral("proveedores.mdb")));
}

void TstDemo::cuit_data()
{
    QTest::addColumn<int>("prefijo");
    QTest::addColumn<int>("cuerpo");
    QTest::addColumn<QString>("esperado");
    QTest::newRow("company") << 30 << 71234567 << "30712345671";
    QTest::newRow("person") << 20 << 12345678 << "20123456786";
    QTest::newRow("remainder 0 gives digit 0") << 20 << 6 << "20000000060";
    QTest::newRow("remainder 1 has no digit") << 20 << 1 << "";
    QTest::newRow("remainder 1 has no digit, other body") << 20 << 30000002 << "";
}

void TstDemo::cuit()
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

void TstDemo::empresasYProveedores()
{
    const QStringList usr = Filas(personal, QStringLiteral("select USRSNRCUIT, USRSNOMBRE from USR order by USRSNOMBRE"));
    QCOMPARE(usr.size(), 3);
    QCOMPARE(resumen.empresas.size(), 3);
    for (const QString &f : usr)
        QVERIFY2(demo::CuitValido(f.section(u'|', 0, 0)), qPrintable(f));
    QVERIFY(usr.join(u' ').contains(QRegularExpression(QStringLiteral("[áéíóúñÑ]"))));

    const QStringList prv = Filas(libro, QStringLiteral("select PRVSNRCUIT, PRVSNOMBRE from PRV"));
    QVERIFY2(prv.size() >= 24 && prv.size() <= 60, qPrintable(QString::number(prv.size())));
    QCOMPARE(resumen.proveedores, int(prv.size()));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from (select distinct PRVSNRCUIT from PRV)")), QString::number(prv.size()));
    int conEnie = 0;
    for (const QString &f : prv) {
        QVERIFY2(demo::CuitValido(f.section(u'|', 0, 0)), qPrintable(f));
        conEnie += f.contains(u'Ñ') || f.contains(u'ñ');
    }
    QVERIFY(conEnie >= 1);
    // Every invoice belongs to a known company and supplier.
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where PRVSNRCUIT not in (select PRVSNRCUIT from PRV)")), QStringLiteral("0"));
    QStringList cuits;
    for (const auto &e : resumen.empresas)
        cuits << oDB::Q(e.cuit);
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where USRSNRCUIT not in (%1)").arg(cuits.join(u','))), QStringLiteral("0"));
}

void TstDemo::facturasDeTodosLosTipos()
{
    QCOMPARE(Filas(libro, QStringLiteral("select distinct IVCSTIPFAC from IVC order by IVCSTIPFAC")),
             (QStringList{"99", "A", "B", "C", "NDA", "TIQUE", "TIQUE FCA", "TIQUE FCB", "X"}));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where IVCSTIPFAC = 'X'")), QStringLiteral("1"));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC")), QString::number(resumen.facturas));
    QVERIFY(resumen.facturas >= 100);

    // Several months of 2026, each period the first of its month, every company in each.
    const QStringList periodos = Filas(libro, QStringLiteral("select distinct IVCFPERIOD from IVC order by IVCFPERIOD"));
    QVERIFY(periodos.size() >= 3);
    for (const QString &p : periodos)
        QVERIFY2(p.startsWith(QStringLiteral("01/")) && p.endsWith(QStringLiteral("/2026")), qPrintable(p));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from (select distinct USRSNRCUIT, IVCFPERIOD from IVC)")),
             QString::number(3 * periodos.size()));

    // Numbers: point of sale and number, or a bare number on some receipts of type 99.
    static const QRegularExpression completo(QStringLiteral("^\\d{4}-\\d{8}$")), suelto(QStringLiteral("^\\d+$"));
    for (const QString &f : Filas(libro, QStringLiteral("select IVCSTIPFAC, IVCSNROFAC from IVC"))) {
        const QString tipo = f.section(u'|', 0, 0), nro = f.section(u'|', 1);
        QVERIFY2(completo.match(nro).hasMatch() || (tipo == QLatin1String("99") && suelto.match(nro).hasMatch()), qPrintable(f));
    }
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from (select distinct USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC from IVC)")),
             QString::number(resumen.facturas));
    // Dated in or shortly before their period, and entered on or after their date.
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where IVCFCOMPRO >= date(IVCFPERIOD, '+1 month') or IVCFCOMPRO < date(IVCFPERIOD, '-1 month') or IVCFALTA < IVCFCOMPRO or IVCFALTA > '2026-11-21'")),
             QStringLiteral("0"));
}

void TstDemo::totalesIgualesALasLineas()
{
    const QString clave = QStringLiteral("d.USRSNRCUIT = IVC.USRSNRCUIT and d.PRVSNRCUIT = IVC.PRVSNRCUIT and d.IVCSNROFAC = IVC.IVCSNROFAC");
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where abs(IVARIN - nz((select sum(IVCDETVLR) from IVC_DetIVA d where %1), 0)) > 0.001").arg(clave)),
             QStringLiteral("0"));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where abs(IVCDGRAVAD - nz((select sum(GRAVAD_Valor) from IVC_Gravado d where %1), 0)) > 0.001").arg(clave)),
             QStringLiteral("0"));
    // The gross income equals its lines but on the one invoice of the earlier scheme, which has
    // an amount on its header and no lines.
    QCOMPARE(Filas(libro, QStringLiteral("select IVCINGBRU, (select count(*) from IVC_DetIngBrutos d where %1) from IVC where abs(IVCINGBRU - nz((select sum(IVCDETIBVLR) from IVC_DetIngBrutos d where %1), 0)) > 0.001").arg(clave)),
             QStringList{"150|0"});
    QVERIFY(Uno(libro, QStringLiteral("select count(*) from IVC_DetIngBrutos")).toInt() >= 10);
    QVERIFY(Uno(libro, QStringLiteral("select count(*) from IVC where IVARIN > 0 and IVCDNOGRAV > 0")).toInt() >= 1);
    // No line without its invoice.
    for (const char *t : {"IVC_DetIVA", "IVC_DetIngBrutos", "IVC_Gravado"})
        QCOMPARE(Uno(libro, QStringLiteral("select count(*) from %1 d where not exists (select * from IVC where %2)").arg(QString::fromLatin1(t), clave)),
                 QStringLiteral("0"));
}

void TstDemo::lineasComoLasComponeElPrograma()
{
    QCOMPARE(Filas(libro, QStringLiteral("select distinct IVCDETIVA from IVC_DetIVA order by IVCDETIVA")),
             (QStringList{"10,5", "21", "27"}));
    for (const QString &f : Filas(libro, QStringLiteral("select IVCDETIVA, IVCDETDSC, IVCDETVLR from IVC_DetIVA"))) {
        const QStringList c = f.split(u'|');
        // The rate box's default, or the calculator's text from its base.
        const QString porTasa = QStringLiteral("Iva del ") + c[0] + u':';
        const QRegularExpression porBase(QStringLiteral("^Gravado (\\d+,\\d\\d) IVA del ") + QRegularExpression::escape(c[0]) + u'$');
        const auto m = porBase.match(c[1]);
        QVERIFY2(c[1] == porTasa || m.hasMatch(), qPrintable(f));
        if (m.hasMatch()) // the amount is the rate of that base
            QCOMPARE(conv::Redondear(conv::CDbl(m.captured(1)) * conv::CDbl(c[0]) / 100, 2), conv::CDbl(c[2]));
    }
    // Ids grow per company and supplier over all their invoices.
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from (select USRSNRCUIT, PRVSNRCUIT, IVCdetId from IVC_DetIVA group by USRSNRCUIT, PRVSNRCUIT, IVCdetId having count(*) > 1)")),
             QStringLiteral("0"));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from (select USRSNRCUIT, PRVSNRCUIT, max(IVCdetId) as m, count(*) as n from IVC_DetIVA group by USRSNRCUIT, PRVSNRCUIT) where m <> n")),
             QStringLiteral("0"));
    QVERIFY(Uno(libro, QStringLiteral("select count(*) from (select distinct IVCDETIBDSC from IVC_DetIngBrutos)")).toInt() >= 2);
}

void TstDemo::ajustesAbrenElLibro()
{
    const Ajustes a(dir);
    for (const char *clave : {"FACTURACION", "KESTRELRAS", "PERSONAL", "SYSTABLAS"})
        QCOMPARE(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QString::fromLatin1(clave)), resumen.carpeta);
    QVERIFY(QDir::isAbsolutePath(resumen.carpeta));

    // The session the program starts with: the company and period with the most invoices.
    Sesion s{Ajustes(dir)};
    QVERIFY(LeerDatos(s));
    QCOMPARE(s.IvaRIN, 21.0);
    const QString mayor = Uno(libro, QStringLiteral("select USRSNRCUIT, format(IVCFPERIOD,'dd/mm/yyyy') from IVC group by USRSNRCUIT, IVCFPERIOD order by count(*) desc"));
    QCOMPARE(s.CuitUsuario + u'|' + s.Periodo, mayor);
    QCOMPARE(resumen.propuesto.cuit + u'|' + resumen.propuesto.periodo, mayor);
    s.CrearComponentes();
    s.Conectar();
    oDB::Recordset rs;
    QVERIFY(s.dbPersonal->CrearRs(rs, QStringLiteral("select * from USR where USRSNRCUIT = '") + s.CuitUsuario + u'\''));
    QVERIFY(s.dbLibro->CrearRs(rs, QStringLiteral("select count(*) as cant from IVC where USRSNRCUIT = '") + s.CuitUsuario +
                                       QStringLiteral("' and IVCFPERIOD = datevalue('") + s.PeriodoDesde + QStringLiteral("')")));
    QCOMPARE(rs(QStringLiteral("cant")).toInt(), resumen.propuesto.facturas);
    // The opened period shows every voucher type, the unknown one and the earlier-scheme invoice.
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from (select distinct IVCSTIPFAC from IVC where USRSNRCUIT = '%1' and IVCFPERIOD = datevalue('%2'))")
                            .arg(s.CuitUsuario, s.PeriodoDesde)),
             QStringLiteral("9"));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC where IVCINGBRU = 150 and USRSNRCUIT = '%1' and IVCFPERIOD = datevalue('%2')")
                            .arg(s.CuitUsuario, s.PeriodoDesde)),
             QStringLiteral("1"));
    // The summary tells the same.
    QVERIFY(resumen.Texto().contains(resumen.propuesto.cuit));
    QVERIFY(resumen.Texto().contains(QStringLiteral("Facturas: %1").arg(resumen.facturas)));
}

void TstDemo::mismoLibroCadaVez()
{
    const QString otra = tmp.filePath(QStringLiteral("otra"));
    const demo::ResumenDemo r = demo::CrearDemo(otra);
    oDB::clManejo db;
    db.setCadenaConexion(CadenaConexion(r.carpeta, QStringLiteral("kestrel.mdb")));
    db.Conectar();
    for (const char *sql : {"select * from IVC order by USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC",
                            "select * from IVC_DetIVA order by USRSNRCUIT, PRVSNRCUIT, IVCdetId",
                            "select * from IVC_DetIngBrutos order by USRSNRCUIT, PRVSNRCUIT, IVCdetId",
                            "select * from IVC_Gravado order by USRSNRCUIT, PRVSNRCUIT, IVCSNROFAC, GRAVAD_id",
                            "select * from PRV order by PRVSNRCUIT"})
        QCOMPARE(Filas(db, QString::fromLatin1(sql)), Filas(libro, QString::fromLatin1(sql)));
}

void TstDemo::noSobrescribeUnLibro()
{
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, demo::CrearDemo(dir));
    QCOMPARE(Uno(libro, QStringLiteral("select count(*) from IVC")), QString::number(resumen.facturas));

    // One book file is enough to refuse, and nothing is added beside it.
    QTemporaryDir otra;
    QFile f(otra.filePath(QStringLiteral("kestrel.mdb")));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("libro");
    f.close();
    QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, demo::CrearDemo(otra.path()));
    QCOMPARE(QDir(otra.path()).entryList(QDir::Files), QStringList{"kestrel.mdb"});
}

QTEST_GUILESS_MAIN(TstDemo)
#include "tst_demo.moc"
