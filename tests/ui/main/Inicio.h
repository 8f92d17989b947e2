#pragma once
// What the main window's tests start from: a book with two companies and their invoices, and
// the main window started as a person starts it: the company and period window opens over it
// (modal) and F11 confirms the company and period it proposes.

#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/main/GrillaFlex.h"
#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/frmOpciones.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

inline const QString kAlfa = QStringLiteral("20-22222222-2");
inline const QString kBeta = QStringLiteral("30-11111111-1");
inline const QString kUno = QStringLiteral("30-70000000-1");
inline const QString kDos = QStringLiteral("30-70000000-2");
inline const QString kNov = QStringLiteral("01/11/2026");

// Alfa SA and Beta SRL (without VAT), suppliers Uno and Dos. Alfa's November 2026 lists by date,
// then by the number's value (9 before 10); number 9 of Uno has VAT, gross-income and
// taxed-amount lines, and Uno has a number 9 in October too. Beta has one invoice in October
// 2026 and one in December 2005.
inline void LlenarLibro(LibroDePrueba &l)
{
    l.Empresa(kBeta, QStringLiteral("Beta SRL"), QStringLiteral("N"));
    l.Empresa(kAlfa, QStringLiteral("Alfa SA"));
    l.Proveedor(kUno, QStringLiteral("Proveedor Uno"));
    l.Proveedor(kDos, QStringLiteral("Proveedor Dos"));
    l.Factura(kAlfa, kDos, kNov, QStringLiteral("03/11/2026"), QStringLiteral("B"), QStringLiteral("10"), 100, 10.5, 21, 0);
    l.Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"), QStringLiteral("10"), 5, 0, 1.05, 5);
    l.Factura(kAlfa, kUno, kNov, QStringLiteral("05/11/2026"), QStringLiteral("A"), QStringLiteral("9"), 200, 0, 42, 2.5);
    l.LineaIVA(kAlfa, kUno, QStringLiteral("9"), 1, 21, QStringLiteral("Iva del 21:"), 42);
    l.LineaIB(kAlfa, kUno, QStringLiteral("9"), 1, 1.25, QStringLiteral("IIBB"), 2.5);
    l.LineaGravado(kAlfa, kUno, QStringLiteral("9"), 1, 150);
    l.LineaGravado(kAlfa, kUno, QStringLiteral("9"), 2, 50);
    l.Factura(kAlfa, kUno, QStringLiteral("01/10/2026"), QStringLiteral("20/10/2026"), QStringLiteral("A"), QStringLiteral("9"), 1, 0, 0, 0);
    l.Factura(kBeta, kUno, QStringLiteral("01/10/2026"), QStringLiteral("02/10/2026"), QStringLiteral("C"), QStringLiteral("77"), 50, 0, 0, 0);
    l.Factura(kBeta, kDos, QStringLiteral("01/12/2005"), QStringLiteral("02/12/2005"), QStringLiteral("A"), QStringLiteral("1"), 100, 0, 21, 0);
}

// The start-up with the proposal confirmed and the window shown on screen.
inline void ArrancarYMostrar(frmMAIN &w)
{
    AlAbrirse<frmOpciones>([](frmOpciones &f) { QTest::keyClick(f.cboUSR, Qt::Key_F11); });
    QVERIFY(w.Form_Load());
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
}
