#include "app/core/Ajustes.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

// The settings store and what the start-up reads from it.
class TstAjustes : public QObject
{
    Q_OBJECT
private slots:
    void primeraVezValoresPorDefecto();
    void valoresEscritosAMano_data();
    void valoresEscritosAMano();
    void guardarYLeer();
};

void TstAjustes::primeraVezValoresPorDefecto()
{
    QTemporaryDir dir;
    Sesion s{Ajustes(dir.path())};
    QVERIFY(LeerDatos(s));
    QCOMPARE(s.CuitUsuario, QString());
    QCOMPARE(s.Periodo, QStringLiteral("01/01/1990"));
    QCOMPARE(s.PeriodoDesde, QStringLiteral("01/01/1990"));
    QCOMPARE(s.PeriodoHasta, QStringLiteral("31/01/1990"));
    QCOMPARE(s.ImpFuente, 9.0);
    QCOMPARE(s.ImpLineasHoja, qint16(30));
    QCOMPARE(s.IvaRIN, 0.0);
    QCOMPARE(s.RutaLibro, QString());
    QCOMPARE(s.SeparadorDecimal, QStringLiteral(","));
}

void TstAjustes::valoresEscritosAMano_data()
{
    QTest::addColumn<QByteArray>("facturacion");
    QTest::addColumn<QByteArray>("vento");
    QTest::addColumn<double>("ivaRIN");
    QTest::addColumn<double>("fuente");
    QTest::addColumn<QString>("desde");
    QTest::addColumn<QString>("hasta");
    QTest::newRow("decimal comma unquoted")
        << QByteArray("[DATOS]\nIVARIN=10,5\n[IVC]\nCFGIMPFUEN=9,5\n")
        << QByteArray("[HISTORIAL]\nIVCFPERIOD=15/03/2005\n") << 10.5 << 9.5
        << "01/03/2005" << "31/03/2005";
    QTest::newRow("December ends the previous year")
        << QByteArray("[DATOS]\nIVARIN=21\n") << QByteArray("[HISTORIAL]\nIVCFPERIOD=01/12/2005\n")
        << 21.0 << 9.0 << "01/12/2005" << "31/12/2004";
    QTest::newRow("period that is not a date")
        << QByteArray() << QByteArray("[HISTORIAL]\nIVCFPERIOD=nunca\n") << 0.0 << 9.0
        << "01/01/1990" << "31/01/1990";
}

void TstAjustes::valoresEscritosAMano()
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
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(texto);
    }
    Sesion s{Ajustes(dir.path())};
    QVERIFY(LeerDatos(s));
    QCOMPARE(s.IvaRIN, ivaRIN);
    QCOMPARE(s.ImpFuente, fuente);
    QCOMPARE(s.PeriodoDesde, desde);
    QCOMPARE(s.PeriodoHasta, hasta);
}

void TstAjustes::guardarYLeer()
{
    QTemporaryDir dir;
    const Ajustes a(dir.path() + QStringLiteral("/nueva"));
    QCOMPARE(a.Leer(QStringLiteral("KESTREL"), QStringLiteral("Config"), QStringLiteral("SepCol"), QStringLiteral("x")),
             QStringLiteral("x"));
    a.Guardar(QStringLiteral("KESTREL"), QStringLiteral("Config"), QStringLiteral("SepCol"), QStringLiteral(";"));
    a.Guardar(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN"), QStringLiteral("9,5"));
    QVERIFY(QFile::exists(dir.path() + QStringLiteral("/nueva/KESTREL.ini")));
    QCOMPARE(a.Leer(QStringLiteral("KESTREL"), QStringLiteral("Config"), QStringLiteral("SepCol")), QStringLiteral(";"));
    QCOMPARE(a.Leer(QStringLiteral("FACTURACION"), QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN")), QStringLiteral("9,5"));
}

QTEST_GUILESS_MAIN(TstAjustes)
#include "tst_ajustes.moc"
