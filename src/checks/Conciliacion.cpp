#include "checks/Conciliacion.h"

#include "app/core/Sesion.h"
#include "checks/Csv.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "data/oDB.h"
#include "reports/RegistrosAFIP.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <future>

using oDB::Q;
using recibidos::Comprobante;
using recibidos::Digitos;

namespace conciliacion {

namespace {

constexpr double kCentavo = 0.01 + 1e-9;


// The point of sale and the number of a book number: the digits before and after its "-", or,
// without one, the last 8 characters as the number and the rest as the point of sale.
bool PartesNumero(const QString &texto, int &punto, qint64 &numero)
{
    const QString t = texto.trimmed();
    const qsizetype guion = t.lastIndexOf(u'-');
    const QString a = guion >= 0 ? t.left(guion) : t.left(std::max<qsizetype>(0, t.size() - 8));
    const QString b = guion >= 0 ? t.mid(guion + 1) : t.right(8);
    const QString da = Digitos(a), db = Digitos(b);
    if (db.isEmpty() || da.size() > 9 || db.size() > 18)
        return false;
    punto = da.isEmpty() ? 0 : da.toInt();
    numero = db.toLongLong();
    return true;
}

// The key of a voucher: supplier digits, type and the numeric point of sale and number; the
// type is left out when comparing numbers only.
QString Clave(const QString &cuit, const QString &tipo, int punto, qint64 numero)
{
    return cuit + u'|' + tipo.trimmed().toUpper() + u'|' + QString::number(punto) + u'|' + QString::number(numero);
}
QString ClaveDe(const Comprobante &c) { return Clave(c.cuitEmisor, c.tipoLibro, c.puntoVenta, c.numero); }

struct Proveedores {
    QHash<QString, QString> cuit;   // digits -> PRVSNRCUIT
    QHash<QString, QString> nombre; // PRVSNRCUIT -> PRVSNOMBRE
};

Proveedores LeerProveedores(oDB::clManejo &db)
{
    Proveedores p;
    oDB::Recordset rs;
    if (db.Consultar(rs, QStringLiteral("select PRVSNRCUIT, PRVSNOMBRE from PRV")))
        for (; !rs.Eof(); rs.MoveNext()) {
            const QString cuit = conv::Texto(rs.Fields(0));
            p.cuit.insert(Digitos(cuit), cuit);
            p.nombre.insert(cuit, conv::Texto(rs.Fields(1)));
        }
    return p;
}

// The invoices a supplier has in the book over all periods, each by its key with the type and
// by its key without it; the value is the period "mm/yyyy".
QHash<QString, QString> FacturasDelProveedor(oDB::clManejo &db, const QString &empresa, const QString &cuitLibro)
{
    QHash<QString, QString> claves;
    oDB::Recordset rs;
    if (!db.Consultar(rs, QStringLiteral("select IVCSTIPFAC, IVCSNROFAC, IVCFPERIOD from IVC where USRSNRCUIT = ") +
                              Q(empresa) + QStringLiteral(" and PRVSNRCUIT = ") + Q(cuitLibro)))
        return claves;
    const QString digitos = Digitos(cuitLibro);
    for (; !rs.Eof(); rs.MoveNext()) {
        int punto = 0;
        qint64 numero = 0;
        if (PartesNumero(conv::Texto(rs.Fields(1)), punto, numero)) {
            const QString periodo = conv::Format(rs.Fields(2), QStringLiteral("mm/yyyy"));
            claves.insert(Clave(digitos, conv::Texto(rs.Fields(0)), punto, numero), periodo);
            claves.insert(Clave(digitos, QString(), punto, numero), periodo);
        }
    }
    return claves;
}

bool Iguales(double a, double b) { return std::fabs(a - b) <= kCentavo; }

// The untaxed amount of a voucher as the book keeps it: untaxed plus exempt, and what the
// total holds beyond its parts (a voucher C gives only its total).
double NoGravadoDe(const Comprobante &c)
{
    double n = c.noGravado + c.exento;
    const double resto = c.total - (c.netoGravado + n + c.iva + c.otrosTributos);
    if (!Iguales(resto, 0))
        n += resto;
    return conv::Redondear(n, 2);
}

QString NombreTasa(double tasa) { return QStringLiteral("IVA ") + conv::NumeroATexto(tasa) + u'%'; }

} // namespace

QString Faltante::Observacion() const
{
    if (c.tipoLibro.isEmpty())
        return QStringLiteral("no se puede cargar (") + c.DescripcionTipo() + u')';
    if (!periodoCargada.isEmpty())
        return QStringLiteral("ya cargada en el período ") + periodoCargada;
    return QString();
}

QString Faltante::Revision() const
{
    return Revisar() ? QStringLiteral("Revisar: otros tributos %1 como Ingresos Brutos").arg(Monto(c.otrosTributos))
                     : QString();
}

QString Faltante::Observaciones() const
{
    QStringList partes;
    for (const QString &p : {Observacion(), Revision()})
        if (!p.isEmpty())
            partes << p;
    return partes.join(QStringLiteral(" - "));
}

QString TextoCargados(const Sesion &s, int cargados)
{
    return QStringLiteral("Comprobantes cargados en el período %2: %1.")
        .arg(QString::number(cargados), s.MesAnio());
}

QString TextoNoSePudo(const QString &motivo) { return QStringLiteral("No se pudo conciliar: ") + motivo; }

namespace {

// The book's side of the reconciliation: the suppliers, and the period's invoices with their
// VAT by rate and by key. It does not depend on the file, so it can be read while the file is.
struct LibroDelPeriodo {
    Proveedores prv;
    QVector<FacturaLibro> facturas;
    QVector<QMap<double, double>> ivaPorTasa;
    QHash<QString, int> porClave;
};

LibroDelPeriodo LeerLibro(Sesion &s)
{
    LibroDelPeriodo l;
    oDB::clManejo &db = *s.dbLibro;
    l.prv = LeerProveedores(db);
    // Each invoice of the period with its VAT lines, one row per line (one row with the line's
    // columns NULL when it has none); the rows of an invoice are told by its rowid. A line
    // without a rate counts as rate 0. A period that cannot be read is an error: read as empty,
    // every voucher would look missing.
    oDB::Recordset rs;
    if (!db.Consultar(rs, QStringLiteral("select i.rowid, i.PRVSNRCUIT, i.IVCSTIPFAC, i.IVCSNROFAC, i.IVCFCOMPRO, "
                                       "i.IVCDGRAVAD, i.IVCDNOGRAV, i.IVARIN, i.IVCINGBRU, d.rowid, d.IVCDETIVA, "
                                       "d.IVCDETVLR "
                                       "from IVC i left join IVC_DetIVA d on d.USRSNRCUIT = i.USRSNRCUIT and "
                                       "d.PRVSNRCUIT = i.PRVSNRCUIT and d.IVCSNROFAC = i.IVCSNROFAC "
                                       "where i.USRSNRCUIT = ") +
                            Q(s.CuitUsuario) + QStringLiteral(" and i.IVCFPERIOD = datevalue(") + Q(s.PeriodoDesde) +
                            u')'))
        return l;
    QHash<qint64, int> porFila;
    porFila.reserve(rs.RecordCount());
    for (; !rs.Eof(); rs.MoveNext()) {
        const qint64 fila = rs.Fields(0).toLongLong();
        int i = porFila.value(fila, -1);
        if (i < 0) {
            FacturaLibro f;
            f.proveedor = conv::Texto(rs.Fields(1));
            f.nombre = l.prv.nombre.value(f.proveedor);
            f.tipo = conv::Texto(rs.Fields(2));
            f.numero = conv::Texto(rs.Fields(3));
            f.fecha = rs.Fields(4).toDate();
            f.gravado = s.oFormato->EsNumero(rs.Fields(5));
            f.noGravado = s.oFormato->EsNumero(rs.Fields(6));
            f.iva = s.oFormato->EsNumero(rs.Fields(7));
            f.ingBrutos = s.oFormato->EsNumero(rs.Fields(8));
            i = int(l.facturas.size());
            porFila.insert(fila, i);
            int punto = 0;
            qint64 numero = 0;
            if (PartesNumero(f.numero, punto, numero))
                l.porClave.insert(Clave(Digitos(f.proveedor), f.tipo, punto, numero), i);
            l.facturas << f;
            l.ivaPorTasa.push_back({});
        }
        if (!rs.Fields(9).isNull())
            l.ivaPorTasa[i][conv::Redondear(s.oFormato->EsNumero(rs.Fields(10)), 2)] += s.oFormato->EsNumero(rs.Fields(11));
    }
    return l;
}

Resultado Comparar(Sesion &s, const recibidos::Lista &lista, const LibroDelPeriodo &l)
{
    oDB::clManejo &db = *s.dbLibro;
    const Proveedores &prv = l.prv;
    const QVector<FacturaLibro> &libro = l.facturas;
    const QVector<QMap<double, double>> &ivaPorTasa = l.ivaPorTasa;
    const QHash<QString, int> &porClave = l.porClave;
    Resultado r;
    QVector<bool> visto(libro.size(), false);
    QVector<int> sinLibro; // faltantes that may sit in another period
    for (const Comprobante &c : lista.comprobantes) {
        const int i = c.tipoLibro.isEmpty() ? -1 : porClave.value(ClaveDe(c), -1);
        if (i < 0 || visto[i]) {
            if (!c.tipoLibro.isEmpty())
                sinLibro << int(r.faltantes.size());
            r.faltantes << Faltante{c, QString()};
            continue;
        }
        visto[i] = true;
        const FacturaLibro &f = libro[i];
        Distinta d{c, f, {}};
        auto comparar = [&](const QString &concepto, double enLibro, double enArchivo) {
            if (!Iguales(enLibro, enArchivo))
                d.diferencias << Diferencia{concepto, Normalizar(enLibro), Normalizar(enArchivo)};
        };
        comparar(QStringLiteral("Gravado"), f.gravado, c.netoGravado);
        comparar(QStringLiteral("No gravado"), f.noGravado, NoGravadoDe(c));
        comparar(QStringLiteral("IVA"), f.iva, c.iva);
        if (c.porTasa) {
            QMap<double, double> tasas = ivaPorTasa[i];
            QMap<double, double> delArchivo;
            for (const recibidos::Alicuota &a : c.alicuotas)
                if (a.iva != 0 || a.tasa != 0)
                    delArchivo[a.tasa] += a.iva;
            for (auto it = delArchivo.cbegin(); it != delArchivo.cend(); ++it)
                tasas.insert(it.key(), tasas.value(it.key()));
            for (auto it = tasas.cbegin(); it != tasas.cend(); ++it)
                comparar(NombreTasa(it.key()), it.value(), delArchivo.value(it.key()));
        }
        comparar(QStringLiteral("Total"), f.Total(), c.total);
        if (d.diferencias.isEmpty())
            ++r.iguales;
        else
            r.distintas << d;
    }

    // Missing ones that the book holds in another period: one reading per supplier.
    QHash<QString, QHash<QString, QString>> otros;
    for (int k : sinLibro) {
        Faltante &f = r.faltantes[k];
        auto it = otros.find(f.c.cuitEmisor);
        if (it == otros.end())
            it = otros.insert(f.c.cuitEmisor,
                              FacturasDelProveedor(db, s.CuitUsuario, prv.cuit.value(f.c.cuitEmisor, f.c.cuitEmisor)));
        // The same number under another type is also in the book: it cannot go in again.
        f.periodoCargada = it->value(ClaveDe(f.c), it->value(Clave(f.c.cuitEmisor, QString(), f.c.puntoVenta, f.c.numero)));
        // A voucher listed twice in the file is in the book once it is matched.
        if (f.periodoCargada.isEmpty() && porClave.contains(ClaveDe(f.c)))
            f.periodoCargada = s.MesAnio();
    }

    for (int i = 0; i < libro.size(); ++i)
        if (!visto[i])
            r.soloEnLibro << libro[i];
    std::stable_sort(r.soloEnLibro.begin(), r.soloEnLibro.end(), [](const FacturaLibro &a, const FacturaLibro &b) {
        return a.fecha != b.fecha ? a.fecha < b.fecha : a.numero < b.numero;
    });
    return r;
}

void ControlarEmpresa(const Sesion &s, const recibidos::Lista &lista)
{
    const QString empresa = Digitos(s.CuitUsuario);
    if (!lista.cuitReceptor.isEmpty() && lista.cuitReceptor != empresa)
        throw ErrorEmpresa{QStringLiteral("El archivo es la lista de la CUIT %1 y la empresa actual tiene la CUIT %2: "
                                          "no se puede conciliar.")
                               .arg(lista.cuitReceptor, s.CuitUsuario)};
}

} // namespace

Resultado Conciliar(Sesion &s, const recibidos::Lista &lista)
{
    ControlarEmpresa(s, lista);
    return Comparar(s, lista, LeerLibro(s));
}

Resultado LeerYConciliar(Sesion &s, const QString &archivo, recibidos::Lista &lista)
{
    // The book is read on another thread while this one reads the file; nothing else uses the
    // session's book meanwhile.
    std::future<LibroDelPeriodo> libro = std::async(std::launch::async, [&s] { return LeerLibro(s); });
    lista = recibidos::Leer(archivo);
    ControlarEmpresa(s, lista);
    return Comparar(s, lista, libro.get());
}

QString Informe(const Resultado &r, bool enCsv)
{
    auto fecha = [](const QDate &d) { return conv::FechaCorta(d); };
    QStringList lineas;
    if (enCsv) {
        QString out = csv::Fila({QStringLiteral("grupo"), QStringLiteral("fecha"), QStringLiteral("tipo"),
                                 QStringLiteral("numero"), QStringLiteral("cuit"), QStringLiteral("denominacion"),
                                 QStringLiteral("concepto"), QStringLiteral("libro"), QStringLiteral("archivo"),
                                 QStringLiteral("diferencia"), QStringLiteral("observacion")});
        auto fila = [&](const QString &grupo, const QDate &d, const QString &tipo, const QString &numero,
                        const QString &cuit, const QString &nombre, const QString &concepto, const QString &libro,
                        const QString &archivo, const QString &dif, const QString &obs) {
            out += csv::Fila({grupo, fecha(d), tipo, numero, cuit, nombre, concepto, libro, archivo, dif, obs});
        };
        for (const Faltante &f : r.faltantes)
            fila(QStringLiteral("falta en el libro"), f.c.fecha, f.c.tipoLibro.isEmpty() ? QString::number(f.c.codigo) : f.c.tipoLibro,
                 f.c.NumeroLibro(), f.c.cuitEmisor, f.c.denominacion, QStringLiteral("Total"), QString(), Monto(f.c.total),
                 QString(), f.Observaciones());
        for (const FacturaLibro &b : r.soloEnLibro)
            fila(QStringLiteral("falta en el archivo"), b.fecha, b.tipo, b.numero, b.proveedor, b.nombre,
                 QStringLiteral("Total"), Monto(b.Total()), QString(), QString(), QString());
        for (const Distinta &d : r.distintas)
            for (const Diferencia &x : d.diferencias)
                fila(QStringLiteral("diferente"), d.libro.fecha, d.libro.tipo, d.libro.numero, d.libro.proveedor,
                     d.libro.nombre, x.concepto, Monto(x.libro), Monto(x.archivo), Monto(x.Importe()), QString());
        return out;
    }
    lineas << QStringLiteral("En el archivo y no en el libro: %1").arg(r.faltantes.size());
    for (const Faltante &f : r.faltantes) {
        QString l = QStringLiteral("  %1  %2  %3  %4  %5  total %6")
                        .arg(fecha(f.c.fecha), f.c.tipoLibro.isEmpty() ? QString::number(f.c.codigo) : f.c.tipoLibro,
                             f.c.NumeroLibro(), f.c.cuitEmisor, f.c.denominacion, Monto(f.c.total));
        if (!f.Observaciones().isEmpty())
            l += QStringLiteral("  ") + f.Observaciones();
        lineas << l;
    }
    lineas << QStringLiteral("En el libro y no en el archivo: %1").arg(r.soloEnLibro.size());
    for (const FacturaLibro &b : r.soloEnLibro)
        lineas << QStringLiteral("  %1  %2  %3  %4  %5  total %6")
                      .arg(fecha(b.fecha), b.tipo, b.numero, b.proveedor, b.nombre, Monto(b.Total()));
    lineas << QStringLiteral("En ambos con diferencias: %1").arg(r.distintas.size());
    for (const Distinta &d : r.distintas) {
        lineas << QStringLiteral("  %1  %2  %3  %4  %5")
                      .arg(fecha(d.libro.fecha), d.libro.tipo, d.libro.numero, d.libro.proveedor, d.libro.nombre);
        for (const Diferencia &x : d.diferencias)
            lineas << QStringLiteral("      %1: libro %2  archivo %3  diferencia %4")
                          .arg(x.concepto, Monto(x.libro), Monto(x.archivo), Monto(x.Importe()));
    }
    lineas << QStringLiteral("Iguales: %1").arg(r.iguales);
    return lineas.join(u'\n') + u'\n';
}

namespace {

// The lines of a voucher as a person would type them in the add window.
struct Lineas {
    QVector<double> gravados;
    QVector<recibidos::Alicuota> iva;
    double noGravado = 0;
};

Lineas LineasDe(const Comprobante &c)
{
    Lineas l;
    double suma = 0;
    if (c.porTasa)
        for (const recibidos::Alicuota &a : c.alicuotas)
            if (a.neto != 0) {
                l.gravados << a.neto;
                suma += a.neto;
            }
    // A taxed amount the rates do not explain (or the older form's whole taxed amount).
    if (!Iguales(suma, c.netoGravado))
        l.gravados << conv::Redondear(c.netoGravado - suma, 2);
    if (c.porTasa) {
        for (const recibidos::Alicuota &a : c.alicuotas)
            if (a.iva != 0)
                l.iva << a;
    } else if (c.iva != 0) {
        // The older form gives the VAT whole: its rate is the first usual one that yields it
        // (21% before 10,5% and the rest), or the rate it shows over the taxed amount.
        double tasa = c.netoGravado != 0 ? conv::Redondear(c.iva * 100 / c.netoGravado, 2) : 0;
        for (double t : {21.0, 10.5, 27.0, 5.0, 2.5})
            if (Iguales(conv::Redondear(c.netoGravado * t / 100, 2), c.iva)) {
                tasa = t;
                break;
            }
        l.iva << recibidos::Alicuota{tasa, c.netoGravado, c.iva};
    }
    l.noGravado = NoGravadoDe(c);
    return l;
}

} // namespace

int Cargar(Sesion &s, const QVector<Comprobante> &elegidos)
{
    oDB::clManejo &db = *s.dbLibro;
    const QString empresa = s.CuitUsuario;
    const QString periodo = conv::Format(QVariant(s.PeriodoDesde), QStringLiteral("dd-mm-yyyy"));
    const QString hoy = conv::Format(QVariant(conv::Hoy()), QStringLiteral("dd-mm-yyyy"));
    int cargadas = 0;
    db.Empezar();
    try {
        Proveedores prv = LeerProveedores(db);
        QHash<QString, QHash<QString, QString>> numeros; // supplier digits -> numbers in the book
        for (const Comprobante &c : elegidos) {
            if (c.tipoLibro.isEmpty())
                continue;
            QString proveedor = prv.cuit.value(c.cuitEmisor);
            if (proveedor.isEmpty()) {
                proveedor = c.cuitEmisor;
                QString nombre = c.denominacion.trimmed().isEmpty() ? c.cuitEmisor : c.denominacion.trimmed();
                // A quoted value cannot hold an apostrophe. The supplier window refuses such a
                // name with the book's syntax error and the person types it otherwise; a name of
                // the list cannot be typed otherwise, and refusing it would leave out every
                // chosen voucher (all or none): its apostrophes go in as the acute accent.
                nombre.replace(u'\'', QStringLiteral("´"));
                sentencias::AltaDeProveedor alta;
                alta.cuit = proveedor;
                alta.nombre = nombre;
                alta.alta = conv::Hoy();
                db.Ejecutar(sentencias::AltaProveedor(alta));
                prv.cuit.insert(c.cuitEmisor, proveedor);
                prv.nombre.insert(proveedor, nombre);
            }
            // Never a second invoice with a number the supplier already has, in any period.
            auto it = numeros.find(c.cuitEmisor);
            if (it == numeros.end())
                it = numeros.insert(c.cuitEmisor, FacturasDelProveedor(db, empresa, proveedor));
            const QString clave = Clave(c.cuitEmisor, QString(), c.puntoVenta, c.numero);
            const QString numero = c.NumeroLibro();
            if (it->contains(clave))
                continue;
            it->insert(clave, QString());

            const Lineas l = LineasDe(c);
            // The taxed amounts first: the add window takes them before the header exists.
            for (double g : l.gravados) {
                const int id = int(sentencias::LeerIdMaximo(db, sentencias::IdMaximoGravado(empresa, proveedor, numero)) + 1);
                db.Ejecutar(sentencias::AltaGravado(empresa, proveedor, numero, id, Monto(g)));
            }
            oDB::Recordset rs;
            db.CrearRs(rs, sentencias::TotalGravados(empresa, proveedor, numero));
            const QString gravado = Monto(s.oFormato->EsNumero(rs(QStringLiteral("totalgravados"))));
            db.Ejecutar(sentencias::AltaIVC({empresa, proveedor, periodo,
                                             conv::Format(QVariant(c.fecha), QStringLiteral("dd-mm-yyyy")), c.tipoLibro,
                                             numero, Monto(l.noGravado), gravado, hoy, QString(), QString()}));
            double sumaIVA = 0;
            for (const recibidos::Alicuota &a : l.iva) {
                const double tasa = Normalizar(a.tasa);
                const double valor = Normalizar(a.iva);
                const long id = std::lround(
                    sentencias::LeerIdMaximo(db, sentencias::IdMaximoLinea(QStringLiteral("IVC_DetIVA"), empresa, proveedor)) + 1);
                db.Ejecutar(sentencias::AltaLineaIVA(empresa, proveedor, QString::number(id), numero,
                                                     conv::NumeroATexto(tasa),
                                                     QStringLiteral("Iva del ") + conv::NumeroATexto(a.tasa) + u':',
                                                     conv::NumeroATexto(valor)));
                sumaIVA += valor;
                db.Ejecutar(sentencias::TotalCabecera(QStringLiteral("IVARIN"), sumaIVA, empresa, proveedor, numero));
            }
            if (c.otrosTributos != 0) {
                // Entered by its amount: the percentage is that of the amount over the taxed
                // total, or 0 without a taxed amount.
                const double valor = Normalizar(c.otrosTributos);
                const double base = conv::CDbl(gravado);
                const double porcentaje = base != 0 ? Normalizar(valor * 100 / base) : 0;
                const double id = sentencias::LeerIdMaximo(db, sentencias::IdMaximoLinea(QStringLiteral("IVC_detIngBrutos"),
                                                                                      empresa, proveedor)) + 1;
                db.Ejecutar(sentencias::AltaLineaIngBrutos(empresa, proveedor, conv::NumeroATexto(id), numero,
                                                           conv::NumeroATexto(porcentaje),
                                                           QStringLiteral("Otros tributos (según ARCA)"),
                                                           conv::NumeroATexto(valor)));
                db.Ejecutar(sentencias::TotalCabecera(QStringLiteral("IVCINGBRU"), valor, empresa, proveedor, numero));
            }
            ++cargadas;
        }
        db.Confirmar();
    } catch (...) {
        db.Deshacer();
        throw;
    }
    return cargadas;
}

} // namespace conciliacion
