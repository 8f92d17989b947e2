#pragma once
// What the invoice windows' tests start from: the company kEmpresa ("Empresa SA") with November
// 2026 as the current period and the suppliers Acme and Beta; and a window shown and active, as
// a person finds it.

#include "common/Libro.h"

#include <QString>
#include <QTest>

inline const QString kEmpresa = QStringLiteral("20111111112");
inline const QString kAcme = QStringLiteral("30700000011");
inline const QString kBeta = QStringLiteral("30700000022");

// Writes the company, its period and (unless said) both suppliers into the book.
inline void LlenarLibro(LibroDePrueba &libro, bool conProveedores = true)
{
    libro.Empresa(kEmpresa, QStringLiteral("Empresa SA"));
    libro.Periodo(kEmpresa, QStringLiteral("01/11/2026"));
    if (conProveedores) {
        libro.Proveedor(kAcme, QStringLiteral("Acme"));
        libro.Proveedor(kBeta, QStringLiteral("Beta"));
    }
}

// Shows the window and waits until it is the active one.
template <class Ventana>
void Mostrar(Ventana &w)
{
    w.show();
    w.activateWindow();
    if (!QTest::qWaitForWindowActive(&w))
        qWarning("window not active");
}
