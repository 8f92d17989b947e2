#pragma once
// Books of the old Windows program are Microsoft Access (Jet) files with the same names as the
// books of this program. Opening one as a book would only say "file is not a database": these
// helpers recognise such a file by its first bytes and say how to convert it.

#include <QString>

namespace archivoaccess {

// True when the file starts as an Access book does: Jet 3 and Jet 4 ("Standard Jet DB") or
// Access 2007 and later ("Standard ACE DB").
bool EsArchivoAccess(const QString &ruta);

// The folder proposed for the converted books of the books in origen: a new folder beside it,
// named after it with "-convertido".
QString CarpetaSugerida(const QString &origen);

// The command that converts the Access books of origen into new books in destino, with the
// paths quoted when they hold blanks.
QString Comando(const QString &origen, const QString &destino);

// When ruta is an Access book: the message that names it, says that it is an Access book and
// gives the command that converts its folder. Empty text for any other file.
QString MensajeArchivoAccess(const QString &ruta);

} // namespace archivoaccess
