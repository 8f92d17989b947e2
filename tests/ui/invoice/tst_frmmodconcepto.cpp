// The modify-invoice window driven from the keyboard over a real book: opening from a list
// row, the update addressed by the opening supplier and number, the period change, and the
// ways out. And one invoice's way from the main window: Insert opens the add window (modal), the
// invoice is typed and saved, the list shows it; Enter on its row opens this window filled from
// that row.

#include "LibroFacturas.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"

#include <QScrollBar>

class TstFrmMODConcepto : public QObject, Facturas
{
    Q_OBJECT

    // Acme's invoice listed under October 2026 while the session's period is November 2026,
    // taxed 100 and VAT 21; with its taxed amount and a VAT line (id 3) when said. Its voucher type
    // is outside the list, as books written elsewhere carry.
    std::unique_ptr<frmMODConcepto> Abrir(bool conLineas)
    {
        Libro();
        FacturaDeAcme(100, 21, 0, conLineas);
        libro->Ejecutar("update IVC set DESCRIPCION = ' servicio ', DESCRIPCIONEXTRA = null, IVCSTIPFAC = 'X'");
        if (conLineas)
            libro->LineaIVA(kEmpresa, kAcme, kNumero, 3, 21, "Iva 21", 21);
        return Modificar(100, 21, 0, "X");
    }
    // The header rows, by number.
    QStringList Cabecera() const
    {
        return Filas("select PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSNROFAC,IVCDGRAVAD,IVARIN from IVC order by 4");
    }

private slots:
    // Every save checks "Gravado" (it opens empty); a date the book cannot read ends the save with
    // the error report; a save moves the invoice into the current period. Then VAT lines: the
    // taxed-amount combo moves on with Enter; the line goes in after the header update; the last
    // line deleted writes a VAT total of 0.
    void guardarYLineasIVA()
    {
        auto w = Abrir(true);
        Tecla(Qt::Key_F11);
        QCOMPARE(Msg().Ultimo(), "El Valor Gravado debe ser númerico");
        Campo(w->TxtGrav, "0");
        Campo(w->TxtFecha, "05'10");
        Tecla(Qt::Key_F11);
        QVERIFY(Msg().UltimoEstilo() == vb::vbCritical && !w->Guardado()); // the error report
        QCOMPARE(Cabecera().value(0), "30700000011|01/10/2026|05/10/2026|0001-5|100|21");

        Msg().Limpiar();
        Campo(w->TxtFecha, "05/10/26");
        Tecla(Qt::Key_F11);
        QCOMPARE(Cabecera(), QStringList{"30700000011|01/11/2026|05/10/2026|0001-5|100|21"});
        QCOMPARE(Filas("select IVCSTIPFAC from IVC"), QStringList{"X"}); // the type survives
        // Every F11 reloads the main window, whatever the save did.
        QCOMPARE((QList<int>{principal.recargas, principal.totales, w->isVisible()}), (QList<int>{3, 3, 1}));

        Campo(w->txtIVCDETIVA, "21");
        Tecla(Qt::Key_Return);
        QCOMPARE(Msg().Ultimo(), "debe seleccionar un valor gravado");
        w->cboGravadoIVA->setFocus();
        Teclas({Qt::Key_End, Qt::Key_Return, "10,5", Qt::Key_Return, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
        QCOMPARE(Filas("select IVCdetId,IVCDETDSC from IVC_DetIVA order by IVCdetId"),
                 (QStringList{"3|Iva 21", "4|Gravado 100,00 IVA del 10,5"}));
        QCOMPARE(Cabecera(), QStringList{"30700000011|01/11/2026|05/10/2026|0001-5|100|31,5"});
        Borrar(w->lstIVC_DetIVA, Msg());
        Borrar(w->lstIVC_DetIVA, Msg());
        QVERIFY(Cabecera().value(0).endsWith("|100|0") && w->cboProv->isEnabled());
        Msg().Limpiar();
        Tecla(Qt::Key_Escape);
        QVERIFY(!w->isVisible() && Msg().mostrados.isEmpty() && principal.recargas == 4);
    }

    // An invoice without taxed amounts or VAT lines opens with the combos empty, the number and
    // the supplier free, and the header's VAT total rewritten as 0; the descriptions are read
    // trimmed and the period change proposes the current period. A number the supplier
    // already has is refused; a new number and supplier are written on the row found by the
    // opening ones, which later saves look for again.
    void numeroDuplicado()
    {
        auto w = Abrir(false);
        const int bases = w->cboGravadoIVA->count() + w->cboGravadoIngBru->count();
        QCOMPARE((QStringList{w->cboProv->currentText(), w->cboIdProv->currentText(), w->cboTipo->currentText(),
                              w->TxtFecha->text(), w->txtDescripcion->text(), w->cboMES->currentText(),
                              w->TxtYear->text(), w->lbTotalFactura->text(), QString::number(bases)}),
                 (QStringList{"Acme", kAcme, "X", "05/10/26", "servicio", "NOVIEMBRE", "2026", "05,00", "0"}));
        QVERIFY(!w->TxtNumero->isReadOnly() && w->cboProv->isEnabled() && Foco() == w->cboProv);
        QCOMPARE(Cabecera(), QStringList{"30700000011|01/10/2026|05/10/2026|0001-5|100|0"});
        libro->Factura(kEmpresa, kAcme, "01/09/2026", "02/09/2026", "A", "0001-6", 1, 0, 0, 0);
        Campo(w->TxtGrav, "0");
        Campo(w->TxtNumero, "0001-6");
        Tecla(Qt::Key_F11);
        QVERIFY(Msg().Ultimo().startsWith("Este Numero de factura ya fue cargada [ 0001-6 ]"));
        QCOMPARE(QPair(w->Guardado(), Contar("IVC", "IVCSNROFAC = '0001-5'")), QPair(false, 1L));

        Reescribir("0001-8");
        w->cboProv->setFocus();
        Teclas({Qt::Key_Down, Qt::Key_F11}); // Beta
        QCOMPARE(Msg().mostrados.size(), 1);
        QCOMPARE(Cabecera().value(1), "30700000022|01/11/2026|05/10/2026|0001-8|0|0");
        Campo(w->TxtNoGrav, "9");
        Tecla(Qt::Key_F11);
        QCOMPARE(Contar("IVC", "IVCDNOGRAV = 9"), 0L);
    }

    // "Cerrar" asks when nothing was saved (as on the add window) but deletes nothing; Esc asks
    // nothing; neither reloads the main window when nothing was saved. The period change (here to
    // March of the year below, by the month list and the year's spin bar) closes the window.
    void salidasYCambioDePeriodo()
    {
        auto w = Abrir(true);
        w->cmdCerrar->setFocus();
        Tecla(Qt::Key_Return);
        QCOMPARE(Aviso(), Con("Desea salir sin guardar los datos", vb::vbYesNo + vb::vbQuestion));
        QCOMPARE(QPair(w->isVisible(), Contar("IVC_Gravado")), QPair(false, 1L));
        Msg().Limpiar();
        auto w2 = Modificar(100, 21, 0);
        Tecla(Qt::Key_Escape);
        QVERIFY(!w2->isVisible() && Msg().mostrados.isEmpty() && principal.recargas == 0);

        auto w3 = Modificar(100, 21, 0);
        w3->cboMES->setFocus();
        Teclas({Qt::Key_Home, Qt::Key_Down, Qt::Key_Down});
        w3->VScroll->setFocus();
        Tecla(Qt::Key_Down);
        QVERIFY(TabHasta(w3->cmdCambiarPeriodo));
        Tecla(Qt::Key_Return);
        QCOMPARE(Aviso(), Con("Se ha cambiado CORRECTAMENTE el período", vb::vbInformation));
        QCOMPARE(Cabecera(), QStringList{"30700000011|01/03/2025|05/10/2026|0001-5|100|21"});
        QCOMPARE(QPair(w3->isVisible(), principal.recargas), QPair(false, 1));
    }

    void caminoDeUnaFactura()
    {
        Libro();
        frmMAIN m(libro->S());
        Mostrar(m);
        QVERIFY(m.RecargarGrilla());
        m.Grd->setFocus();

        bool agregada = false;
        AlAbrirse<frmADDConcepto>([this, &agregada](frmADDConcepto &w) {
            QCOMPARE(Foco()->objectName() + u' ' + w.TxtFecha->text(), "cboProv 21/11/2026"); // today
            // Enter moves on field by field; the header row below shows where each text went.
            Teclas({"B", Qt::Key_Return}); // Beta
            Teclas({"15/11/2026", Qt::Key_Return, Qt::Key_Down, Qt::Key_Return}); // type "B"
            Teclas({"0001-00000099", Qt::Key_Return, "400", Qt::Key_Return});
            Reescribir("600");
            Tecla(Qt::Key_Return);

            // The VAT over "[Total Gravados]", the last item of the base list.
            QVERIFY(TabHasta(w.cboGravadoIVA));
            Teclas({Qt::Key_End, Qt::Key_Tab, "21", Qt::Key_Return});
            QCOMPARE(w.txtIVCDETVLR->text() + u'|' + w.txtIVCDETDSC->text(), "210,00|Gravado 1000,00 IVA del 21");
            QVERIFY(TabHasta(w.txtIVCDETVLR));
            Tecla(Qt::Key_Return);
            // The gross-income calculator over the same base proposes without storing.
            QVERIFY(TabHasta(w.cboGravadoIngBru));
            Teclas({Qt::Key_End, Qt::Key_Tab, "3", Qt::Key_Return});
            QCOMPARE(w.txtIVC_IngBValor->text() + u'|' + w.txtIVC_IngBDesc->text(), "30,00|1000,00 Ing Brutos del 3");

            // The first VAT line wrote the header.
            QCOMPARE(Filas(QStringLiteral("select PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,"
                                          "IVCDGRAVAD,IVCDNOGRAV,IVARIN,IVCFALTA from IVC")),
                     QStringList{"30700000022|01/11/2026|15/11/2026|B|0001-00000099|1000|0|210|21/11/2026"});

            QVERIFY(TabHasta(w.cmdGuardar));
            Teclas({Qt::Key_Return, Qt::Key_Tab});
            QVERIFY(w.isVisible() && Foco() == w.cmdCerrar);
            Tecla(Qt::Key_Return); // saved: no question
            agregada = !w.isVisible();
        });
        Tecla(Qt::Key_Insert);
        QVERIFY(agregada && Msg().mostrados.isEmpty());

        // The list reloaded (its columns are tested with the main window).
        QCOMPARE(QString::number(m.Grd->Rows()) + u' ' + m.Grd->TextMatrix(1, 2) + u' ' + m.LbTot->text(),
                 "2 0001-00000099 1210,00");

        Mostrar(m);
        m.Grd->setFocus();
        bool abierta = false;
        AlAbrirse<frmMODConcepto>([&abierta](frmMODConcepto &w) {
            QCOMPARE((QStringList{w.cboProv->currentText(), w.cboTipo->currentText(), w.TxtFecha->text(),
                                  QString::number(w.lstGravado->count()), w.lbTotalFactura->text()}),
                     (QStringList{"Beta", "B", "15/11/26", "2", "1210,00"}));
            Tecla(Qt::Key_Escape);
            abierta = !w.isVisible();
        });
        Tecla(Qt::Key_Return);
        QVERIFY(abierta);
        QCOMPARE(libro->S().NroFacSeleccionada + u'|' + libro->S().PrvCuitSeleccionado, "0001-00000099|" + kBeta);
    }
};

QTEST_MAIN(TstFrmMODConcepto)
#include "tst_frmmodconcepto.moc"
