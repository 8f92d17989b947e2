#pragma once
// The save-file dialog as a service: the program shows the platform's standard dialog, the
// command line answers with the path it was given and the tests answer from a script.

#include <QList>
#include <QString>

class QWidget;

// One entry of the dialog's file-type list: the text shown and the pattern of the names.
struct FiltroArchivo {
    QString descripcion;
    QString patron;
};

class DialogoGuardar
{
public:
    virtual ~DialogoGuardar() = default;
    // Asks for the path of a file to save. The name box opens with nombreInicial in it and
    // the folder shown first is carpetaInicial (or another one when it does not exist).
    // Returns the chosen path as the dialog gives it, or the empty text when the user cancels.
    virtual QString GuardarComo(const QString &titulo, const QList<FiltroArchivo> &filtros,
                                const QString &carpetaInicial, const QString &nombreInicial,
                                QWidget *propietario) = 0;
};
