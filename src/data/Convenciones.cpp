#include "data/Convenciones.h"

#include <QLocale>
#include <QRegularExpression>
#include <cmath>
#include <cstdio>

namespace conv {

namespace {
QDate g_hoy;

const QDate kEpoca(1899, 12, 30);

bool EsDigito(QChar c) { return c >= u'0' && c <= u'9'; }
} // namespace

QDate Hoy() { return g_hoy.isValid() ? g_hoy : QDate::currentDate(); }
void FijarHoy(const QDate &fecha) { g_hoy = fecha; }

QString LTrim(const QString &s)
{
    qsizetype i = 0;
    while (i < s.size() && s[i] == u' ')
        ++i;
    return s.mid(i);
}

QString RTrim(const QString &s)
{
    qsizetype n = s.size();
    while (n > 0 && s[n - 1] == u' ')
        --n;
    return s.left(n);
}

QString Trim(const QString &s) { return LTrim(RTrim(s)); }

std::optional<double> ANumero(const QString &texto)
{
    const QString s = texto.trimmed();
    if (s.isEmpty())
        return std::nullopt;
    qsizetype i = 0;
    bool negativo = false;
    if (s[i] == u'+' || s[i] == u'-') {
        negativo = s[i] == u'-';
        ++i;
    }
    QByteArray limpio;
    int digitos = 0, separadores = 0;
    for (; i < s.size(); ++i) {
        const QChar c = s[i];
        if (EsDigito(c)) {
            limpio.append(char(c.unicode()));
            ++digitos;
        } else if (c == u',' || c == u'.') {
            if (++separadores > 1)
                return std::nullopt;
            limpio.append('.');
        } else {
            return std::nullopt;
        }
    }
    if (digitos == 0)
        return std::nullopt;
    const double n = std::strtod(limpio.constData(), nullptr);
    return negativo ? -n : n;
}

bool EsNumerico(const QString &s) { return ANumero(s).has_value(); }

bool EsNumerico(const QVariant &v)
{
    if (v.isNull() || !v.isValid())
        return false;
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
        return true;
    case QMetaType::QDate:
        return false;
    default:
        return EsNumerico(v.toString());
    }
}

double CDbl(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return v.toDouble();
    case QMetaType::Bool:
        return v.toBool() ? -1 : 0;
    case QMetaType::QDate:
        return FechaASerial(v.toDate());
    default:
        break;
    }
    if (v.isNull() || !v.isValid())
        throw ErrorConversion{QStringLiteral("Uso no válido de Null")};
    if (auto n = ANumero(v.toString()))
        return *n;
    throw ErrorConversion{QStringLiteral("No coinciden los tipos")};
}

double Val(const QString &s)
{
    QByteArray num;
    bool punto = false, signo = false, digitos = false;
    for (QChar c : s) {
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r')
            continue;
        if (!signo && !digitos && !punto && (c == u'-' || c == u'+')) {
            signo = true;
            num.append(char(c.unicode()));
        } else if (EsDigito(c)) {
            digitos = true;
            num.append(char(c.unicode()));
        } else if (c == u'.' && !punto) {
            punto = true;
            num.append('.');
        } else {
            break;
        }
    }
    if (!digitos)
        return 0;
    return std::strtod(num.constData(), nullptr);
}

QString NumeroATexto(double n)
{
    if (n == 0)
        return QStringLiteral("0");
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", n);
    QString s = QString::fromLatin1(buf);
    if (s.contains(u'e')) {
        // Very large or small numbers: write them out plainly.
        std::snprintf(buf, sizeof buf, "%.15f", n);
        s = QString::fromLatin1(buf);
        if (s.contains(u'.')) {
            while (s.endsWith(u'0'))
                s.chop(1);
            if (s.endsWith(u'.'))
                s.chop(1);
        }
    }
    s.replace(u'.', u',');
    return s;
}

double Redondear(double n, int decimales)
{
    // Round the value as it reads in decimal: 2.675 is held as 2.67499999..., but a person
    // reading "2,675" expects "2,68". A nudge far below the 15 significant digits the program
    // keeps brings such halves back to their decimal reading.
    const double v = n * std::pow(10.0, decimales);
    const double r = std::round(v + std::copysign(std::fabs(v) * 1e-13 + 1e-9, v));
    const double out = r / std::pow(10.0, decimales);
    return out == 0 ? 0.0 : out;
}

namespace {

bool EsPatronNumerico(const QString &p)
{
    if (p.isEmpty())
        return false;
    int puntos = 0;
    for (QChar c : p) {
        if (c == u'.')
            ++puntos;
        else if (c != u'0' && c != u'#')
            return false;
    }
    return puntos <= 1;
}

QString FormatoNumero(double n, const QString &patron)
{
    const qsizetype punto = patron.indexOf(u'.');
    const QString parteEntera = punto < 0 ? patron : patron.left(punto);
    const QString parteDecimal = punto < 0 ? QString() : patron.mid(punto + 1);
    const int decimales = int(parteDecimal.size());
    const int minDecimales = int(parteDecimal.count(u'0'));
    const int minEnteros = int(parteEntera.count(u'0'));

    const double r = Redondear(n, decimales);
    const bool negativo = r < 0;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*f", decimales, std::fabs(r));
    QString s = QString::fromLatin1(buf);
    QString ent = s, dec;
    if (const qsizetype p = s.indexOf(u'.'); p >= 0) {
        ent = s.left(p);
        dec = s.mid(p + 1);
    }
    while (dec.size() > minDecimales && dec.endsWith(u'0'))
        dec.chop(1);
    if (ent == QLatin1String("0") && minEnteros == 0)
        ent.clear();
    while (ent.size() < minEnteros)
        ent.prepend(u'0');
    QString out = ent;
    if (!dec.isEmpty() || (punto >= 0 && minDecimales > 0))
        out += u',' + dec;
    if (negativo && (out.contains(QRegularExpression(QStringLiteral("[1-9]")))))
        out.prepend(u'-');
    return out;
}

bool EsPatronFecha(const QString &p)
{
    static const QRegularExpression re(QStringLiteral("^[dmy/\\-. ]+$"));
    return re.match(p).hasMatch();
}

QString FormatoFecha(const QDate &d, const QString &patron)
{
    QString out;
    qsizetype i = 0;
    while (i < patron.size()) {
        const QChar c = patron[i];
        qsizetype n = 1;
        while (i + n < patron.size() && patron[i + n] == c)
            ++n;
        if (c == u'd') {
            out += n >= 2 ? QString::asprintf("%02d", d.day()) : QString::number(d.day());
        } else if (c == u'm') {
            out += n >= 2 ? QString::asprintf("%02d", d.month()) : QString::number(d.month());
        } else if (c == u'y') {
            if (n >= 4)
                out += QString::asprintf("%04d", d.year());
            else
                out += QString::asprintf("%02d", d.year() % 100);
        } else {
            out += QString(n, c);
        }
        i += n;
    }
    return out;
}

} // namespace

QString Format(const QVariant &v, const QString &patron)
{
    if (v.isNull() || !v.isValid())
        return QString();
    if (EsPatronNumerico(patron)) {
        if (v.typeId() == QMetaType::QDate)
            return FormatoNumero(FechaASerial(v.toDate()), patron);
        if (EsNumerico(v))
            return FormatoNumero(CDbl(v), patron);
        return Texto(v);
    }
    if (EsPatronFecha(patron)) {
        if (v.typeId() == QMetaType::QDate)
            return FormatoFecha(v.toDate(), patron);
        if (v.typeId() != QMetaType::QString && EsNumerico(v))
            return FormatoFecha(SerialAFecha(v.toDouble()), patron);
        const QString t = v.toString();
        if (auto d = TextoAFecha(t))
            return FormatoFecha(*d, patron);
        if (auto n = ANumero(t))
            return FormatoFecha(SerialAFecha(*n), patron);
        return t;
    }
    return Texto(v);
}

namespace {

int AnioCompleto(int y, int digitos)
{
    if (digitos <= 2)
        return y < 30 ? 2000 + y : 1900 + y;
    return y;
}

} // namespace

std::optional<QDate> TextoAFecha(const QString &texto)
{
    const QString s = texto.trimmed();
    static const QRegularExpression iso(QStringLiteral("^(\\d{4})-(\\d{1,2})-(\\d{1,2})$"));
    if (auto m = iso.match(s); m.hasMatch()) {
        const QDate d(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
        if (d.isValid())
            return d;
        return std::nullopt;
    }
    static const QRegularExpression re(
        QStringLiteral("^(\\d{1,2})[/\\-.](\\d{1,2})[/\\-.](\\d{1,4})$"));
    const auto m = re.match(s);
    if (!m.hasMatch())
        return std::nullopt;
    int dia = m.captured(1).toInt();
    int mes = m.captured(2).toInt();
    const int anio = AnioCompleto(m.captured(3).toInt(), int(m.captured(3).size()));
    if (mes > 12 && dia <= 12)
        std::swap(dia, mes);
    const QDate d(anio, mes, dia);
    if (!d.isValid() || anio < 100)
        return std::nullopt;
    return d;
}

bool EsFecha(const QString &s) { return TextoAFecha(s).has_value(); }

bool EsFecha(const QVariant &v)
{
    if (v.typeId() == QMetaType::QDate)
        return v.toDate().isValid();
    if (v.typeId() == QMetaType::QString)
        return EsFecha(v.toString());
    return false;
}

QString FechaCorta(const QDate &d)
{
    return d.isValid() ? QString::asprintf("%02d/%02d/%04d", d.day(), d.month(), d.year())
                       : QString();
}

QString FechaLarga(const QDate &d)
{
    return QLocale(QLocale::Spanish, QLocale::Argentina).toString(d, QLocale::LongFormat);
}

double FechaASerial(const QDate &d) { return double(kEpoca.daysTo(d)); }

QDate SerialAFecha(double serial) { return kEpoca.addDays(qint64(std::floor(serial))); }

std::optional<QDate> ADate(const QVariant &v)
{
    if (v.typeId() == QMetaType::QDate)
        return v.toDate().isValid() ? std::optional<QDate>(v.toDate()) : std::nullopt;
    if (v.isNull())
        return std::nullopt;
    return TextoAFecha(v.toString());
}

QString NombreMes(int mes)
{
    static const char *const nombres[] = {"ENERO",   "FEBRERO",    "MARZO",   "ABRIL",
                                          "MAYO",    "JUNIO",      "JULIO",   "AGOSTO",
                                          "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE", "DICIEMBRE"};
    if (mes < 1 || mes > 12)
        return QString();
    return QString::fromLatin1(nombres[mes - 1]);
}

QString Texto(const QVariant &v)
{
    if (v.isNull() || !v.isValid())
        return QString();
    switch (v.typeId()) {
    case QMetaType::QDate:
        return FechaCorta(v.toDate());
    case QMetaType::Double:
    case QMetaType::Float:
        return NumeroATexto(v.toDouble());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return QString::number(v.toLongLong());
    case QMetaType::Bool:
        return v.toBool() ? QStringLiteral("Verdadero") : QStringLiteral("Falso");
    default:
        return v.toString();
    }
}

QByteArray ALatin1(const QString &s)
{
    QByteArray out;
    out.reserve(s.size());
    for (QChar c : s)
        out.append(c.unicode() < 256 ? char(c.unicode()) : '?');
    return out;
}

} // namespace conv
