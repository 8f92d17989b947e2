#include "ui/main/ListaPeriodo.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "ui/main/GrillaFlex.h"

namespace grilla {
const Columna kColumna[kColumnas] = {
    {"Fecha", 765, false},      {"Tipo   ", 415, true},    {"Nro", 1345, false},
    {nullptr, 0, false},        {"Nombre", 1630, false},   {"Gravado", 870, false},
    {"No Gravado", 870, false}, {"Total IVA", 750, false}, {"IIBB", 450, false},
    {"Total", 800, false},      {nullptr, 0, false},
};
} // namespace grilla

QString SqlTotalesPeriodo(const Sesion &s)
{
    return QStringLiteral("select count(*) as cant,sum(IVCDGRAVAD) as grav,sum(IVCDNOGRAV) as nograv,"
                          "sum(IVARIN) as ivai,'00.00' as ivan,sum(IVCINGBRU) as inbr from IVC "
                          "where USRSNRCUIT = ") +
           oDB::Q(s.CuitUsuario) + QStringLiteral(" and IVCFPERIOD = datevalue(") +
           oDB::Q(s.PeriodoDesde) + u')';
}

QString SqlListaPeriodo(const Sesion &s)
{
    return sentencias::FilasListaPeriodo(s.CuitUsuario, s.PeriodoDesde) +
           QStringLiteral(" order by IVCFCOMPRO,val(IVCSNROFAC)");
}

QString SqlEliminarDetIVA(const QString &nroFac, const QString &cuitPrv, const QString &cuitUsr)
{
    return QStringLiteral("delete from IVC_DetIVA where USRSNRCUIT = ") + oDB::Q(cuitUsr) +
           QStringLiteral(" and PRVSNRCUIT = ") + oDB::Q(cuitPrv) +
           QStringLiteral(" and IVCSNROFAC = ") + oDB::Q(nroFac);
}

QString SqlEliminarIVC(const QString &nroFac, const QString &cuitPrv, const QString &cuitUsr)
{
    return QStringLiteral("delete from IVC where PRVSNRCUIT = ") + oDB::Q(cuitPrv) +
           QStringLiteral(" and USRSNRCUIT = ") + oDB::Q(cuitUsr) +
           QStringLiteral(" and IVCSNROFAC = ") + oDB::Q(nroFac);
}

QString SqlEliminarGravado(const QString &nroFac, const QString &cuitPrv, const QString &cuitUsr)
{
    return QStringLiteral("delete from IVC_Gravado where PRVSNRCUIT = ") + oDB::Q(cuitPrv) +
           QStringLiteral(" and USRSNRCUIT = ") + oDB::Q(cuitUsr) +
           QStringLiteral(" and IVCSNROFAC = ") + oDB::Q(nroFac);
}

QString gf_IVCXUSRPER_CLIP(Sesion &s, long &filas)
{
    if (!s.dbLibro || !s.oFormato)
        return QString();
    try {
        oDB::clManejo &db = *s.dbLibro;
        const cFORMAT::MAIN &f = *s.oFormato;
        oDB::Recordset rs;
        db.setSQL(SqlTotalesPeriodo(s));
        db.CrearRs(rs);
        if (f.EsNumero(rs.Fields(QStringLiteral("cant"))) > 0) {
            s.TotGravado = f.EsNumero(rs.Fields(QStringLiteral("grav")));
            s.TotNoGravado = f.EsNumero(rs.Fields(QStringLiteral("nograv")));
            s.TotIva = f.EsNumero(rs.Fields(QStringLiteral("ivai")));
            s.TotIngBrutos = f.EsNumero(rs.Fields(QStringLiteral("inbr")));
        } else {
            s.TotGravado = s.TotNoGravado = s.TotIva = s.TotIvaNoInscripto = s.TotIngBrutos = 0;
        }
        rs.Close();

        // Companies with and without VAT registration list the same columns.
        if (s.ConIva == QLatin1String("N"))
            db.setSQL(SqlListaPeriodo(s));
        else
            db.setSQL(SqlListaPeriodo(s));
        db.CrearRs(rs);
        filas = rs.RecordCount();
        if (filas > 0) {
            const QString clip = rs.GetString(QStringLiteral("\t"), QStringLiteral("\r"), QString());
            rs.Close();
            return clip;
        }
        return QString();
    } catch (const oDB::ErrorBD &) {
        return QString();
    } catch (const conv::ErrorConversion &) {
        return QString();
    }
}

namespace {
// Grid redrawing is off while the grid is rebuilt, and back on however the load ends.
class SinRedibujo
{
public:
    explicit SinRedibujo(GrillaFlex &g) : g_(g) { g_.setUpdatesEnabled(false); }
    ~SinRedibujo() { Redibujar(); }
    void Redibujar()
    {
        if (!g_.updatesEnabled())
            g_.setUpdatesEnabled(true);
    }

private:
    GrillaFlex &g_;
};
} // namespace

bool gf_IVCCRGGRDXCLIP(Sesion &s, GrillaFlex &grd)
{
    try {
        SinRedibujo redibujo(grd);
        grd.setCols(grilla::kColumnas);
        for (int c = grilla::kColumnas - 1; c >= 0; --c)
            grd.setColWidth(c, grilla::kColumna[c].twips);
        for (int c = 0; c < grilla::kColumnas; ++c) {
            if (grilla::kColumna[c].cabecera)
                grd.setTextMatrix(0, c, QString::fromUtf8(grilla::kColumna[c].cabecera));
            grd.setColAlignment(c, grilla::kColumna[c].izquierdaArriba
                                       ? Qt::Alignment(Qt::AlignLeft | Qt::AlignTop)
                                       : Qt::Alignment(Qt::AlignCenter));
        }

        long n = 0;
        const QString clip = gf_IVCXUSRPER_CLIP(s, n);
        // The rows are emptied first, so an empty period shows one blank row.
        grd.VaciarFilas();
        grd.setRows(std::max<long>(n + 1, 2));
        if (n > 0)
            grd.PegarClip(1, clip);
        grd.AjustarAnchos();
        grd.setRow(1);
        redibujo.Redibujar();

        if (n > 0) {
            const int ultima = grd.Rows() - 1;
            grd.setRow(ultima);
            grd.SeleccionarFila(ultima);
            if (!grd.FilaVisible(ultima))
                grd.setTopRow(ultima);
        }
        return true;
    } catch (const oDB::ErrorBD &) {
        return false;
    }
}

qint32 gf_IVCELIMCONCEPT(Sesion &s, const QString &nroFac, const QString &cuitPrv,
                         const QString &cuitUsr)
{
    if (!s.dbLibro)
        return 0;
    try {
        oDB::clManejo &db = *s.dbLibro;
        db.setSQL(SqlEliminarDetIVA(nroFac, cuitPrv, cuitUsr));
        db.Ejecutar();
        db.setSQL(SqlEliminarIVC(nroFac, cuitPrv, cuitUsr));
        db.Ejecutar();
        db.setSQL(SqlEliminarGravado(nroFac, cuitPrv, cuitUsr));
        return qint32(db.Ejecutar());
    } catch (const oDB::ErrorBD &) {
        return 0;
    }
}
