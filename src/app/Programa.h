#pragma once
// The program with its windows: ivacompras [--ajustes DIR].

#include <QString>

// Checks that there is a display, then runs the start-up sequence of the main window and the
// program's event loop. dirAjustes is the folder of the settings store (empty: the user's
// configuration folder). The process's exit status.
int EjecutarPrograma(int &argc, char **argv, const QString &dirAjustes);
