#include "import/ComprobantesRecibidos.h"

#include "data/Convenciones.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>
#include <zip.h>
#include <algorithm>
#include <cmath>
#include <future>
#include <thread>
#include <vector>
#include <optional>

namespace recibidos {

namespace {

using Tabla = QVector<QVector<QVariant>>;

// Why the file cannot be read; Leer puts the file's name in front.
[[noreturn]] void Fallar(const QString &motivo) { throw ErrorLectura{motivo}; }

// --- XLSX ---------------------------------------------------------------------------------

class Zip
{
public:
    explicit Zip(const QString &ruta)
    {
        int error = 0;
        z_ = zip_open(QFile::encodeName(ruta).constData(), ZIP_RDONLY, &error);
        if (!z_)
            Fallar(QStringLiteral("el libro XLSX está dañado."));
    }
    ~Zip() { zip_discard(z_); }
    Zip(const Zip &) = delete;
    Zip &operator=(const Zip &) = delete;

    // The bytes of a member; nullopt when the file does not hold it.
    std::optional<QByteArray> Leer(const QString &nombre) const
    {
        const QByteArray n = nombre.toUtf8();
        zip_stat_t st;
        zip_stat_init(&st);
        if (zip_stat(z_, n.constData(), 0, &st) != 0 || !(st.valid & ZIP_STAT_SIZE))
            return std::nullopt;
        if (st.size > 512u * 1024 * 1024)
            Fallar(QStringLiteral("una parte del libro XLSX es demasiado grande."));
        zip_file_t *f = zip_fopen(z_, n.constData(), 0);
        if (!f)
            Fallar(QStringLiteral("el libro XLSX está dañado."));
        QByteArray datos(qsizetype(st.size), Qt::Uninitialized);
        const zip_int64_t leidos = zip_fread(f, datos.data(), st.size);
        zip_fclose(f);
        if (leidos < 0 || zip_uint64_t(leidos) != st.size)
            Fallar(QStringLiteral("el libro XLSX está dañado."));
        return datos;
    }

private:
    zip_t *z_ = nullptr;
};

QByteArray Exigir(const Zip &zip, const QString &nombre)
{
    auto d = zip.Leer(nombre);
    if (!d)
        Fallar(QStringLiteral("al libro XLSX le falta %1.").arg(nombre));
    return *d;
}

void ControlarXml(const QXmlStreamReader &x, const QString &parte)
{
    if (x.hasError())
        Fallar(QStringLiteral("%1 está dañado (%2).").arg(parte, x.errorString()));
}

QString Atributo(const QXmlStreamReader &x, QStringView nombre)
{
    // By local name, whatever prefix the namespace carries ("r:id").
    for (const QXmlStreamAttribute &a : x.attributes())
        if (a.name() == nombre)
            return a.value().toString();
    return QString();
}


// The text of the <t> elements inside the current element, up to its end (runs joined;
// phonetic hints left out).
QString TextoHasta(QXmlStreamReader &x, QStringView fin)
{
    QString texto;
    int fonetica = 0;
    while (!x.atEnd()) {
        x.readNext();
        if (x.isStartElement()) {
            if (x.name() == u"rPh")
                ++fonetica;
            else if (x.name() == u"t" && fonetica == 0)
                texto += x.readElementText();
        } else if (x.isEndElement()) {
            if (x.name() == u"rPh")
                --fonetica;
            else if (x.name() == fin)
                break;
        }
    }
    return texto;
}

QString PrimeraHoja(const Zip &zip)
{
    QString id;
    {
        QXmlStreamReader x(Exigir(zip, QStringLiteral("xl/workbook.xml")));
        while (!x.atEnd() && id.isEmpty())
            if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"sheet")
                id = Atributo(x, u"id");
        ControlarXml(x, QStringLiteral("xl/workbook.xml"));
    }
    if (id.isEmpty())
        Fallar(QStringLiteral("el libro XLSX no tiene hojas."));
    QXmlStreamReader x(Exigir(zip, QStringLiteral("xl/_rels/workbook.xml.rels")));
    while (!x.atEnd()) {
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"Relationship" &&
            Atributo(x, u"Id") == id) {
            QString destino = Atributo(x, u"Target");
            if (destino.startsWith(u'/'))
                return destino.mid(1);
            return QStringLiteral("xl/") + destino;
        }
    }
    ControlarXml(x, QStringLiteral("xl/_rels/workbook.xml.rels"));
    Fallar(QStringLiteral("no se encuentra la primera hoja del libro XLSX."));
}

QStringList TextosCompartidos(const Zip &zip)
{
    QStringList textos;
    const auto datos = zip.Leer(QStringLiteral("xl/sharedStrings.xml"));
    if (!datos)
        return textos;
    QXmlStreamReader x(*datos);
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"si")
            textos << TextoHasta(x, u"si");
    ControlarXml(x, QStringLiteral("xl/sharedStrings.xml"));
    return textos;
}

// Whether a number format shows a date: the built-in date formats, or a format code with day,
// month or year letters outside quoted texts and brackets.
bool FormatoDeFecha(int id, const QString &codigo)
{
    if ((id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) || (id >= 50 && id <= 58))
        return true;
    if (codigo.isEmpty())
        return false;
    bool comillas = false;
    int corchetes = 0;
    for (qsizetype i = 0; i < codigo.size(); ++i) {
        const QChar c = codigo[i];
        if (c == u'\\') {
            ++i;
        } else if (c == u'"') {
            comillas = !comillas;
        } else if (!comillas && c == u'[') {
            ++corchetes;
        } else if (!comillas && c == u']') {
            --corchetes;
        } else if (!comillas && corchetes == 0) {
            const QChar l = c.toLower();
            if (l == u'd' || l == u'y' || l == u'm')
                return true;
        }
    }
    return false;
}

// For each cell style (cellXfs index), whether it shows a date.
QVector<bool> EstilosDeFecha(const Zip &zip)
{
    QVector<bool> estilos;
    const auto datos = zip.Leer(QStringLiteral("xl/styles.xml"));
    if (!datos)
        return estilos;
    QHash<int, QString> formatos;
    QXmlStreamReader x(*datos);
    bool enCeldas = false;
    while (!x.atEnd()) {
        x.readNext();
        if (x.isStartElement()) {
            if (x.name() == u"numFmt")
                formatos.insert(Atributo(x, u"numFmtId").toInt(), Atributo(x, u"formatCode"));
            else if (x.name() == u"cellXfs")
                enCeldas = true;
            else if (enCeldas && x.name() == u"xf") {
                const int id = Atributo(x, u"numFmtId").toInt();
                estilos << FormatoDeFecha(id, formatos.value(id));
            }
        } else if (x.isEndElement() && x.name() == u"cellXfs") {
            enCeldas = false;
        }
    }
    ControlarXml(x, QStringLiteral("xl/styles.xml"));
    return estilos;
}

// "AB12" -> column 27 (0-based 27), row 12.
bool Referencia(QStringView ref, int &columna, int &fila)
{
    int c = 0;
    qsizetype i = 0;
    for (; i < ref.size() && ref[i].isLetter(); ++i)
        c = c * 26 + (ref[i].toUpper().unicode() - 'A' + 1);
    bool ok = false;
    const int f = ref.mid(i).toInt(&ok);
    if (c == 0 || !ok || f <= 0)
        return false;
    columna = c - 1;
    fila = f;
    return true;
}

// Column 27 (0-based), row 12 -> "AB12".
QString NombreCelda(int columna, int fila)
{
    QString letras;
    for (int c = columna + 1; c > 0; c = (c - 1) / 26)
        letras.prepend(QChar(u'A' + (c - 1) % 26));
    return letras + QString::number(fila);
}

// A shared text is kept as its index until the shared texts, read at the same time, are known.
struct Celda {
    int fila;
    int columna;
    QVariant valor;
    int compartido = -1;
};

// The cells of the sheet's XML, or of a run of its whole <row> elements. The tokens are read
// one by one and a cell's text is gathered in one buffer: a list of 20,000 vouchers holds
// 600,000 cells.
QVector<Celda> LeerCeldas(const QByteArray &xml, const QVector<bool> &fechas, const QString &hoja)
{
    QVector<Celda> celdas;
    celdas.reserve(xml.size() / 32);
    QXmlStreamReader x(xml);
    enum class Tipo { Numero, Logico, Compartido, Texto, EnLinea };
    int fila = 0;
    int columna = -1;
    // The cell being read: where it is, its type and style, and the text of its <v> (or of the
    // <t> of its inline string, phonetic hints left out).
    bool enCelda = false;
    bool enTexto = false;
    int fonetica = 0;
    Tipo tipo = Tipo::Numero;
    int estilo = 0;
    Celda celda{0, 0, {}};
    QString texto;
    while (!x.atEnd()) {
        switch (x.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QStringView nombre = x.name();
            if (nombre == u"c" && fila > 0) {
                celda = Celda{fila, columna + 1, {}};
                tipo = Tipo::Numero;
                estilo = 0;
                for (const QXmlStreamAttribute &a : x.attributes()) {
                    const QStringView n = a.name(), v = a.value();
                    if (n == u"r") {
                        if (!v.isEmpty() && !Referencia(v, celda.columna, celda.fila))
                            Fallar(QStringLiteral("la celda %1 de la hoja no se entiende.").arg(v));
                    } else if (n == u"t") {
                        tipo = v == u"s" ? Tipo::Compartido
                             : v == u"inlineStr" ? Tipo::EnLinea
                             : v == u"str" || v == u"e" ? Tipo::Texto
                             : v == u"b" ? Tipo::Logico : Tipo::Numero;
                    } else if (n == u"s") {
                        estilo = v.toInt();
                    }
                }
                columna = celda.columna;
                enCelda = true;
                fonetica = 0;
                texto.truncate(0);
            } else if (nombre == u"row") {
                const int r = x.attributes().value(QLatin1StringView("r")).toInt();
                fila = r > 0 ? r : fila + 1;
                columna = -1;
            } else if (enCelda) {
                if (nombre == u"rPh")
                    ++fonetica;
                else if (nombre == (tipo == Tipo::EnLinea ? u"t" : u"v") && fonetica == 0)
                    enTexto = true;
            }
            break;
        }
        case QXmlStreamReader::Characters:
            if (enTexto)
                texto += x.text();
            break;
        case QXmlStreamReader::EndElement: {
            const QStringView nombre = x.name();
            enTexto = false;
            if (nombre == u"rPh") {
                --fonetica;
            } else if (nombre == u"c" && enCelda) {
                enCelda = false;
                if (tipo == Tipo::Compartido) {
                    bool ok = false;
                    celda.compartido = texto.toInt(&ok);
                    if (!ok || celda.compartido < 0)
                        Fallar(QStringLiteral("la celda %1 nombra un texto que no existe.")
                                   .arg(NombreCelda(celda.columna, celda.fila)));
                } else if (tipo == Tipo::Texto || tipo == Tipo::EnLinea) {
                    celda.valor = texto;
                } else if (!texto.isEmpty()) {
                    bool ok = false;
                    const double n = QStringView(texto).toDouble(&ok);
                    if (!ok)
                        celda.valor = texto;
                    else if (tipo == Tipo::Numero && estilo >= 0 && estilo < fechas.size() && fechas[estilo])
                        celda.valor = conv::SerialAFecha(std::floor(n));
                    else
                        celda.valor = n;
                }
                celdas.push_back(std::move(celda));
            }
            break;
        }
        default:
            break;
        }
    }
    ControlarXml(x, hoja);
    return celdas;
}

// The sheet's rows cut into runs of whole <row> elements, each wrapped as a document of its
// own, so that each processor reads one. Only a sheet whose rows are numbered and written
// without a namespace prefix is cut; a short one is read whole.
QVector<QByteArray> Tramos(const QByteArray &xml, int partes)
{
    const qsizetype inicio = xml.indexOf("<row ");
    const qsizetype fin = xml.lastIndexOf("</sheetData>");
    if (partes < 2 || xml.size() < 1024 * 1024 || inicio < 0 || fin < inicio || !xml.contains("<row r=\""))
        return {xml};
    QVector<QByteArray> tramos;
    qsizetype desde = inicio;
    for (int k = 1; k <= partes; ++k) {
        qsizetype hasta = fin;
        if (k < partes) {
            hasta = xml.indexOf("<row ", inicio + (fin - inicio) * k / partes);
            if (hasta < 0 || hasta > fin)
                hasta = fin;
        }
        if (hasta > desde)
            tramos << QByteArray("<sheetData>") + xml.mid(desde, hasta - desde) + QByteArray("</sheetData>");
        desde = hasta;
    }
    return tramos;
}

// Runs hacer(0) ... hacer(n - 1) at once, each on its own thread. Whatever one throws
// (ErrorLectura, std::bad_alloc...) is thrown again here once all have ended: the lowest
// index's first.
template <typename F>
void EnParalelo(qsizetype n, F hacer)
{
    std::vector<std::future<void>> otros;
    for (qsizetype k = 1; k < n; ++k)
        otros.push_back(std::async(std::launch::async, hacer, k));
    hacer(0); // when this throws, the futures wait for their threads as they go
    for (std::future<void> &f : otros)
        f.get();
}

Tabla LeerXlsx(const QString &ruta)
{
    Zip zip(ruta);
    const QString hoja = PrimeraHoja(zip);
    const QVector<bool> fechas = EstilosDeFecha(zip);
    const QVector<QByteArray> tramos =
        Tramos(Exigir(zip, hoja), int(std::clamp(std::thread::hardware_concurrency(), 1u, 4u)));
    // The shared texts and every run of a list of thousands of rows are read at once.
    QStringList compartidos;
    QVector<QVector<Celda>> leidas(tramos.size());
    EnParalelo(tramos.size() + 1, [&](qsizetype k) {
        if (k == 0)
            compartidos = TextosCompartidos(zip);
        else
            leidas[k - 1] = LeerCeldas(tramos[k - 1], fechas, hoja);
    });
    Tabla tabla;
    for (const QVector<Celda> &celdas : leidas)
        for (const Celda &c : celdas) {
            if (tabla.size() < c.fila)
                tabla.resize(c.fila);
            if (tabla[c.fila - 1].size() <= c.columna)
                tabla[c.fila - 1].resize(c.columna + 1);
            if (c.compartido >= compartidos.size())
                Fallar(QStringLiteral("la celda %1 nombra un texto que no existe.").arg(NombreCelda(c.columna, c.fila)));
            tabla[c.fila - 1][c.columna] = c.compartido >= 0 ? QVariant(compartidos[c.compartido]) : c.valor;
        }
    return tabla;
}

// --- CSV ----------------------------------------------------------------------------------

QString Decodificar(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString texto = utf8(bytes);
    if (utf8.hasError())
        texto = QString::fromLatin1(bytes);
    if (texto.startsWith(QChar(0xFEFF)))
        texto.remove(0, 1);
    return texto;
}

Tabla LeerCsv(const QByteArray &bytes)
{
    const QString texto = Decodificar(bytes);
    Tabla tabla;
    QVector<QVariant> fila;
    QString celda;
    bool comillas = false;
    bool algo = false;
    auto cerrarCelda = [&] {
        fila << celda;
        celda.clear();
    };
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto[i];
        if (comillas) {
            if (c == u'"' && i + 1 < texto.size() && texto[i + 1] == u'"') {
                celda += c;
                ++i;
            } else if (c == u'"') {
                comillas = false;
            } else {
                celda += c;
            }
        } else if (c == u'"') {
            comillas = true;
            algo = true;
        } else if (c == u';') {
            cerrarCelda();
            algo = true;
        } else if (c == u'\r' || c == u'\n') {
            if (c == u'\r' && i + 1 < texto.size() && texto[i + 1] == u'\n')
                ++i;
            if (algo || !celda.isEmpty()) {
                cerrarCelda();
                tabla << fila;
            }
            fila.clear();
            algo = false;
        } else {
            celda += c;
            algo = true;
        }
    }
    if (algo || !celda.isEmpty()) {
        cerrarCelda();
        tabla << fila;
    }
    return tabla;
}

// --- The list -----------------------------------------------------------------------------

const QStringList kTitulosActuales = {
    QStringLiteral("Fecha"), QStringLiteral("Tipo"), QStringLiteral("Punto de Venta"),
    QStringLiteral("Número Desde"), QStringLiteral("Nro. Doc. Emisor"), QStringLiteral("Denominación Emisor"),
    QStringLiteral("Tipo Cambio"), QStringLiteral("Moneda"), QStringLiteral("Neto Gravado Total"),
    QStringLiteral("Neto No Gravado"), QStringLiteral("Op. Exentas"), QStringLiteral("Otros Tributos"),
    QStringLiteral("Total IVA"), QStringLiteral("Imp. Total")};
const QStringList kTitulosAnteriores = {
    QStringLiteral("Fecha de Emisión"), QStringLiteral("Tipo de Comprobante"), QStringLiteral("Punto de Venta"),
    QStringLiteral("Número Desde"), QStringLiteral("Nro. Doc. Emisor"), QStringLiteral("Denominación Emisor"),
    QStringLiteral("Tipo Cambio"), QStringLiteral("Moneda"), QStringLiteral("Imp. Neto Gravado"),
    QStringLiteral("Imp. Neto No Gravado"), QStringLiteral("Imp. Op. Exentas"), QStringLiteral("Otros Tributos"),
    QStringLiteral("IVA"), QStringLiteral("Imp. Total")};
// The rates of the current form: the taxed amount and VAT headings of each.
struct ColumnasTasa {
    double tasa;
    const char16_t *neto;
    const char16_t *iva;
};
const ColumnasTasa kTasas[] = {{0, u"Neto Grav. IVA 0%", nullptr},
                               {2.5, u"Neto Grav. IVA 2,5%", u"IVA 2,5%"},
                               {5, u"Neto Grav. IVA 5%", u"IVA 5%"},
                               {10.5, u"Neto Grav. IVA 10,5%", u"IVA 10,5%"},
                               {21, u"Neto Grav. IVA 21%", u"IVA 21%"},
                               {27, u"Neto Grav. IVA 27%", u"IVA 27%"}};

QString Texto(const QVariant &v)
{
    if (v.typeId() == QMetaType::Double)
        return conv::NumeroATexto(v.toDouble());
    return v.toString().trimmed();
}

// An amount of a cell: a number, or a text with a decimal comma or point (and perhaps the
// other sign grouping thousands). An empty cell is 0.
std::optional<double> Monto(const QVariant &v)
{
    if (v.typeId() == QMetaType::Double)
        return v.toDouble();
    QString t = v.toString().trimmed();
    t.remove(u'$');
    t.remove(u' ');
    if (t.isEmpty())
        return 0.0;
    const qsizetype coma = t.lastIndexOf(u','), punto = t.lastIndexOf(u'.');
    if (coma >= 0 && punto >= 0)
        t.remove(coma > punto ? u'.' : u',');
    return conv::ANumero(t);
}

std::optional<QDate> Fecha(const QVariant &v)
{
    if (v.typeId() == QMetaType::QDate)
        return v.toDate();
    if (v.typeId() == QMetaType::Double)
        return conv::SerialAFecha(std::floor(v.toDouble()));
    static const QRegularExpression dma(QStringLiteral("^(\\d{1,2})/(\\d{1,2})/(\\d{4})$"));
    static const QRegularExpression iso(QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})"));
    const QString t = v.toString().trimmed();
    QDate d;
    if (const auto m = dma.match(t); m.hasMatch())
        d = QDate(m.captured(3).toInt(), m.captured(2).toInt(), m.captured(1).toInt());
    else if (const auto m2 = iso.match(t); m2.hasMatch())
        d = QDate(m2.captured(1).toInt(), m2.captured(2).toInt(), m2.captured(3).toInt());
    if (!d.isValid())
        return std::nullopt;
    return d;
}

Lista Interpretar(const Tabla &tabla, const QString &tipoArchivo)
{
    // The headings row: the first whose first cell is "Fecha" (current form) or "Fecha de
    // Emisión" (older form), within the first rows.
    int filaTitulos = -1;
    bool actual = false;
    for (int f = 0; f < std::min<qsizetype>(tabla.size(), 10) && filaTitulos < 0; ++f) {
        const QString primero = tabla[f].isEmpty() ? QString() : NormalizarTitulo(Texto(tabla[f][0]));
        if (primero == u"fecha" || primero == u"fecha de emision") {
            filaTitulos = f;
            actual = primero == u"fecha";
        }
    }
    if (filaTitulos < 0)
        Fallar(QStringLiteral("no tiene los títulos de columna de la lista (\"Fecha\", \"Tipo\"...)."));
    QHash<QString, int> columnas;
    for (int c = 0; c < tabla[filaTitulos].size(); ++c)
        columnas.insert(NormalizarTitulo(Texto(tabla[filaTitulos][c])), c);
    const QStringList &titulos = actual ? kTitulosActuales : kTitulosAnteriores;
    QVector<int> col;
    for (const QString &t : titulos) {
        const auto it = columnas.constFind(NormalizarTitulo(t));
        if (it == columnas.constEnd())
            Fallar(QStringLiteral("falta la columna \"%1\".").arg(t));
        col << it.value();
    }
    // The columns of each rate (current form); -1 when the file lacks one.
    QVector<int> colNeto, colIva;
    for (const ColumnasTasa &t : kTasas) {
        colNeto << columnas.value(NormalizarTitulo(QString::fromUtf16(t.neto)), -1);
        colIva << (t.iva ? columnas.value(NormalizarTitulo(QString::fromUtf16(t.iva)), -1) : -1);
    }
    enum { cFecha, cTipo, cPunto, cDesde, cCuit, cNombre, cCambio, cMoneda, cGrav, cNoGrav, cExento, cOtros, cIva, cTotal };

    Lista lista;
    lista.forma = tipoArchivo + (actual ? QStringLiteral(", forma actual") : QStringLiteral(", forma anterior"));
    static const QRegularExpression cuit(QStringLiteral("CUIT\\s*([0-9-]{11,13})\\s*$"),
                                         QRegularExpression::CaseInsensitiveOption);
    for (int f = 0; f < filaTitulos; ++f)
        for (const QVariant &v : tabla[f])
            if (const auto m = cuit.match(Texto(v)); m.hasMatch())
                lista.cuitReceptor = Digitos(m.captured(1));

    for (int f = filaTitulos + 1; f < tabla.size(); ++f) {
        const QVector<QVariant> &fila = tabla[f];
        auto celda = [&](int i) { return col[i] < fila.size() ? fila[col[i]] : QVariant(); };
        auto celdaEn = [&](int c) { return c >= 0 && c < fila.size() ? fila[c] : QVariant(); };
        bool vacia = true;
        for (const QVariant &v : fila)
            vacia = vacia && (v.isNull() || (v.typeId() == QMetaType::QString && v.toString().trimmed().isEmpty()));
        if (vacia)
            continue;
        auto donde = [&] { return QStringLiteral("la fila %1 ").arg(f + 1); };
        auto monto = [&](const QVariant &v, QStringView titulo) {
            const auto m = Monto(v);
            if (!m)
                Fallar(donde() + QStringLiteral("tiene un importe que no es un número en \"%1\".").arg(titulo));
            return *m;
        };
        Comprobante c;
        c.fila = f + 1;
        const auto fecha = Fecha(celda(cFecha));
        if (!fecha)
            Fallar(donde() + QStringLiteral("tiene una fecha que no se entiende."));
        c.fecha = *fecha;
        const QString tipo = Texto(celda(cTipo));
        static const QRegularExpression reTipo(QStringLiteral("^\\s*(\\d+)\\s*(?:-\\s*(.*))?$"));
        const auto mt = reTipo.match(tipo);
        if (!mt.hasMatch())
            Fallar(donde() + QStringLiteral("tiene un tipo de comprobante que no se entiende."));
        c.codigo = mt.captured(1).toInt();
        c.nombreTipo = mt.captured(2).trimmed();
        c.tipoLibro = TipoLibro(c.codigo);
        const double punto = monto(celda(cPunto), titulos[cPunto]);
        const double numero = monto(celda(cDesde), titulos[cDesde]);
        if (punto < 0 || numero <= 0 || punto > 99999 || numero > 99999999)
            Fallar(donde() + QStringLiteral("tiene un punto de venta o un número fuera de rango."));
        c.puntoVenta = int(punto);
        c.numero = qint64(numero);
        c.cuitEmisor = Digitos(Texto(celda(cCuit)));
        if (c.cuitEmisor.size() != 11)
            Fallar(donde() + QStringLiteral("no tiene la CUIT del emisor."));
        c.denominacion = Texto(celda(cNombre));
        c.moneda = Texto(celda(cMoneda));
        c.tipoCambio = monto(celda(cCambio), titulos[cCambio]);
        // Amounts of a voucher in another currency come in that currency.
        const bool pesos = c.moneda.isEmpty() || c.moneda == u"$" || c.moneda.compare(u"PES", Qt::CaseInsensitive) == 0;
        const double cambio = !pesos && c.tipoCambio > 0 ? c.tipoCambio : 1;
        auto pesosDe = [&](const QVariant &v, QStringView titulo) { return conv::Redondear(monto(v, titulo) * cambio, 2); };
        c.netoGravado = pesosDe(celda(cGrav), titulos[cGrav]);
        c.noGravado = pesosDe(celda(cNoGrav), titulos[cNoGrav]);
        c.exento = pesosDe(celda(cExento), titulos[cExento]);
        c.otrosTributos = pesosDe(celda(cOtros), titulos[cOtros]);
        c.iva = pesosDe(celda(cIva), titulos[cIva]);
        c.total = pesosDe(celda(cTotal), titulos[cTotal]);
        if (actual) {
            c.porTasa = true;
            for (int k = 0; k < int(std::size(kTasas)); ++k) {
                const ColumnasTasa &t = kTasas[k];
                Alicuota a{t.tasa, pesosDe(celdaEn(colNeto[k]), t.neto), t.iva ? pesosDe(celdaEn(colIva[k]), t.iva) : 0.0};
                if (a.neto != 0 || a.iva != 0)
                    c.alicuotas << a;
            }
        }
        lista.comprobantes << c;
    }
    return lista;
}

} // namespace

QString Comprobante::NumeroLibro() const
{
    return QStringLiteral("%1-%2")
        .arg(puntoVenta, puntoVenta > 9999 ? 5 : 4, 10, QLatin1Char('0'))
        .arg(numero, 8, 10, QLatin1Char('0'));
}

QString Comprobante::DescripcionTipo() const
{
    return nombreTipo.isEmpty() ? QStringLiteral("tipo %1").arg(codigo)
                                : QStringLiteral("tipo %1 - %2").arg(codigo).arg(nombreTipo);
}

QString TipoLibro(int codigo)
{
    switch (codigo) {
    case 1: return QStringLiteral("A");
    case 2: return QStringLiteral("NDA");
    case 6: return QStringLiteral("B");
    case 11: return QStringLiteral("C");
    case 81: return QStringLiteral("TIQUE FCA");
    case 82: return QStringLiteral("TIQUE FCB");
    case 83: return QStringLiteral("TIQUE");
    default: return QString();
    }
}

QString Digitos(const QString &s)
{
    QString d;
    for (QChar c : s)
        if (c.isDigit())
            d += c;
    return d;
}

QString NormalizarTitulo(const QString &s)
{
    const QString n = s.trimmed().toLower().normalized(QString::NormalizationForm_D);
    QString r;
    r.reserve(n.size());
    for (QChar c : n)
        if (c.category() != QChar::Mark_NonSpacing)
            r += c;
    return r.simplified();
}

namespace {

Lista LeerArchivo(const QString &ruta)
{
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        Fallar(QStringLiteral("no se puede abrir."));
    const QByteArray inicio = f.peek(4);
    if (inicio.startsWith("PK\x03\x04")) {
        f.close();
        return Interpretar(LeerXlsx(ruta), QStringLiteral("XLSX"));
    }
    const QByteArray bytes = f.readAll();
    if (bytes.contains('\0'))
        Fallar(QStringLiteral("no es un libro XLSX ni un texto separado por \";\"."));
    return Interpretar(LeerCsv(bytes), QStringLiteral("CSV"));
}

} // namespace

Lista Leer(const QString &ruta)
{
    if (!QFileInfo(ruta).isFile())
        throw ErrorLectura{QStringLiteral("No se encuentra el archivo '%1'.").arg(ruta)};
    try {
        return LeerArchivo(ruta);
    } catch (const ErrorLectura &e) {
        throw ErrorLectura{QStringLiteral("El archivo '%1' no es una lista de Mis Comprobantes Recibidos que se pueda "
                                          "leer: %2")
                               .arg(QFileInfo(ruta).fileName(), e.mensaje)};
    }
}

QString DescripcionArchivo(const QString &ruta, const Lista &lista)
{
    return QStringLiteral("Archivo: %1 (%2, %3 comprobantes)")
        .arg(QFileInfo(ruta).fileName(), lista.forma, QString::number(lista.comprobantes.size()));
}

} // namespace recibidos
