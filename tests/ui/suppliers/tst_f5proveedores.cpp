#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/GrillaFlex.h"
#include "ui/suppliers/frmLSTPROV.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

// F5 on the main window opens the supplier window beside it, not modal.
class TstF5Proveedores : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void f5AbreLaVentanaNoModal();
    void proveedorNuevoEnLaFacturaQueSeAbreDespues();

private:
    frmLSTPROV *Abierta() const
    {
        const auto todas = principal->findChildren<frmLSTPROV *>();
        return todas.size() == 1 ? todas.first() : nullptr;
    }
    std::unique_ptr<LibroDePrueba> libro;
    std::unique_ptr<frmMAIN> principal;
};

void TstF5Proveedores::init()
{
    libro = std::make_unique<LibroDePrueba>();
    libro->Proveedor(QStringLiteral("30-1"), QStringLiteral("Beta"));
    principal = std::make_unique<frmMAIN>(libro->S());
    principal->show();
    principal->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), principal.get());
}

void TstF5Proveedores::cleanup()
{
    principal.reset();
    libro.reset();
}

void TstF5Proveedores::f5AbreLaVentanaNoModal()
{
    QCOMPARE(QApplication::focusWidget(), principal->Grd);
    QTest::keyClick(principal->Grd, Qt::Key_F5);
    frmLSTPROV *prov = Abierta();
    QVERIFY(prov);
    QVERIFY(prov->isVisible());
    QVERIFY(prov->isWindow());
    QCOMPARE(prov->windowModality(), Qt::NonModal);
    QVERIFY(!QApplication::activeModalWidget());
    QTRY_COMPARE(QApplication::activeWindow(), prov);
    QCOMPARE(QApplication::focusWidget(), prov->cGRID);
    QCOMPARE(prov->FilasGrilla(), 2);

    // Its own keys work at once.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Insert);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("30-2"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Alfa"));

    // The main window stays usable; F5 again brings the same window forward, as it was.
    principal->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), principal.get());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    QCOMPARE(Abierta(), prov);
    QTRY_COMPARE(QApplication::activeWindow(), prov);
    QCOMPARE(prov->Estado(), 1);
    QCOMPARE(prov->txtNombre->text(), QStringLiteral("Alfa"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F11);
    QCOMPARE(libro->Contar(QStringLiteral("PRV")), 2L);

    // Esc twice: out of browse, then the window closes and goes away.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!prov->isVisible());
    QTRY_VERIFY(!Abierta());

    // A new F5 opens a fresh one with the new supplier in it.
    principal->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), principal.get());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    prov = Abierta();
    QVERIFY(prov);
    QCOMPARE(prov->FilasGrilla(), 3);
    QCOMPARE(prov->cGRID->item(0, 1)->text(), QStringLiteral("Alfa"));
}

void TstF5Proveedores::proveedorNuevoEnLaFacturaQueSeAbreDespues()
{
    libro->Empresa(QStringLiteral("20-9"), QStringLiteral("Empresa"));
    libro->Periodo(QStringLiteral("20-9"), QStringLiteral("01/11/2026"));
    QTest::keyClick(principal->Grd, Qt::Key_F5);
    QTRY_COMPARE(QApplication::activeWindow(), Abierta());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Insert);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("30-2"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Alfa"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F11);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!Abierta());

    frmADDConcepto factura(libro->S(), principal.get(), principal.get());
    factura.show();
    QCOMPARE(factura.cboProv->count(), 2);
    QCOMPARE(factura.cboProv->itemText(0), QStringLiteral("Alfa"));
    QCOMPARE(factura.cboIdProv->itemText(0), QStringLiteral("30-2"));
    QCOMPARE(factura.cboProv->itemText(1), QStringLiteral("Beta"));
}

QTEST_MAIN(TstF5Proveedores)
#include "tst_f5proveedores.moc"
