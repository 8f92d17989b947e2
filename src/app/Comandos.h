#pragma once
// The program's command line: each command runs the same code as the windows.

#include <QStringList>

// ivacompras crear-bases DIR
int ComandoCrearBases(const QStringList &args);
