#pragma once
// The program's conventions for numbers, dates and texts. The program always runs with the
// Argentine conventions (decimal comma, day before month, Spanish month names) whatever the
// machine's locale; the SQL functions of the database component use these same rules.

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QVariant>
#include <optional>

namespace conv {

// Today's date. Tests fix it with FijarHoy; an invalid date returns to the clock.
QDate Hoy();
void FijarHoy(const QDate &fecha);

// Trim: removes the blanks (only the space character) on both sides, as the old platform did.
QString Trim(const QString &s);
QString LTrim(const QString &s);
QString RTrim(const QString &s);

// Text to number: blanks around, optional sign, digits and at most one decimal separator
// ("," or ".", both read as decimal). Nothing else: no grouping, no exponent.
bool EsNumerico(const QString &s);
bool EsNumerico(const QVariant &v);
// The number of a numeric text; nullopt when the text is not numeric.
std::optional<double> ANumero(const QString &s);
// Conversion that the platform applies to a text it must read as a number (CDbl):
// throws ErrorConversion when the text is not numeric.
double CDbl(const QVariant &v);

// Val: reads the leading number of a text, skipping blanks; "." is the only decimal point;
// stops at the first other character; 0 when there is no number ("0002-00012345" -> 2).
double Val(const QString &s);

// Number to plain text: up to 15 significant digits, decimal comma, no trailing zeros,
// no grouping (10.5 -> "10,5", 21 -> "21", -0.5 -> "-0,5").
QString NumeroATexto(double n);

// Rounds to the given decimals, halves away from zero, on the decimal value shown
// (so 2.675 shows as 2,68 as a person would expect, not 2,67), at every magnitude.
double Redondear(double n, int decimales);

// Format with a pattern, as the old platform's Format did for the patterns the program uses:
//  - numeric patterns of zeros, "#" and one "." ("00.00", "0.00", "00", "000") applied to a
//    number or numeric text: digits, decimal comma, no grouping (5 -> "05,00");
//  - date patterns ("dd/mm/yy", "dd/mm/yyyy", "dd-mm-yyyy", "mm/yyyy", "yyyy", "dd", "mm")
//    applied to a date, a date text or a number (a number is read as a date serial);
//  - anything that cannot be formatted is returned as its plain text, unchanged.
QString Format(const QVariant &v, const QString &patron);

// Dates.
// Lenient text to date: day before month, separators "/", "-" or "."; a two-digit year lands
// between today - 79 years and today + 20 years; when the month is over 12 and the day is not, day and month
// swap ("1-13-2005" is 13 January 2005). Also reads ISO "yyyy-mm-dd".
std::optional<QDate> TextoAFecha(const QString &s);
bool EsFecha(const QString &s);
bool EsFecha(const QVariant &v);
// A date as the short date text "dd/mm/yyyy".
QString FechaCorta(const QDate &d);
// The long date text, as the Argentine locale writes it ("sábado, 21 de noviembre de 2026").
QString FechaLarga(const QDate &d);
// Serial number of a date (days since 30 December 1899) and back; a serial outside the years
// 100 to 9999 gives an invalid date.
double FechaASerial(const QDate &d);
QDate SerialAFecha(double serial);
// A date value or a date text as a date; nullopt when it is neither.
std::optional<QDate> ADate(const QVariant &v);

// "ENERO" ... "DICIEMBRE" for months 1 to 12; empty otherwise.
QString NombreMes(int mes);

// The text of a value as the old platform converted it by default: dates "dd/mm/yyyy",
// numbers NumeroATexto, null as empty text, texts as they are.
QString Texto(const QVariant &v);

// Latin-1 bytes of a text: each character outside Latin-1 becomes "?".
QByteArray ALatin1(const QString &s);
// The same text as it will be written: one "?" for each character outside Latin-1, so that its
// length is its length in bytes in the file (a character beyond the basic plane is two UTF-16
// units but one byte).
QString EnLatin1(const QString &s);

// CUIT check digit of the first ten digits (weights 5 4 3 2 7 6 5 4 3 2, modulo 11);
// -1 when the ten digits admit none (the tax authority then changes the prefix).
int DigitoVerificador(const QString &diezDigitos);

// The error the platform raises when a value cannot be converted.
struct ErrorConversion {
    QString descripcion;
};

} // namespace conv
