// The add window's hand-off to supplier tracking: with "Registrar en Seguimiento Proveedores"
// ticked, every press of "Guardar" posts the invoice as the screen shows it then, whatever the
// header save did; a posting that fails is reported and loses nothing.

#include "LibroFacturas.h"
#include "data/Convenciones.h"
#include "data/SegProveedores.h"

#include <QCheckBox>

class TstEnvioSeguimiento : public QObject, Facturas
{
    Q_OBJECT

    // The postings recorded for the company in the book's supplier-tracking file.
    QList<SegProveedoresServices::Imputacion> Imputaciones() const
    {
        SegProveedoresServices::clMAinSP sp;
        sp.setsp_pcuituser(kEmpresa);
        sp.setPathDB(libro->Carpeta() + QStringLiteral("proveedores.mdb"));
        return sp.Imputaciones();
    }
    QStringList Importes() const
    {
        QStringList out;
        for (const auto &i : Imputaciones())
            out << conv::NumeroATexto(i.importe);
        return out;
    }
    static void Tildar(frmADDConcepto &w)
    {
        w.Chk_EnviarASeguimiento->setFocus();
        Tecla(Qt::Key_Space);
    }
    // Beta's invoice "0001-00000042" of type "B" dated 15/11/2026: untaxed 5, taxed 100 and a
    // VAT line of 21 (which writes the header).
    static void Factura(frmADDConcepto &w)
    {
        w.cboProv->setFocus();
        Tecla(Qt::Key_Down);
        Campo(w.TxtFecha, QStringLiteral("15/11/2026"));
        w.cboTipo->setFocus();
        Tecla(Qt::Key_Down);
        Campo(w.TxtNumero, QStringLiteral("0001-00000042"));
        Campo(w.TxtNoGrav, QStringLiteral("5"));
        Gravado(w, QStringLiteral("100"));
        LineaIVA(w, QStringLiteral("21"), QStringLiteral("21"));
    }

private slots:
    void cadaPulsacionPublica()
    {
        Libro();
        auto w = Agregar();
        QCOMPARE(w->Chk_EnviarASeguimiento->text().remove(u'&'), QStringLiteral("Registrar en Seguimiento Proveedores"));
        Factura(*w);
        Guardar(*w);
        QVERIFY(Imputaciones().isEmpty()); // the box starts unticked

        Tildar(*w);
        Guardar(*w);
        // A line added after a posting goes with the next press only.
        LineaIB(*w, QStringLiteral("3"), QString(), QStringLiteral("3"));
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("129,00"));
        QCOMPARE(Importes(), QStringList{QStringLiteral("126")});
        Guardar(*w);
        QVERIFY2(Msg().mostrados.isEmpty(), qPrintable(Msg().Ultimo()));

        QCOMPARE(Importes(), (QStringList{QStringLiteral("126"), QStringLiteral("129")}));
        for (const auto &i : Imputaciones()) {
            QCOMPARE(i.empresa, kEmpresa);
            QCOMPARE(i.proveedor, kBeta);
            QCOMPARE(i.fecha, QDate(2026, 11, 15));
            QCOMPARE(i.numero, QStringLiteral("0001-00000042"));
            QCOMPARE(i.descripcion, QStringLiteral("Factura B"));
            QCOMPARE(i.lado, QStringLiteral("DEBE"));
        }
        // Unticked again: no more postings.
        Tildar(*w);
        Guardar(*w);
        QCOMPARE(Imputaciones().size(), 2);
    }

    // The duplicate check refuses the header; the invoice on screen is posted all the same.
    void guardadoRechazadoPublicaIgual()
    {
        Libro();
        libro->Factura(kEmpresa, kAcme, QStringLiteral("01/10/2026"), QStringLiteral("05/10/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-7"), 10, 0, 0, 0);
        auto w = Agregar();
        Tildar(*w);
        Campo(w->TxtNumero, QStringLiteral("0001-7"));
        Campo(w->TxtNoGrav, QStringLiteral("12,5"));
        Guardar(*w);
        QVERIFY(Msg().Ultimo().startsWith(QStringLiteral("Este Numero de factura ya fue cargada [ 0001-7 ]")));
        QVERIFY(!w->Guardado());
        const auto imp = Imputaciones();
        QCOMPARE(imp.size(), 1);
        QCOMPARE(imp[0].proveedor + u'|' + imp[0].numero + u'|' + imp[0].descripcion,
                 QStringLiteral("30700000011|0001-7|Factura A"));
        QCOMPARE(imp[0].fecha, QDate(2026, 11, 21));
        QCOMPARE(imp[0].importe, 12.5);
    }

    // The tracking book cannot be reached: the error is reported, the invoice stays saved and
    // on screen, and a later press with the book back in place posts it.
    void rutaRota()
    {
        Libro();
        auto w = Agregar();
        const QString ruta = libro->S().RutaFacturacion;
        libro->S().RutaFacturacion = libro->Carpeta() + QStringLiteral("no-existe/");
        Tildar(*w);
        Factura(*w);
        Guardar(*w);
        QCOMPARE(Msg().mostrados.size(), 1);
        QVERIFY(Msg().Ultimo().contains(QStringLiteral("\r\n\r\n")));
        QVERIFY(Msg().Ultimo().endsWith(QStringLiteral(" - seccion [MORLA.SP_EnviarASeguimiento (modGBPROC)]")));
        QCOMPARE(Msg().UltimoEstilo(), int(vb::vbCritical));
        QVERIFY(w->isVisible());
        QCOMPARE(Filas(QStringLiteral("select PRVSNRCUIT,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARIN from IVC")),
                 QStringList{QStringLiteral("30700000022|0001-00000042|5|100|21")});
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("126,00"));
        QVERIFY(Imputaciones().isEmpty());

        libro->S().RutaFacturacion = ruta;
        Guardar(*w);
        QCOMPARE(Msg().mostrados.size(), 1);
        QCOMPARE(Importes(), QStringList{QStringLiteral("126")});
    }
};

QTEST_MAIN(TstEnvioSeguimiento)
#include "tst_envioseguimiento.moc"
