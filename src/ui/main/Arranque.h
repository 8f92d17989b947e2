#pragma once
// What the program checks before it opens its windows.

#include <QProcessEnvironment>
#include <QString>

// True when the windows can be shown: on X11/Wayland systems a display (DISPLAY or
// WAYLAND_DISPLAY) or an explicit Qt platform (QT_QPA_PLATFORM) must be set; other systems
// always have one.
bool HayPantalla(const QProcessEnvironment &entorno);

// The message given instead of the windows when there is no display.
QString MensajeSinPantalla();

// When the windows would go to an X display (DISPLAY, and neither Wayland nor an explicit Qt
// platform), whether that display answers: empty when it does, otherwise the message given
// instead of the windows.
QString PantallaInalcanzable(const QProcessEnvironment &entorno);
