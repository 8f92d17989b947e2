#include "data/Convenciones.h"

#include <QLocale>
#include <QRegularExpression>
#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

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
    // Whole amounts, the most common, without the floating-point writer.
    if (std::fabs(n) < 1e15 && n == std::trunc(n))
        return QString::number(qlonglong(n));
    char buf[400];
    int len = std::snprintf(buf, sizeof buf, "%.15g", n);
    if (std::memchr(buf, 'e', size_t(len))) {
        // Very large or small numbers: write them out plainly.
        len = std::snprintf(buf, sizeof buf, "%.15f", n);
        if (std::memchr(buf, '.', size_t(len))) {
            while (len > 0 && buf[len - 1] == '0')
                --len;
            if (len > 0 && buf[len - 1] == '.')
                --len;
        }
    }
    for (int i = 0; i < len; ++i)
        if (buf[i] == '.')
            buf[i] = ',';
    return QString::fromLatin1(buf, len);
}

namespace {
// Powers of ten of the usual decimals, exact, without calling pow for each value.
double Potencia10(int e)
{
    static const double tabla[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8,
                                   1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    return e >= 0 && e < 16 ? tabla[e] : std::pow(10.0, e);
}
} // namespace

double Redondear(double n, int decimales)
{
    // Round the value as it reads in decimal: 2.675 is held as 2.67499999..., but a person
    // reading "2,675" expects "2,68". The reading is the shortest decimal text that gives the
    // same double back, so its digits are exactly those a person typed or saw; that text is
    // rounded half away from zero, and the result is the double nearest the rounded text. At
    // every magnitude a value lands on its own cent, and a value already rounded stays put.
    if (!std::isfinite(n) || decimales < 0 || decimales > 15)
        return n;
    char buf[512];
    const auto [fin, ec] = std::to_chars(buf, buf + sizeof buf, std::fabs(n), std::chars_format::fixed);
    if (ec != std::errc())
        return n;
    const char *punto = std::find(buf, fin, '.');
    if (punto == fin || fin - punto - 1 <= decimales)
        return n == 0 ? 0.0 : n;
    // The digits kept, without the point, and the one that decides.
    char cifras[560];
    int len = 0;
    for (const char *c = buf; c < punto; ++c)
        cifras[len++] = *c;
    for (int i = 1; i <= decimales; ++i)
        cifras[len++] = punto[i];
    if (punto[decimales + 1] >= '5') {
        int i = len - 1;
        while (i >= 0 && cifras[i] == '9')
            cifras[i--] = '0';
        if (i >= 0) {
            ++cifras[i];
        } else {
            std::memmove(cifras + 1, cifras, size_t(len));
            cifras[0] = '1';
            ++len;
        }
    }
    // Back to a decimal text, point in place, and to the nearest double.
    char texto[570];
    const int enteros = len - decimales;
    std::memcpy(texto, cifras, size_t(enteros));
    texto[enteros] = '.';
    std::memcpy(texto + enteros + 1, cifras + enteros, size_t(decimales));
    double r = 0;
    std::from_chars(texto, texto + len + 1, r);
    if (r == 0)
        return 0.0;
    return n < 0 ? -r : r;
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
    // Digits of the pattern: how many decimals, and how many integer and decimal places are
    // always shown ("0"), the others ("#") only when they carry a digit.
    int decimales = 0, minDecimales = 0, minEnteros = 0;
    bool punto = false;
    for (QChar c : patron) {
        if (c == u'.')
            punto = true;
        else if (punto)
            ++decimales, minDecimales += c == u'0';
        else
            minEnteros += c == u'0';
    }

    const double r = Redondear(n, decimales);
    const bool negativo = r < 0;
    char buf[400]; // the widest double written with %f, with its decimals
    int len;
    const double escalado = std::fabs(r) * Potencia10(decimales);
    if (decimales <= 15 && escalado < 4e15) {
        // The rounded value is a whole number of its smallest unit: its digits are those "%.*f"
        // would write, without the cost of the floating-point writer.
        unsigned long long unidades = (unsigned long long)std::llround(escalado);
        char inv[32];
        int k = 0;
        do {
            inv[k++] = char('0' + unidades % 10);
            unidades /= 10;
        } while (unidades);
        while (k < decimales + 1)
            inv[k++] = '0';
        len = 0;
        for (int i = k - 1; i >= 0; --i) {
            if (i == decimales - 1)
                buf[len++] = '.';
            buf[len++] = inv[i];
        }
    } else {
        len = std::snprintf(buf, sizeof buf, "%.*f", decimales, std::fabs(r));
    }
    const char *p = static_cast<const char *>(std::memchr(buf, '.', size_t(len)));
    int entLen = p ? int(p - buf) : len;
    const char *dec = p ? p + 1 : buf + len;
    int decLen = p ? len - entLen - 1 : 0;
    while (decLen > minDecimales && dec[decLen - 1] == '0')
        --decLen;
    if (entLen == 1 && buf[0] == '0' && minEnteros == 0)
        entLen = 0;

    QVarLengthArray<char, 128> out(1 + qMax(minEnteros, entLen) + 1 + decLen);
    int o = 0;
    // A value that shows no digit but zeros carries no sign.
    bool cifra = false;
    for (int i = 0; i < entLen && !cifra; ++i)
        cifra = buf[i] != '0';
    for (int i = 0; i < decLen && !cifra; ++i)
        cifra = dec[i] != '0';
    if (negativo && cifra)
        out[o++] = '-';
    for (int i = entLen; i < minEnteros; ++i)
        out[o++] = '0';
    std::memcpy(out.data() + o, buf, size_t(entLen));
    o += entLen;
    if (decLen > 0 || (punto && minDecimales > 0)) {
        out[o++] = ',';
        std::memcpy(out.data() + o, dec, size_t(decLen));
        o += decLen;
    }
    return QString::fromLatin1(out.data(), o);
}

bool EsPatronFecha(const QString &p)
{
    if (p.isEmpty())
        return false;
    for (QChar c : p)
        if (c != u'd' && c != u'm' && c != u'y' && c != u'/' && c != u'-' && c != u'.' && c != u' ')
            return false;
    return true;
}

// Appends a number of at least the given digits, zero-padded, as %0*d does.
void Cifras(QString &out, int v, int minimo)
{
    if (v < 0 || v > 9999) {
        out += QString::asprintf("%0*d", minimo, v);
        return;
    }
    const int digitos = v >= 1000 ? 4 : v >= 100 ? 3 : v >= 10 ? 2 : 1;
    for (int i = digitos; i < minimo; ++i)
        out += u'0';
    static const int pot[] = {1, 10, 100, 1000};
    for (int i = digitos - 1; i >= 0; --i)
        out += QChar(u'0' + (v / pot[i]) % 10);
}

QString FormatoFecha(const QDate &d, const QString &patron)
{
    QString out;
    out.reserve(patron.size() + 2);
    qsizetype i = 0;
    while (i < patron.size()) {
        const QChar c = patron[i];
        qsizetype n = 1;
        while (i + n < patron.size() && patron[i + n] == c)
            ++n;
        if (c == u'd')
            Cifras(out, d.day(), n >= 2 ? 2 : 1);
        else if (c == u'm')
            Cifras(out, d.month(), n >= 2 ? 2 : 1);
        else if (c == u'y' && n >= 4)
            Cifras(out, d.year(), 4);
        else if (c == u'y')
            Cifras(out, d.year() % 100, 2);
        else
            out += QString(n, c);
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
        if (v.typeId() != QMetaType::QString && EsNumerico(v)) {
            const QDate d = SerialAFecha(v.toDouble());
            return d.isValid() ? FormatoFecha(d, patron) : Texto(v);
        }
        const QString t = v.toString();
        if (auto d = TextoAFecha(t))
            return FormatoFecha(*d, patron);
        if (auto n = ANumero(t); n && SerialAFecha(*n).isValid())
            return FormatoFecha(SerialAFecha(*n), patron);
        return t;
    }
    return Texto(v);
}

namespace {

// A year written with one or two digits lands in the hundred years from today - 79 to
// today + 20, a window that slides with today: "30" is 2030 from 2010 on, and 1930 before.
int AnioCompleto(int y, int digitos)
{
    if (digitos > 2)
        return y;
    const int desde = Hoy().year() - 79;
    return desde + ((y - desde) % 100 + 100) % 100;
}

} // namespace

std::optional<QDate> TextoAFecha(const QString &texto)
{
    const QString s = texto.trimmed();
    // The form the book files keep their dates in, "yyyy-mm-dd", read without the expression.
    if (s.size() == 10 && s[4] == u'-' && s[7] == u'-') {
        int v[3] = {0, 0, 0};
        bool digitos = true;
        for (int i = 0, parte = 0; i < 10 && digitos; ++i) {
            if (i == 4 || i == 7) {
                ++parte;
                continue;
            }
            digitos = EsDigito(s[i]);
            v[parte] = v[parte] * 10 + (s[i].unicode() - u'0');
        }
        if (digitos) {
            const QDate d(v[0], v[1], v[2]);
            return d.isValid() ? std::optional<QDate>(d) : std::nullopt;
        }
    }
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

QDate SerialAFecha(double serial)
{
    // The serials of 1 January 100 and 31 December 9999, the dates the old platform knew;
    // anything beyond (or not a number) is no date at all.
    if (!(serial >= -657434.0 && serial < 2958466.0))
        return QDate();
    return kEpoca.addDays(qint64(std::floor(serial)));
}

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
    for (char32_t c : s.toUcs4())
        out.append(c < 256 ? char(c) : '?');
    return out;
}

QString EnLatin1(const QString &s) { return QString::fromLatin1(ALatin1(s)); }

int DigitoVerificador(const QString &diezDigitos)
{
    static const int pesos[10] = {5, 4, 3, 2, 7, 6, 5, 4, 3, 2};
    if (diezDigitos.size() != 10)
        return -1;
    int suma = 0;
    for (int i = 0; i < 10; ++i) {
        const QChar c = diezDigitos[i];
        if (c < u'0' || c > u'9')
            return -1;
        suma += (c.unicode() - u'0') * pesos[i];
    }
    const int dv = 11 - suma % 11;
    if (dv == 11)
        return 0;
    return dv == 10 ? -1 : dv;
}

} // namespace conv
