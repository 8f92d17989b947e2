// One invoice from the main window: Insert opens the add window (modal), the invoice is typed
// and saved, the list shows it with its totals; Enter on its row opens the modify window
// filled from that row.

#include "LibroFacturas.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"

class TstCaminoFactura : public QObject, Facturas
{
    Q_OBJECT
private slots:
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
            Teclas({"0001-00000099", Qt::Key_Return});
            Teclas({"400", Qt::Key_Return});
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

        QStringList fila;
        for (int c = 0; c <= 10; ++c)
            fila << m.Grd->TextMatrix(1, c);
        QCOMPARE(fila, (QStringList{"15/11/26", "B", "0001-00000099", "30700000022", "Beta", "1000,00", "00,00",
                                    "210,00", "0", "1210,00", "210"}));
        QCOMPARE(QString::number(m.Grd->Rows()) + u' ' + m.LbTot->text(), "2 1210,00");

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

QTEST_MAIN(TstCaminoFactura)
#include "tst_caminofactura.moc"
