#include "ui/main/Arranque.h"

#include <xcb/xcb.h>

namespace {

// What can be done without the windows, said after every no-display message.
QString SinSesionGrafica()
{
    return QStringLiteral("El programa necesita una sesión gráfica; sin ella se pueden usar los comandos "
                          "crear-bases, demo, exportar, imprimir, cuenta, verificar, conciliar e "
                          "importar-access (man ivacompras los explica).");
}

} // namespace

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
                          "están definidas). ") +
           SinSesionGrafica();
}

QString PantallaInalcanzable(const QProcessEnvironment &entorno)
{
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
                          "gráfico no responde. ")
               .arg(display) +
           SinSesionGrafica();
}
