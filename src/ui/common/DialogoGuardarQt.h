#pragma once
// The save dialog of the program: the standard Qt file dialog in save mode.

#include "app/core/DialogoGuardar.h"

// "Description (*.ext)" as the file dialogs list it; the pattern is added when the description
// does not already show it.
QString Filtro(const FiltroArchivo &f);

class DialogoGuardarQt : public DialogoGuardar
{
public:
    // The folder shown when the one asked for does not exist (the user's home by default).
    void setCarpetaAlternativa(const QString &carpeta) { alternativa_ = carpeta; }

    // The name box opens with nombreInicial selected, so the first key typed replaces it; an
    // answer of blanks only keeps the dialog open. An existing file is replaced without a
    // question, as the export has always done.
    QString GuardarComo(const QString &titulo, const QList<FiltroArchivo> &filtros,
                        const QString &carpetaInicial, const QString &nombreInicial,
                        QWidget *propietario) override;

private:
    QString alternativa_;
};
