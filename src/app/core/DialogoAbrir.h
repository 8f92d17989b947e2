#pragma once
// The open-file dialog as a service: the program shows the platform's standard dialog and the
// tests answer from a script.

#include "app/core/DialogoGuardar.h"

class DialogoAbrir
{
public:
    virtual ~DialogoAbrir() = default;
    // Asks for an existing file to read; the chosen path, or the empty text when the user
    // cancels.
    virtual QString Abrir(const QString &titulo, const QList<FiltroArchivo> &filtros, const QString &carpetaInicial,
                          QWidget *propietario) = 0;
};
