#include "app/core/Ajustes.h"
#include "app/core/Sesion.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

// The settings store and what the start-up reads from it.
class TstAjustes : public QObject
{
    Q_OBJECT
private slots:
    void leerDatos_data();
    void leerDatos();
    void guardarYLeer();
};

void TstAjustes::leerDatos_data()
{
    QTest::addColumn<QByteArray>("facturacion");
    QTest::addColumn<QByteArray>("vento");
    QTest::addColumn<double>("ivaRIN");
    QTest::addColumn<double>("fuente");
    QTest::addColumn<QString>("desde");
    QTest::addColumn<QString>("hasta");
    QTest::newRow("first run") << QByteArray() << QByteArray() << 0.0 << 9.0 << "01/01/1990" << "31/01/1990";
    QTest::newRow("decimal comma unquoted") << QByteArray("[DATOS]\nIVARIN=10,5\n[IVC]\nCFGIMPFUEN=9,5\n")
                                            << QByteArray("[HISTORIAL]\nIVCFPERIOD=15/03/2005\n") << 10.5 << 9.5 << "01/03/2005" << "31/03/2005";
    QTest::newRow("December ends the previous year") << QByteArray("[DATOS]\nIVARIN=21\n") << QByteArray("[HISTORIAL]\nIVCFPERIOD=01/12/2005\n")
                                                     << 21.0 << 9.0 << "01/12/2005" << "31/12/2004";
    QTest::newRow("period that is not a date") << QByteArray() << QByteArray("[HISTORIAL]\nIVCFPERIOD=nunca\n") << 0.0 << 9.0
                                               << "01/01/1990" << "31/01/1990";
}

void TstAjustes::leerDatos()
{
    QFETCH(QByteArray, facturacion);
    QFETCH(QByteArray, vento);
    QFETCH(double, ivaRIN);
    QFETCH(double, fuente);
    QFETCH(QString, desde);
    QFETCH(QString, hasta);
    QTemporaryDir dir;
    for (const auto &[nombre, texto] : {std::pair{"FACTURACION.ini", facturacion}, std::pair{"VENTO.ini", vento}}) {
        QFile f(dir.filePath(QString::fromLatin1(nombre)));
        QVERIFY(texto.isEmpty() || (f.open(QIODevice::WriteOnly) && f.write(texto) == texto.size()));
    }
    Sesion s{Ajustes(dir.path())};
    QVERIFY(LeerDatos(s));
    QCOMPARE(s.IvaRIN, ivaRIN);
    QCOMPARE(s.ImpFuente, fuente);
    QCOMPARE(s.PeriodoDesde, desde);
    QCOMPARE(s.PeriodoHasta, hasta);
    // What no row writes keeps its default.
    QCOMPARE(s.CuitUsuario + u'|' + s.RutaLibro + u'|' + s.SeparadorDecimal, QStringLiteral("||,"));
    QCOMPARE(s.ImpLineasHoja, qint16(30));
}

void TstAjustes::guardarYLeer()
{
    QTemporaryDir dir;
    const Ajustes a(dir.path() + QStringLiteral("/nueva"));
    const QString app = QStringLiteral("KESTREL"), sec = QStringLiteral("Config"), clave = QStringLiteral("SepCol");
    QCOMPARE(a.Leer(app, sec, clave, QStringLiteral("x")), QStringLiteral("x"));
    a.Guardar(app, sec, clave, QStringLiteral(";"));
    QVERIFY(QFile::exists(dir.path() + QStringLiteral("/nueva/KESTREL.ini")));
    QCOMPARE(a.Leer(app, sec, clave), QStringLiteral(";"));
}

QTEST_GUILESS_MAIN(TstAjustes)
#include "tst_ajustes.moc"
