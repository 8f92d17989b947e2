#include "reports/RegistrosAFIP.h"

#include "data/Convenciones.h"
#include "data/oDB.h"

namespace {

const QString kCRLF = QStringLiteral("\r\n");

// Right(s, n) and Left(s, n) of the old platform: the whole text when it is shorter.
QString Derecha(const QString &s, int n) { return n >= s.size() ? s : s.right(n); }
QString Izquierda(const QString &s, int n) { return s.left(n); }

} // namespace

QString TrimLZ(const QString &texto)
{
    qsizetype i = 0;
    while (i < texto.size() && texto[i] == u'0')
        ++i;
    return texto.mid(i);
}

QString Repetir(int cantidad, QChar ch)
{
    if (cantidad < 0)
        throw oDB::ErrorBD{QStringLiteral("Llamada a procedimiento o argumento no válidos"), 5};
    return QString(cantidad, ch);
}

QString RellenarIzquierda(const QString &texto, int ancho, QChar ch)
{
    return Repetir(ancho - int(texto.size()), ch) + texto;
}

QString Monto(double importe) { return conv::Format(importe, QStringLiteral("00.00")); }

double Normalizar(double importe) { return conv::CDbl(Monto(importe)); }

QString Importe15(double importe)
{
    QString s = conv::Format(importe, QStringLiteral("00.00"));
    s.remove(u',');
    return RellenarIzquierda(s, 15);
}

QString CodigoTipoComprobante(const QString &tipo)
{
    static const struct {
        const char *tipo;
        const char *codigo;
    } tabla[] = {
        {"A", "001"},         {"B", "006"},         {"C", "011"},     {"99", "099"},
        {"TIQUE FCA", "081"}, {"TIQUE FCB", "082"}, {"TIQUE", "083"}, {"NDA", "002"},
    };
    for (const auto &t : tabla)
        if (tipo == QLatin1String(t.tipo))
            return QString::fromLatin1(t.codigo);
    return QString();
}

QString CodigoAlicuota(const std::optional<QString> &tasa, bool &sinAlicuota)
{
    if (tasa) {
        if (*tasa == QLatin1String("2,5"))
            return QStringLiteral("0009");
        if (*tasa == QLatin1String("21"))
            return QStringLiteral("0005");
        if (*tasa == QLatin1String("10,5"))
            return QStringLiteral("0004");
        if (*tasa == QLatin1String("27"))
            return QStringLiteral("0006");
    }
    sinAlicuota = true;
    return QStringLiteral("0003");
}

bool DiscriminaImportes(const QString &tipo)
{
    return tipo == QLatin1String("A") || tipo == QLatin1String("NDA") ||
           tipo == QLatin1String("TIQUE FCA") || tipo == QLatin1String("99");
}

NumeroComprobante SepararNumero(const QString &tipo, const QString &numeroTexto)
{
    NumeroComprobante n;
    n.texto = numeroTexto;
    if (!n.texto.contains(u'-') && tipo == QLatin1String("99"))
        n.texto.prepend(QStringLiteral("0000-"));
    if (!n.texto.contains(u'-')) {
        n.puntoVenta = QStringLiteral("0001");
        n.numero = n.texto;
    } else {
        const QStringList partes = n.texto.split(u'-');
        n.puntoVenta = Derecha(partes[0], 4);
        n.numero = Derecha(partes[1], 6);
    }
    return n;
}

QString CampoPuntoVenta(const NumeroComprobante &n) { return u'0' + n.puntoVenta; }

QString CampoNumero(const NumeroComprobante &n) { return RellenarIzquierda(n.numero, 20); }

QString CantidadAlicuotasYOperacion(const QString &tipo, double noGravado, double gravado,
                                    double ingBrutos, bool sinAlicuota, bool gravadoCero)
{
    // The gross-income amount (not the VAT) takes part in the first and third rules, and the
    // operation letter is a lower-case "n": both as the authority's files have always had them.
    if (noGravado == 0 && sinAlicuota && gravado != 0 && ingBrutos != 0)
        return QStringLiteral("1n");
    if (tipo == QLatin1String("A") || tipo == QLatin1String("NDA") ||
        tipo == QLatin1String("TIQUE FCA") || !sinAlicuota)
        return QStringLiteral("1 ");
    if (tipo != QLatin1String("99") && sinAlicuota && noGravado != 0 && gravado == 0 &&
        ingBrutos == 0)
        return QStringLiteral("0n");
    if (gravado != 0 && !gravadoCero)
        return QStringLiteral("1n");
    if (gravadoCero)
        return QStringLiteral("1n");
    return QStringLiteral("0n");
}

RegistrosFactura ArmarRegistros(const FacturaExportada &factura, EstadoRegistros &estado)
{
    // Widths are counted in the bytes the file will hold: texts are cut and padded as they
    // will be written.
    FacturaExportada f = factura;
    for (QString *texto : {&f.fecha, &f.numero, &f.cuit, &f.nombre})
        *texto = conv::EnLatin1(*texto);
    RegistrosFactura r;
    QString &c = r.comprobante;
    QString &a = r.alicuota;

    // Date as yyyymmdd from "dd/mm/yyyy", type code, point of sale and number.
    c += Derecha(f.fecha, 4) + f.fecha.mid(3, 2) + Izquierda(f.fecha, 2);
    const QString codigo = CodigoTipoComprobante(f.tipo);
    c += codigo;
    a += codigo;
    const NumeroComprobante n = SepararNumero(f.tipo, f.numero);
    const QString puntoVenta = CampoPuntoVenta(n);
    const QString numero = CampoNumero(n);
    c += puntoVenta + numero;
    a += puntoVenta + numero;
    // No import clearance; the supplier is identified by CUIT (document type 80).
    c += QString(16, u' ') + QStringLiteral("80");
    a += QStringLiteral("80");

    const QString cuit = RellenarIzquierda(f.cuit, 20);
    c += cuit;
    a += cuit;
    c += (Izquierda(f.nombre, 30) + QString(30, u' ')).left(30);
    c += Importe15(f.Total());

    if (DiscriminaImportes(f.tipo)) {
        const QString gravado = Importe15(f.gravado);
        estado.GravadoCero = false;
        if (gravado.count(u'0') == gravado.size())
            estado.GravadoCero = true;
        c += Importe15(f.noGravado);
        a += gravado;
    } else {
        c += QString(15, u'0');
        a += QString(15, u'0');
    }

    bool sinAlicuota = false;
    a += CodigoAlicuota(f.alicuota, sinAlicuota);

    c += QString(45, u'0');
    c += Importe15(f.ingBrutos);
    c += QString(30, u'0');
    c += QStringLiteral("PES0001000000");
    c += CantidadAlicuotasYOperacion(f.tipo, f.noGravado, f.gravado, f.ingBrutos, sinAlicuota,
                                     estado.GravadoCero);
    c += QString(15, u'0');
    a += Importe15(f.iva) + kCRLF;
    c += QString(26, u'0') + QString(30, u' ') + QString(15, u'0') + kCRLF;
    return r;
}
