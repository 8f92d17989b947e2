// One invoice from the main window: Insert opens the add window (modal), the invoice is typed
// and saved, the list shows it with its totals; Enter on its row opens the modify window
// filled from that row.

#include "LibroFacturas.h"
#include "Teclado.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/invoice/frmMODConcepto.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/frmMAIN.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

class TstCaminoFactura : public QObject
{
    Q_OBJECT

    // Runs the steps on the modal window that the next key opens (scheduled right before that
    // key: the steps run once the window's own event loop has started).
    template <class Ventana, class Pasos>
    static void EnLaVentanaModal(bool &hecho, Pasos pasos)
    {
        QTimer::singleShot(0, [&hecho, pasos] {
            auto *w = qobject_cast<Ventana *>(QApplication::activeModalWidget());
            if (!w)
                return;
            w->activateWindow();
            if (!QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }))
                return;
            pasos(*w);
            hecho = true;
            if (w->isVisible()) // a failed step leaves the window open: end it
                w->done(0);
        });
    }

private slots:
    void caminoDeUnaFactura()
    {
        LibroDePrueba libro;
        LlenarLibro(libro);
        frmMAIN m(libro.S());
        m.show();
        QVERIFY(QTest::qWaitForWindowActive(&m));
        QVERIFY(m.RecargarGrilla());
        m.Grd->setFocus();

        bool agregada = false;
        EnLaVentanaModal<frmADDConcepto>(agregada, [&libro](frmADDConcepto &w) {
            QCOMPARE(Foco(), w.cboProv);
            QCOMPARE(w.TxtFecha->text(), QStringLiteral("21/11/2026"));
            Teclear(QStringLiteral("B")); // Beta
            Tecla(Qt::Key_Return);
            QCOMPARE(Foco(), w.TxtFecha);
            Teclear(QStringLiteral("15/11/2026"));
            Tecla(Qt::Key_Return);
            QCOMPARE(Foco(), w.cboTipo);
            Tecla(Qt::Key_Down); // "B"
            Tecla(Qt::Key_Return);
            QCOMPARE(Foco(), w.TxtNumero);
            Teclear(QStringLiteral("0001-00000099"));
            Tecla(Qt::Key_Return);
            QCOMPARE(Foco(), w.TxtGrav);
            Teclear(QStringLiteral("400"));
            Tecla(Qt::Key_Return);
            Reescribir(QStringLiteral("600"));
            Tecla(Qt::Key_Return);
            QCOMPARE(w.lbGravTotal->text(), QStringLiteral("1000,00"));
            QVERIFY(w.TxtNumero->isReadOnly());
            QCOMPARE(w.cboGravadoIngBru->itemText(2), QStringLiteral("[Total Gravados]"));

            QVERIFY(TabHasta(w.cboGravadoIVA));
            Tecla(Qt::Key_End);
            Tecla(Qt::Key_Tab);
            QCOMPARE(Foco(), w.txtIVCDETIVA);
            Teclear(QStringLiteral("21"));
            Tecla(Qt::Key_Return);
            QCOMPARE(w.txtIVCDETVLR->text(), QStringLiteral("210,00"));
            QCOMPARE(w.txtIVCDETDSC->text(), QStringLiteral("Gravado 1000,00 IVA del 21"));
            QVERIFY(TabHasta(w.txtIVCDETVLR));
            Tecla(Qt::Key_Return);

            // The first VAT line wrote the header, then the line.
            QCOMPARE(libro.Filas(QStringLiteral("select PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,"
                                                "IVCDGRAVAD,IVCDNOGRAV,IVARIN,IVCFALTA from IVC")),
                     QStringList{QStringLiteral("30700000022|01/11/2026|15/11/2026|B|0001-00000099|1000|0|210|21/11/2026")});
            QCOMPARE(libro.Filas(QStringLiteral("select IVCdetId,IVCDETIVA,IVCDETDSC,IVCDETVLR from IVC_DetIVA")),
                     QStringList{QStringLiteral("1|21|Gravado 1000,00 IVA del 21|210")});
            QCOMPARE(w.lbIVATotal->text(), QStringLiteral("210,00"));
            QCOMPARE(w.lbTotalFactura->text(), QStringLiteral("1210,00"));
            QVERIFY(!w.cboProv->isEnabled());
            QCOMPARE(Foco(), w.txtIVCDETIVA);

            QVERIFY(TabHasta(w.cmdGuardar));
            Tecla(Qt::Key_Return);
            QVERIFY(w.isVisible());
            Tecla(Qt::Key_Tab);
            QCOMPARE(Foco(), w.cmdCerrar);
            Tecla(Qt::Key_Return); // saved: no question
            QVERIFY(!w.isVisible());
        });
        Tecla(Qt::Key_Insert);
        QVERIFY(agregada);
        QVERIFY(libro.Mensajes().mostrados.isEmpty());

        QCOMPARE(m.Grd->Rows(), 2);
        QStringList fila;
        for (int c = 0; c <= 10; ++c)
            fila << m.Grd->TextMatrix(1, c);
        QCOMPARE(fila, (QStringList{"15/11/26", "B", "0001-00000099", "30700000022", "Beta", "1000,00", "00,00",
                                    "210,00", "0", "1210,00", "210"}));
        QCOMPARE(m.lbTGrav->text(), QStringLiteral("1000,00"));
        QCOMPARE(m.lbIva21->text(), QStringLiteral("210,00"));
        QCOMPARE(m.LbTot->text(), QStringLiteral("1210,00"));

        m.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m));
        m.Grd->setFocus();
        bool abierta = false;
        EnLaVentanaModal<frmMODConcepto>(abierta, [](frmMODConcepto &w) {
            QCOMPARE(w.TxtNumero->text(), QStringLiteral("0001-00000099"));
            QCOMPARE(w.cboProv->currentText(), QStringLiteral("Beta"));
            QCOMPARE(w.cboTipo->currentText(), QStringLiteral("B"));
            QCOMPARE(w.TxtFecha->text(), QStringLiteral("15/11/26"));
            QCOMPARE(w.lstGravado->count(), 2);
            QCOMPARE(w.lbTotalFactura->text(), QStringLiteral("1210,00"));
            Tecla(Qt::Key_Escape);
            QVERIFY(!w.isVisible());
        });
        Tecla(Qt::Key_Return);
        QVERIFY(abierta);
        QCOMPARE(libro.S().NroFacSeleccionada, QStringLiteral("0001-00000099"));
        QCOMPARE(libro.S().PrvCuitSeleccionado, QStringLiteral("30700000022"));
    }
};

QTEST_MAIN(TstCaminoFactura)
#include "tst_caminofactura.moc"
