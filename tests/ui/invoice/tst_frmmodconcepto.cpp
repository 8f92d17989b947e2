// The modify-invoice window driven from the keyboard over a real book: opening from a list
// row, the update addressed by the opening supplier and number, the period change, and the
// ways out.

#include "LibroFacturas.h"
#include "Teclado.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/invoice/frmMODConcepto.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <memory>

namespace {
// The list row of invoice "0001-5" of Acme as the main window passes it.
FilaFactura Fila(const QString &numero = QStringLiteral("0001-5"))
{
    FilaFactura f;
    f.fecha = QStringLiteral("05/10/26");
    f.tipo = QStringLiteral("B");
    f.numero = numero;
    f.cuit = kAcme;
    f.gravado = 100;
    f.noGravado = 5;
    f.total = 126;
    f.ivarin = 21;
    return f;
}
} // namespace

class TstFrmMODConcepto : public QObject
{
    Q_OBJECT

    std::unique_ptr<LibroDePrueba> libro;
    PrincipalContador principal;

    // A book with invoice "0001-5" of Acme listed under October 2026 while the session's period
    // is November 2026; with its taxed amount and VAT line when said.
    void Libro(bool conLineas)
    {
        libro = std::make_unique<LibroDePrueba>();
        LlenarLibro(*libro);
        libro->Factura(kEmpresa, kAcme, QStringLiteral("01/10/2026"), QStringLiteral("05/10/2026"), QStringLiteral("B"),
                       QStringLiteral("0001-5"), 100, 5, 21, 0);
        libro->Ejecutar(QStringLiteral("update IVC set DESCRIPCION = ' servicio ', DESCRIPCIONEXTRA = null"));
        if (conLineas) {
            libro->LineaGravado(kEmpresa, kAcme, QStringLiteral("0001-5"), 1, 100);
            libro->LineaIVA(kEmpresa, kAcme, QStringLiteral("0001-5"), 3, 21, QStringLiteral("Iva 21"), 21);
        }
        principal = PrincipalContador();
    }
    std::unique_ptr<frmMODConcepto> Abrir(const FilaFactura &fila = Fila())
    {
        auto w = std::make_unique<frmMODConcepto>(libro->S(), &principal);
        w->Cargar(fila);
        Mostrar(*w);
        return w;
    }
    MensajesGuion &Msg() { return libro->Mensajes(); }
    QStringList Cabecera()
    {
        return libro->Filas(QStringLiteral("select PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSNROFAC,IVCDGRAVAD,IVARIN from IVC "
                                           "order by IVCSNROFAC"));
    }

private slots:
    void apertura_data()
    {
        QTest::addColumn<bool>("conLineas");
        QTest::newRow("con líneas") << true;
        QTest::newRow("sin líneas") << false;
    }
    void apertura()
    {
        QFETCH(bool, conLineas);
        Libro(conLineas);
        auto w = Abrir();
        QCOMPARE(w->lbTitulo->text(), QStringLiteral("Modificar"));
        QCOMPARE(w->cboProv->currentText(), QStringLiteral("Acme"));
        QCOMPARE(w->cboIdProv->currentText(), kAcme);
        QCOMPARE(w->cboTipo->currentText(), QStringLiteral("B"));
        QCOMPARE(w->TxtFecha->text(), QStringLiteral("05/10/26"));
        QCOMPARE(w->txtDescripcion->text(), QStringLiteral("servicio"));
        QCOMPARE(w->txtDescripcionExtra->text(), QString());
        QCOMPARE(w->cboMES->currentText(), QStringLiteral("NOVIEMBRE"));
        QCOMPARE(w->TxtYear->text(), QStringLiteral("2026"));
        if (conLineas) {
            QCOMPARE(w->lstGravado->count(), 1);
            QCOMPARE(w->cboGravadoIVA->count(), 2);
            QCOMPARE(w->cboGravadoIngBru->itemText(1), QStringLiteral("[Total Gravados]"));
            QVERIFY(w->TxtNumero->isReadOnly());
            QCOMPARE(w->lstIVC_DetIVA->topLevelItemCount(), 1);
            QVERIFY(!w->cboProv->isEnabled());
            QCOMPARE(Foco(), w->TxtFecha);
            QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("126,00"));
            QCOMPARE(Cabecera().value(0), QStringLiteral("30700000011|01/10/2026|05/10/2026|0001-5|100|21"));
        } else {
            // No amounts: the combos stay empty and the number editable; no VAT lines: the
            // header's VAT total is rewritten as 0, and the taxed total shown is that of the lines.
            QCOMPARE(w->cboGravadoIVA->count(), 0);
            QCOMPARE(w->cboGravadoIngBru->count(), 0);
            QVERIFY(!w->TxtNumero->isReadOnly());
            QVERIFY(w->cboProv->isEnabled());
            QCOMPARE(Foco(), w->cboProv);
            QCOMPARE(w->lbGravTotal->text(), QStringLiteral("00,00"));
            QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("05,00"));
            QCOMPARE(Cabecera().value(0), QStringLiteral("30700000011|01/10/2026|05/10/2026|0001-5|100|0"));
        }
    }

    void guardarMueveAlPeriodoActual()
    {
        Libro(true);
        auto w = Abrir();
        Campo(w->txtDescripcion, QStringLiteral("O'Brien"));
        // "Gravado" opens empty, and every save here checks it.
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("El Valor Gravado debe ser númerico"));
        QCOMPARE(principal.recargas, 1);
        QVERIFY(!w->Guardado());
        Msg().Limpiar();
        Campo(w->TxtGrav, QStringLiteral("0"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/11/2026|05/10/2026|0001-5|100|21")});
        QCOMPARE(libro->Filas(QStringLiteral("select DESCRIPCION from IVC")), QStringList{QStringLiteral("O´Brien")});
        QCOMPARE(principal.recargas, 2);
        QCOMPARE(principal.totales, 2);
        QVERIFY(w->isVisible());
        QVERIFY(w->Guardado());
        Tecla(Qt::Key_Escape);
        QVERIFY(!w->isVisible());
        QVERIFY(Msg().mostrados.isEmpty());
        QCOMPARE(principal.recargas, 3);
    }

    void numeroDuplicado()
    {
        Libro(false);
        libro->Factura(kEmpresa, kAcme, QStringLiteral("01/09/2026"), QStringLiteral("02/09/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-6"), 1, 0, 0, 0);
        libro->Factura(kEmpresa, kBeta, QStringLiteral("01/09/2026"), QStringLiteral("02/09/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-8"), 1, 0, 0, 0);
        auto w = Abrir();
        Campo(w->TxtGrav, QStringLiteral("0"));
        Campo(w->TxtNumero, QStringLiteral("0001-6"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("Este Numero de factura ya fue cargada [ 0001-6 ]\r\n"
                                                "EL DIA 01/11/2026\r\nFECHA DE FACTURA 02/09/2026\r\nEL PERIODO 09/2026"));
        QCOMPARE(Msg().UltimoEstilo(), int(vb::vbExclamation));
        QVERIFY(!w->Guardado());
        QCOMPARE(libro->Contar(QStringLiteral("IVC"), QStringLiteral("IVCSNROFAC = '0001-5'")), 1L);

        // Back to the opening number: no check. Another supplier's number is free.
        Reescribir(QStringLiteral("0001-5"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().mostrados.size(), 1);
        QVERIFY(w->Guardado());
        Reescribir(QStringLiteral("0001-8"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().mostrados.size(), 1);
        QCOMPARE(libro->Contar(QStringLiteral("IVC"), QStringLiteral("PRVSNRCUIT = '30700000011' and IVCSNROFAC = '0001-8'")),
                 1L);
    }

    void cambioDeProveedor()
    {
        Libro(false);
        libro->LineaGravado(kEmpresa, kAcme, QStringLiteral("0001-5"), 1, 100);
        auto w = Abrir();
        QVERIFY(w->cboProv->isEnabled());
        Campo(w->TxtGrav, QStringLiteral("0"));
        w->cboProv->setFocus();
        Tecla(Qt::Key_Down); // Beta
        Tecla(Qt::Key_F11);
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000022|01/11/2026|05/10/2026|0001-5|100|0")});
        QCOMPARE(libro->Filas(QStringLiteral("select PRVSNRCUIT from IVC_Gravado")), QStringList{kAcme});
        // A second save still looks for the row under the opening supplier: nothing changes.
        Campo(w->TxtNoGrav, QStringLiteral("9"));
        Tecla(Qt::Key_F11);
        QCOMPARE(libro->Filas(QStringLiteral("select IVCDNOGRAV from IVC")), QStringList{QStringLiteral("5")});
    }

    void cambiarPeriodo()
    {
        Libro(true);
        auto w = Abrir();
        w->cboMES->setFocus();
        Tecla(Qt::Key_Home);
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Down); // MARZO
        Tecla(Qt::Key_Tab);
        QCOMPARE(Foco(), w->TxtYear);
        Reescribir(QStringLiteral("2025"));
        QVERIFY(TabHasta(w->cmdCambiarPeriodo));
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("Se ha cambiado CORRECTAMENTE el período"));
        QCOMPARE(Msg().UltimoEstilo(), int(vb::vbInformation));
        QCOMPARE(Msg().mostrados.last().titulo, QString());
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/03/2025|05/10/2026|0001-5|100|21")});
        QVERIFY(!w->isVisible());
        QCOMPARE(principal.recargas, 1);
    }

    void anioConLaBarra()
    {
        Libro(false);
        auto w = Abrir();
        w->VScroll->setFocus();
        Tecla(Qt::Key_Up);
        QCOMPARE(w->TxtYear->text(), QStringLiteral("2027"));
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Down);
        QCOMPARE(w->TxtYear->text(), QStringLiteral("2025"));
    }

    // "Cerrar" asks when nothing was saved and deletes nothing; Esc closes without asking.
    void salidas()
    {
        Libro(true);
        auto w = Abrir();
        Msg().Responder(vb::vbNo);
        w->cmdCerrar->setFocus();
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("Desea salir sin guardar los datos"));
        QCOMPARE(Msg().mostrados.last().titulo, QStringLiteral("Confirmación"));
        QVERIFY(w->isVisible());
        Tecla(Qt::Key_Return);
        QVERIFY(!w->isVisible());
        QCOMPARE(libro->Contar(QStringLiteral("IVC_Gravado")), 1L);
        QCOMPARE(principal.recargas, 0);

        Msg().Limpiar();
        auto w2 = Abrir();
        Tecla(Qt::Key_Escape);
        QVERIFY(!w2->isVisible());
        QVERIFY(Msg().mostrados.isEmpty());
        QCOMPARE(principal.recargas, 0);
    }

    void errorAlGuardar()
    {
        Libro(true);
        auto w = Abrir();
        Campo(w->TxtGrav, QStringLiteral("0"));
        Campo(w->TxtFecha, QStringLiteral("05'10"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().UltimoEstilo(), int(vb::vbCritical));
        QVERIFY(Msg().Ultimo().endsWith(QStringLiteral(" - seccion [MORLA.frmModConcepto.IVAValidad]")));
        QVERIFY(!w->Guardado());
        QCOMPARE(Cabecera().value(0), QStringLiteral("30700000011|01/10/2026|05/10/2026|0001-5|100|21"));
    }

    // VAT lines on this window: saved header first, the line under the number on screen; the
    // last line deleted writes IVARIN 0 and leaves the focus on the list.
    void lineasIVA()
    {
        Libro(true);
        auto w = Abrir();
        w->txtIVCDETIVA->setFocus();
        Teclear(QStringLiteral("21"));
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("debe seleccionar un valor gravado"));
        w->cboGravadoIVA->setFocus();
        Tecla(Qt::Key_End);
        Tecla(Qt::Key_Return); // this window's combo moves on with Enter
        QCOMPARE(Foco(), w->txtIVCDETIVA);
        Reescribir(QStringLiteral("10,5"));
        Tecla(Qt::Key_Return);
        QCOMPARE(w->txtIVCDETVLR->text(), QStringLiteral("10,50"));
        Campo(w->TxtGrav, QStringLiteral("0"));
        w->txtIVCDETVLR->setFocus();
        Tecla(Qt::Key_Return);
        QCOMPARE(libro->Filas(QStringLiteral("select IVCdetId,IVCDETDSC from IVC_DetIVA order by IVCdetId")),
                 (QStringList{QStringLiteral("3|Iva 21"), QStringLiteral("4|Gravado 100,00 IVA del 10,5")}));
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/11/2026|05/10/2026|0001-5|100|31,5")});
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("136,50"));

        for (int i = 0; i < 2; ++i) {
            w->lstIVC_DetIVA->setFocus();
            Tecla(Qt::Key_Delete);
            QCOMPARE(Foco(), w->lstIVC_DetIVA);
        }
        QCOMPARE(libro->Contar(QStringLiteral("IVC_DetIVA")), 0L);
        QCOMPARE(Cabecera().value(0).section(u'|', 5), QStringLiteral("0"));
        QVERIFY(w->cboProv->isEnabled());
    }
};

QTEST_MAIN(TstFrmMODConcepto)
#include "tst_frmmodconcepto.moc"
