#pragma once
// The open dialog of the program: the standard Qt file dialog in open mode.

#include "app/core/DialogoAbrir.h"

class DialogoAbrirQt : public DialogoAbrir
{
public:
    QString Abrir(const QString &titulo, const QList<FiltroArchivo> &filtros, const QString &carpetaInicial,
                  QWidget *propietario) override;
};
