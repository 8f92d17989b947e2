#include "reports/Exportar.h"

#include "app/core/DialogoGuardar.h"
#include "app/core/Sesion.h"
#include "data/Componentes.h"
#include "data/Convenciones.h"
#include "data/oDB.h"

namespace {

const QString kCRLF = QStringLiteral("\r\n");
const QString kFormato = QStringLiteral("00.00");

QString Comillas(const QString &s) { return u'"' + s + u'"'; }

// A description column: "00.00" applied (a text that is not a number stays as it is) and
// every comma turned into a period.
QString TextoPunto(const QString &s)
{
    QString t = conv::Format(s, kFormato);
    t.replace(u',', u'.');
    return t;
}

} // namespace

QString ImportePunto(double importe)
{
    QString t = conv::Format(importe, kFormato);
    t.replace(u',', u'.');
    return t;
}

QString EncabezadoPlanilla(const QString &sep)
{
    static const char *const columnas[] = {"FECHA",      "TIPO",    "FAC NRO", "CUIT",
                                           "PROVEEDOR",  "NO GRAVADO", "GRAVADO", "ING BRU",
                                           "IVA",        "TOTAL",   "Descripcion", "DescripcionExtra"};
    QString s;
    for (const char *c : columnas) {
        if (!s.isEmpty())
            s += sep;
        s += QString::fromLatin1(c);
    }
    return s + kCRLF + kCRLF;
}

QString FilaPlanilla(const FacturaExportada &f, const QString &sep)
{
    return Comillas(f.fecha) + sep + Comillas(f.tipo) + sep +
           Comillas(SepararNumero(f.tipo, f.numero).texto) + sep + Comillas(f.cuit) + sep +
           Comillas(f.nombre) + sep + ImportePunto(f.noGravado) + sep + ImportePunto(f.gravado) +
           sep + ImportePunto(f.ingBrutos) + sep + ImportePunto(f.iva) + sep +
           ImportePunto(f.Total()) + sep + TextoPunto(f.descripcion) + sep +
           TextoPunto(f.descripcionExtra) + kCRLF;
}

void TotalesPlanilla::Sumar(const FacturaExportada &f)
{
    noGravado += f.noGravado;
    gravado += f.gravado;
    ingBrutos += f.ingBrutos;
    iva += f.iva;
    total += f.Total();
}

QString LineaTotales(const TotalesPlanilla &t, const QString &sep)
{
    return sep + sep + sep + sep + QStringLiteral("Totales") + sep + ImportePunto(t.noGravado) +
           sep + ImportePunto(t.gravado) + sep + ImportePunto(t.ingBrutos) + sep +
           ImportePunto(t.iva) + sep + ImportePunto(t.total) + kCRLF + kCRLF;
}

QString ResumenTasa(const QString &tasa, double grav, double iva, const QString &sep)
{
    QString t = tasa;
    t.replace(u',', u'.');
    return QStringLiteral("Neto Gravado ") + t + u'%' + sep + ImportePunto(grav) + kCRLF +
           QStringLiteral("IVA ") + t + u'%' + sep + ImportePunto(iva) + kCRLF;
}

QString ResumenOtras(double grav, double iva, const QString &sep)
{
    return QStringLiteral("Neto Gravado OTROS") + sep + ImportePunto(grav) + kCRLF +
           QStringLiteral("IVA OTROS") + sep + ImportePunto(iva) + kCRLF;
}

QString ResumenNoGravado(double ingBrutos, double noGravado, const QString &sep)
{
    return QStringLiteral("Ingresos Brutos ") + sep + ImportePunto(ingBrutos) + kCRLF +
           QStringLiteral("No gravado/Exentos ") + sep + ImportePunto(noGravado) + kCRLF;
}

QString ResumenTotal(double total, const QString &sep)
{
    return QStringLiteral("Total ") + sep + ImportePunto(total) + kCRLF;
}

QString SqlFacturasPeriodo(const QString &cuit, const QString &periodoDesde)
{
    return QStringLiteral("select * from IVC where USRSNRCUIT = ") + oDB::Q(cuit) +
           QStringLiteral(" and IVCFPERIOD = datevalue(") + oDB::Q(periodoDesde) +
           QStringLiteral(") order by IVCFCOMPRO,val(IVCSNROFAC)");
}

QString SqlNombreProveedor(const QString &cuitProveedor)
{
    return QStringLiteral("select PRVSNOMBRE from PRV where  PRVSNRCUIT = ") + oDB::Q(cuitProveedor);
}

QString SqlAlicuota(const QString &cuit, const QString &numero20, const QString &cuitProveedor)
{
    return QStringLiteral("select IVCDETIVA  from IVC_DetIVA where USRSNRCUIT = ") + oDB::Q(cuit) +
           QStringLiteral(" and IVCSNROFAC like  ") + oDB::Q(u'%' + TrimLZ(numero20)) +
           QStringLiteral(" and PRVSNRCUIT = ") + oDB::Q(cuitProveedor) +
           QStringLiteral(" and USRSNRCUIT = ") + oDB::Q(cuit);
}

QString ExisteEnPeriodo(const QString &cuit, const QString &periodoDesde,
                        const QString &condicionExtra)
{
    return QStringLiteral(" and exists(") + QStringLiteral(" select PRVSNRCUIT from IVC") +
           QStringLiteral(" where ") + condicionExtra +
           QStringLiteral("IVC_DetIVA.IVCSNROFAC = IVC.IVCSNROFAC and") +
           QStringLiteral(" IVC_DetIVA.PRVSNRCUIT = IVC.PRVSNRCUIT and") +
           QStringLiteral(" USRSNRCUIT = ") + oDB::Q(cuit) + QStringLiteral(" and") +
           QStringLiteral(" IVCFPERIOD = datevalue(") + oDB::Q(periodoDesde) + QStringLiteral(")");
}

QString SqlResumenTasa(const QString &tasa, const QString &cuit, const QString &periodoDesde)
{
    // Only the first rate is written without a blank after the equals sign.
    const QString condicion = tasa == QLatin1String("10.5")
                                  ? QStringLiteral("IVCDETIVA =10.5 and")
                                  : QStringLiteral("IVCDETIVA = ") + tasa + QStringLiteral(" and");
    return QStringLiteral("select IVCDETIVA, sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) "
                          "as grav  from IVC_DetIVA where ") +
           condicion + QStringLiteral(" USRSNRCUIT = ") + oDB::Q(cuit) + QStringLiteral(" ") +
           ExisteEnPeriodo(cuit, periodoDesde, QString()) + QStringLiteral(" ) group by IVCDETIVA");
}

QString SqlResumenOtras(const QString &cuit, const QString &periodoDesde)
{
    return QStringLiteral("select sum(IVCDETVLR) as iva,sum((100 * IVCDETVLR)/IVCDETIVA) as grav  "
                          "from IVC_DetIVA where IVCDETIVA not in (10.5,21,27) and USRSNRCUIT = ") +
           oDB::Q(cuit) + QStringLiteral(" ") +
           ExisteEnPeriodo(cuit, periodoDesde, QStringLiteral("ivc_DetIVA.IVCDETIVA    <> 0 and ")) +
           QStringLiteral(" )  ");
}

QString SqlResumenNoGravado(const QString &cuit, const QString &periodoDesde)
{
    return QStringLiteral(" select sum(IVCDNOGRAV) as nograv, sum(IVCINGBRU) as ingb from IVC") +
           QStringLiteral(" where ") + QStringLiteral(" USRSNRCUIT = ") + oDB::Q(cuit) +
           QStringLiteral(" and") + QStringLiteral(" IVCFPERIOD = datevalue(") +
           oDB::Q(periodoDesde) + QStringLiteral(")");
}

QString RutaPlanilla(const QString &elegida)
{
    QString ruta = elegida;
    ruta.remove(QChar(0));
    if (ruta.right(3).toLower() != QLatin1String("xls"))
        ruta += QStringLiteral(".xls");
    return ruta;
}

QString RutaArchivoAFIP(const QString &planilla, const QString &sufijo)
{
    // Four characters are always cut, whether or not the name ends in ".xls".
    if (planilla.size() < 4)
        throw oDB::ErrorBD{QStringLiteral("Llamada a procedimiento o argumento no válidos"), 5};
    return planilla.left(planilla.size() - 4) + sufijo;
}

QString DialogoGuardarReporte(Sesion &s, QWidget *propietario)
{
    if (!s.dialogo)
        return QString();
    const QList<FiltroArchivo> filtros = {
        {QStringLiteral("XLS Delimitado por comas (*.xls)"), QStringLiteral("*.xls")},
        {QStringLiteral("All Files (*.*)"), QStringLiteral("*.*")},
    };
    // The name box opens filled with blanks; blanks around the answer are dropped.
    const QString elegido =
        s.dialogo->GuardarComo(QStringLiteral("Guardar Reporte de Libro IVA Compras"), filtros,
                               QStringLiteral("C:\\"), QString(254, u' '), propietario);
    return conv::Trim(elegido);
}

namespace {

void Mensaje(Sesion &s, const QString &texto, int estilo)
{
    if (s.mensajes)
        s.mensajes->MsgBox(texto, estilo);
}

void EscribirArchivo(oFILES::clManejo &archivo, const QString &ruta, const QString &texto)
{
    archivo.setUbicacion_Archivo(ruta);
    archivo.Crear_Archivo();
    archivo.Escribir(texto);
    archivo.Cerrar_Archivo();
}

} // namespace

bool GenerarReporte(Sesion &s, QString &SepCol, QWidget *propietario)
{
    // "Nro Linea" of the error report names the step of the run that failed: 1 to 7, and
    // 51 to 510 for the steps of one invoice.
    int linea = 0;
    const auto informar = [&](const QString &descripcion, int numero) {
        Mensaje(s,
                QStringLiteral("Nro Linea: ") + QString::number(linea) + kCRLF +
                    QString::number(numero) + kCRLF + descripcion +
                    QStringLiteral(" seccion modGBPROC.GenerarReporte "),
                vb::vbCritical);
    };
    try {
        linea = 1;
        // The spreadsheet and the two files of the authority are one set: all three are
        // written first and put in place together, so the set is all new or all as it was.
        oFILES::clManejo archivo;
        archivo.setJuntos(true);

        linea = 2;
        QString ruta = DialogoGuardarReporte(s, propietario);
        if (ruta.isEmpty())
            return false;
        ruta = RutaPlanilla(ruta);

        linea = 3;
        s.ajustes.Guardar(QStringLiteral("KESTREL"), QStringLiteral("Config"),
                          QStringLiteral("SepCol"), SepCol);

        linea = 4;
        if (!s.dbLibro || !s.oFormato)
            throw oDB::ErrorBD{QStringLiteral("La conexión no está abierta."), 3709};
        oDB::clManejo &db = *s.dbLibro;
        const cFORMAT::MAIN &fmt = *s.oFormato;
        oDB::Recordset rs;
        db.Consultar(rs, SqlFacturasPeriodo(s.CuitUsuario, s.PeriodoDesde));

        QString planilla = EncabezadoPlanilla(SepCol);
        QString comprobantes;
        QString alicuotas;
        TotalesPlanilla totales;
        EstadoRegistros estado;
        oDB::Recordset rsAux;

        while (!rs.Eof()) {
            linea = 51;
            FacturaExportada f;
            f.fecha = fmt.EsNull(rs(QStringLiteral("IVCFCOMPRO")));
            f.tipo = fmt.EsNull(rs(QStringLiteral("IVCSTIPFAC")));
            f.numero = fmt.EsNull(rs(QStringLiteral("IVCSNROFAC")));
            f.cuit = fmt.EsNull(rs(QStringLiteral("PRVSNRCUIT")));
            const NumeroComprobante n = SepararNumero(f.tipo, f.numero);
            const QString numero20 = CampoNumero(n);

            linea = 52;
            if (!conv::EsNumerico(n.puntoVenta))
                Mensaje(s, QStringLiteral("Se ha encontrado un Punto de Venta NO NUMERICO: ") + n.puntoVenta,
                        vb::vbOKOnly);
            if (!conv::EsNumerico(numero20))
                Mensaje(s, QStringLiteral("Se ha encontrado un Nro de Factura NO NUMERICO: ") + numero20,
                        vb::vbOKOnly);

            linea = 53;
            db.Consultar(rsAux, SqlNombreProveedor(f.cuit));
            f.nombre = rsAux.Eof() ? QStringLiteral("desconocido!")
                                   : fmt.EsNull(rsAux(QStringLiteral("PRVSNOMBRE")));
            rsAux.Close();

            linea = 54;
            // The one special CUIT is kept as it is; no CUIT is ever altered.
            if (f.cuit == QLatin1String("30000000007"))
                f.cuit = QStringLiteral("30000000007");

            linea = 55;
            f.noGravado = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCDNOGRAV"))));
            f.gravado = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCDGRAVAD"))));
            f.iva = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVARIN"))));
            f.ingBrutos = Normalizar(fmt.EsNumero(rs(QStringLiteral("IVCINGBRU"))));
            f.descripcion = fmt.EsNull(rs(QStringLiteral("Descripcion")));
            f.descripcionExtra = fmt.EsNull(rs(QStringLiteral("descripcionextra")));
            planilla += FilaPlanilla(f, SepCol);
            totales.Sumar(f);

            linea = 58;
            db.Consultar(rsAux, SqlAlicuota(s.CuitUsuario, numero20, f.cuit));
            if (!rsAux.Eof())
                f.alicuota = fmt.EsNull(rsAux(QStringLiteral("IVCDETIVA")));
            rsAux.Close();

            linea = 56;
            const RegistrosFactura r = ArmarRegistros(f, estado);

            linea = 510;
            comprobantes += r.comprobante;
            alicuotas += r.alicuota;
            rs.MoveNext();
        }
        rs.Close();

        linea = 6;
        planilla += LineaTotales(totales, SepCol);
        for (const QString &tasa : {QStringLiteral("10.5"), QStringLiteral("21"), QStringLiteral("27")}) {
            db.Consultar(rsAux, SqlResumenTasa(tasa, s.CuitUsuario, s.PeriodoDesde));
            if (!rsAux.Eof())
                planilla += ResumenTasa(fmt.EsNull(rsAux(QStringLiteral("IVCDETIVA"))),
                                        fmt.EsNumero(rsAux(QStringLiteral("grav"))),
                                        fmt.EsNumero(rsAux(QStringLiteral("iva"))), SepCol);
            rsAux.Close();
        }
        // Sums over no line at all come back null and are shown as 00.00.
        db.Consultar(rsAux, SqlResumenOtras(s.CuitUsuario, s.PeriodoDesde));
        if (!rsAux.Eof())
            planilla += ResumenOtras(fmt.EsNumero(rsAux(QStringLiteral("grav"))),
                                     fmt.EsNumero(rsAux(QStringLiteral("iva"))), SepCol);
        rsAux.Close();
        db.Consultar(rsAux, SqlResumenNoGravado(s.CuitUsuario, s.PeriodoDesde));
        if (!rsAux.Eof())
            planilla += ResumenNoGravado(fmt.EsNumero(rsAux(QStringLiteral("ingb"))),
                                         fmt.EsNumero(rsAux(QStringLiteral("nograv"))), SepCol);
        rsAux.Close();
        planilla += ResumenTotal(totales.total, SepCol);

        linea = 61;
        EscribirArchivo(archivo, ruta, planilla);
        linea = 62;
        EscribirArchivo(archivo, RutaArchivoAFIP(ruta, QStringLiteral(" COMPRAS COMPRBTE.txt")),
                        comprobantes);
        linea = 63;
        EscribirArchivo(archivo, RutaArchivoAFIP(ruta, QStringLiteral(" COMPRAS ALICUOTAS.txt")),
                        alicuotas);
        archivo.PonerEnLugar();

        linea = 7;
        Mensaje(s, QStringLiteral("Archivos Generados"), vb::vbOKOnly);
        return true;
    } catch (const oDB::ErrorBD &e) {
        informar(e.descripcion, e.numero);
    } catch (const conv::ErrorConversion &e) {
        informar(e.descripcion, 13);
    }
    return false;
}
