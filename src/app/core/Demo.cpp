#include "app/core/Demo.h"

#include "app/core/Ajustes.h"
#include "app/core/Azar.h"
#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "data/SentenciasFactura.h"
#include "data/Esquema.h"
#include "data/oDB.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <algorithm>

namespace demo {

QString Cuit(int prefijo, int cuerpo)
{
    const QString p = QStringLiteral("%1").arg(prefijo, 2, 10, QChar(u'0'));
    const QString c = QStringLiteral("%1").arg(cuerpo, 8, 10, QChar(u'0'));
    const int dv = conv::DigitoVerificador(p + c);
    if (dv < 0 || p.size() != 2 || c.size() != 8)
        return QString();
    return p + c + QString::number(dv);
}

bool CuitValido(const QString &cuit)
{
    if (cuit.size() != 11)
        return false;
    for (QChar c : cuit)
        if (!c.isDigit())
            return false;
    const int dv = conv::DigitoVerificador(cuit.left(10));
    return dv >= 0 && cuit[10] == QChar(u'0' + dv);
}

namespace {

double R2(double n) { return conv::Redondear(n, 2); }
QString F(double n) { return conv::Format(n, QStringLiteral("00.00")); }
QString Q(const QString &s) { return oDB::Q(s); }
QString DMY(const QDate &d) { return d.toString(QStringLiteral("dd-MM-yyyy")); }

struct ProveedorDemo {
    QString nombre;
    int prefijo;               // 30 companies, 20 / 27 persons
    QString domicilio;
    QString telefono;
    QString email;
    QString contacto;
    QStringList rubros;        // what it sells: descriptions of its invoices
    bool servicio;             // utilities: always invoice type A, one VAT line at 27 or 21
};

const QList<ProveedorDemo> &Proveedores()
{
    static const QList<ProveedorDemo> lista = {
        {"Harinera del Paraná S.R.L.", 30, "Ruta 11 km 402, Santa Fe", "0342-455-1020", "ventas@harineradelparana.com.ar", "Sr. Julián Ibáñez", {"Harina 000 x 50 kg", "Harina 0000 x 25 kg", "Harina integral x 25 kg"}, false},
        {"Distribuidora Ñandú S.A.", 30, "Av. Circunvalación 2250, Córdoba", "0351-476-3300", "pedidos@nandu.com.ar", "Sra. Begoña Ruiz", {"Mercadería de almacén", "Aceite girasol x 5 l", "Azúcar 1,5 kg x 10"}, false},
        {"Lácteos La Cañada S.A.", 30, "Calle Pública s/n, La Cañada de Gómez", "03471-42-2211", "facturacion@lacteoslacanada.com.ar", "Sr. Tomás Peña", {"Manteca x 10 kg", "Leche entera x 20 l", "Crema de leche x 5 l"}, false},
        {"Levaduras El Peñón S.A.", 30, "Parque Industrial Lote 14, Rafaela", "03492-50-7788", "administracion@levaduraselpenon.com.ar", "Sra. Inés Muñoz", {"Levadura fresca x 500 g", "Mejorador de masa x 10 kg"}, false},
        {"Azucarera Tucumana S.A.", 30, "Av. Mate de Luna 3100, San Miguel de Tucumán", "0381-421-9090", "ventas@azucareratucumana.com.ar", "Sr. Ramón Acuña", {"Azúcar refinada x 50 kg", "Azúcar impalpable x 10 kg"}, false},
        {"Granja Avícola Los Ñires", 20, "Camino Rural 7, Colonia Caroya", "03525-46-1175", "granjalosnires@correo.com.ar", "Sr. Martín Ordóñez", {"Huevos x 30 docenas", "Huevos x 60 docenas"}, false},
        {"Envases Patagónicos S.A.", 30, "Parque Industrial, Neuquén", "0299-443-5600", "comercial@envasespatagonicos.com.ar", "Sra. Lucía Álvarez", {"Bolsas de papel kraft", "Cajas de cartón corrugado", "Bandejas de aluminio"}, false},
        {"Papelera Güemes S.R.L.", 30, "Güemes 845, Salta", "0387-431-2288", "ventas@papeleraguemes.com.ar", "Sr. Óscar Benítez", {"Papel de embalar", "Rollos para impresora fiscal"}, false},
        {"Energía del Litoral S.A.", 30, "Av. Costanera 1500, Rosario", "0800-777-3742", "clientes@energialitoral.com.ar", "Atención comercial", {"Servicio de energía eléctrica"}, true},
        {"Gas Natural Cuyana S.A.", 30, "Belgrano 1020, Mendoza", "0810-666-4272", "facturas@gascuyana.com.ar", "Atención comercial", {"Servicio de gas natural"}, true},
        {"Telefonía del Sur S.A.", 30, "Av. Roca 560, Bahía Blanca", "0800-222-8355", "empresas@telefoniadelsur.com.ar", "Ejecutivo de cuentas", {"Servicio de telefonía e internet"}, true},
        {"Agua y Saneamientos del Plata", 30, "Diagonal 74 N° 1200, La Plata", "0800-999-2482", "usuarios@aguasdelplata.com.ar", "Atención comercial", {"Servicio de agua potable"}, true},
        {"Combustibles San Martín S.A.", 30, "Ruta 9 km 695, Villa María", "0353-452-0099", "playa@combustiblessanmartin.com.ar", "Sr. Andrés Gómez", {"Gasoil grado 2", "Nafta súper"}, false},
        {"Transportes Peñaloza Hnos.", 30, "Ruta 38 km 12, La Rioja", "0380-442-6610", "fletes@transpenaloza.com.ar", "Sr. Facundo Peñaloza", {"Flete Córdoba - Rosario", "Flete local"}, false},
        {"Ferretería El Tornillo de Núñez", 27, "Av. Cabildo 4520, CABA", "011-4701-2233", "eltornillo@correo.com.ar", "Sra. Ana Núñez", {"Bulones y tornillería", "Herramientas de mano", "Pintura látex x 20 l"}, false},
        {"Electricidad Mañán S.R.L.", 30, "San Juan 1830, CABA", "011-4305-9182", "ventas@electricidadmanan.com.ar", "Sr. Joaquín Mañán", {"Cable unipolar 2,5 mm", "Tablero eléctrico", "Lámparas LED"}, false},
        {"Librería Cervantes", 20, "Rivadavia 610, Córdoba", "0351-422-5544", "libreriacervantes@correo.com.ar", "Sr. Miguel Saavedra", {"Artículos de librería", "Resmas A4 x 10"}, false},
        {"Frigorífico Santa Inés S.A.", 30, "Ruta 5 km 140, Chivilcoy", "02346-43-8800", "ventas@frigsantaines.com.ar", "Sr. Hernán Castañeda", {"Media res vacuna", "Cortes de cerdo"}, false},
        {"Limpieza Cristalina S.R.L.", 30, "Lavalle 2240, Mendoza", "0261-429-1177", "pedidos@cristalina.com.ar", "Sra. Rocío Domínguez", {"Artículos de limpieza", "Lavandina x 5 l x 4"}, false},
        {"Maderera Iñíguez Hnos.", 30, "Av. San Martín 3300, Posadas", "0376-444-2020", "maderera@iniguez.com.ar", "Sr. Nicolás Iñíguez", {"Tirantes de pino", "Placas de fenólico"}, false},
        {"Pinturerías Córdoba S.A.", 30, "Av. Colón 1450, Córdoba", "0351-488-1200", "ventas@pintureriascordoba.com.ar", "Sra. Valeria Ríos", {"Esmalte sintético x 4 l", "Látex interior x 20 l"}, false},
        {"Gráfica Avellaneda S.R.L.", 30, "Mitre 950, Avellaneda", "011-4222-6070", "presupuestos@graficaavellaneda.com.ar", "Sr. Sebastián Ortiz", {"Folletos impresos", "Talonarios de remitos"}, false},
        {"Sanitarios Muñiz S.A.", 30, "Av. Pellegrini 2900, Rosario", "0341-435-0800", "ventas@sanitariosmuniz.com.ar", "Sr. Ignacio Muñiz", {"Caños y accesorios", "Grifería"}, false},
        {"Informática Belén S.R.L.", 30, "9 de Julio 455, Catamarca", "0383-445-9911", "soporte@informaticabelen.com.ar", "Srta. Belén Quiñones", {"Mantenimiento de equipos", "Toner para impresora"}, false},
        {"Fiambrería Don Ramón", 20, "Sarmiento 120, Río Cuarto", "0358-462-3391", "donramon@correo.com.ar", "Sr. Ramón Ordóñez", {"Fiambres surtidos", "Quesos de máquina"}, false},
        {"Cerealera Pergamino S.A.", 30, "Ruta 8 km 220, Pergamino", "02477-43-5500", "comercial@cerealerapergamino.com.ar", "Sr. Gastón Echeverría", {"Semillas de girasol", "Maíz partido x 25 kg"}, false},
        {"Bulonera Rosarina S.R.L.", 30, "Bv. Oroño 3880, Rosario", "0341-456-2299", "ventas@bulonerarosarina.com.ar", "Sr. Esteban Giménez", {"Bulones galvanizados", "Arandelas y tuercas"}, false},
        {"Aceitera Chaqueña S.A.", 30, "Parque Industrial, Resistencia", "0362-446-1300", "ventas@aceiterachaquena.com.ar", "Sra. Mónica Sáenz", {"Aceite girasol x 20 l", "Grasa vacuna x 10 kg"}, false},
        {"Vidriería Castañeda", 27, "Belgrano 760, Paraná", "0343-431-8812", "vidrieriacastaneda@correo.com.ar", "Sra. Julieta Castañeda", {"Vidrio templado para vitrina", "Espejo biselado"}, false},
        {"Correo Andino S.A.", 30, "Av. Las Heras 1800, Mendoza", "0810-345-2634", "empresas@correoandino.com.ar", "Atención comercial", {"Envío de encomiendas"}, false},
        {"Mantenimiento Edilicio Ibáñez", 20, "Los Álamos 233, Villa Carlos Paz", "03541-43-7210", "mibanez@correo.com.ar", "Sr. Raúl Ibáñez", {"Reparación horno D´Angelo", "Mantenimiento de cámaras de frío"}, false},
        {"Uniformes Begoña S.R.L.", 30, "Av. Corrientes 2550, CABA", "011-4951-3300", "ventas@uniformesbegona.com.ar", "Sra. Begoña Arrieta", {"Ropa de trabajo", "Delantales y gorros"}, false},
        {"Herramientas Zúñiga S.A.", 30, "Av. General Paz 10200, CABA", "011-4644-1800", "ventas@herramientaszuniga.com.ar", "Sr. Ezequiel Zúñiga", {"Amoladora angular", "Juego de llaves combinadas"}, false},
        {"Cartonera Misiones S.A.", 30, "Ruta 12 km 8, Garupá", "0376-449-5100", "comercial@cartoneramisiones.com.ar", "Sr. Diego Ferreyra", {"Cajas de cartón para tortas", "Separadores de cartón"}, false},
        {"Seguros La Confianza Cía. Argentina", 30, "Florida 520, CABA", "011-4320-7700", "productores@laconfianza.com.ar", "Productor asesor", {"Póliza integral de comercio"}, true},
        {"Estación de Servicio Ruta 9", 30, "Ruta 9 km 512, Pilar", "03572-47-0101", "estacion9@correo.com.ar", "Sr. Alfredo Luna", {"Gasoil grado 3", "Lubricantes"}, false},
    };
    return lista;
}

// Companies of the demo: CUIT body, name, VAT flag, address, e-mail, invoices per month and the
// suppliers they buy from (indexes of the list above).
struct DatosEmpresa {
    int prefijo;
    int cuerpo;
    const char *nombre;
    const char *conIva;
    const char *domicilio;
    const char *email;
    int minimo, maximo;
    QList<int> proveedores;
};

const QList<DatosEmpresa> &Empresas()
{
    static const QList<DatosEmpresa> lista = {
        {30, 71234567, "Panadería La Espiga de Oro S.R.L.", "S", "Av. Colón 1234, Córdoba",
         "administracion@laespigadeoro.com.ar", 18, 26,
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 17, 18, 24, 27, 30, 31, 33, 34, 35}},
        {30, 70988124, "Ferretería Núñez Hnos. S.A.", "S", "Av. San Martín 2450, Rosario",
         "compras@ferreterianunez.com.ar", 10, 16,
         {7, 8, 10, 11, 12, 13, 14, 15, 16, 19, 20, 21, 22, 23, 26, 28, 29, 32, 34, 35}},
        {27, 28456123, "Estudio Contable Peña & Muñoz", "N", "Sarmiento 455 piso 3, Mendoza",
         "estudio@penamunoz.com.ar", 5, 9,
         {1, 7, 8, 9, 10, 11, 16, 21, 23, 29, 31, 34}},
    };
    return lista;
}

// The last day of the demo's work: its latest invoices and entries.
const QDate kUltimoDia(2026, 11, 21);

const QStringList kTipos = {"A", "B", "C", "99", "NDA", "TIQUE FCA", "TIQUE FCB", "TIQUE"};

// Frequencies of the types in an ordinary month (A most of all).
QString TipoAlAzar(Azar &a)
{
    const int n = a.Entre(0, 99);
    if (n < 50) return QStringLiteral("A");
    if (n < 66) return QStringLiteral("B");
    if (n < 76) return QStringLiteral("C");
    if (n < 79) return QStringLiteral("99");
    if (n < 83) return QStringLiteral("NDA");
    if (n < 89) return QStringLiteral("TIQUE FCA");
    if (n < 95) return QStringLiteral("TIQUE FCB");
    return QStringLiteral("TIQUE");
}

bool DiscriminaIva(const QString &tipo)
{
    return tipo == QLatin1String("A") || tipo == QLatin1String("NDA") ||
           tipo == QLatin1String("TIQUE FCA") || tipo == QLatin1String("99") ||
           tipo == QLatin1String("X");
}

// Writes the book through the database component, with the statements of the windows.
class Escritor
{
public:
    Escritor(oDB::clManejo &libro, Azar &azar) : db_(libro), azar_(azar) {}

    struct Factura {
        QString empresa, proveedor, tipo, numero, descripcion, extra;
        QDate periodo, fecha, alta;
        double noGravado = 0;
        QList<double> gravados;          // taxed-amount lines
        QList<double> tasas;             // VAT rate of each taxed line (none for B, C...)
        double tasaIB = 0;               // gross-income perception, percent (0: none)
        double ingBrutosViejo = 0;       // amount of the earlier single-amount scheme
    };

    void Escribir(const Factura &f)
    {
        // Header, as the add window inserts it.
        double gravado = 0;
        for (double g : f.gravados)
            gravado += g;
        db_.Ejecutar(QStringLiteral("insert into IVC (USRSNRCUIT,PRVSNRCUIT,IVCFPERIOD,IVCFCOMPRO,IVCSTIPFAC,IVCSNROFAC,"
                                    "IVCDNOGRAV,IVCDGRAVAD,IVARNI,IVARIN,IVCINGBRU,IVCFALTA, DESCRIPCION, DESCRIPCIONEXTRA) values (") +
                     Q(f.empresa) + u',' + Q(f.proveedor) + u',' +
                     QStringLiteral("datevalue('") + DMY(f.periodo) + QStringLiteral("'),") +
                     QStringLiteral("datevalue('") + DMY(f.fecha) + QStringLiteral("'),") +
                     Q(f.tipo) + u',' + Q(f.numero) + u',' + Q(f.noGravado == 0 ? QStringLiteral("0") : F(f.noGravado)) + u',' +
                     Q(F(gravado)) + QStringLiteral(",'0','0','0',") +
                     QStringLiteral("datevalue('") + DMY(f.alta) + QStringLiteral("'),") +
                     Q(f.descripcion) + u',' + Q(f.extra) + u')');
        const QString clave = QStringLiteral(" where USRSNRCUIT = ") + Q(f.empresa) +
                              QStringLiteral(" and PRVSNRCUIT = ") + Q(f.proveedor) +
                              QStringLiteral(" and IVCSNROFAC = ") + Q(f.numero);

        // Taxed-amount lines, numbered within the invoice.
        for (int i = 0; i < f.gravados.size(); ++i)
            db_.Ejecutar(QStringLiteral("insert into IVC_Gravado (USRSNRCUIT,PRVSNRCUIT,IVCSNROFAC,GRAVAD_id,GRAVAD_Valor) values (") +
                         Q(f.empresa) + u',' + Q(f.proveedor) + u',' + Q(f.numero) + u',' +
                         QString::number(i + 1) + QStringLiteral(",cdbl('") + F(f.gravados[i]) + QStringLiteral("'))"));

        // VAT lines: one per taxed line, with the description the window composes (the rate
        // box's default, or the calculator's from its base).
        double iva = 0;
        for (int i = 0; i < f.tasas.size(); ++i) {
            const double tasa = f.tasas[i];
            const double base = f.gravados[i];
            const double valor = R2(base * tasa / 100);
            iva += valor;
            const QString dsc = azar_.Entre(0, 3) == 0
                                    ? QStringLiteral("Gravado ") + F(base) + QStringLiteral(" IVA del ") + conv::NumeroATexto(tasa)
                                    : QStringLiteral("Iva del ") + conv::NumeroATexto(tasa) + u':';
            const int id = ++idIva_[f.empresa + u'|' + f.proveedor];
            db_.Ejecutar(QStringLiteral("insert into IVC_DetIVA (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIVA, IVCDETDSC, IVCDETVLR) values (") +
                         QStringList{Q(f.empresa), Q(f.proveedor), Q(QString::number(id)), Q(f.numero),
                                     Q(conv::NumeroATexto(tasa)), Q(dsc), Q(conv::NumeroATexto(valor))}
                             .join(u',') +
                         u')');
        }
        db_.Ejecutar(QStringLiteral("update IVC set IVARIN = ") + Q(F(iva)) + clave);

        // Gross-income perception: from its percentage, or from its amount alone.
        if (f.tasaIB > 0) {
            const double valor = R2(gravado * f.tasaIB / 100);
            const int forma = azar_.Entre(0, 2);
            const QString dsc = forma == 0   ? QStringLiteral("Ingresos Brutos")
                                : forma == 1 ? F(gravado) + QStringLiteral(" Ing Brutos del ") + conv::NumeroATexto(f.tasaIB)
                                             : QStringLiteral("Percepción IIBB");
            const int id = ++idIb_[f.empresa + u'|' + f.proveedor];
            db_.Ejecutar(QStringLiteral("insert into IVC_DetIngBrutos (USRSNRCUIT, PRVSNRCUIT, IVCdetId, IVCSNROFAC, IVCDETIB, IVCDETIBDSC, IVCDETIBVLR) values (") +
                         QStringList{Q(f.empresa), Q(f.proveedor), Q(QString::number(id)), Q(f.numero),
                                     Q(conv::NumeroATexto(f.tasaIB)), Q(dsc), Q(conv::NumeroATexto(valor))}
                             .join(u',') +
                         u')');
            db_.Ejecutar(QStringLiteral("update IVC set IVCINGBRU = ") + Q(F(valor)) + clave);
        } else if (f.ingBrutosViejo > 0) {
            db_.Ejecutar(QStringLiteral("update IVC set IVCINGBRU = ") + Q(F(f.ingBrutosViejo)) + clave);
        }
    }

private:
    oDB::clManejo &db_;
    Azar &azar_;
    QMap<QString, int> idIva_, idIb_;
};

// Point of sale and running number of each supplier.
struct Numerador {
    QMap<QString, int> puntoVenta, ultimo;
    QString Siguiente(const QString &cuit, Azar &a)
    {
        if (!puntoVenta.contains(cuit)) {
            puntoVenta[cuit] = a.Entre(1, 12);
            ultimo[cuit] = a.Entre(1200, 95000);
        }
        ultimo[cuit] += a.Entre(1, 40);
        return QStringLiteral("%1-%2").arg(puntoVenta[cuit], 4, 10, QChar(u'0')).arg(ultimo[cuit], 8, 10, QChar(u'0'));
    }
};

// Every taxed line of the invoice at 21%; an invoice with no taxed line gets one of the given
// amount in place of its untaxed amount.
void GravadoAl21(Escritor::Factura &f, double gravado)
{
    if (f.gravados.isEmpty()) {
        f.gravados << gravado;
        f.noGravado = 0;
    }
    f.tasas.clear();
    for (int l = 0; l < f.gravados.size(); ++l)
        f.tasas << 21.0;
}

QString Carpeta(const QString &dir) { return QDir(dir).absolutePath() + u'/'; }

} // namespace

QString ResumenDemo::Texto(const QString &titulo) const
{
    QString t = (titulo.isEmpty() ? QStringLiteral("Libro de demostración creado en %1").arg(carpeta) : titulo) + u'\n';
    t += QStringLiteral("Empresas: %1\n").arg(empresas.size());
    for (const EmpresaDemo &e : empresas) {
        QStringList meses;
        int total = 0;
        for (const PeriodoDemo &p : periodos)
            if (p.cuit == e.cuit) {
                meses << QStringLiteral("%1: %2").arg(p.periodo.mid(3), QString::number(p.facturas));
                total += p.facturas;
            }
        t += QStringLiteral("  %1  %2 (%3 facturas)\n      %4\n").arg(e.cuit, e.nombre).arg(total).arg(meses.join(QStringLiteral(", ")));
    }
    t += QStringLiteral("Proveedores: %1\n").arg(proveedores);
    t += QStringLiteral("Facturas: %1\n").arg(facturas);
    QString nombre;
    for (const EmpresaDemo &e : empresas)
        if (e.cuit == propuesto.cuit)
            nombre = e.nombre;
    t += QStringLiteral("Al abrirlo se propone %1, periodo %2 (%3 facturas).\n")
             .arg(nombre, propuesto.periodo.mid(3))
             .arg(propuesto.facturas);
    t += QStringLiteral("Para abrirlo: ivacompras --ajustes %1\n").arg(QDir(carpeta).absolutePath());
    return t;
}

ResumenDemo CrearDemo(const QString &dir)
{
    if (!QDir().mkpath(dir))
        throw oDB::ErrorBD{QStringLiteral("No se puede crear la carpeta '%1'.").arg(dir)};
    ResumenDemo r;
    r.carpeta = Carpeta(dir);
    const QStringList archivos = {QStringLiteral("personal.mdb"), QStringLiteral("kestrel.mdb"),
                                  QStringLiteral("proveedores.mdb")};
    for (const QString &f : archivos)
        if (QFileInfo::exists(r.carpeta + f))
            throw oDB::ErrorBD{QStringLiteral("La carpeta '%1' ya tiene un libro (%2); no se sobrescribe.")
                                   .arg(r.carpeta, f)};

    esquema::CrearBases(r.carpeta);
    try {
        Azar azar(20260601);
        oDB::clManejo personal, libro;
        personal.setCadenaConexion(CadenaConexion(r.carpeta, QStringLiteral("personal.mdb")));
        personal.Conectar();
        libro.setCadenaConexion(CadenaConexion(r.carpeta, QStringLiteral("kestrel.mdb")));
        libro.Conectar();

        for (const DatosEmpresa &e : Empresas()) {
            int cuerpo = e.cuerpo;
            QString cuit;
            while ((cuit = Cuit(e.prefijo, cuerpo)).isEmpty())
                ++cuerpo;
            r.empresas.append({cuit, QString::fromUtf8(e.nombre)});
            personal.Ejecutar(QStringLiteral("insert into USR (USRSNRCUIT,USRSNOMBRE,USRSCONIVA,USRSDOMICI,USRSEMAIL) values (") +
                              QStringList{Q(cuit), Q(QString::fromUtf8(e.nombre)), Q(QString::fromLatin1(e.conIva)),
                                          Q(QString::fromUtf8(e.domicilio)), Q(QString::fromUtf8(e.email))}
                                  .join(u',') +
                              u')');
        }

        libro.Ejecutar(QStringLiteral("BEGIN"));
        QStringList cuitPrv;
        for (const ProveedorDemo &p : Proveedores()) {
            int cuerpo = azar.Entre(p.prefijo >= 30 ? 70000000 : 20000000, p.prefijo >= 30 ? 71999999 : 35999999);
            QString cuit;
            while ((cuit = Cuit(p.prefijo, cuerpo)).isEmpty() || cuitPrv.contains(cuit))
                ++cuerpo;
            cuitPrv << cuit;
            const QDate alta = QDate(2025, 3, 1).addDays(azar.Entre(0, 400));
            // As the supplier window inserts it.
            libro.Ejecutar(sentencias::AltaProveedor({cuit, p.nombre, p.domicilio, p.telefono, p.email, p.contacto, alta}));
        }
        r.proveedores = int(cuitPrv.size());

        Escritor escritor(libro, azar);
        Numerador numerador;
        QSet<QString> usados;
        const QDate primero(2026, 6, 1), ultimo(2026, 11, 1);
        for (int e = 0; e < Empresas().size(); ++e) {
            const DatosEmpresa &de = Empresas()[e];
            const QString empresa = r.empresas[e].cuit;
            for (QDate periodo = primero; periodo <= ultimo; periodo = periodo.addMonths(1)) {
                // The first company's last month is its busiest: the one the demo opens on.
                const bool destacado = e == 0 && periodo == ultimo;
                const int cantidad = destacado ? de.maximo + 8 : azar.Entre(de.minimo, de.maximo);
                QList<Escritor::Factura> mes;
                for (int i = 0; i < cantidad; ++i) {
                    Escritor::Factura f;
                    f.empresa = empresa;
                    const int ip = azar.Uno(de.proveedores);
                    const ProveedorDemo &p = Proveedores()[ip];
                    f.proveedor = cuitPrv[ip];
                    // The first months of each company show every type once before the rest.
                    f.tipo = i < kTipos.size() && (periodo == primero || destacado) ? kTipos[i]
                             : p.servicio                                           ? QStringLiteral("A")
                                                                                    : TipoAlAzar(azar);
                    f.numero = numerador.Siguiente(f.proveedor, azar);
                    // Some receipts of type 99 carry a bare number, without point of sale.
                    if (f.tipo == QLatin1String("99") && azar.Entre(0, 1) == 0)
                        f.numero = QString::number(azar.Entre(100, 9999));
                    while (usados.contains(f.empresa + f.proveedor + f.numero))
                        f.numero = numerador.Siguiente(f.proveedor, azar);
                    usados.insert(f.empresa + f.proveedor + f.numero);
                    f.periodo = periodo;
                    // Invoices dated in the month, some in the days before it.
                    f.fecha = azar.Entre(0, 5) == 0 ? periodo.addDays(-azar.Entre(1, 12))
                                                    : periodo.addDays(azar.Entre(0, periodo.daysInMonth() - 1));
                    // Nothing after the day the book was last worked on.
                    f.fecha = qMin(f.fecha, kUltimoDia);
                    f.alta = qMin(f.fecha.addDays(azar.Entre(0, 9)), kUltimoDia);
                    f.descripcion = azar.Uno(p.rubros);
                    const int extra = azar.Entre(0, 5);
                    f.extra = extra == 0   ? QStringLiteral("Remito 0001-%1").arg(azar.Entre(1000, 99999), 8, 10, QChar(u'0'))
                              : extra == 1 ? QStringLiteral("Pago contado")
                              : extra == 2 ? QStringLiteral("Cuenta corriente 30 días")
                                           : QString();
                    if (f.tipo == QLatin1String("C")) {
                        f.noGravado = azar.Monto(800, 60000);
                    } else {
                        const int lineas = p.servicio ? 1 : azar.Entre(1, 3);
                        for (int l = 0; l < lineas; ++l) {
                            f.gravados << azar.Monto(150, 250000 / lineas);
                            if (DiscriminaIva(f.tipo)) {
                                const int t = azar.Entre(0, 9);
                                f.tasas << (p.servicio ? (azar.Entre(0, 1) ? 27.0 : 21.0)
                                                       : t < 6 ? 21.0 : t < 9 ? 10.5 : 27.0);
                            }
                        }
                        if (azar.Entre(0, 4) == 0)
                            f.noGravado = azar.Monto(50, 9000);
                        if (DiscriminaIva(f.tipo) && azar.Entre(0, 2) == 0)
                            f.tasaIB = azar.Entre(0, 2) == 0 ? 2.5 : 3;
                    }
                    mes << f;
                }
                if (destacado) {
                    // An invoice of the earlier scheme: its gross income on the header only.
                    Escritor::Factura &viejo = mes[cantidad - 2];
                    viejo.tipo = QStringLiteral("A");
                    viejo.tasaIB = 0;
                    viejo.ingBrutosViejo = 150;
                    viejo.descripcion = QStringLiteral("Factura cargada con la versión anterior");
                    GravadoAl21(viejo, 5000);
                    // A voucher type outside the list of the windows.
                    Escritor::Factura &raro = mes[cantidad - 1];
                    raro.tipo = QStringLiteral("X");
                    raro.descripcion = QStringLiteral("Comprobante de tipo desconocido");
                    GravadoAl21(raro, 1200);
                }
                for (const Escritor::Factura &f : mes)
                    escritor.Escribir(f);
                r.periodos.append({empresa, conv::FechaCorta(periodo), int(mes.size())});
                r.facturas += int(mes.size());
            }
        }
        {
            // The busiest period also holds the slips the period check [F9] is made to find,
            // each as a person makes it (the type "X" invoice above is one of them).
            const QDate periodo(2026, 11, 1);
            const QString empresa = r.empresas[0].cuit;
            auto enLista = std::find_if(r.periodos.begin(), r.periodos.end(), [&](const PeriodoDemo &x) {
                return x.cuit == empresa && x.periodo == conv::FechaCorta(periodo);
            });
            if (enLista == r.periodos.end()) {
                // Every company has invoices in every month; should that change, the period
                // still comes to the list.
                r.periodos.append({empresa, conv::FechaCorta(periodo), 0});
                enLista = std::prev(r.periodos.end());
            }
            PeriodoDemo &p = *enLista;
            const auto proveedor = [&](const QString &nombre, int prefijo, int cuerpo) {
                QString cuit;
                while ((cuit = Cuit(prefijo, cuerpo)).isEmpty())
                    ++cuerpo;
                sentencias::AltaDeProveedor alta;
                alta.cuit = cuit;
                alta.nombre = nombre;
                alta.alta = QDate(2026, 10, 1);
                libro.Ejecutar(sentencias::AltaProveedor(alta));
                return cuit;
            };
            const auto factura = [&](const QString &prv, const QString &tipo, const QString &numero, int dia,
                                     const QList<double> &gravados, const QList<double> &tasas, const QString &dsc) {
                Escritor::Factura f;
                f.empresa = empresa;
                f.proveedor = prv;
                f.tipo = tipo;
                f.numero = numero;
                f.periodo = periodo;
                f.fecha = periodo.addDays(dia - 1);
                f.alta = kUltimoDia;
                f.gravados = gravados;
                f.tasas = tasas;
                f.descripcion = dsc;
                return f;
            };
            const QString clave = QStringLiteral(" where USRSNRCUIT = %1 and PRVSNRCUIT = %2 and IVCSNROFAC = %3");
            const QString harinera = cuitPrv[0], nandu = cuitPrv[1], energia = cuitPrv[8];
            QList<Escritor::Factura> conFallas = {
                // A prefix that does not exist (31 for 30), with its check digit right.
                factura(proveedor(QStringLiteral("Distribuidora del Centro S.A."), 31, 70456123), QStringLiteral("A"),
                        QStringLiteral("0003-00004410"), 4, {18000}, {21}, QStringLiteral("Mercadería de almacén")),
                // A letter O for a zero, in the point of sale and in the number.
                factura(harinera, QStringLiteral("A"), QStringLiteral("O021-00071230"), 6, {42000}, {21},
                        QStringLiteral("Harina 000 x 50 kg")),
                factura(nandu, QStringLiteral("A"), QStringLiteral("0024-000O1987"), 7, {9800}, {21},
                        QStringLiteral("Aceite girasol x 5 l")),
                // A number of 9 digits: the files keep the last 6.
                factura(energia, QStringLiteral("A"), QStringLiteral("0030-123456789"), 9, {64000}, {27},
                        QStringLiteral("Servicio de energía eléctrica")),
                // The same invoice entered twice, the second time without its zeros.
                factura(harinera, QStringLiteral("A"), QStringLiteral("0021-00071555"), 10, {15500}, {10.5},
                        QStringLiteral("Harina 0000 x 25 kg")),
                factura(harinera, QStringLiteral("A"), QStringLiteral("0021-71555"), 12, {15500}, {10.5},
                        QStringLiteral("Harina 0000 x 25 kg")),
                // Names pasted from other programs: curly quotes, a TAB.
                factura(proveedor(QStringLiteral("Café “El Molino” S.R.L."), 30, 70555321), QStringLiteral("A"),
                        QStringLiteral("0001-00000871"), 13, {7300}, {21}, QStringLiteral("Café en grano x 5 kg")),
                factura(proveedor(QStringLiteral("Molienda San José\tS.A."), 30, 70666512), QStringLiteral("A"),
                        QStringLiteral("0001-00002290"), 14, {11250}, {21}, QStringLiteral("Sémola x 25 kg")),
                // Zeros typed twice over in the untaxed amount.
                factura(nandu, QStringLiteral("C"), QStringLiteral("0024-00031877"), 15, {}, {},
                        QStringLiteral("Azúcar 1,5 kg x 10")),
                // VAT lines that do not add up to the header, and gross income likewise.
                factura(nandu, QStringLiteral("A"), QStringLiteral("0024-00031902"), 16, {20000}, {21},
                        QStringLiteral("Mercadería de almacén")),
                factura(harinera, QStringLiteral("A"), QStringLiteral("0021-00071610"), 17, {30000}, {21},
                        QStringLiteral("Harina integral x 25 kg")),
                // A VAT line typed 2010 for 2100.
                factura(nandu, QStringLiteral("A"), QStringLiteral("0024-00031950"), 18, {10000}, {21},
                        QStringLiteral("Azúcar 1,5 kg x 10")),
                // Lines at two rates.
                factura(harinera, QStringLiteral("A"), QStringLiteral("0021-00071700"), 19, {25000, 8000}, {21, 10.5},
                        QStringLiteral("Harina y levadura")),
                // A class A without its VAT line, a B with one.
                factura(nandu, QStringLiteral("A"), QStringLiteral("0024-00032001"), 20, {5400}, {},
                        QStringLiteral("Mercadería de almacén")),
                factura(energia, QStringLiteral("B"), QStringLiteral("0030-00889100"), 20, {3100}, {21},
                        QStringLiteral("Servicio de energía eléctrica")),
                // Years typed wrong: one ahead, one behind.
                factura(nandu, QStringLiteral("A"), QStringLiteral("0024-00032050"), 21, {6000}, {21},
                        QStringLiteral("Aceite girasol x 5 l")),
                factura(harinera, QStringLiteral("A"), QStringLiteral("0021-00071720"), 21, {12000}, {21},
                        QStringLiteral("Harina 000 x 50 kg")),
                // A voided invoice kept at zero, and a credit note entered with negative amounts.
                factura(nandu, QStringLiteral("C"), QStringLiteral("0024-00032100"), 21, {}, {},
                        QStringLiteral("Factura anulada")),
                factura(harinera, QStringLiteral("A"), QStringLiteral("0021-00071730"), 21, {-1000}, {21},
                        QStringLiteral("Devolución de mercadería")),
                // A supplier removed from the list after its invoice was entered.
                factura(proveedor(QStringLiteral("Fletes Rápidos S.R.L."), 30, 70777654), QStringLiteral("A"),
                        QStringLiteral("0021-00000345"), 11, {8500}, {21}, QStringLiteral("Flete local")),
            };
            conFallas[8].noGravado = 25000000000000;
            conFallas[10].tasaIB = 3;
            conFallas[15].fecha = QDate(2027, 11, 5);
            conFallas[16].fecha = QDate(2025, 9, 30);
            for (const Escritor::Factura &f : conFallas)
                escritor.Escribir(f);
            const auto donde = [&](const Escritor::Factura &f) { return clave.arg(Q(empresa), Q(f.proveedor), Q(f.numero)); };
            libro.Ejecutar(QStringLiteral("update IVC set IVARIN = '4300,00'") + donde(conFallas[9]));
            libro.Ejecutar(QStringLiteral("update IVC set IVCINGBRU = '990,00'") + donde(conFallas[10]));
            libro.Ejecutar(QStringLiteral("update IVC_DetIVA set IVCDETVLR = '2010'") + donde(conFallas[11]));
            libro.Ejecutar(QStringLiteral("update IVC set IVARIN = '2010,00'") + donde(conFallas[11]));
            libro.Ejecutar(QStringLiteral("DELETE FROM PRV WHERE PRVSNRCUIT = ") + Q(conFallas.last().proveedor));
            p.facturas += int(conFallas.size());
            r.facturas += int(conFallas.size());
        }
        libro.Ejecutar(QStringLiteral("COMMIT"));
    } catch (...) {
        for (const QString &f : archivos)
            QFile::remove(r.carpeta + f);
        throw;
    }

    for (const PeriodoDemo &p : r.periodos)
        if (p.facturas > r.propuesto.facturas)
            r.propuesto = p;

    const Ajustes a(r.carpeta);
    const QString fac = QStringLiteral("FACTURACION");
    a.GuardarCarpetaLibros(r.carpeta, true);
    a.Guardar(fac, QStringLiteral("DATOS"), QStringLiteral("IVARIN"), QStringLiteral("21"));
    a.Guardar(fac, QStringLiteral("DATOS"), QStringLiteral("IVARNI"), QStringLiteral("0"));
    a.Guardar(fac, QStringLiteral("IVC"), QStringLiteral("CFGIMPFUEN"), QStringLiteral("9"));
    a.Guardar(fac, QStringLiteral("IVC"), QStringLiteral("CFGIMPLIXP"), QStringLiteral("30"));
    a.GuardarHistorial(r.propuesto.cuit, r.propuesto.periodo);
    return r;
}

} // namespace demo
