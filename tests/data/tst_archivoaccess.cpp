// A book file that is an Access book of the old program: recognised by its first bytes, and
// named with the command that converts it when the program tries to open it.

#include "app/core/Sesion.h"
#include "data/ArchivoAccess.h"
#include "data/Esquema.h"
#include "data/oDB.h"

#include <QTemporaryDir>
#include <QtTest>

class TstArchivoAccess : public QObject
{
    Q_OBJECT
private slots:
    void abrir_data();
    void abrir();
};

void TstArchivoAccess::abrir_data()
{
    QTest::addColumn<QByteArray>("contenido"); // empty: the file is copied from origen
    QTest::addColumn<QString>("origen");
    QTest::addColumn<bool>("access");
    const QString f = QStringLiteral(IVC_FIXTURAS "/access/");
    QTest::newRow("Access 2000") << QByteArray() << f + "jet4/personal.mdb" << true;
    QTest::newRow("Access 2003") << QByteArray() << f + "jet4-2003/kestrel.mdb" << true;
    QTest::newRow("Access 97") << QByteArray() << f + "terceros/testV1997.mdb" << true;
    QTest::newRow("Access 2007") << QByteArray("\x00\x01\x00\x00Standard ACE DB\x00 resto", 26) << QString() << true;
    QTest::newRow("libro del programa") << QByteArray() << QString() << false;
    QTest::newRow("nombre sin su cero") << QByteArray("\x00\x01\x00\x00Standard Jet DBX", 20) << QString() << false;
    QTest::newRow("archivo corto") << QByteArray("\x00\x01\x00\x00Standard", 12) << QString() << false;
}

void TstArchivoAccess::abrir()
{
    QFETCH(QByteArray, contenido);
    QFETCH(QString, origen);
    QFETCH(bool, access);
    QTemporaryDir tmp;
    const QString dir = tmp.filePath(QStringLiteral("libros viejos/"));
    QDir().mkpath(dir);
    const QString ruta = dir + QStringLiteral("kestrel.mdb");
    if (!origen.isEmpty())
        QVERIFY(QFile::copy(origen, ruta));
    else if (contenido.isEmpty())
        esquema::CrearArchivo(ruta, esquema::SentenciasKestrel());
    else {
        QFile f(ruta);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(contenido);
    }
    QCOMPARE(archivoaccess::EsArchivoAccess(ruta), access);

    oDB::clManejo db;
    db.setCadenaConexion(CadenaConexion(dir, QStringLiteral("kestrel.mdb")));
    QString error;
    try {
        db.Conectar();
    } catch (const oDB::ErrorBD &e) {
        error = e.descripcion;
    }
    if (!access) {
        QCOMPARE(archivoaccess::MensajeArchivoAccess(ruta), QString());
        QVERIFY(!error.contains(u"Access"));
        return;
    }
    // The path with a blank goes between quotes, so the command can be copied as it is.
    QVERIFY2(error.contains(QStringLiteral("'%1' es un libro de Microsoft Access").arg(ruta)), qPrintable(error));
    QVERIFY2(error.contains(QStringLiteral("ivacompras importar-access \"%1\" \"%2\"")
                                .arg(tmp.filePath(QStringLiteral("libros viejos")),
                                     tmp.filePath(QStringLiteral("libros viejos-convertido")))),
             qPrintable(error));
    QVERIFY(!db.Conectado());
}

QTEST_GUILESS_MAIN(TstArchivoAccess)
#include "tst_archivoaccess.moc"
