#pragma once
// The folder dialog of the program: the standard Qt file dialog showing folders only.

#include "app/core/DialogoCarpeta.h"

class DialogoCarpetaQt : public DialogoCarpeta
{
public:
    // Enter on a folder of the list, or the Choose button, gives that folder (or the one shown,
    // when none is selected) without entering it; a name typed in the name box that is not
    // there yet gives a new folder of that name in the folder shown. The name box opens with
    // nombreInicial selected, so the first key typed replaces it.
    QString ElegirCarpeta(const QString &titulo, const QString &carpetaInicial, const QString &nombreInicial,
                          QWidget *propietario) override;
};
