#pragma once
// The message service of the windows: each message is a modal message box with the icon and
// buttons that its style asks for.

#include "app/core/Servicios.h"

class QWidget;

class MensajesQt : public Mensajes
{
public:
    // The boxes are centred on padre, or on the active window when padre is null.
    explicit MensajesQt(QWidget *padre = nullptr) : padre_(padre) {}

    int MsgBox(const QString &texto, int estilo = vb::vbOKOnly,
               const QString &titulo = QString()) override;

private:
    QWidget *padre_;
};
