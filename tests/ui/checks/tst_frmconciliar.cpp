// F8 on the main window: the list asked for through the open dialog, the three groups in the
// grid, Space, F11, Enter and Esc; and the voucher F11 brought in compared row by row with the
// same voucher typed in the add window.

#include "checks/ListaRecibida.h"
#include "app/core/DialogoAbrir.h"
#include "ui/checks/frmCONCILIAR.h"
#include "ui/invoice/LibroFacturas.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"

#include <QHeaderView>

namespace {
struct AbrirGuion : DialogoAbrir {
    QString respuesta;
    QString Abrir(const QString &, const QList<FiltroArchivo> &, const QString &, QWidget *) override { return respuesta; }
};

// Both books: Acme already has lines 3 (VAT) and 2 (gross income) on an October invoice.
void FacturaDeOctubre(LibroDePrueba &l)
{
    l.Factura(kEmpresa, kAcme, "01/10/2026", "05/10/2026", "A", kNumero, 100, 0, 21, 1);
    l.LineaIVA(kEmpresa, kAcme, kNumero, 3, 21, "Iva del 21:", 21);
    l.LineaIB(kEmpresa, kAcme, kNumero, 2, 1, "IIBB", 1);
}

// Rows of the grid as "box|date|number|concept|book|file|difference|remark" (box "x" ticked, "o"
// clear, empty without one); a group heading's text stands in the box column.
QStringList Grilla(const frmCONCILIAR &w)
{
    QStringList filas;
    for (int k = 0; k < w.grdConciliacion->topLevelItemCount(); ++k) {
        const QTreeWidgetItem *i = w.grdConciliacion->topLevelItem(k);
        const QVariant caja = i->data(frmCONCILIAR::cCarga, Qt::CheckStateRole);
        QStringList c{caja.isValid() ? (caja.toInt() == Qt::Checked ? "x" : "o") : i->text(frmCONCILIAR::cCarga)};
        for (int col : {frmCONCILIAR::cFecha, frmCONCILIAR::cNumero, frmCONCILIAR::cConcepto, frmCONCILIAR::cLibro,
                        frmCONCILIAR::cArchivo, frmCONCILIAR::cDiferencia, frmCONCILIAR::cObservacion})
            c << i->text(col);
        filas << c.join(u'|');
    }
    return filas;
}
} // namespace

class TstFrmConciliar : public QObject, Facturas
{
    Q_OBJECT
private slots:
    void cleanup() { libro.reset(); }
    void f8()
    {
        Libro();
        FacturaDeOctubre(*libro);
        libro->Factura(kEmpresa, kBeta, "01/11/2026", "05/11/2026", "B", "0002-00000005", 100, 0, 21, 0);
        libro->LineaIVA(kEmpresa, kBeta, "0002-00000005", 1, 27, "Iva del 27:", 21);
        libro->Factura(kEmpresa, kBeta, "01/11/2026", "09/11/2026", "A", "0003-00000001", 40, 0, 0, 0);
        // Acme's voucher A 0003-00000077: taxed 200 at 10,5 % and 1000 at 21 %, untaxed 50, other taxes 30.
        const Recibido a77{"10/11/2026", "1 - Factura A", 3, 77, kAcme, "Acme", {{10.5, 200}, {21, 1000}}, 50, 0, 30};
        const Recibido nota{"07/11/2026", "3 - Nota de Crédito A", 1, 30, kAcme, "Acme", {{21, 50}}, 0, 0, 20};
        AbrirGuion dialogo;
        libro->S().dialogoAbrir = &dialogo;
        dialogo.respuesta = libro->Carpeta() + "lista.xlsx";
        const Recibido beta{"05/11/2026", "6 - Factura B", 2, 5, kBeta, "Beta", {{21, 100}}};
        QVERIFY(EscribirXlsx(dialogo.respuesta, kEmpresa, {a77, nota, beta}));

        std::unique_ptr<LibroDePrueba> cargado; // this book, once F11 has brought the voucher in
        frmMAIN m(libro->S());
        Mostrar(m);
        QVERIFY(m.RecargarGrilla());
        const int filas = m.Grd->Rows();
        m.Grd->setFocus();
        bool visto = false;
        AlAbrirse<frmCONCILIAR>([&](frmCONCILIAR &w) {
            QCOMPARE(Grilla(w), QStringList({
                "En el archivo y no en el libro: 2|||||||",
                "x|10/11/2026|0003-00000077|Total||1511,00||Revisar: otros tributos 30,00 como Ingresos Brutos",
                "|07/11/2026|0001-00000030|Total||80,50||no se puede cargar (tipo 3 - Nota de Crédito A) - "
                "Revisar: otros tributos 20,00 como Ingresos Brutos",
                "En el libro y no en el archivo: 1|||||||",
                "|09/11/2026|0003-00000001|Total|40,00|||",
                "En ambos con diferencias: 1|||||||",
                "|05/11/2026|0002-00000005|IVA 21%|00,00|21,00|21,00|",
                "|||IVA 27%|21,00|00,00|-21,00|"}));
            QCOMPARE(Foco(), w.grdConciliacion);
            // Space clears and ticks the current voucher's box; the credit note has none.
            Tecla(Qt::Key_Space);
            QVERIFY(Grilla(w)[1].startsWith("o|"));
            Teclas({Qt::Key_Space, Qt::Key_Down, Qt::Key_Space});
            QVERIFY(Grilla(w)[1].startsWith("x|") && Grilla(w)[2].startsWith("|"));
            Tecla(Qt::Key_F11);
            QCOMPARE(Msg().Ultimo(), "Comprobantes cargados en el período 11/2026: 1.");
            QCOMPARE(Grilla(w)[0], "En el archivo y no en el libro: 1|||||||");
            // Enter on a book invoice opens it in the modify window.
            while (w.grdConciliacion->currentItem()->text(frmCONCILIAR::cNumero) != "0003-00000001")
                Tecla(Qt::Key_Down);
            QString abierta;
            AlAbrirse<frmMODConcepto>([&](frmMODConcepto &mod) {
                abierta = mod.TxtNumero->text();
                QTest::keyClick(&mod, Qt::Key_Escape);
            });
            Tecla(Qt::Key_Return);
            QCOMPARE(abierta, "0003-00000001");
            QVERIFY(QTest::qWaitForWindowActive(&w));
            QCOMPARE(Foco(), w.grdConciliacion);
            Tecla(Qt::Key_Escape);
            QVERIFY(!w.isVisible());
            visto = true;
        });
        Tecla(Qt::Key_F8);
        QVERIFY(visto);
        QCOMPARE(m.Grd->Rows(), filas + 1); // F11 reloaded the main list: Acme's new invoice is on it

        // The same voucher typed in the add window on a book as it was: the rows are the same.
        cargado = std::move(libro);
        Libro();
        FacturaDeOctubre(*libro);
        {
            auto w = Agregar();
            Campo(w->TxtFecha, "10/11/2026");
            Campo(w->TxtNumero, "0003-00000077");
            Campo(w->TxtNoGrav, "50");
            Gravado(*w, "200");
            Gravado(*w, "1000");
            LineaIVA(*w, "10,5", "21");
            LineaIVA(*w, "21", "210");
            w->cboGravadoIngBru->setFocus();
            Tecla(Qt::Key_End);
            // The description has an accented letter, typed as its key event (keyClicks takes ASCII only).
            Campo(w->txtIVC_IngB, "");
            Campo(w->txtIVC_IngBDesc, "Otros tributos (seg");
            QTest::sendKeyEvent(QTest::Click, Foco(), Qt::Key_Uacute, QStringLiteral("ú"), Qt::NoModifier);
            Teclear("n ARCA)");
            Campo(w->txtIVC_IngBValor, "30");
            Tecla(Qt::Key_Return);
            Guardar(*w);
            QCOMPARE(w->lbTotalFactura->text(), "1511,00");
        }
        for (const char *tabla : {"IVC", "IVC_Gravado", "IVC_DetIVA", "IVC_DetIngBrutos"}) {
            const QString sql = QStringLiteral("select * from %1 where PRVSNRCUIT = '%2' order by 1, 2, 3, 4, 5")
                                    .arg(tabla, kAcme);
            QCOMPARE(cargado->Filas(sql), libro->Filas(sql));
        }
    }
};

QTEST_MAIN(TstFrmConciliar)
#include "tst_frmconciliar.moc"
