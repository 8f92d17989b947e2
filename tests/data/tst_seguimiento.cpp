#include "app/core/Seguimiento.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "data/SegProveedores.h"

#include <QtTest>

// The hand-off of saved invoices to the supplier accounts in proveedores.mdb.
class TstSeguimiento : public QObject
{
    Q_OBJECT
private slots:
    void cadaEnvioEsUnaImputacion()
    {
        LibroDePrueba libro;
        // A book without its table gets it on the first send.
        libro.Ejecutar(QStringLiteral("proveedores.mdb"), {QStringLiteral("drop table IMPUTACIONES")});
        // The same invoice sent twice is posted twice; another company's posting is not listed.
        for (const auto &[empresa, importe] : {std::pair{"20-1", 1210.5}, std::pair{"20-1", 1300.0}, std::pair{"20-9", 5.0}})
            SP_EnviarASeguimiento(libro.S(), QString::fromLatin1(empresa), QStringLiteral("30-2"), QStringLiteral("15-03-2026"),
                                  QStringLiteral("0001-00000012"), QStringLiteral("Factura A"), importe);
        QVERIFY(libro.Mensajes().mostrados.isEmpty());

        SegProveedoresServices::clMAinSP sp;
        sp.setsp_pcuituser(QStringLiteral("20-1"));
        sp.setPathDB(libro.Carpeta() + QStringLiteral("proveedores.mdb"));
        QStringList vistas;
        for (const auto &i : sp.Imputaciones())
            vistas << QStringLiteral("%1|%2|%3|%4|%5|%6|%7").arg(i.proveedor, i.fecha.toString(Qt::ISODate), i.numero, i.descripcion, i.lado)
                          .arg(i.importe).arg(i.registrado.isEmpty());
        QCOMPARE(vistas, (QStringList{"30-2|2026-03-15|0001-00000012|Factura A|DEBE|1210.5|0",
                                      "30-2|2026-03-15|0001-00000012|Factura A|DEBE|1300|0"}));
        QCOMPARE(sp.Imputaciones(QStringLiteral("30-9")).size(), 0);
    }
    // Reported in the error trap's words (a missing book is reported through the add window).
    void fallasSeInforman_data()
    {
        QTest::addColumn<QString>("caso");
        QTest::addColumn<QString>("fecha");
        QTest::newRow("file that is not a book") << "NOLIBRO" << "15-03-2026";
        QTest::newRow("date that is not a date") << "" << "xx";
    }
    void fallasSeInforman()
    {
        QFETCH(QString, caso);
        QFETCH(QString, fecha);
        LibroDePrueba libro;
        if (caso == QLatin1String("NOLIBRO")) {
            // A folder named like the book: it cannot be opened as a file.
            QDir(libro.Carpeta()).mkpath(QStringLiteral("x/proveedores.mdb"));
            libro.S().RutaFacturacion = libro.Carpeta() + QStringLiteral("x/");
        }
        SP_EnviarASeguimiento(libro.S(), QStringLiteral("20-1"), QStringLiteral("30-2"), fecha, QStringLiteral("1"),
                              QStringLiteral("Factura A"), 121);
        QCOMPARE(libro.Mensajes().mostrados.size(), 1);
        QCOMPARE(libro.Mensajes().UltimoEstilo(), int(vb::vbCritical));
        const QString texto = libro.Mensajes().Ultimo();
        QVERIFY2(texto.contains(QStringLiteral("\r\n\r\n")) &&
                     texto.endsWith(QStringLiteral(" - seccion [MORLA.SP_EnviarASeguimiento (modGBPROC)]")),
                 qPrintable(texto));
    }
};

QTEST_GUILESS_MAIN(TstSeguimiento)
#include "tst_seguimiento.moc"
