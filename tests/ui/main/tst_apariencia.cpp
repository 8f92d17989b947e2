// What a person sees, driven from the keyboard over a real book: the field with the focus is
// highlighted in every window as it opens (the modify window each time), and a very long supplier
// name squeezes no other field of the add window. (The Spanish
// order of the names in the windows is checked with the supplier window.)

#include "Inicio.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/invoice/frmMODConcepto.h"

#include <QAbstractItemView>
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
        const QString largo = QStringLiteral("Aaa ") + QString(176, u'x'); // a supplier listed first
        libro->Proveedor(QStringLiteral("30-1"), largo);
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
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QCOMPARE(a.cboProv->toolTip(), a.cboProv->currentText());
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
};

QTEST_MAIN(TstApariencia)
#include "tst_apariencia.moc"
