// What a person sees, driven from the keyboard over a real book: the field with the focus is
// highlighted in every window as it opens (the modify window each time), the list fills the
// window, and a very long supplier name squeezes no other field of the add window. (The Spanish
// order of the names in the windows is checked with the supplier window.)

#include "Inicio.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/invoice/frmMODConcepto.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QScreen>

namespace {

const QColor kVerde(192, 255, 192);

// The background a field shows: a combo box's button, an entry field's base.
QColor Fondo(const QWidget *w)
{
    return w->palette().color(qobject_cast<const QComboBox *>(w) ? QPalette::Button : QPalette::Base);
}

} // namespace

class TstApariencia : public QObject
{
    Q_OBJECT
    std::unique_ptr<LibroDePrueba> libro;

private slots:
    void init()
    {
        libro = std::make_unique<LibroDePrueba>();
        LlenarLibro(*libro);
    }
    void cleanup() { libro.reset(); }

    void focoResaltadoAlAbrir()
    {
        frmMAIN w(libro->S());
        QStringList vistos;
        const auto resaltado = [&](const char *ventana) {
            QWidget *f = QApplication::focusWidget();
            vistos << QStringLiteral("%1 %2 %3").arg(QLatin1String(ventana), f ? f->objectName() : QString(),
                                                       f && Fondo(f) == kVerde ? QStringLiteral("resaltado") : QString());
        };
        AlAbrirse<frmOpciones>([&](frmOpciones &f) {
            resaltado("opciones");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            resaltado("opciones");
            QTest::keyClick(f.cboUSR, Qt::Key_F11);
        });
        QVERIFY(w.Form_Load());
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));

        AlAbrirse<frmADDConcepto>([&](frmADDConcepto &a) {
            resaltado("agregar");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            resaltado("agregar");
            vistos << (Fondo(a.cboProv) == kVerde ? "cboProv sigue resaltado" : "cboProv vuelve a su color");
        });
        QTest::keyClick(w.Grd, Qt::Key_Insert);

        // Invoice 9 of Uno has VAT lines: the supplier is locked and Fecha takes the focus.
        for (int vez = 0; vez < 2; ++vez) {
            w.Grd->setFocus();
            w.Grd->setCurrentCell(1, 0);
            AlAbrirse<frmMODConcepto>([&](frmMODConcepto &) {
                resaltado("modificar");
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            });
            QTest::keyClick(w.Grd, Qt::Key_Return);
        }
        QCOMPARE(vistos, QStringList({"opciones cboUSR resaltado", "opciones cboMES resaltado", "agregar cboProv resaltado",
                                      "agregar TxtFecha resaltado", "cboProv vuelve a su color",
                                      "modificar TxtFecha resaltado", "modificar TxtFecha resaltado"}));
    }

    // The list's columns fill the window in the proportions of their design widths, with or
    // without invoices, and follow it when it grows.
    void grillaLlenaLaVentana()
    {
        frmMAIN w(libro->S());
        ArrancarYMostrar(w);
        for (const QString &periodo : {QStringLiteral("ENERO"), QStringLiteral("NOVIEMBRE")}) {
            AlAbrirse<frmOpciones>([&](frmOpciones &f) {
                f.cboMES->setCurrentText(periodo);
                QTest::keyClick(f.cboMES, Qt::Key_F11);
            });
            QTest::keyClick(w.Grd, Qt::Key_F6);
            for (const int ancho : {1000, 1500}) {
                w.resize(ancho, 700);
                QTRY_COMPARE(w.width(), ancho);
                QCOMPARE(w.Grd->horizontalHeader()->length(), w.Grd->viewport()->width());
                QVERIFY(qAbs(w.Grd->columnWidth(4) / double(w.Grd->columnWidth(0)) - 1630.0 / 765) < 0.02);
            }
        }
    }

    void nombreLargoNoAprietaCampos()
    {
        const QString largo = QStringLiteral("Aaa ") + QString(176, u'x');
        libro->Proveedor(QStringLiteral("30-1"), largo);
        frmMAIN w(libro->S());
        ArrancarYMostrar(w);
        AlAbrirse<frmADDConcepto>([&](frmADDConcepto &a) {
            QCOMPARE((QStringList{a.cboProv->currentText(), a.cboProv->toolTip(), a.cboProv->itemData(0, Qt::ToolTipRole).toString()}),
                     QStringList(3, largo));
            // The drop-down shows the entry whole.
            const int pantalla = a.screen()->availableGeometry().width() - 40;
            QVERIFY(a.cboProv->view()->minimumWidth() >= std::min(a.cboProv->fontMetrics().horizontalAdvance(largo), pantalla));
            QVERIFY(a.width() <= 1200);
            const int cifras = a.fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000"));
            for (QLineEdit *t : {a.TxtFecha, a.TxtNoGrav, a.txtIVARNI, a.txtIVARIN, a.TxtNumero})
                QVERIFY2(t->width() >= cifras, qPrintable(t->objectName()));
            // Moving on with the keyboard, the tooltip follows the supplier picked.
            a.cboProv->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QCOMPARE(a.cboProv->toolTip(), a.cboProv->currentText());
        });
        QTest::keyClick(w.Grd, Qt::Key_Insert);
    }
};

QTEST_MAIN(TstApariencia)
#include "tst_apariencia.moc"
