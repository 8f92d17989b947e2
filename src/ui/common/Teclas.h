#pragma once
// The key code of a key event, as the windows' key-down handlers name the keys (vb::Tecla);
// 0 for a key that no handler names. Every window reads its keys through this one mapping.

#include "app/core/Servicios.h"

#include <QKeyEvent>

inline int CodigoTecla(const QKeyEvent *e)
{
    const int k = e->key();
    if (k >= Qt::Key_F1 && k <= Qt::Key_F16)
        return 112 + (k - Qt::Key_F1);
    switch (k) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return vb::vbKeyReturn;
    case Qt::Key_Escape:
        return vb::vbKeyEscape;
    case Qt::Key_Insert:
        return vb::vbKeyInsert;
    case Qt::Key_Delete:
        return vb::vbKeyDelete;
    case Qt::Key_Up:
        return vb::vbKeyUp;
    case Qt::Key_Down:
        return vb::vbKeyDown;
    default:
        return 0;
    }
}

// What a window with key preview hands to its key-down handlers: the code of a key press,
// 0 for any other event.
inline int TeclaPulsada(const QEvent *ev)
{
    return ev->type() == QEvent::KeyPress ? CodigoTecla(static_cast<const QKeyEvent *>(ev)) : 0;
}
