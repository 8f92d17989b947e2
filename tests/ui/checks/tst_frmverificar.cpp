// The period check window, driven from the main window with real keys on a real book: F9 opens
// it with the errors first, Enter opens the invoice of a finding in the modify window, and once
// the invoice is fixed and saved the finding is gone. Esc closes it.

#include "ui/checks/frmVERIFICAR.h"
#include "ui/invoice/Teclado.h"
#include "ui/invoice/frmMODConcepto.h"
#include "ui/main/Inicio.h"

#include <QPointer>
#include <QTableWidget>

namespace {
const QString kEmp = QStringLiteral("30712345671");
const QString kProv = QStringLiteral("30700000016");
const QString kBorrado = QStringLiteral("30700000024"); // a supplier no longer in the list

// An invoice of November 2026 with its taxed-amount line and, when iva is not 0, its VAT line.
void Factura(LibroDePrueba &l, const QString &prv, const QString &numero, const QString &fecha, double gravado, double iva)
{
    l.Factura(kEmp, prv, QStringLiteral("01/11/2026"), fecha, QStringLiteral("A"), numero, gravado, 0, iva, 0);
    l.LineaGravado(kEmp, prv, numero, 1, gravado);
    if (iva != 0)
        l.LineaIVA(kEmp, prv, numero, 1, 21, QStringLiteral("Iva del 21:"), iva);
}

// The rows of the findings as "severity date number".
QStringList Filas(const QTableWidget *g)
{
    QStringList filas;
    for (int f = 0; f < g->rowCount(); ++f)
        filas << g->item(f, 0)->text() + u' ' + g->item(f, 1)->text() + u' ' + g->item(f, 3)->text();
    return filas;
}
} // namespace

class TstFrmVerificar : public QObject
{
    Q_OBJECT
private slots:
    void f9AbrirCorregirYGuardar()
    {
        LibroDePrueba libro;
        libro.Empresa(kEmp, "Empresa SA");
        libro.Proveedor(kProv, "Proveedor Uno SA");
        Factura(libro, kProv, "0001-00000100", "05/11/2026", 1000, 210);
        Factura(libro, kProv, "0001-00000200", "03/12/2026", 500, 105); // after the period
        Factura(libro, kProv, "0001-00000300", "10/11/2026", 300, 0);   // A without VAT
        Factura(libro, kBorrado, "0001-00000400", "12/11/2026", 100, 21);
        libro.Recordar(kEmp, "01/11/2026");
        frmMAIN w(libro.S());
        ArrancarYMostrar(w);

        QTest::keyClick(w.Grd, Qt::Key_F9);
        QPointer<frmVERIFICAR> v = w.findChild<frmVERIFICAR *>();
        QVERIFY(v && QTest::qWaitForWindowActive(v) && !v->isModal());
        QTableWidget *g = v->grdHallazgos;
        QTRY_COMPARE(Foco(), g);
        QCOMPARE(Filas(g), (QStringList{"error 03/12/2026 0001-00000200", "aviso 10/11/2026 0001-00000300",
                                        "aviso 12/11/2026 0001-00000400"}));
        QVERIFY(v->lbDetalle->text().startsWith("La fecha 03/12/2026 es posterior al último día del período"));

        // The supplier that left the list: the main list does not show it, nor can it be opened.
        Teclas({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        QVERIFY(libro.Mensajes().Ultimo().startsWith("No se puede abrir la factura 0001-00000400"));
        QCOMPARE(libro.Mensajes().UltimoEstilo(), int(vb::vbExclamation));

        // The error: its invoice opens as from the main list; a new date and F11 fix it.
        Teclas({Qt::Key_Up, Qt::Key_Up});
        QStringList abierta;
        AlAbrirse<frmMODConcepto>([&](frmMODConcepto &m) {
            abierta << m.TxtNumero->text() << m.cboIdProv->currentText() << m.TxtFecha->text();
            Campo(m.TxtGrav, "0");
            Campo(m.TxtFecha, "28/11/2026");
            Teclas({Qt::Key_F11, Qt::Key_Escape});
        });
        Tecla(Qt::Key_Return);
        QCOMPARE(abierta, (QStringList{"0001-00000200", kProv, "03/12/26"}));
        QCOMPARE(libro.Filas("select IVCFCOMPRO from IVC where IVCSNROFAC = '0001-00000200'"),
                 QStringList{"28/11/2026"});
        QCOMPARE(Filas(g), (QStringList{"aviso 10/11/2026 0001-00000300", "aviso 12/11/2026 0001-00000400"}));
        QCOMPARE(w.Grd->TextMatrix(w.Grd->Rows() - 1, 0), "28/11/26"); // the main list reloaded
        QVERIFY(QTest::qWaitForWindowActive(v));

        // F9 again brings the same window; Esc closes it.
        QTest::keyClick(w.Grd, Qt::Key_F9);
        QCOMPARE(w.findChildren<frmVERIFICAR *>().size(), 1);
        QVERIFY(QTest::qWaitForWindowActive(v));

        // A failing book: opening a finding shows the error, and the check says it could not run.
        libro.Ejecutar("alter table PRV rename to PRV_roto");
        Tecla(Qt::Key_Return);
        QVERIFY(libro.Mensajes().Ultimo().endsWith(" - seccion [frmVERIFICAR.AbrirHallazgo]"));
        QTest::keyClick(w.Grd, Qt::Key_F9);
        QCOMPARE(Filas(g), QStringList());
        QVERIFY(v->lbResumen->text().contains("Periodo 11/2026:  No se pudo verificar el período: "));
        QTest::keyClick(g, Qt::Key_Escape);
        QVERIFY(QTest::qWaitFor([&v] { return !v; }));
    }
};

QTEST_MAIN(TstFrmVerificar)
#include "tst_frmverificar.moc"
