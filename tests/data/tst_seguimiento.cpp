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
    void cadaEnvioEsUnaImputacion();
    void fallasSeInformanSinPerderNada_data();
    void fallasSeInformanSinPerderNada();
    void libroSinTablaLaCrea();
};

void TstSeguimiento::cadaEnvioEsUnaImputacion()
{
    LibroDePrueba libro;
    for (const double importe : {1210.5, 1300.0})
        SP_EnviarASeguimiento(libro.S(), QStringLiteral("20-1"), QStringLiteral("30-2"), QStringLiteral("15-03-2026"),
                              QStringLiteral("0001-00000012"), QStringLiteral("Factura A"), importe);
    SP_EnviarASeguimiento(libro.S(), QStringLiteral("20-9"), QStringLiteral("30-2"), QStringLiteral("16-03-2026"),
                          QStringLiteral("0001-00000013"), QStringLiteral("Factura B"), 5);
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

void TstSeguimiento::fallasSeInformanSinPerderNada_data()
{
    QTest::addColumn<QString>("ruta");
    QTest::addColumn<QString>("fecha");
    QTest::newRow("missing folder") << "/no/existe/" << "15-03-2026";
    QTest::newRow("file that is not a book") << "NOLIBRO" << "15-03-2026";
    QTest::newRow("date that is not a date") << "" << "xx";
    QTest::newRow("missing book file") << "SINLIBRO" << "15-03-2026";
}

void TstSeguimiento::fallasSeInformanSinPerderNada()
{
    QFETCH(QString, ruta);
    QFETCH(QString, fecha);
    LibroDePrueba libro;
    Sesion &s = libro.S();
    if (ruta == QLatin1String("NOLIBRO")) {
        // A folder named like the book: it cannot be opened as a file.
        QDir(libro.Carpeta()).mkpath(QStringLiteral("x/proveedores.mdb"));
        s.RutaFacturacion = libro.Carpeta() + QStringLiteral("x/");
    } else if (ruta == QLatin1String("SINLIBRO")) {
        QFile::remove(libro.Carpeta() + QStringLiteral("proveedores.mdb"));
    } else if (!ruta.isEmpty()) {
        s.RutaFacturacion = ruta;
    }
    libro.Factura(QStringLiteral("20-1"), QStringLiteral("30-2"), QStringLiteral("01/03/2026"),
                  QStringLiteral("15/03/2026"), QStringLiteral("A"), QStringLiteral("1"), 100, 0, 21, 0);
    SP_EnviarASeguimiento(s, QStringLiteral("20-1"), QStringLiteral("30-2"), fecha, QStringLiteral("1"),
                          QStringLiteral("Factura A"), 121);
    QCOMPARE(libro.Mensajes().mostrados.size(), 1);
    QCOMPARE(libro.Mensajes().UltimoEstilo(), int(vb::vbCritical));
    const QString texto = libro.Mensajes().Ultimo();
    QVERIFY2(texto.endsWith(QStringLiteral(" - seccion [MORLA.SP_EnviarASeguimiento (modGBPROC)]")), qPrintable(texto));
    QVERIFY2(texto.contains(QStringLiteral("\r\n\r\n")), qPrintable(texto));
    QCOMPARE(libro.Contar(QStringLiteral("IVC")), 1L);
}

void TstSeguimiento::libroSinTablaLaCrea()
{
    LibroDePrueba libro;
    libro.Ejecutar(QStringLiteral("proveedores.mdb"), {QStringLiteral("drop table IMPUTACIONES")});
    SP_EnviarASeguimiento(libro.S(), QStringLiteral("20-1"), QStringLiteral("30-2"), QStringLiteral("15-03-2026"),
                          QStringLiteral("7"), QStringLiteral("Factura C"), 10);
    QVERIFY(libro.Mensajes().mostrados.isEmpty());
    QCOMPARE(libro.Filas(QStringLiteral("select NUMERO, IMPORTE from IMPUTACIONES"), QStringLiteral("proveedores.mdb")),
             QStringList{QStringLiteral("7|10")});
}

QTEST_GUILESS_MAIN(TstSeguimiento)
#include "tst_seguimiento.moc"
