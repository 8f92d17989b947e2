#pragma once
// The Spanish order of names: "á" sorts with "a", "ñ" after "n" and before "o", capitals with
// small letters, as the old engine sorted. The book files declare their name columns with the
// collation ESPANOL, so every "order by" on a name sorts this way (and the indexes on names
// keep it); a book written before that declaration is brought to it when it is opened.

#include <QString>

struct sqlite3;

namespace oDB {

// The collation's name in the schema.
inline constexpr const char *kIntercalacion = "ESPANOL";

// Compares two texts the Spanish way: first by letters alone (accents and case set aside, "ñ"
// a letter of its own after "n"), then accents (the plain letter first), then nothing more:
// texts that differ only in case are equal, as the old engine compared them.
int CompararEspanol(const QString &a, const QString &b);

// Registers ESPANOL on a connection, then declares it on the name columns of a book written
// before them (USR.USRSNOMBRE, PRV.PRVSNOMBRE): each such table is rebuilt with its rows, its
// indexes and its triggers in one transaction. A book that cannot be written keeps its old
// declaration; opening it does not fail for that.
void PrepararIntercalacion(sqlite3 *db);

} // namespace oDB
