#pragma once
// Keyboard helpers for the window tests: every key goes to the widget that has the focus, as a
// person's typing would; and a main window that only counts what it is asked.

#include "ui/common/Principal.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVariant>
#include <QWidget>
#include <initializer_list>

// The main window as the invoice windows see it: counts the reloads it is asked for.
class PrincipalContador : public Principal
{
public:
    bool RecargarGrilla() override
    {
        ++recargas;
        return true;
    }
    void MostrarTotales() override { ++totales; }
    int recargas = 0, totales = 0;
};

inline QWidget *Foco() { return QApplication::focusWidget(); }

// Shows the window and waits until it is the active one.
inline void Mostrar(QWidget &w)
{
    w.show();
    w.activateWindow();
    if (!QTest::qWaitForWindowActive(&w))
        qWarning("window not active");
}

inline void Tecla(int tecla, Qt::KeyboardModifiers m = Qt::NoModifier) { QTest::keyClick(Foco(), Qt::Key(tecla), m); }

inline void Teclear(const QString &texto) { QTest::keyClicks(Foco(), texto); }

// Keys and typed texts, in order.
inline void Teclas(std::initializer_list<QVariant> teclas)
{
    for (const QVariant &t : teclas)
        t.typeId() == QMetaType::QString ? Teclear(t.toString()) : Tecla(t.toInt());
}

// Replaces the text of the field with the focus, as select-all and typing would.
inline void Reescribir(const QString &texto)
{
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Tecla(Qt::Key_Delete);
    Teclear(texto);
}

// Tab until the focus reaches the widget; false when it is not in the focus chain.
inline bool TabHasta(QWidget *destino, int maximo = 40)
{
    for (int i = 0; i < maximo && Foco() != destino; ++i)
        Tecla(Qt::Key_Tab);
    return Foco() == destino;
}

// Puts the focus on a field and types its new text there.
inline void Campo(QWidget *campo, const QString &texto)
{
    campo->setFocus();
    Reescribir(texto);
}
