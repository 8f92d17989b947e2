#include "ui/main/Arranque.h"

#if defined(IVC_CON_XCB)
#include <xcb/xcb.h>
#endif

bool HayPantalla(const QProcessEnvironment &entorno)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN) && !defined(Q_OS_ANDROID)
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!entorno.value(QString::fromLatin1(variable)).isEmpty())
            return true;
    return false;
#else
    Q_UNUSED(entorno);
    return true;
#endif
}

QString MensajeSinPantalla()
{
    return QStringLiteral("ivacompras: no hay pantalla disponible (DISPLAY y WAYLAND_DISPLAY no "
                          "están definidas). El programa necesita una sesión gráfica; sin ella "
                          "se pueden usar los comandos crear-bases, demo, exportar e imprimir.");
}

QString PantallaInalcanzable(const QProcessEnvironment &entorno)
{
#if defined(IVC_CON_XCB)
    const QString display = entorno.value(QStringLiteral("DISPLAY"));
    if (display.isEmpty() || !entorno.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty() ||
        !entorno.value(QStringLiteral("QT_QPA_PLATFORM")).isEmpty())
        return QString();
    // The display library ends the whole program when it cannot reach the display: ask first.
    xcb_connection_t *c = xcb_connect(display.toLocal8Bit().constData(), nullptr);
    const bool alcanzable = c && xcb_connection_has_error(c) == 0;
    if (c)
        xcb_disconnect(c);
    if (alcanzable)
        return QString();
    return QStringLiteral("ivacompras: no se puede abrir la pantalla '%1' (DISPLAY): el servidor "
                          "gráfico no responde. El programa necesita una sesión gráfica; sin ella "
                          "se pueden usar los comandos crear-bases, demo, exportar e imprimir.")
        .arg(display);
#else
    Q_UNUSED(entorno);
    return QString();
#endif
}
