#include "app/core/Servicios.h"

#include <cstdio>

int MensajesConsola::MsgBox(const QString &texto, int estilo, const QString &titulo)
{
    const QString linea = titulo.isEmpty() ? texto : titulo + QStringLiteral(": ") + texto;
    std::fprintf(stderr, "%s\n", linea.toLocal8Bit().constData());
    std::fflush(stderr);
    return (estilo & 7) == vb::vbYesNo ? vb::vbNo : vb::vbOK;
}

void MostrarError(Mensajes &m, const QString &descripcion, int numero, const QString &seccion)
{
    m.MsgBox(descripcion + QStringLiteral("\r\n\r\n") + QString::number(numero) + seccion,
             vb::vbCritical);
}
