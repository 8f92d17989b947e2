#pragma once
// The CSV the checks write for other programs (a spreadsheet, a script): fields separated by
// ";", a field between double quotes, its quotes doubled, when it holds ";", a quote or a line
// end; every row ends in CRLF.

#include <QString>
#include <QStringList>

namespace csv {

// One row, its line end included.
QString Fila(const QStringList &campos);

} // namespace csv
