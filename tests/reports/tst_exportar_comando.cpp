#include "common/Archivo.h"
#include "common/DialogoGuion.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "reports/Exportar.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

// "ivacompras exportar" run as a program: the same three files as F10, messages on standard
// error, exit status 0 only when the files were written.
namespace {

const QString EMPRESA = QStringLiteral("20123456789");
const QString P1 = QStringLiteral("30111111118");

struct Salida {
    int codigo = -1;
    QString error;
};

} // namespace

class TstExportarComando : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void mismosArchivosQueLaVentana();
    void fallos_data();
    void fallos();

private:
    Salida Ejecutar(const QStringList &args);
    QString Dir() const { return libro->Carpeta() + QStringLiteral("salida/"); }
    std::unique_ptr<LibroDePrueba> libro;
};

void TstExportarComando::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Empresa(EMPRESA, QStringLiteral("Comercio Sur SRL"));
    libro->Proveedor(P1, QStringLiteral("PEÑA Y CIA S.A."));
    const QString marzo = QStringLiteral("01/03/2005");
    libro->Factura(EMPRESA, P1, marzo, "02/03/2005", "A", "0002-00012345", 1000, 50, 210, 7.5);
    libro->LineaIVA(EMPRESA, P1, "0002-00012345", 1, 21, "Iva 21", 210);
    libro->Factura(EMPRESA, P1, marzo, "09/03/2005", "B", "0002-00012400", 300, 0, 31.5, 0);
    libro->LineaIVA(EMPRESA, P1, "0002-00012400", 1, 10.5, "Iva 10,5", 31.5);
    libro->Factura(EMPRESA, "30777777776", marzo, "09/03/2005", "C", "0001-00000001", 0, 80, 0, 0);
    libro->Ejecutar("update IVC set DESCRIPCION = '1,5 kg' where IVCSNROFAC = '0002-00012400'");
    QDir().mkpath(Dir());
}

void TstExportarComando::cleanup() { libro.reset(); }

Salida TstExportarComando::Ejecutar(const QStringList &args)
{
    const QString programa = QCoreApplication::applicationDirPath() + QStringLiteral("/../ivacompras");
    if (!QFileInfo::exists(programa))
        qFatal("the ivacompras program is not built next to the tests: %s", qPrintable(programa));
    QProcess p;
    p.start(programa, QStringList{QStringLiteral("exportar")} + args);
    if (!p.waitForFinished(120000))
        qFatal("ivacompras exportar did not finish");
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromLocal8Bit(p.readAllStandardError())};
}

void TstExportarComando::mismosArchivosQueLaVentana()
{
    // The window's run, with the dialog answering a path.
    DialogoGuion dialogo(Dir() + QStringLiteral("ventana.xls"));
    libro->S().dialogo = &dialogo;
    libro->Periodo(EMPRESA, QStringLiteral("01/03/2005"));
    QString tab = QStringLiteral("\t");
    QVERIFY(GenerarReporte(libro->S(), tab, nullptr));

    const QString ajustes = libro->Carpeta() + QStringLiteral("ajustes-comando");
    const Salida s = Ejecutar({"--datos", libro->Carpeta(), "--cuit", EMPRESA, "--periodo", "03/2005",
                               "--archivo", Dir() + "comando", "--ajustes", ajustes});
    QCOMPARE(s.codigo, 0);
    QCOMPARE(s.error, QStringLiteral("Archivos Generados\n"));
    for (const char *sufijo : {".xls", " COMPRAS COMPRBTE.txt", " COMPRAS ALICUOTAS.txt"}) {
        const QByteArray ventana = Leer(Dir() + "ventana" + sufijo);
        QVERIFY(ventana.size() > 80);
        QCOMPARE(Leer(Dir() + "comando" + sufijo), ventana);
    }
    QCOMPARE(Ajustes(ajustes).Leer("KESTREL", "Config", "SepCol"), QStringLiteral("\t"));
}

void TstExportarComando::fallos_data()
{
    QTest::addColumn<QString>("cuit");
    QTest::addColumn<QString>("periodo");
    QTest::addColumn<QString>("archivo");
    QTest::addColumn<int>("codigo");
    QTest::addColumn<QString>("error");
    QTest::newRow("company not in USR") << "20999999999" << "03/2005" << "x.xls" << 1
                                        << "No se encuentra la información de este usuario.";
    QTest::newRow("month out of range") << EMPRESA << "13/2005" << "x.xls" << 1 << "MM/AAAA";
    QTest::newRow("folder of the file missing") << EMPRESA << "03/2005" << "no/existe/x.xls" << 1
                                                << " seccion modGBPROC.GenerarReporte ";
    QTest::newRow("no file given") << EMPRESA << "03/2005" << "" << 2 << "uso:";
}

void TstExportarComando::fallos()
{
    QFETCH(QString, cuit);
    QFETCH(QString, periodo);
    QFETCH(QString, archivo);
    QFETCH(int, codigo);
    QFETCH(QString, error);
    QStringList args{"--datos", libro->Carpeta(), "--cuit", cuit, "--periodo", periodo,
                     "--ajustes", libro->CarpetaAjustes()};
    if (!archivo.isEmpty())
        args << "--archivo" << Dir() + archivo;
    const Salida s = Ejecutar(args);
    QCOMPARE(s.codigo, codigo);
    QVERIFY2(s.error.contains(error), qPrintable(s.error));
    QVERIFY(QDir(Dir()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
}

QTEST_GUILESS_MAIN(TstExportarComando)
#include "tst_exportar_comando.moc"
