#pragma once
// The old Access books of a folder (personal.mdb, kestrel.mdb and proveedores.mdb) copied,
// row by row, into new books of this program. The new books are made by the program's own
// schema, so they behave exactly as books typed in by hand.

#include "app/core/Ajustes.h"
#include "app/core/Demo.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <functional>

struct sqlite3;

namespace importar {

struct TablaImportada {
    QString archivo;       // "kestrel.mdb"
    QString tabla;         // the program's name of the table ("IVC")
    long leidas = 0;       // rows read from the Access table
    long filas = 0;        // rows counted in the new book
    QStringList omitidas;  // columns of the Access table that the program does not know
    long filasConHora = 0; // rows in which a date column had a time, which is not kept
    QList<QPair<QString, long>> horas; // of those, per date column: the rows that had one
};

struct ResultadoImportacion {
    QString origen;  // absolute, without a trailing separator
    QString destino; // absolute, without a trailing separator
    QStringList versiones; // "kestrel.mdb: Jet 4" for each Access file read
    QList<TablaImportada> tablas;
    QStringList avisos;    // what was read but not brought in, and why
    demo::ResumenDemo resumen; // companies, periods and invoices of the new books
};

// Rows to copy into a table: where they come from (for the messages), the names of their
// columns and the function that gives the next row (false at the end).
struct FuenteFilas {
    QString archivo;
    QStringList columnas;
    std::function<bool(QVector<QVariant> &fila)> siguiente;
};

// Called with a line for each table copied ("kestrel.mdb IVC: 400 filas").
using Progreso = std::function<void(const QString &linea)>;

// Reads the Access books of origen and writes the three books into destino, which must be a
// new folder or an empty one (its parent is made when missing). Tables and columns are
// matched by name without regard to case; the supplier-tracking book's CUIT_USUARIO and
// CUIT_PROVEEDOR are its company and supplier. A column the program does not know is left
// out and reported; a table it needs is an error that names it. proveedores.mdb may be
// missing: the tracking book is then left empty, with a notice. Dates keep their day (a time
// is dropped and counted), amounts their stored value, texts every character, NULL stays NULL.
//
// Whole or nothing: the books are written into a temporary folder beside destino, each in one
// transaction, counted, and only then moved into place. On any failure (also one thrown by
// progreso) nothing is left in destino or beside it, and the exception goes on. Nothing in
// origen is written. With ajustesEnDestino, the settings files that make "ivacompras
// --ajustes destino" open the new books are written with them, as the demo does.
// Throws oDB::ErrorBD with a message naming the file, table or row at fault.
ResultadoImportacion ImportarAccess(const QString &origen, const QString &destino,
                                    const Progreso &progreso = {}, bool ajustesEnDestino = false);

// Copies the rows of origen into the table of the book open in db, inside the caller's
// transaction, matching the columns as ImportarAccess does; the rows copied (filas is left 0:
// the caller counts them once committed). The connection's settings are left as they were.
// Throws oDB::ErrorBD naming the row at fault.
TablaImportada CopiarFilas(sqlite3 *db, const QString &archivo, const QString &tabla, const FuenteFilas &origen,
                           QStringList &avisos);

// The companies, periods and invoice counts of the books in carpeta (carpeta ends in "/"),
// as the demo reports them; the company and period proposed are the latest period of the book.
demo::ResumenDemo ResumenLibro(const QString &carpeta);

} // namespace importar
