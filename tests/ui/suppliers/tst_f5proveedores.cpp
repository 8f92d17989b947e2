// F5 on the main window opens the supplier window beside it, not modal; what it saves is what
// an invoice window opened afterwards offers.

#include "common/Libro.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/frmMAIN.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

class TstF5Proveedores : public QObject
{
    Q_OBJECT

    static void Teclas(std::initializer_list<QVariant> teclas)
    {
        for (const QVariant &t : teclas) {
            if (t.typeId() == QMetaType::QString)
                QTest::keyClicks(QApplication::focusWidget(), t.toString());
            else
                QTest::keyClick(QApplication::focusWidget(), Qt::Key(t.toInt()));
        }
    }
    static void Activar(QWidget *v)
    {
        v->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), v);
    }

private slots:
    void f5AbreLaVentanaNoModal()
    {
        LibroDePrueba libro;
        libro.Empresa(QStringLiteral("20-9"), QStringLiteral("Empresa"));
        libro.Periodo(QStringLiteral("20-9"), QStringLiteral("01/11/2026"));
        libro.Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
        frmMAIN principal(libro.S());
        const auto abierta = [&principal]() -> frmLSTPROV * {
            const auto todas = principal.findChildren<frmLSTPROV *>();
            return todas.size() == 1 ? todas.first() : nullptr;
        };
        principal.show();
        Activar(&principal);

        QTest::keyClick(principal.Grd, Qt::Key_F5);
        frmLSTPROV *prov = abierta();
        QVERIFY(prov && prov->isVisible() && prov->isWindow());
        QCOMPARE(prov->windowModality(), Qt::NonModal);
        QTRY_COMPARE(QApplication::activeWindow(), prov);
        Teclas({Qt::Key_Insert, QStringLiteral("30-2"), Qt::Key_Return, QStringLiteral("Alfa")});

        // The main window stays usable; F5 again brings the same window forward, as it was.
        Activar(&principal);
        Teclas({Qt::Key_F5});
        QCOMPARE(abierta(), prov);
        QTRY_COMPARE(QApplication::activeWindow(), prov);
        QCOMPARE(prov->txtNombre->text(), QStringLiteral("Alfa"));
        Teclas({Qt::Key_F11, Qt::Key_Escape});
        QTRY_VERIFY(!abierta());

        frmADDConcepto factura(libro.S(), &principal);
        QCOMPARE(factura.cboProv->itemText(0) + u'|' + factura.cboIdProv->itemText(0), QStringLiteral("Alfa|30-2"));
        QCOMPARE(factura.cboProv->count(), 2);
    }
};

QTEST_MAIN(TstF5Proveedores)
#include "tst_f5proveedores.moc"
