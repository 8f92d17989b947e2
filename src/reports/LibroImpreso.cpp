#include "reports/LibroImpreso.h"

#include "app/core/Impresora.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "reports/AnchoLibro.h"
#include "reports/Exportar.h"
#include "reports/Impresoras.h"
#include "reports/RegistrosAFIP.h"

#include <QDir>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <cmath>

QString align(QString &texto, const QString &modo, qint16 ancho)
{
    if (texto.size() > ancho)
        texto = texto.left(qMax<qint16>(ancho, 0));
    const QString blancos(qMax<qsizetype>(ancho - texto.size(), 0), u' ');
    if (modo == QLatin1String("I"))
        return texto + blancos;
    if (modo == QLatin1String("D"))
        return blancos + texto;
    return QStringLiteral("Error en align");
}

namespace libro {

namespace {

const QString kCRLF = QStringLiteral("\r\n");
const QString kSeccion = QStringLiteral(" - Seccion [MORLAxDLL.modGBPROC.ImprimirLibro]");

QString Blancos(int n) { return QString(n, u' '); }
QString Guiones(int n) { return QString(n, u'-'); }

// align on a value that nobody needs cut afterwards.
QString A(QString texto, const char *modo, qint16 ancho)
{
    return align(texto, QLatin1String(modo), ancho);
}

QString F(const QVariant &v) { return conv::Format(v, QStringLiteral("00.00")); }

struct Columna {
    const char *titulo;
    qint16 ancho;
    const char *modo;
};

const Columna kColumnas[] = {
    {"FECHA", 10, "D"},      {"TIPO", 4, "D"},     {"FAC NRO", 18, "D"},
    {"CUIT", 11, "D"},       {"PROVEEDOR", 50, "I"}, {"NO GRAVADO", 10, "D"},
    {"GRAVADO", 10, "D"},    {"ING BRU", 10, "D"}, {"IVA", 10, "D"},
    {"TOTAL", 10, "D"},
};

// The ten columns of a main line, separated by one blank.
QString LineaPrincipal(const QStringList &valores)
{
    QString linea;
    for (int i = 0; i < 10; ++i) {
        if (i > 0)
            linea += u' ';
        linea += A(valores.value(i), kColumnas[i].modo, kColumnas[i].ancho);
    }
    return linea + kCRLF;
}

// The columns of a line table that the ledger prints: rate, description, value.
struct ColumnasDetalle {
    QString tasa;
    QString descripcion;
    QString valor;
};

// The detail lines of an invoice read from a line table: the first after its caption, the
// others after "-->" alone; each with its rate and "%", its description cut to its width and
// its value.
QString Detalle(Sesion &s, const QString &tabla, const QString &deLaFactura, const QString &rotulo,
                const ColumnasDetalle &c, qint16 anchoDescripcion)
{
    cFORMAT::MAIN &fmt = *s.oFormato;
    QString texto;
    oDB::Recordset rs;
    s.dbLibro->Consultar(rs, QStringLiteral("select ") + c.tasa + QStringLiteral(", ") + c.descripcion + QStringLiteral(", ") +
                         c.valor + QStringLiteral(" from ") + tabla + deLaFactura);
    for (bool primera = true; !rs.Eof(); rs.MoveNext(), primera = false) {
        texto += (primera ? rotulo : Blancos(91) + QStringLiteral("-->")) + A(fmt.EsNull(rs(c.tasa)), "D", 5) + u'%' +
                 u' ' + A(fmt.EsNull(rs(c.descripcion)), "I", anchoDescripcion) + u' ' + A(F(rs(c.valor)), "D", 10) +
                 kCRLF;
    }
    rs.Close();
    return texto;
}

} // namespace

QString SqlResumenOtrasLibro(const QString &cuit, const QString &periodoDesde)
{
    return QStringLiteral("select sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  "
                          "from IVC_DetIVA where IVCDETIVA not in (0,10.5,21,27) and USRSNRCUIT = ") +
           oDB::Q(cuit) + QStringLiteral(" ") + ExisteEnPeriodo(cuit, periodoDesde) +
           QStringLiteral(" )");
}

QString ComponerLibro(Sesion &s)
{
    cFORMAT::MAIN &fmt = *s.oFormato;
    QString texto;

    oDB::Recordset rs;
    s.dbLibro->Consultar(rs, QStringLiteral("select * from IVC where USRSNRCUIT = ") + oDB::Q(s.CuitUsuario) +
                  QStringLiteral(" and IVCFPERIOD = datevalue(") + oDB::Q(s.PeriodoDesde) +
                  QStringLiteral(") order by IVCFCOMPRO, val(right(IVCSNROFAC,8))"));

    // Headings and their rule.
    QString titulos, regla;
    for (int i = 0; i < 10; ++i) {
        if (i > 0) {
            titulos += u' ';
            regla += u' ';
        }
        titulos += A(QString::fromLatin1(kColumnas[i].titulo), kColumnas[i].modo, kColumnas[i].ancho);
        regla += Guiones(kColumnas[i].ancho);
    }
    texto += titulos + kCRLF + regla + kCRLF;

    // Sub-heading of the detail lines and its rule.
    texto += Blancos(94) + A(QStringLiteral("IVA"), "D", 5) + u' ' +
             A(QStringLiteral("Descripción"), "I", 30) + u' ' + A(QStringLiteral("Valor"), "D", 10) + kCRLF;
    texto += Blancos(91) + Guiones(5) + u' ' + Guiones(30) + u' ' + Guiones(10) + kCRLF;

    double sumNoGravado = 0, sumGravado = 0, sumIngBrutos = 0, sumIva = 0, sumTotal = 0;
    while (!rs.Eof()) {
        const QString fecha = fmt.EsNull(rs(QStringLiteral("IVCFCOMPRO")));
        const QString tipo = fmt.EsNull(rs(QStringLiteral("IVCSTIPFAC")));
        const QString numero = fmt.EsNull(rs(QStringLiteral("IVCSNROFAC")));
        const QString proveedor = fmt.EsNull(rs(QStringLiteral("PRVSNRCUIT")));

        oDB::Recordset rsPrv;
        s.dbLibro->Consultar(rsPrv, SqlNombreProveedor(proveedor));
        const QString nombre = rsPrv.Eof() ? QStringLiteral("desconocido!")
                                           : fmt.EsNull(rsPrv(QStringLiteral("PRVSNOMBRE")));
        rsPrv.Close();

        const double noGravado = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCDNOGRAV"))));
        const double gravado = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCDGRAVAD"))));
        const double ingBrutos = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCINGBRU"))));
        const double iva = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVARIN"))));
        const double total = Normalizar(noGravado + gravado + iva + ingBrutos);

        texto += LineaPrincipal({fecha, tipo, numero, proveedor, nombre, F(noGravado), F(gravado),
                                 F(ingBrutos), F(iva), F(total)});
        sumNoGravado += noGravado;
        sumGravado += gravado;
        sumIngBrutos += ingBrutos;
        sumIva += iva;
        sumTotal += total;

        const QString deLaFactura = QStringLiteral(" where USRSNRCUIT = ") + oDB::Q(s.CuitUsuario) +
                                    QStringLiteral(" and PRVSNRCUIT = ") + oDB::Q(proveedor) +
                                    QStringLiteral(" and  IVCSNROFAC = ") + oDB::Q(numero);

        texto += Detalle(s, QStringLiteral("IVC_DetIngBrutos"), deLaFactura,
                         Blancos(72) + QStringLiteral("detalle Ing Brutos -->"),
                         {QStringLiteral("IVCDETIB"), QStringLiteral("IVCDETIBDSC"), QStringLiteral("IVCDETIBVLR")}, 19);
        texto += Detalle(s, QStringLiteral("IVC_DetIVA"), deLaFactura, Blancos(79) + QStringLiteral("detalle IVA -->"),
                         {QStringLiteral("IVCDETIVA"), QStringLiteral("IVCDETDSC"), QStringLiteral("IVCDETVLR")}, 30);

        rs.MoveNext();
    }
    rs.Close();

    // Totals under the amount columns.
    texto += Blancos(10) + u' ' + Blancos(4) + u' ' + Blancos(18) + u' ' + Blancos(11) + u' ' +
             A(QStringLiteral("Totales:"), "D", 50);
    for (double suma : {sumNoGravado, sumGravado, sumIngBrutos, sumIva, sumTotal})
        texto += u' ' + A(F(suma), "D", 10);
    texto += kCRLF;

    // Summary by rate: the spreadsheet's statements, the rate printed with its decimal comma.
    for (const QString &tasa : {QStringLiteral("10.5"), QStringLiteral("21"), QStringLiteral("27")}) {
        oDB::Recordset r;
        s.dbLibro->Consultar(r, SqlResumenTasa(tasa, s.CuitUsuario, s.PeriodoDesde));
        if (!r.Eof()) {
            const QString rotulo = QString(tasa).replace(u'.', u',') + QStringLiteral("% ");
            // A rate whose lines all hold no amount sums to null: 00,00, as the spreadsheet.
            texto += QStringLiteral("NETO GRAVADO ") + rotulo + F(fmt.EsNumero(r(QStringLiteral("grav")))) + kCRLF;
            texto += QStringLiteral("IVA ") + rotulo + F(fmt.EsNumero(r(QStringLiteral("iva")))) + kCRLF;
        }
        r.Close();
    }

    // Other rates, and the untaxed amounts and gross-income tax of the period. Both aggregate
    // without grouping: over no row at all they bring one row of null sums, printed as 00,00
    // as the spreadsheet shows them.
    oDB::Recordset rOtras;
    s.dbLibro->Consultar(rOtras, SqlResumenOtrasLibro(s.CuitUsuario, s.PeriodoDesde));
    if (!rOtras.Eof()) {
        texto += QStringLiteral("NETO GRAVADO OTROS ") + F(fmt.EsNumero(rOtras(QStringLiteral("grav")))) + kCRLF;
        texto += QStringLiteral("IVA OTROS ") + F(fmt.EsNumero(rOtras(QStringLiteral("iva")))) + kCRLF;
    }
    rOtras.Close();

    oDB::Recordset rNoGrav;
    s.dbLibro->Consultar(rNoGrav, SqlResumenNoGravado(s.CuitUsuario, s.PeriodoDesde));
    if (!rNoGrav.Eof()) {
        texto += QStringLiteral("INGRESOS BRUTOS ") + F(fmt.EsNumero(rNoGrav(QStringLiteral("ingb")))) + kCRLF;
        texto += QStringLiteral("NO GRAVADOS/EXENTOS ") + F(fmt.EsNumero(rNoGrav(QStringLiteral("nograv")))) + kCRLF;
    }
    rNoGrav.Close();

    texto += QStringLiteral("TOTAL ") + F(sumTotal) + kCRLF;
    return texto;
}

QStringList CortarLineas(const QString &texto) { return texto.split(kCRLF); }

int TotalPaginas(qsizetype n, qint16 lineas)
{
    if (lineas == 0)
        throw oDB::ErrorBD{QStringLiteral("División por cero"), 11};
    const double p = std::ceil(double(n) / lineas);
    return int(std::ceil((p * 4 + double(n)) / lineas));
}

QString Encabezado(const Sesion &s)
{
    return s.NombreUsuario.toUpper() + QStringLiteral(" - CUIT: ") + s.CuitUsuario + Blancos(56) +
           QStringLiteral(" Desde: ") + s.PeriodoDesde + QStringLiteral(" hasta ") + s.PeriodoHasta;
}

QString PiePagina(int pagina, int total)
{
    return A(QStringLiteral("Pagina %1 de %2").arg(pagina).arg(total), "D", kAnchoPie);
}

void ImprimirPaginas(Impresora &imp, const QString &texto, const QString &encabezado,
                     double fuente, qint16 lineas)
{
    const QStringList cuerpo = CortarLineas(texto);
    const qsizetype n = cuerpo.size();
    const int total = TotalPaginas(n, lineas);

    imp.setFontName(QStringLiteral("Courier New"));
    imp.setFontSize(fuente);
    qsizetype siguiente = 0;
    for (int pagina = 1; pagina <= total; ++pagina) {
        imp.setFontSize(fuente + 1);
        imp.Print(QString());
        imp.Print(encabezado);
        imp.setFontSize(fuente);
        imp.Print(QString());

        if (siguiente < n) {
            for (int contador = 5;; ++contador) {
                imp.Print(cuerpo[siguiente++]);
                if (contador > lineas || siguiente >= n)
                    break;
            }
        }

        imp.Print(PiePagina(pagina, total));
        if (siguiente < n)
            imp.NewPage();
    }
    imp.EndDoc();
}

} // namespace libro

bool ImprimirLibro(Sesion &s, Impresora &imp, double fuente, qint16 lineas)
{
    try {
        const QString texto = libro::ComponerLibro(s);
        // No figure is lost at the edge of the sheet.
        const auto tamano = libro::FuenteParaElPapel(s, imp, texto, libro::Encabezado(s), fuente);
        if (!tamano)
            return false;
        try {
            libro::ImprimirPaginas(imp, texto, libro::Encabezado(s), *tamano, lineas);
        } catch (...) {
            // What already went to the printer stays there.
            try {
                imp.EndDoc();
            } catch (...) {
            }
            throw;
        }
        return true;
    } catch (const oDB::ErrorBD &e) {
        if (s.mensajes)
            MostrarError(*s.mensajes, e.descripcion, e.numero, libro::kSeccion);
    } catch (const conv::ErrorConversion &e) {
        if (s.mensajes)
            MostrarError(*s.mensajes, e.descripcion, 13, libro::kSeccion);
    }
    return false;
}

QString RutaLibroPdf(const Sesion &s)
{
    QString carpeta = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (carpeta.isEmpty())
        carpeta = QDir::homePath();
    QDir().mkpath(carpeta);
    QString cuit = s.CuitUsuario;
    cuit.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9_-]")), QStringLiteral("_"));
    const auto desde = conv::TextoAFecha(s.PeriodoDesde);
    const QString periodo = desde ? desde->toString(QStringLiteral("yyyy-MM")) : QStringLiteral("periodo");
    return QDir(carpeta).filePath(QStringLiteral("Libro IVA Compras %1 %2.pdf").arg(cuit, periodo));
}

bool ImprimirLibro(Sesion &s, double fuente, qint16 lineas)
{
    if (s.impresora)
        return ImprimirLibro(s, *s.impresora, fuente, lineas);
    if (!QPrinterInfo::availablePrinters().isEmpty()) {
        auto imp = ImpresoraQt::Predeterminada();
        return ImprimirLibro(s, *imp, fuente, lineas);
    }
    const QString ruta = RutaLibroPdf(s);
    auto imp = ImpresoraQt::Pdf(ruta);
    const bool ok = ImprimirLibro(s, *imp, fuente, lineas);
    if (ok && s.mensajes)
        s.mensajes->MsgBox(QStringLiteral("No hay ninguna impresora instalada. El libro se guardó en:\r\n") +
                               QDir::toNativeSeparators(ruta),
                           vb::vbInformation);
    return ok;
}
