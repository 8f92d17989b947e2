#include "ui/main/Arranque.h"

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
