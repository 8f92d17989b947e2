#include "app/core/Ajustes.h"
#include "app/core/Sesion.h"
#include "common/Archivo.h"

#include <QTemporaryDir>
#include <QtTest>

// What the start-up reads from the settings store. (Writing and reading back is checked with the
// print settings of the main window and the export's column separator.)
class TstAjustes : public QObject
{
    Q_OBJECT
private slots:
    // Numbers written with a decimal comma and no quotes; what no row writes keeps its default; the
    // first run has no file at all. (The periods of December and of a text that is not a date are
    // checked through the main window's start-up.)
    void leerDatos()
    {
        QTemporaryDir dir;
        const std::pair<const char *, QByteArray> archivos[] = {
            {"FACTURACION.ini", "[DATOS]\nIVARIN=10,5\n[IVC]\nCFGIMPFUEN=9,5\n"}, {"VENTO.ini", "[HISTORIAL]\nIVCFPERIOD=15/03/2005\n"}};
        for (const auto &[nombre, texto] : archivos)
            EscribirArchivo(dir.filePath(QString::fromLatin1(nombre)), texto);
        Sesion s{Ajustes(dir.path())};
        QVERIFY(LeerDatos(s));
        QCOMPARE(QPair(s.IvaRIN, s.ImpFuente), QPair(10.5, 9.5));
        QCOMPARE(QStringList({s.PeriodoDesde, s.PeriodoHasta, s.CuitUsuario, s.RutaLibro, s.SeparadorDecimal,
                              QString::number(s.ImpLineasHoja)}),
                 QStringList({"01/03/2005", "31/03/2005", "", "", ",", "30"}));

        QTemporaryDir vacia;
        Sesion primera{Ajustes(vacia.path())};
        QVERIFY(LeerDatos(primera));
        QCOMPARE(primera.IvaRIN + primera.ImpFuente, 9.0);
        QCOMPARE(primera.PeriodoDesde + u'-' + primera.PeriodoHasta, QStringLiteral("01/01/1990-31/01/1990"));
    }
};

QTEST_GUILESS_MAIN(TstAjustes)
#include "tst_ajustes.moc"
