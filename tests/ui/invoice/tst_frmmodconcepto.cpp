// The modify-invoice window driven from the keyboard over a real book: opening from a list
// row, the update addressed by the opening supplier and number, the period change, and the
// ways out.

#include "LibroFacturas.h"

#include <QScrollBar>

class TstFrmMODConcepto : public QObject, Facturas
{
    Q_OBJECT

    // Acme's invoice listed under October 2026 while the session's period is November 2026,
    // taxed 100 and VAT 21; with its taxed amount and a VAT line (id 3) when said.
    std::unique_ptr<frmMODConcepto> Abrir(bool conLineas)
    {
        Libro();
        FacturaDeAcme(100, 21, 0, conLineas);
        libro->Ejecutar(QStringLiteral("update IVC set DESCRIPCION = ' servicio ', DESCRIPCIONEXTRA = null"));
        if (conLineas)
            libro->LineaIVA(kEmpresa, kAcme, kNumero, 3, 21, QStringLiteral("Iva 21"), 21);
        return Modificar(100, 21, 0);
    }
    QStringList Cabecera() const
    {
        return Filas(QStringLiteral("select PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSNROFAC,IVCDGRAVAD,IVARIN from IVC "
                                    "order by IVCSNROFAC"));
    }

private slots:
    // Every save checks "Gravado" (it opens empty); a date the book cannot read ends the save with
    // the error report; a save moves the invoice into the current period.
    void guardar()
    {
        auto w = Abrir(true);
        w->cboProv->setFocus();
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("El Valor Gravado debe ser númerico"));
        Campo(w->TxtGrav, QStringLiteral("0"));
        Campo(w->TxtFecha, QStringLiteral("05'10"));
        Tecla(Qt::Key_F11);
        QVERIFY(Aviso().endsWith(Con(QStringLiteral(" - seccion [MORLA.frmModConcepto.IVAValidad]"), vb::vbCritical)));
        QVERIFY(!w->Guardado());
        QCOMPARE(Cabecera().value(0), QStringLiteral("30700000011|01/10/2026|05/10/2026|0001-5|100|21"));

        Msg().Limpiar();
        Campo(w->TxtFecha, QStringLiteral("05/10/26"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/11/2026|05/10/2026|0001-5|100|21")});
        // Every F11 reloads the main window, whatever the save did.
        QCOMPARE(QPair(principal.recargas, principal.totales), QPair(3, 3));
        QVERIFY(w->isVisible());
        Tecla(Qt::Key_Escape);
        QVERIFY(!w->isVisible() && Msg().mostrados.isEmpty());
        QCOMPARE(principal.recargas, 4);
    }

    // A voucher type outside the list, as books written elsewhere carry, survives a save.
    void tipoFueraDeLaLista()
    {
        Libro();
        FacturaDeAcme(100, 21, 0, false);
        libro->Ejecutar(QStringLiteral("update IVC set IVCSTIPFAC = 'X'"));
        auto w = Modificar(100, 21, 0, kNumero, QStringLiteral("X"));
        QCOMPARE(w->cboTipo->currentText(), QStringLiteral("X"));
        Campo(w->TxtGrav, QStringLiteral("0"));
        Tecla(Qt::Key_F11);
        QVERIFY2(Msg().mostrados.isEmpty(), qPrintable(Msg().Ultimo()));
        QCOMPARE(Filas(QStringLiteral("select IVCSTIPFAC, IVCFPERIOD from IVC")), QStringList{QStringLiteral("X|01/11/2026")});
    }

    // An invoice without taxed amounts or VAT lines opens with the combos empty, the number and
    // the supplier free, and the header's VAT total rewritten as 0; the descriptions are read
    // trimmed and the period change proposes the current period. A number the supplier
    // already has is refused.
    void numeroDuplicado()
    {
        auto w = Abrir(false);
        QCOMPARE((QStringList{w->cboProv->currentText(), w->cboIdProv->currentText(), w->cboTipo->currentText(),
                              w->TxtFecha->text(), w->txtDescripcion->text(), w->cboMES->currentText(), w->TxtYear->text()}),
                 (QStringList{"Acme", kAcme, "B", "05/10/26", "servicio", "NOVIEMBRE", "2026"}));
        QCOMPARE(w->cboGravadoIVA->count() + w->cboGravadoIngBru->count(), 0);
        QVERIFY(!w->TxtNumero->isReadOnly() && w->cboProv->isEnabled());
        QCOMPARE(Foco(), w->cboProv);
        QCOMPARE(w->lbTotalFactura->text(), QStringLiteral("05,00"));
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/10/2026|05/10/2026|0001-5|100|0")});
        libro->Factura(kEmpresa, kAcme, QStringLiteral("01/09/2026"), QStringLiteral("02/09/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-6"), 1, 0, 0, 0);
        libro->Factura(kEmpresa, kBeta, QStringLiteral("01/09/2026"), QStringLiteral("02/09/2026"), QStringLiteral("A"),
                       QStringLiteral("0001-8"), 1, 0, 0, 0);
        Campo(w->TxtGrav, QStringLiteral("0"));
        Campo(w->TxtNumero, QStringLiteral("0001-6"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Aviso(), Con(QStringLiteral("Este Numero de factura ya fue cargada [ 0001-6 ]\r\n"
                                             "EL DIA 01/11/2026\r\nFECHA DE FACTURA 02/09/2026\r\nEL PERIODO 09/2026"), vb::vbExclamation));
        QVERIFY(!w->Guardado());
        QCOMPARE(Contar(QStringLiteral("IVC"), QStringLiteral("IVCSNROFAC = '0001-5'")), 1L);

        // Back to the opening number: no check. Another supplier's number is free.
        Reescribir(kNumero);
        Tecla(Qt::Key_F11);
        QVERIFY(w->Guardado());
        Reescribir(QStringLiteral("0001-8"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().mostrados.size(), 1);
        QCOMPARE(Contar(QStringLiteral("IVC"), QStringLiteral("PRVSNRCUIT = '30700000011' and IVCSNROFAC = '0001-8'")), 1L);
    }

    void cambioDeProveedor()
    {
        Libro();
        FacturaDeAcme(100, 21, 0);
        auto w = Modificar(100, 21, 0);
        Campo(w->TxtGrav, QStringLiteral("0"));
        w->cboProv->setFocus();
        Tecla(Qt::Key_Down); // Beta
        Tecla(Qt::Key_F11);
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000022|01/11/2026|05/10/2026|0001-5|100|0")});
        QCOMPARE(Filas(QStringLiteral("select PRVSNRCUIT from IVC_Gravado")), QStringList{kAcme});
        // A second save still looks for the row under the opening supplier: nothing changes.
        Campo(w->TxtNoGrav, QStringLiteral("9"));
        Tecla(Qt::Key_F11);
        QCOMPARE(Filas(QStringLiteral("select IVCDNOGRAV from IVC")), QStringList{QStringLiteral("5")});
    }

    // March of the year below, by the month list and the year's spin bar.
    void cambiarPeriodo()
    {
        auto w = Abrir(true);
        w->cboMES->setFocus();
        Teclas({Qt::Key_Home, Qt::Key_Down, Qt::Key_Down});
        w->VScroll->setFocus();
        Tecla(Qt::Key_Down);
        QCOMPARE(w->TxtYear->text(), QStringLiteral("2025"));
        QVERIFY(TabHasta(w->cmdCambiarPeriodo));
        Tecla(Qt::Key_Return);
        QCOMPARE(Aviso(), Con(QStringLiteral("Se ha cambiado CORRECTAMENTE el período"), vb::vbInformation));
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/03/2025|05/10/2026|0001-5|100|21")});
        QCOMPARE(QPair(w->isVisible(), principal.recargas), QPair(false, 1));
    }

    // "Cerrar" asks when nothing was saved and deletes nothing; Esc closes without asking.
    void salidas()
    {
        auto w = Abrir(true);
        Msg().Responder(vb::vbNo);
        w->cmdCerrar->setFocus();
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().mostrados.size(), 1); // the question, as on the add window
        QVERIFY(w->isVisible());
        Tecla(Qt::Key_Return);
        QCOMPARE(QPair(w->isVisible(), Contar(QStringLiteral("IVC_Gravado"))), QPair(false, 1L));

        Msg().Limpiar();
        auto w2 = Modificar(100, 21, 0);
        Tecla(Qt::Key_Escape);
        QVERIFY(!w2->isVisible() && Msg().mostrados.isEmpty());
        QCOMPARE(principal.recargas, 0);
    }

    // VAT lines on this window: its taxed-amount combo moves on with Enter; the line goes in after
    // the header update; the last line deleted writes a VAT total of 0.
    void lineasIVA()
    {
        auto w = Abrir(true);
        Campo(w->txtIVCDETIVA, QStringLiteral("21"));
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().Ultimo(), QStringLiteral("debe seleccionar un valor gravado"));
        Campo(w->TxtGrav, QStringLiteral("0"));
        w->cboGravadoIVA->setFocus();
        Teclas({Qt::Key_End, Qt::Key_Return, "10,5", Qt::Key_Return, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
        QCOMPARE(Filas(QStringLiteral("select IVCdetId,IVCDETDSC from IVC_DetIVA order by IVCdetId")),
                 (QStringList{QStringLiteral("3|Iva 21"), QStringLiteral("4|Gravado 100,00 IVA del 10,5")}));
        QCOMPARE(Cabecera(), QStringList{QStringLiteral("30700000011|01/11/2026|05/10/2026|0001-5|100|31,5")});
        Borrar(w->lstIVC_DetIVA, Msg());
        Borrar(w->lstIVC_DetIVA, Msg());
        QCOMPARE(Cabecera().value(0).section(u'|', 5), QStringLiteral("0"));
        QVERIFY(w->cboProv->isEnabled());
    }
};

QTEST_MAIN(TstFrmMODConcepto)
#include "tst_frmmodconcepto.moc"
