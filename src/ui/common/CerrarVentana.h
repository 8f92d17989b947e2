#pragma once
// Unloading a window: it is closed (a window that deletes itself on close is then released)
// and the caller's reference to it is cleared.

#include <QWidget>
#include <utility>

template <class Ventana>
void CerrarVentana(Ventana *&ventana)
{
    if (Ventana *v = std::exchange(ventana, nullptr))
        v->close();
}

// A window that closes itself holds no reference of its own to clear.
inline void CerrarVentana(QWidget *ventana)
{
    if (ventana)
        ventana->close();
}
