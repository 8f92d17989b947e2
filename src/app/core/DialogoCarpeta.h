#pragma once
// The folder dialog as a service: the program shows the platform's standard folder dialog and
// the tests answer from a script.

#include <QString>

class QWidget;

class DialogoCarpeta
{
public:
    virtual ~DialogoCarpeta() = default;
    // Asks for a folder: an existing one, or a new one named in the name box, which opens with
    // nombreInicial in it (the folder is not made here: whoever asked makes it). The folder
    // shown first is carpetaInicial (or another one when it does not exist). Returns the chosen
    // folder, or the empty text when the user cancels.
    virtual QString ElegirCarpeta(const QString &titulo, const QString &carpetaInicial, const QString &nombreInicial,
                                  QWidget *propietario) = 0;
};
