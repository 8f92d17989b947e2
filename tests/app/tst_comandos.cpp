// The program's commands run as a person runs them, on books that are not what they should be
// and with values that give nothing: each gets a plain answer naming the cause and an exit
// status that is not 0.

#include "common/Archivo.h"
#include "common/Libro.h"

#include <QProcess>
#include <QtTest>

static const QString kEmpresa = QStringLiteral("20111111112");

class TstComandos : public QObject
{
    Q_OBJECT
private slots:
    void respuestas_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("archivo");       // the book file overwritten before the command
        QTest::addColumn<QByteArray>("contenido"); // what it is overwritten with
        QTest::addColumn<int>("estado");
        QTest::addColumn<QString>("mensaje");
        const QStringList cuenta{"cuenta", "--cuit", kEmpresa};
        const QStringList exportar{"exportar", "--cuit", kEmpresa, "--periodo", "11/2026", "--archivo", "SALIDA/x.xls"};
        const QStringList imprimir{"imprimir", "--cuit", kEmpresa, "--periodo", "11/2026", "--texto", "SALIDA/l.txt"};
        const QByteArray nada, basura(4096, 'x');
        const QByteArray access = QByteArray("\x00\x01\x00\x00Standard Jet DB\x00", 20) + QByteArray(2028, '\0');
        LibroDePrueba otro; // a book whose IVC table was dropped
        otro.Ejecutar(QStringLiteral("drop table IVC"));
        const QByteArray sinIVC = Leer(otro.Carpeta() + QStringLiteral("kestrel.mdb"));
        // One row per kind of unreadable file (an empty file is an empty SQLite book), over the three
        // book files and three commands.
        QTest::newRow("exportar, personal.mdb of junk") << exportar << "personal.mdb" << basura << 1
            << "'DATOS/personal.mdb' como libro de IVA Compras: no es una base de datos de este programa";
        QTest::newRow("cuenta, proveedores.mdb of Access") << cuenta << "proveedores.mdb" << access << 1
            << "ivacompras importar-access DATOS DATOS-convertido";
        QTest::newRow("cuenta, proveedores.mdb empty") << cuenta << "proveedores.mdb" << nada << 1
            << "'DATOS/proveedores.mdb' no es un libro de IVA Compras completo: le falta la tabla IMPUTACIONES.";
        QTest::newRow("imprimir, kestrel.mdb without IVC") << imprimir << "kestrel.mdb" << sinIVC << 1
            << "'DATOS/kestrel.mdb' no es un libro de IVA Compras completo: le falta la tabla IVC.";
        QTest::newRow("imprimir, no line per sheet") << imprimir + QStringList{"--lineas", "-100"} << "" << nada << 2
            << "El campo LINEAS x HOJA debe ser de 1 o más líneas: '-100' no da ninguna hoja.";
        QTest::newRow("imprimir, font of no size") << imprimir + QStringList{"--fuente", "0"} << "" << nada << 2
                                                   << "El campo FUENTE debe estar entre 1 y 72 puntos: '0'.";
        QTest::newRow("crear-bases in a new folder") << QStringList{"crear-bases", "DATOS/nueva/carpeta"} << "" << nada << 0
                                                     << "";
        QTest::newRow("crear-bases never overwrites") << QStringList{"crear-bases", "DATOS"} << "" << nada << 1
                                                      << "ya existe; no se sobrescribe";
        QTest::newRow("windows on a display that does not answer") << QStringList{} << "" << nada << 1
                                                                   << "no se puede abrir la pantalla '127.0.0.1:5999' (DISPLAY)";
    }
    void respuestas()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, archivo);
        QFETCH(QByteArray, contenido);
        QFETCH(int, estado);
        QFETCH(QString, mensaje);
        LibroDePrueba libro;
        libro.Empresa(kEmpresa, QStringLiteral("Empresa SA"));
        const QString datos = libro.Carpeta().chopped(1);
        QDir().mkpath(libro.Carpeta() + QStringLiteral("salida"));
        if (!archivo.isEmpty())
            EscribirArchivo(libro.Carpeta() + archivo, contenido);
        const QByteArray antes = Leer(libro.Carpeta() + archivo);

        for (QString &a : args)
            a.replace(QStringLiteral("SALIDA"), datos + QStringLiteral("/salida")).replace(QStringLiteral("DATOS"), datos);
        if (!args.isEmpty() && args[0] != QLatin1String("crear-bases"))
            args << "--datos" << datos;
        QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
        for (const char *v : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"})
            entorno.remove(QString::fromLatin1(v));
        // A display nobody serves: the X port 6000 + 5999 on this machine.
        entorno.insert(QStringLiteral("DISPLAY"), QStringLiteral("127.0.0.1:5999"));
        QProcess p;
        p.setProcessEnvironment(entorno);
        p.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../ivacompras"), args);
        QVERIFY(p.waitForFinished(60000));
        const QString salida = QString::fromLocal8Bit(p.readAllStandardError());
        QCOMPARE(QPair(p.exitStatus(), p.exitCode()), QPair(QProcess::NormalExit, estado));
        QVERIFY2(salida.contains(mensaje.replace(QStringLiteral("DATOS"), datos)), qPrintable(salida));
        // Nothing but the answer: no warning of Qt's, no success line after a failure.
        QVERIFY2(!salida.contains(QStringLiteral("XDG_RUNTIME_DIR")), qPrintable(salida));
        if (estado != 0)
            QVERIFY(p.readAllStandardOutput().isEmpty());
        // The spoiled file is left as it was, and nothing is written out.
        QCOMPARE(Leer(libro.Carpeta() + archivo), antes);
        QVERIFY(QDir(libro.Carpeta() + QStringLiteral("salida")).isEmpty());
        if (args.value(0) == QLatin1String("crear-bases") && estado == 0)
            QVERIFY(QFileInfo::exists(datos + QStringLiteral("/nueva/carpeta/kestrel.mdb")));
    }
};

QTEST_MAIN(TstComandos)
#include "tst_comandos.moc"
