// SQL functions of the book files. They behave as the functions of the old engine that the
// statements were written for, with the program's conventions (decimal comma, day before
// month) from Convenciones.

#include "data/Convenciones.h"
#include "data/oDB.h"

#include <sqlite3.h>

namespace oDB {

namespace {

QString TextoArg(sqlite3_value *v)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_value_text(v)),
                             sqlite3_value_bytes(v));
}

QVariant VariantArg(sqlite3_value *v)
{
    switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
        return QVariant();
    case SQLITE_INTEGER:
        return QVariant(qlonglong(sqlite3_value_int64(v)));
    case SQLITE_FLOAT:
        return QVariant(sqlite3_value_double(v));
    default:
        return QVariant(TextoArg(v));
    }
}

void ResultadoTexto(sqlite3_context *ctx, const QString &s)
{
    const QByteArray b = s.toUtf8();
    sqlite3_result_text(ctx, b.constData(), int(b.size()), SQLITE_TRANSIENT);
}

void ResultadoFecha(sqlite3_context *ctx, const QDate &d)
{
    ResultadoTexto(ctx, d.toString(Qt::ISODate));
}

bool Nulo(sqlite3_context *ctx, sqlite3_value *v)
{
    if (sqlite3_value_type(v) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return true;
    }
    return false;
}

void Error(sqlite3_context *ctx, const QString &texto)
{
    const QByteArray b = texto.toUtf8();
    sqlite3_result_error(ctx, b.constData(), int(b.size()));
}

// datevalue(text): the date of a text, stored as ISO text. A text that is not a date fails
// the statement.
void fDateValue(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    const QVariant v = VariantArg(a[0]);
    if (v.typeId() == QMetaType::QString) {
        if (auto d = conv::TextoAFecha(v.toString()))
            return ResultadoFecha(ctx, *d);
        return Error(ctx, QStringLiteral("No coinciden los tipos de datos en la expresión de "
                                         "criterios: '%1' no es una fecha.")
                              .arg(v.toString()));
    }
    const QDate d = conv::SerialAFecha(v.toDouble());
    if (!d.isValid())
        return Error(ctx, QStringLiteral("Desbordamiento: %1 no es una fecha.").arg(conv::Texto(v)));
    ResultadoFecha(ctx, d);
}

// format(value, pattern)
void fFormat(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    ResultadoTexto(ctx, conv::Format(VariantArg(a[0]), TextoArg(a[1])));
}

// val(text): the leading number of a text.
void fVal(sqlite3_context *ctx, int, sqlite3_value **a)
{
    const int tipo = sqlite3_value_type(a[0]);
    if (tipo == SQLITE_NULL)
        return Error(ctx, QStringLiteral("Uso no válido de Null"));
    if (tipo == SQLITE_INTEGER || tipo == SQLITE_FLOAT)
        return sqlite3_result_double(ctx, sqlite3_value_double(a[0]));
    sqlite3_result_double(ctx, conv::Val(TextoArg(a[0])));
}

// cdbl(value): a number, from a number or a numeric text ("12,50" or "12.50").
void fCDbl(sqlite3_context *ctx, int, sqlite3_value **a)
{
    try {
        sqlite3_result_double(ctx, conv::CDbl(VariantArg(a[0])));
    } catch (const conv::ErrorConversion &e) {
        Error(ctx, e.descripcion);
    }
}

// cint / int / clng
void fCInt(sqlite3_context *ctx, int, sqlite3_value **a)
{
    try {
        const double n = conv::CDbl(VariantArg(a[0]));
        sqlite3_result_int64(ctx, sqlite3_int64(std::llround(n)));
    } catch (const conv::ErrorConversion &e) {
        Error(ctx, e.descripcion);
    }
}

void fInt(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    try {
        sqlite3_result_double(ctx, std::floor(conv::CDbl(VariantArg(a[0]))));
    } catch (const conv::ErrorConversion &e) {
        Error(ctx, e.descripcion);
    }
}

void fCStr(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return Error(ctx, QStringLiteral("Uso no válido de Null"));
    ResultadoTexto(ctx, conv::Texto(VariantArg(a[0])));
}

void fRight(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    const QString s = conv::Texto(VariantArg(a[0]));
    const int n = sqlite3_value_int(a[1]);
    ResultadoTexto(ctx, n >= s.size() ? s : s.right(qMax(0, n)));
}

void fLeft(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    const QString s = conv::Texto(VariantArg(a[0]));
    ResultadoTexto(ctx, s.left(qMax(0, sqlite3_value_int(a[1]))));
}

void fMid(sqlite3_context *ctx, int n, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    const QString s = conv::Texto(VariantArg(a[0]));
    const int inicio = qMax(1, sqlite3_value_int(a[1]));
    ResultadoTexto(ctx, n > 2 ? s.mid(inicio - 1, qMax(0, sqlite3_value_int(a[2])))
                              : s.mid(inicio - 1));
}

void fLen(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    sqlite3_result_int64(ctx, conv::Texto(VariantArg(a[0])).size());
}

void fTrim(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    ResultadoTexto(ctx, conv::Trim(conv::Texto(VariantArg(a[0]))));
}

void fUCase(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    ResultadoTexto(ctx, conv::Texto(VariantArg(a[0])).toUpper());
}

void fLCase(sqlite3_context *ctx, int, sqlite3_value **a)
{
    if (Nulo(ctx, a[0]))
        return;
    ResultadoTexto(ctx, conv::Texto(VariantArg(a[0])).toLower());
}

// nz(value, default)
void fNz(sqlite3_context *ctx, int n, sqlite3_value **a)
{
    if (sqlite3_value_type(a[0]) != SQLITE_NULL)
        return sqlite3_result_value(ctx, a[0]);
    if (n > 1)
        return sqlite3_result_value(ctx, a[1]);
    sqlite3_result_int(ctx, 0);
}

// iif(condition, then, else)
void fIif(sqlite3_context *ctx, int, sqlite3_value **a)
{
    const bool cierto = sqlite3_value_type(a[0]) != SQLITE_NULL && sqlite3_value_double(a[0]) != 0;
    sqlite3_result_value(ctx, cierto ? a[1] : a[2]);
}

void fParteFecha(sqlite3_context *ctx, sqlite3_value *v, int parte)
{
    if (Nulo(ctx, v))
        return;
    const auto d = conv::ADate(VariantArg(v));
    if (!d)
        return Error(ctx, QStringLiteral("No coinciden los tipos"));
    sqlite3_result_int(ctx, parte == 0 ? d->day() : parte == 1 ? d->month() : d->year());
}

void fDay(sqlite3_context *ctx, int, sqlite3_value **a) { fParteFecha(ctx, a[0], 0); }
void fMonth(sqlite3_context *ctx, int, sqlite3_value **a) { fParteFecha(ctx, a[0], 1); }
void fYear(sqlite3_context *ctx, int, sqlite3_value **a) { fParteFecha(ctx, a[0], 2); }

void fDate(sqlite3_context *ctx, int, sqlite3_value **) { ResultadoFecha(ctx, conv::Hoy()); }

// The number a money column keeps for a text written into it ('12,50' -> 12.5). Used by the
// book's triggers; a text that is not a number fails the statement, as the old engine's
// type check did.
void fMonto(sqlite3_context *ctx, int, sqlite3_value **a)
{
    const int tipo = sqlite3_value_type(a[0]);
    if (tipo == SQLITE_NULL)
        return sqlite3_result_null(ctx);
    if (tipo == SQLITE_INTEGER || tipo == SQLITE_FLOAT)
        return sqlite3_result_double(ctx, sqlite3_value_double(a[0]));
    if (auto n = conv::ANumero(TextoArg(a[0])))
        return sqlite3_result_double(ctx, *n);
    Error(ctx, QStringLiteral("No coinciden los tipos de datos en la expresión de criterios: "
                              "'%1' no es un número.")
                   .arg(TextoArg(a[0])));
}

struct Funcion {
    const char *nombre;
    int args;
    void (*f)(sqlite3_context *, int, sqlite3_value **);
};

const Funcion kFunciones[] = {
    {"datevalue", 1, fDateValue}, {"cdate", 1, fDateValue}, {"format", 2, fFormat},
    {"val", 1, fVal},             {"cdbl", 1, fCDbl},       {"ccur", 1, fCDbl},
    {"csng", 1, fCDbl},           {"cint", 1, fCInt},       {"clng", 1, fCInt},
    {"int", 1, fInt},             {"cstr", 1, fCStr},       {"ivc_right", 2, fRight},
    {"ivc_left", 2, fLeft},           {"mid", 2, fMid},         {"mid", 3, fMid},
    {"len", 1, fLen},             {"trim", 1, fTrim},       {"ucase", 1, fUCase},
    {"lcase", 1, fLCase},         {"nz", 1, fNz},           {"nz", 2, fNz},
    {"iif", 3, fIif},             {"day", 1, fDay},         {"month", 1, fMonth},
    {"year", 1, fYear},           {"date", 0, fDate},       {"ivc_monto", 1, fMonto},
};

} // namespace

void RegistrarFunciones(sqlite3 *db)
{
    for (const auto &f : kFunciones) {
        const int flags = SQLITE_UTF8 | (qstrcmp(f.nombre, "date") == 0 ? 0 : SQLITE_DETERMINISTIC);
        sqlite3_create_function_v2(db, f.nombre, f.args, flags, nullptr, f.f, nullptr, nullptr,
                                   nullptr);
    }
}

} // namespace oDB
