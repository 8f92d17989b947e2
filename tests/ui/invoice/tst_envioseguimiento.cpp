// The add window's hand-off to supplier tracking: with "Registrar en Seguimiento Proveedores"
// ticked, every press of "Guardar" posts the invoice as the screen shows it then, whatever the
// header save did; a posting that fails is reported and loses nothing.

#include "LibroFacturas.h"
#include "Teclado.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "data/Convenciones.h"
#include "data/SegProveedores.h"
#include "ui/invoice/frmADDConcepto.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <memory>

class TstEnvioSeguimiento : public QObject
{
    Q_OBJECT

    std::unique_ptr<LibroDePrueba> libro;
    PrincipalContador principal;

    std::unique_ptr<frmADDConcepto> Abrir()
    {
        libro = std::make_unique<LibroDePrueba>();
        LlenarLibro(*libro);
        principal = PrincipalContador();
        auto w = std::make_unique<frmADDConcepto>(libro->S(), &principal);
        Mostrar(*w);
        return w;
    }
    MensajesGuion &Msg() { return libro->Mensajes(); }
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
    static void Guardar(frmADDConcepto &w)
    {
        w.cmdGuardar->setFocus();
        Tecla(Qt::Key_Return);
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
        Campo(w.TxtGrav, QStringLiteral("100"));
        Tecla(Qt::Key_Return);
        Campo(w.txtIVCDETIVA, QStringLiteral("21"));
        Campo(w.txtIVCDETVLR, QStringLiteral("21"));
        Tecla(Qt::Key_Return);
    }

private slots:
    void cadaPulsacionPublica()
    {
        auto w = Abrir();
        QVERIFY(!w->Chk_EnviarASeguimiento->isChecked());
        QCOMPARE(w->Chk_EnviarASeguimiento->text().remove(u'&'), QStringLiteral("Registrar en Seguimiento Proveedores"));
        Factura(*w);
        Guardar(*w);
        QVERIFY(Imputaciones().isEmpty()); // the box starts unticked

        Tildar(*w);
        QVERIFY(w->Chk_EnviarASeguimiento->isChecked());
        Guardar(*w);
        // A line added after a posting goes with the next press only.
        Campo(w->txtIVC_IngB, QStringLiteral("3"));
        Campo(w->txtIVC_IngBValor, QStringLiteral("3"));
        Tecla(Qt::Key_Return);
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("129,00"));
        QCOMPARE(Importes(), QStringList{QStringLiteral("126")});
        Guardar(*w);
        Tildar(*w);
        Guardar(*w);
        QVERIFY2(Msg().mostrados.isEmpty(), qPrintable(Msg().Ultimo()));

        const auto imp = Imputaciones();
        QCOMPARE(Importes(), (QStringList{QStringLiteral("126"), QStringLiteral("129")}));
        for (const auto &i : imp) {
            QCOMPARE(i.empresa, kEmpresa);
            QCOMPARE(i.proveedor, kBeta);
            QCOMPARE(i.fecha, QDate(2026, 11, 15));
            QCOMPARE(i.numero, QStringLiteral("0001-00000042"));
            QCOMPARE(i.descripcion, QStringLiteral("Factura B"));
            QCOMPARE(i.lado, QStringLiteral("DEBE"));
        }
        QCOMPARE(principal.recargas, 4);
    }

    // The duplicate check refuses the header; the invoice on screen is posted all the same.
    void guardadoRechazadoPublicaIgual()
    {
        auto w = Abrir();
        libro->Factura(kEmpresa, kAcme, QStringLiteral("01/10/2026"), QStringLiteral("05/10/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-7"), 10, 0, 0, 0);
        Tildar(*w);
        Campo(w->TxtNumero, QStringLiteral("0001-7"));
        Campo(w->TxtNoGrav, QStringLiteral("12,5"));
        Guardar(*w);
        QVERIFY(Msg().Ultimo().startsWith(QStringLiteral("Este Numero de factura ya fue cargada [ 0001-7 ]")));
        QVERIFY(!w->Guardado());
        QCOMPARE(libro->Contar(QStringLiteral("IVC")), 1L);
        const auto imp = Imputaciones();
        QCOMPARE(imp.size(), 1);
        QCOMPARE(imp[0].proveedor, kAcme);
        QCOMPARE(imp[0].numero, QStringLiteral("0001-7"));
        QCOMPARE(imp[0].descripcion, QStringLiteral("Factura A"));
        QCOMPARE(imp[0].fecha, QDate(2026, 11, 21));
        QCOMPARE(imp[0].importe, 12.5);
    }

    // The tracking book cannot be reached: the error is reported, the invoice stays saved and
    // on screen, and a later press with the book back in place posts it.
    void rutaRota()
    {
        auto w = Abrir();
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
        QVERIFY(w->Guardado());
        QCOMPARE(libro->Filas(QStringLiteral("select PRVSNRCUIT,IVCSNROFAC,IVCDNOGRAV,IVCDGRAVAD,IVARIN from IVC")),
                 QStringList{QStringLiteral("30700000022|0001-00000042|5|100|21")});
        QCOMPARE(w->TxtNumero->text(), QStringLiteral("0001-00000042"));
        QCOMPARE(w->lstIVC_DetIVA->topLevelItemCount(), 1);
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
