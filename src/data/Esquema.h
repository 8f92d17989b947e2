#pragma once
// The tables of the book files and the command that creates empty files.

#include <QString>
#include <QStringList>

namespace esquema {

// Statements that create the tables, triggers and indexes of each file.
QStringList SentenciasPersonal();
QStringList SentenciasKestrel();
QStringList SentenciasProveedores();

// Creates an empty book file with the given statements. Refuses to overwrite an existing file;
// throws oDB::ErrorBD naming the file on failure.
void CrearArchivo(const QString &ruta, const QStringList &sentencias);

// Creates personal.mdb, kestrel.mdb and proveedores.mdb in dir (which must exist). Refuses to
// overwrite any of them: nothing is created when one of them is already there.
void CrearBases(const QString &dir);

} // namespace esquema
