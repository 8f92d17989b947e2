#include "checks/Verificacion.h"

#include "data/Componentes.h"
#include "data/Convenciones.h"
#include "data/oDB.h"
#include "reports/Exportar.h"
#include "reports/RegistrosAFIP.h"

#include <QHash>
#include <algorithm>
#include <cmath>

namespace verificacion {

// One invoice as the check sees it: the values the export reads (amounts normalised as it
// normalises them), its lines, and what the export makes of it.
struct LineaIVA {
    double tasa = 0;
    double valor = 0;
};

struct FacturaRevisada {
    FacturaExportada f;          // as the export reads it (date "dd/mm/yyyy")
    QDate fecha;
    bool proveedorConocido = true;
    QList<LineaIVA> lineasIVA;   // in the order they were entered
    int lineasIB = 0;
    double sumaIB = 0;
    // What the export makes of it.
    QString codigo;              // type code, empty for a type outside the table
    NumeroComprobante nro;
    std::optional<QString> numero20;      // number field; nullopt when it does not fit
    std::optional<QString> clave;         // type, point of sale, number and CUIT as written
};

struct Contexto {
    QString cuitEmpresa;
    QDate desde;  // first day of the period
    QDate hasta;  // last day of the period's month
    QHash<QString, QList<const FacturaRevisada *>> porClave;
};

namespace {

QString Tasa(double t) { return conv::NumeroATexto(t) + u'%'; }
bool Distinto(double a, double b, double tolerancia = 0.005) { return std::fabs(a - b) > tolerancia; }
double Centavos(double n) { return conv::Redondear(n, 2); }

using Args = std::optional<QStringList>;

// --- Rules ---------------------------------------------------------------------------------

Args CuitEmpresa(const FacturaRevisada &, const Contexto &c)
{
    const QString motivo = MotivoCuitInvalido(c.cuitEmpresa);
    return motivo.isEmpty() ? Args() : Args(QStringList{c.cuitEmpresa, motivo});
}

Args CuitProveedor(const FacturaRevisada &r, const Contexto &)
{
    const QString motivo = MotivoCuitInvalido(r.f.cuit);
    return motivo.isEmpty() ? Args() : Args(QStringList{r.f.cuit, motivo});
}

Args TipoFueraDeTabla(const FacturaRevisada &r, const Contexto &)
{
    return r.codigo.isEmpty() ? Args(QStringList{r.f.tipo}) : Args();
}

Args PuntoVentaNoNumerico(const FacturaRevisada &r, const Contexto &)
{
    // The export's own warning.
    return conv::EsNumerico(r.nro.puntoVenta) ? Args() : Args(QStringList{r.nro.puntoVenta});
}

Args NumeroNoNumerico(const FacturaRevisada &r, const Contexto &)
{
    if (r.numero20 && conv::EsNumerico(*r.numero20))
        return Args();
    return Args(QStringList{r.nro.numero});
}

Args NumeroCortado(const FacturaRevisada &r, const Contexto &)
{
    // The part after "-" loses what precedes its last 6 characters; only digits other than
    // leading zeros count as lost.
    if (!r.nro.texto.contains(u'-'))
        return Args();
    const QString despues = r.nro.texto.split(u'-').value(1);
    const QString perdido = despues.left(std::max<qsizetype>(0, despues.size() - r.nro.numero.size()));
    if (TrimLZ(perdido).isEmpty())
        return Args();
    return Args(QStringList{despues, r.nro.numero});
}

Args Duplicado(const FacturaRevisada &r, const Contexto &c)
{
    if (!r.clave)
        return Args();
    QStringList otras;
    for (const FacturaRevisada *o : c.porClave.value(*r.clave))
        if (o != &r)
            otras << o->f.numero + QStringLiteral(" del ") + o->f.fecha;
    return otras.isEmpty() ? Args() : Args(QStringList{otras.join(QStringLiteral(", "))});
}

Args ProveedorDesconocido(const FacturaRevisada &r, const Contexto &)
{
    return r.proveedorConocido ? Args() : Args(QStringList{r.f.cuit});
}

// The characters of the voucher record that also are in the supplier name and that the file
// cannot carry: control characters (fuera = false) or characters outside Latin-1 (fuera = true).
QString CaracteresDelNombre(const FacturaRevisada &r, bool fuera)
{
    // The characters of the name that reach the voucher record: its first 30, counted as the
    // file counts them, one byte each.
    QString vistos;
    const QList<uint> nombre = r.f.nombre.toUcs4().mid(0, 30);
    for (const uint ch : nombre) {
        const bool control = ch < 0x20 || ch == 0x7f;
        const bool malo = fuera ? ch > 0xff : control;
        if (!malo)
            continue;
        const QString visto = control ? QStringLiteral("U+%1").arg(ch, 4, 16, QChar(u'0')).toUpper()
                                      : QString::fromUcs4(reinterpret_cast<const char32_t *>(&ch), 1);
        if (!vistos.split(u' ').contains(visto))
            vistos += (vistos.isEmpty() ? QString() : QStringLiteral(" ")) + visto;
    }
    return vistos;
}

Args NombreFueraDeLatin1(const FacturaRevisada &r, const Contexto &)
{
    const QString c = CaracteresDelNombre(r, true);
    return c.isEmpty() ? Args() : Args(QStringList{r.f.nombre, c});
}

Args NombreConControl(const FacturaRevisada &r, const Contexto &)
{
    const QString c = CaracteresDelNombre(r, false);
    return c.isEmpty() ? Args() : Args(QStringList{c});
}

// The amounts of the invoice that the files encode, by name.
QList<std::pair<QString, double>> Importes(const FacturaRevisada &r)
{
    return {{QStringLiteral("gravado"), r.f.gravado},
            {QStringLiteral("no gravado"), r.f.noGravado},
            {QStringLiteral("IVA"), r.f.iva},
            {QStringLiteral("Ingresos Brutos"), r.f.ingBrutos},
            {QStringLiteral("total"), r.f.Total()}};
}

Args ImporteGrande(const FacturaRevisada &r, const Contexto &)
{
    QStringList grandes;
    for (const auto &[nombre, importe] : Importes(r)) {
        try {
            Importe15(importe);
        } catch (const oDB::ErrorBD &) {
            grandes << nombre + u' ' + Monto(importe);
        }
    }
    return grandes.isEmpty() ? Args() : Args(QStringList{grandes.join(QStringLiteral("; "))});
}

Args IvaDistintoDeLineas(const FacturaRevisada &r, const Contexto &)
{
    double suma = 0;
    for (const LineaIVA &l : r.lineasIVA)
        suma += l.valor;
    suma = Normalizar(suma);
    return Distinto(r.f.iva, suma) ? Args(QStringList{Monto(r.f.iva), Monto(suma)}) : Args();
}

Args IngBrutosDistintoDeLineas(const FacturaRevisada &r, const Contexto &)
{
    // An invoice of the earlier single-amount scheme has its amount on the header and no lines.
    if (r.lineasIB == 0)
        return Args();
    const double suma = Normalizar(r.sumaIB);
    return Distinto(r.f.ingBrutos, suma) ? Args(QStringList{Monto(r.f.ingBrutos), Monto(suma)}) : Args();
}

// The VAT of each rate, in the order the rates first appear.
QList<std::pair<double, double>> IvaPorTasa(const FacturaRevisada &r)
{
    QList<std::pair<double, double>> t;
    for (const LineaIVA &l : r.lineasIVA) {
        auto it = std::find_if(t.begin(), t.end(), [&l](const auto &p) { return p.first == l.tasa; });
        if (it == t.end())
            t.append({l.tasa, l.valor});
        else
            it->second += l.valor;
    }
    return t;
}

Args IvaNoEsLaTasaDelGravado(const FacturaRevisada &r, const Contexto &)
{
    const auto tasas = IvaPorTasa(r);
    if (tasas.size() != 1)
        return Args();
    const auto [tasa, iva] = tasas.first();
    const double esperado = Centavos(r.f.gravado * tasa / 100);
    // Each line is rounded to the cent on its own.
    if (!Distinto(Centavos(iva), esperado, 0.01 * r.lineasIVA.size() + 1e-6))
        return Args();
    return Args(QStringList{Tasa(tasa), Monto(iva), Monto(r.f.gravado), Monto(esperado)});
}

Args VariasTasas(const FacturaRevisada &r, const Contexto &)
{
    const auto tasas = IvaPorTasa(r);
    if (tasas.size() < 2)
        return Args();
    QStringList partes;
    for (const auto &[tasa, iva] : tasas)
        partes << Tasa(tasa) + QStringLiteral(": ") + Monto(iva);
    return Args(QStringList{partes.join(QStringLiteral("; ")), Tasa(r.lineasIVA.first().tasa)});
}

bool ClaseA(const QString &tipo)
{
    return tipo == QLatin1String("A") || tipo == QLatin1String("NDA") || tipo == QLatin1String("TIQUE FCA");
}

Args ClaseASinIva(const FacturaRevisada &r, const Contexto &)
{
    if (!ClaseA(r.f.tipo) || r.f.gravado == 0 || !r.lineasIVA.isEmpty())
        return Args();
    return Args(QStringList{r.f.tipo, Monto(r.f.gravado)});
}

Args ClaseBCConIva(const FacturaRevisada &r, const Contexto &)
{
    // The types of the table whose taxed amount the files leave at zero.
    if (r.codigo.isEmpty() || DiscriminaImportes(r.f.tipo) || r.lineasIVA.isEmpty())
        return Args();
    double suma = 0;
    for (const LineaIVA &l : r.lineasIVA)
        suma += l.valor;
    return Args(QStringList{r.f.tipo, Monto(suma)});
}

Args FechaPosterior(const FacturaRevisada &r, const Contexto &c)
{
    if (!r.fecha.isValid() || r.fecha <= c.hasta)
        return Args();
    return Args(QStringList{conv::FechaCorta(r.fecha), conv::FechaCorta(c.hasta)});
}

Args FechaAntigua(const FacturaRevisada &r, const Contexto &c)
{
    if (!r.fecha.isValid() || r.fecha >= c.desde.addMonths(-12))
        return Args();
    return Args(QStringList{conv::FechaCorta(r.fecha), conv::FechaCorta(c.desde)});
}

Args TotalCero(const FacturaRevisada &r, const Contexto &)
{
    return r.f.Total() == 0 ? Args(QStringList{}) : Args();
}

Args ImporteNegativo(const FacturaRevisada &r, const Contexto &)
{
    QStringList negativos;
    for (const auto &[nombre, importe] : Importes(r))
        if (importe < 0)
            negativos << nombre + u' ' + Monto(importe);
    return negativos.isEmpty() ? Args() : Args(QStringList{negativos.join(QStringLiteral("; "))});
}

constexpr const char *kCorregirNombre = "Corrija el nombre del proveedor en la lista de proveedores [F5].";
constexpr const char *kCorregirNumero =
    "Corrija el número: punto de venta de hasta 4 dígitos, guion y número de hasta 6 dígitos sin contar los ceros "
    "a la izquierda (0001-00001234).";

} // namespace

const std::vector<Regla> &Reglas()
{
    using S = Severidad;
    static const std::vector<Regla> reglas = {
        {"cuit-empresa", S::error, "El CUIT de la empresa (%1) no es válido: %2.",
         "Corrija el CUIT de la empresa en el sistema de facturación antes de presentar.", true, CuitEmpresa},
        {"cuit-proveedor", S::error, "El CUIT del proveedor (%1) no es válido: %2.",
         "Cargue el proveedor con su CUIT correcto en la lista de proveedores [F5] y asígneselo a la factura.", false,
         CuitProveedor},
        {"tipo", S::error,
         "El tipo de comprobante \"%1\" no está en la tabla de la AFIP: sus dos registros salen tres caracteres "
         "más cortos y corren todos los campos siguientes.",
         "Cambie el tipo por uno de la lista: A, B, C, 99, NDA, TIQUE FCA, TIQUE FCB o TIQUE.", false,
         TipoFueraDeTabla},
        {"punto-venta", S::error, "El punto de venta \"%1\" no es numérico.", kCorregirNumero, false, PuntoVentaNoNumerico},
        {"numero", S::error, "El número \"%1\" no es numérico o no entra en los 20 caracteres del archivo.",
         kCorregirNumero, false, NumeroNoNumerico},
        {"numero-cortado", S::error,
         "El número %1 tiene más de 6 dígitos: el archivo lleva sólo %2, y otra factura con los mismos últimos "
         "dígitos quedaría con el mismo número.",
         "Verifique el número en el comprobante; si es correcto, infórmelo a mano en el aplicativo de la AFIP.", false,
         NumeroCortado},
        {"duplicado", S::error,
         "Otra factura del período va a los archivos con el mismo tipo, punto de venta, número y proveedor: %1.",
         "Corrija el número de una de las dos, o elimine la que está repetida.", false, Duplicado},
        {"proveedor-desconocido", S::aviso,
         "El proveedor %1 no está en la tabla de proveedores: el archivo lleva el nombre \"desconocido!\".",
         "Agregue el proveedor con ese CUIT en la lista de proveedores [F5].", false, ProveedorDesconocido},
        {"nombre-latin1", S::aviso,
         "El nombre del proveedor \"%1\" lleva caracteres fuera de Latin-1, que el archivo escribe como \"?\": %2.",
         kCorregirNombre, false, NombreFueraDeLatin1},
        {"nombre-control", S::error,
         "El nombre del proveedor lleva caracteres de control que rompen el registro: %1.", kCorregirNombre, false,
         NombreConControl},
        {"importe-grande", S::error, "Importe demasiado grande (%1): no entra en los 15 dígitos del archivo y la exportación falla.",
         "Corrija el importe; el mayor que entra es 9999999999999,99.", false, ImporteGrande},
        {"iva-lineas", S::error, "El IVA de la factura (%1) no es la suma de sus líneas de IVA (%2).",
         "Abra la factura y guárdela: al abrirla el IVA se vuelve a sumar de sus líneas.", false,
         IvaDistintoDeLineas},
        {"ingbrutos-lineas", S::error,
         "Los Ingresos Brutos de la factura (%1) no son la suma de sus líneas de Ingresos Brutos (%2).",
         "Abra la factura, borre y vuelva a cargar una línea de Ingresos Brutos para que el total se recalcule.",
         false, IngBrutosDistintoDeLineas},
        {"iva-tasa", S::aviso, "El IVA al %1 es %2, pero el %1 del gravado (%3) es %4.",
         "Revise el gravado y el importe de la línea de IVA.", false, IvaNoEsLaTasaDelGravado},
        {"varias-tasas", S::aviso,
         "La factura tiene IVA a varias alícuotas (%1): el archivo de alícuotas informa sólo la primera (%2), con "
         "todo el gravado y todo el IVA.",
         "Corrija a mano el registro de alícuotas en el aplicativo de la AFIP, una línea por alícuota.", false,
         VariasTasas},
        {"clase-a-sin-iva", S::aviso, "Comprobante %1 con gravado %2 y sin líneas de IVA.",
         "Agregue la línea de IVA, o pase el importe a no gravado si el comprobante no lleva IVA.", false,
         ClaseASinIva},
        {"clase-bc-con-iva", S::error,
         "Un comprobante %1 no discrimina IVA, pero la factura tiene líneas de IVA por %2 que el archivo informa.",
         "Verifique el tipo: si el comprobante discrimina IVA es A; si no, borre las líneas de IVA.", false,
         ClaseBCConIva},
        {"fecha-posterior", S::error, "La fecha %1 es posterior al último día del período (%2).",
         "Corrija la fecha, o pase la factura a su período con \"Cambiar\".", false, FechaPosterior},
        {"fecha-antigua", S::aviso, "La fecha %1 es de más de 12 meses antes del período (%2).",
         "Verifique la fecha y el período de la factura.", false, FechaAntigua},
        {"total-cero", S::aviso, "El total de la factura es cero.", "Cargue los importes o elimine la factura.", false,
         TotalCero},
        {"importe-negativo", S::error,
         "Importe negativo (%1): el archivo lo escribe con el signo dentro del campo y la AFIP lo rechaza.",
         "Cargue los importes en positivo.", false, ImporteNegativo},
    };
    return reglas;
}

const Regla *BuscarRegla(const QString &id)
{
    for (const Regla &r : Reglas())
        if (id == QLatin1String(r.id))
            return &r;
    return nullptr;
}

QString TextoSeveridad(Severidad s) { return s == Severidad::error ? QStringLiteral("error") : QStringLiteral("aviso"); }

QString MotivoCuitInvalido(const QString &cuit)
{
    if (cuit.size() != 11 || std::any_of(cuit.begin(), cuit.end(), [](QChar c) { return c < u'0' || c > u'9'; }))
        return QStringLiteral("no son 11 dígitos");
    static const QStringList prefijos = {"20", "23", "24", "27", "30", "33", "34"};
    if (!prefijos.contains(cuit.left(2)))
        return QStringLiteral("el prefijo %1 no existe").arg(cuit.left(2));
    const int dv = conv::DigitoVerificador(cuit.left(10));
    if (dv < 0)
        return QStringLiteral("con esos diez dígitos no hay dígito verificador posible");
    if (cuit[10] != QChar(u'0' + dv))
        return QStringLiteral("el dígito verificador debe ser %1").arg(dv);
    return QString();
}

namespace {

// The key of a line or of a sum: supplier and number as the book compares them.
QString Clave(const QString &cuit, const QString &numero) { return cuit.toLower() + u'|' + numero.toLower(); }

// The period's invoices, each with its supplier's name when the supplier is in PRV: the
// export's own invoice statement.
QString SqlFacturas(const QString &cuit, const QString &desde)
{
    return QStringLiteral("select f.*, p.PRVSNOMBRE as NOMBREPRV, p.PRVSNRCUIT as CUITPRV from (") +
           SqlFacturasPeriodo(cuit, desde) +
           QStringLiteral(") f left join PRV p on p.PRVSNRCUIT = f.PRVSNRCUIT");
}

// The keys of the period's invoices, as a sub-query: the lines are read through their index
// from these keys, not by testing every line of the company against the period.
QString ClavesDelPeriodo(const QString &cuit, const QString &desde)
{
    return QStringLiteral(" and (PRVSNRCUIT, IVCSNROFAC) in (select PRVSNRCUIT, IVCSNROFAC from IVC where USRSNRCUIT = ") +
           oDB::Q(cuit) + QStringLiteral(" and IVCFPERIOD = datevalue(") + oDB::Q(desde) + QStringLiteral("))");
}

// The VAT lines of the period's invoices, in the order they were entered.
QString SqlLineasIVA(const QString &cuit, const QString &desde)
{
    return QStringLiteral("select PRVSNRCUIT, IVCSNROFAC, IVCDETIVA, IVCDETVLR from IVC_DetIVA where USRSNRCUIT = ") +
           oDB::Q(cuit) + ClavesDelPeriodo(cuit, desde) + QStringLiteral(" order by IVCdetId");
}

// Lines and sum of the gross-income lines of each invoice of the period.
QString SqlSumasIB(const QString &cuit, const QString &desde)
{
    return QStringLiteral("select PRVSNRCUIT, IVCSNROFAC, count(*) as lineas, sum(IVCDETIBVLR) as suma "
                          "from IVC_DetIngBrutos where USRSNRCUIT = ") +
           oDB::Q(cuit) + ClavesDelPeriodo(cuit, desde) + QStringLiteral(" group by PRVSNRCUIT, IVCSNROFAC");
}

// What the export makes of the invoice: codes, number fields, key and records.
void Exportado(FacturaRevisada &r)
{
    r.codigo = CodigoTipoComprobante(r.f.tipo);
    r.nro = SepararNumero(r.f.tipo, r.f.numero);
    try {
        r.numero20 = CampoNumero(r.nro);
        r.clave = r.codigo + CampoPuntoVenta(r.nro) + *r.numero20 + RellenarIzquierda(r.f.cuit, 20);
    } catch (const oDB::ErrorBD &) {
        // A field that does not fit: the rules of the number and the amounts tell which.
    }
}

Hallazgo Nuevo(const Regla &regla, const FacturaRevisada &r, const QStringList &args)
{
    // In one pass, so that a value holding "%1" (a name, a number) is written as it is.
    const QString plantilla = QString::fromUtf8(regla.mensaje);
    QString mensaje;
    for (qsizetype i = 0; i < plantilla.size(); ++i) {
        if (plantilla[i] == u'%' && i + 1 < plantilla.size() && plantilla[i + 1].isDigit())
            mensaje += args.value(plantilla[++i].digitValue() - 1);
        else
            mensaje += plantilla[i];
    }
    return {QString::fromLatin1(regla.id), regla.severidad, r.fecha, r.f.tipo, r.f.numero, r.f.cuit, r.f.nombre,
            mensaje, QString::fromUtf8(regla.accion)};
}

} // namespace

Resultado VerificarPeriodo(oDB::clManejo &libro, const QString &cuitEmpresa, const QString &periodoDesde)
{
    const cFORMAT::MAIN fmt;
    Contexto c;
    c.cuitEmpresa = cuitEmpresa;
    const auto desde = conv::TextoAFecha(periodoDesde);
    if (!desde)
        throw oDB::ErrorBD{QStringLiteral("El período '%1' no es una fecha.").arg(periodoDesde)};
    c.desde = QDate(desde->year(), desde->month(), 1);
    c.hasta = c.desde.addMonths(1).addDays(-1);

    // The invoices.
    std::vector<FacturaRevisada> facturas;
    QHash<QString, qsizetype> indice;
    oDB::Recordset rs;
    libro.Consultar(rs, SqlFacturas(cuitEmpresa, periodoDesde));
    facturas.reserve(size_t(rs.RecordCount()));
    for (; !rs.Eof(); rs.MoveNext()) {
        FacturaRevisada r;
        r.fecha = conv::ADate(rs(QStringLiteral("IVCFCOMPRO"))).value_or(QDate());
        r.f.fecha = conv::FechaCorta(r.fecha);
        r.f.tipo = fmt.EsNull(rs(QStringLiteral("IVCSTIPFAC")));
        r.f.numero = fmt.EsNull(rs(QStringLiteral("IVCSNROFAC")));
        r.f.cuit = fmt.EsNull(rs(QStringLiteral("PRVSNRCUIT")));
        r.proveedorConocido = !rs(QStringLiteral("CUITPRV")).isNull();
        r.f.nombre = r.proveedorConocido ? fmt.EsNull(rs(QStringLiteral("NOMBREPRV"))) : QStringLiteral("desconocido!");
        r.f.noGravado = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCDNOGRAV"))));
        r.f.gravado = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCDGRAVAD"))));
        r.f.iva = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVARIN"))));
        r.f.ingBrutos = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCINGBRU"))));
        indice.insert(Clave(r.f.cuit, r.f.numero), qsizetype(facturas.size()));
        facturas.push_back(std::move(r));
    }
    rs.Close();

    // Their VAT lines and gross-income sums.
    libro.Consultar(rs, SqlLineasIVA(cuitEmpresa, periodoDesde));
    for (; !rs.Eof(); rs.MoveNext()) {
        const auto it = indice.constFind(Clave(fmt.EsNull(rs(QStringLiteral("PRVSNRCUIT"))),
                                               fmt.EsNull(rs(QStringLiteral("IVCSNROFAC")))));
        if (it != indice.cend())
            facturas[size_t(*it)].lineasIVA.append(
                {fmt.EsNumero(rs(QStringLiteral("IVCDETIVA"))), fmt.EsNumero(rs(QStringLiteral("IVCDETVLR")))});
    }
    rs.Close();
    libro.Consultar(rs, SqlSumasIB(cuitEmpresa, periodoDesde));
    for (; !rs.Eof(); rs.MoveNext()) {
        const auto it = indice.constFind(Clave(fmt.EsNull(rs(QStringLiteral("PRVSNRCUIT"))),
                                               fmt.EsNull(rs(QStringLiteral("IVCSNROFAC")))));
        if (it != indice.cend()) {
            facturas[size_t(*it)].lineasIB = int(fmt.EsNumero(rs(QStringLiteral("lineas"))));
            facturas[size_t(*it)].sumaIB = fmt.EsNumero(rs(QStringLiteral("suma")));
        }
    }
    rs.Close();

    for (FacturaRevisada &r : facturas) {
        Exportado(r);
        if (r.clave)
            c.porClave[*r.clave].append(&r);
    }

    Resultado res;
    res.facturas = int(facturas.size());
    FacturaRevisada empresa;
    empresa.f.cuit = cuitEmpresa;
    for (const Regla &regla : Reglas()) {
        if (!regla.porEmpresa)
            continue;
        if (const auto args = regla.revisar(empresa, c))
            res.hallazgos.append(Nuevo(regla, empresa, *args));
    }
    for (const FacturaRevisada &r : facturas)
        for (const Regla &regla : Reglas())
            if (!regla.porEmpresa)
                if (const auto args = regla.revisar(r, c))
                    res.hallazgos.append(Nuevo(regla, r, *args));

    // Errors first; then the company's, then by date and number; within an invoice, in the
    // order of the rules.
    std::stable_sort(res.hallazgos.begin(), res.hallazgos.end(), [](const Hallazgo &a, const Hallazgo &b) {
        if (a.severidad != b.severidad)
            return a.severidad == Severidad::error;
        if (a.fecha != b.fecha)
            return a.fecha < b.fecha;
        return conv::Val(a.numero) < conv::Val(b.numero);
    });
    for (const Hallazgo &h : res.hallazgos)
        (h.severidad == Severidad::error ? res.errores : res.avisos)++;
    return res;
}

} // namespace verificacion
