#include "app/core/Ajustes.h"
#include "app/core/Demo.h"
#include "app/core/Sesion.h"
#include "common/Archivo.h"
#include "data/oDB.h"

#include <QTemporaryDir>
#include <QtTest>

// The demo book: what it promises, written in a folder of its own; made again, the same book, and
// never over a book.
class TstDemo : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        dir = tmp.filePath(QStringLiteral("nueva/demo")); // made by the command
        resumen = demo::CrearDemo(dir);
        QCOMPARE(resumen.carpeta, QDir(dir).absolutePath() + u'/');
        libro.setCadenaConexion(CadenaConexion(resumen.carpeta, QStringLiteral("kestrel.mdb")));
        libro.Conectar();
        QVERIFY(QFileInfo::exists(resumen.carpeta + QStringLiteral("proveedores.mdb")));
    }
    void contenido()
    {
        oDB::clManejo personal;
        personal.setCadenaConexion(CadenaConexion(resumen.carpeta, QStringLiteral("personal.mdb")));
        personal.Conectar();
        const QStringList usr = Filas(personal, QStringLiteral("select USRSNRCUIT from USR"));
        QCOMPARE(QPair(usr.size(), resumen.empresas.size()), QPair(qsizetype(3), qsizetype(3)));
        // Every CUIT with its check digit, as the 11 digits alone the tax authority's files take.
        QCOMPARE((QList<bool>{demo::CuitValido(u"30712345671"_qs), demo::CuitValido(u"30712345672"_qs),
                              demo::CuitValido(u"30-71234567-1"_qs)}), (QList<bool>{true, false, false}));
        for (const QString &c : usr + Filas(libro, QStringLiteral("select PRVSNRCUIT from PRV")))
            QVERIFY2(demo::CuitValido(c), qPrintable(c));
        // Every invoice belongs to a known company and supplier, but the one whose supplier was
        // removed from the list for the period check to find.
        QCOMPARE(Filas(libro, QStringLiteral("select IVCSNROFAC from IVC where USRSNRCUIT not in ('%1') or PRVSNRCUIT not in (select PRVSNRCUIT from PRV)").arg(usr.join(u"','"))),
                 QStringList{"0021-00000345"});
        QCOMPARE(Uno(QStringLiteral("select count(*) from IVC")), QString::number(resumen.facturas));
        // Every voucher type of the list, and one the list does not know.
        QCOMPARE(Filas(libro, QStringLiteral("select distinct IVCSTIPFAC from IVC order by IVCSTIPFAC")),
                 (QStringList{"99", "A", "B", "C", "NDA", "TIQUE", "TIQUE FCA", "TIQUE FCB", "X"}));
        QCOMPARE(Filas(libro, QStringLiteral("select distinct IVCDETIVA from IVC_DetIVA order by IVCDETIVA")), (QStringList{"10,5", "21", "27"}));

        // The totals equal their lines.
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
        // The opened period shows every voucher type, the unknown one and the earlier-scheme invoice.
        QCOMPARE(Filas(*s.dbLibro, QStringLiteral("select count(*) as cant, count(distinct IVCSTIPFAC) as tipos, sum(IVCINGBRU = 150) as previa from IVC where USRSNRCUIT = %1 and IVCFPERIOD = datevalue('%2')")
                                       .arg(oDB::Q(s.CuitUsuario), s.PeriodoDesde)),
                 QStringList{QStringLiteral("%1|9|1").arg(resumen.propuesto.facturas)});
    }
    void otraVez()
    {
        const demo::ResumenDemo r = demo::CrearDemo(tmp.filePath(QStringLiteral("otra")));
        oDB::clManejo db;
        db.setCadenaConexion(CadenaConexion(r.carpeta, QStringLiteral("kestrel.mdb")));
        db.Conectar();
        for (const char *tabla : {"PRV", "IVC", "IVC_DetIVA", "IVC_DetIngBrutos", "IVC_Gravado"}) {
            const QString sql = QStringLiteral("select * from %1 order by rowid").arg(QLatin1String(tabla));
            QCOMPARE(Filas(db, sql), Filas(libro, sql));
        }
        // One book file is enough to refuse: it is left as it was and nothing is added beside it.
        QTemporaryDir otra;
        EscribirArchivo(otra.filePath(QStringLiteral("kestrel.mdb")), "libro");
        QVERIFY_THROWS_EXCEPTION(oDB::ErrorBD, demo::CrearDemo(otra.path()));
        QCOMPARE(QDir(otra.path()).entryList(QDir::Files), QStringList{"kestrel.mdb"});
        QCOMPARE(Leer(otra.filePath(QStringLiteral("kestrel.mdb"))), QByteArray("libro"));
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
