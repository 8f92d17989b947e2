#include "common/Libro.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/frmMAIN.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

// F5 on the main window opens the supplier window beside it, not modal; what it saves is
// what an invoice window opened afterwards offers.
class TstF5Proveedores : public QObject
{
    Q_OBJECT
private slots:
    void f5AbreLaVentanaNoModal();

private:
    frmLSTPROV *Abierta() const
    {
        const auto todas = principal->findChildren<frmLSTPROV *>();
        return todas.size() == 1 ? todas.first() : nullptr;
    }
    void Teclas(std::initializer_list<QVariant> teclas)
    {
        for (const QVariant &t : teclas) {
            if (t.typeId() == QMetaType::QString)
                QTest::keyClicks(QApplication::focusWidget(), t.toString());
            else
                QTest::keyClick(QApplication::focusWidget(), Qt::Key(t.toInt()));
        }
    }
    void Activar(QWidget *v)
    {
        v->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), v);
    }
    std::unique_ptr<frmMAIN> principal;
};

void TstF5Proveedores::f5AbreLaVentanaNoModal()
{
    LibroDePrueba libro;
    libro.Empresa(QStringLiteral("20-9"), QStringLiteral("Empresa"));
    libro.Periodo(QStringLiteral("20-9"), QStringLiteral("01/11/2026"));
    libro.Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    principal = std::make_unique<frmMAIN>(libro.S());
    principal->show();
    Activar(principal.get());

    QTest::keyClick(principal->Grd, Qt::Key_F5);
    frmLSTPROV *prov = Abierta();
    QVERIFY(prov && prov->isVisible() && prov->isWindow());
    QCOMPARE(prov->windowModality(), Qt::NonModal);
    QTRY_COMPARE(QApplication::activeWindow(), prov);
    QCOMPARE(QApplication::focusWidget(), prov->cGRID);
    Teclas({Qt::Key_Insert, QStringLiteral("30-2"), Qt::Key_Return, QStringLiteral("Alfa")});

    // The main window stays usable; F5 again brings the same window forward, as it was.
    Activar(principal.get());
    Teclas({Qt::Key_F5});
    QCOMPARE(Abierta(), prov);
    QTRY_COMPARE(QApplication::activeWindow(), prov);
    QCOMPARE(prov->txtNombre->text(), QStringLiteral("Alfa"));
    Teclas({Qt::Key_F11, Qt::Key_Escape});
    QVERIFY(!prov->isVisible());
    QTRY_VERIFY(!Abierta());

    {
        frmADDConcepto factura(libro.S(), principal.get());
        QCOMPARE(factura.cboProv->count(), 2);
        QCOMPARE(factura.cboProv->itemText(0), QStringLiteral("Alfa"));
        QCOMPARE(factura.cboIdProv->itemText(0), QStringLiteral("30-2"));
    }

    // A new F5 opens a fresh window.
    Activar(principal.get());
    Teclas({Qt::Key_F5});
    QVERIFY(Abierta() && Abierta()->FilasGrilla() == 3);
    principal.reset();
}

QTEST_MAIN(TstF5Proveedores)
#include "tst_f5proveedores.moc"
