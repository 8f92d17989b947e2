#include "reports/Impresoras.h"

#include "data/Componentes.h"
#include "data/oDB.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <algorithm>

namespace {

// The old platform's number for a failure of the printer.
constexpr int kErrorImpresora = 482;

QPageLayout Pagina()
{
    return QPageLayout(QPageSize(QPageSize::Legal), QPageLayout::Landscape, QMarginsF(10, 10, 10, 10),
                       QPageLayout::Millimeter);
}

// The legal landscape page, enlarged in both directions when a line of anchoPuntos points does
// not fit between its margins, so the sheet keeps the look of the smaller sizes.
QPageLayout PaginaPara(double anchoPuntos)
{
    const QPageLayout legal = Pagina();
    const QRectF util = legal.paintRect(QPageLayout::Point);
    if (anchoPuntos <= util.width())
        return legal;
    const QSizeF hoja = legal.fullRect(QPageLayout::Point).size();
    const double k = (anchoPuntos + hoja.width() - util.width()) / hoja.width();
    const QPageSize tamano(QSizeF(hoja.height() * k, hoja.width() * k), QPageSize::Point,
                           QStringLiteral("Libro IVA Compras"), QPageSize::ExactMatch);
    return QPageLayout(tamano, QPageLayout::Landscape, legal.margins(), QPageLayout::Millimeter);
}

// The width of a text in points on a device (a fixed-pitch line is as wide on paper as in a PDF).
double AnchoEnPuntos(const QFont &fuente, QPaintDevice &dispositivo, const QString &texto)
{
    return QFontMetricsF(fuente, &dispositivo).horizontalAdvance(texto) * 72.0 / dispositivo.logicalDpiX();
}

// A device of the PDF writer's resolution, to measure before the document exists.
QPaintDevice &MedidaPdf()
{
    static QImage imagen = [] {
        QImage i(1, 1, QImage::Format_RGB32);
        const int puntosPorMetro = qRound(1200 / 0.0254);
        i.setDotsPerMeterX(puntosPorMetro);
        i.setDotsPerMeterY(puntosPorMetro);
        return i;
    }();
    return imagen;
}

} // namespace

ImpresoraQt::ImpresoraQt()
{
    fuente_.setFamily(FamiliaFija(QStringLiteral("Courier New")));
    fuente_.setPointSizeF(9);
    fuente_.setKerning(false);
    fuente_.setFixedPitch(true);
}

ImpresoraQt::~ImpresoraQt()
{
    // An unfinished document is dropped: the PDF is not put in place.
    if (painter_.isActive())
        painter_.end();
}

std::unique_ptr<ImpresoraQt> ImpresoraQt::Predeterminada()
{
    QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull() && !QPrinterInfo::availablePrinters().isEmpty())
        info = QPrinterInfo::availablePrinters().constFirst();
    return Papel(info.isNull() ? std::make_unique<QPrinter>(QPrinter::HighResolution)
                               : std::make_unique<QPrinter>(info, QPrinter::HighResolution));
}

std::unique_ptr<ImpresoraQt> ImpresoraQt::Papel(std::unique_ptr<QPrinter> printer)
{
    std::unique_ptr<ImpresoraQt> imp(new ImpresoraQt);
    imp->printer_ = std::move(printer);
    imp->printer_->setDocName(QStringLiteral("Libro IVA Compras"));
    imp->Preparar(*imp->printer_);
    imp->dispositivo_ = imp->printer_.get();
    return imp;
}

std::unique_ptr<ImpresoraQt> ImpresoraQt::Pdf(const QString &ruta)
{
    std::unique_ptr<ImpresoraQt> imp(new ImpresoraQt);
    imp->ruta_ = ruta;
    imp->archivo_ = std::make_unique<QSaveFile>(ruta);
    return imp;
}

void ImpresoraQt::Preparar(QPagedPaintDevice &dispositivo)
{
    if (!dispositivo.setPageLayout(Pagina())) {
        // A printer that refuses the whole layout still gets the size and the orientation.
        dispositivo.setPageSize(QPageSize(QPageSize::Legal));
        dispositivo.setPageOrientation(QPageLayout::Landscape);
    }
}

QString ImpresoraQt::FamiliaFija(const QString &nombre)
{
    const QStringList familias = QFontDatabase::families();
    const auto instalada = [&](const QString &f) {
        return familias.contains(f, Qt::CaseInsensitive) && QFontDatabase::isFixedPitch(f);
    };
    if (instalada(nombre))
        return nombre;
    for (const char *alternativa : {"Liberation Mono", "Cousine", "DejaVu Sans Mono"})
        if (instalada(QString::fromLatin1(alternativa)))
            return QString::fromLatin1(alternativa);
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

void ImpresoraQt::setFontName(const QString &nombre) { fuente_.setFamily(FamiliaFija(nombre)); }

QString ImpresoraQt::FontName() const { return fuente_.family(); }

void ImpresoraQt::setFontSize(double puntos)
{
    if (puntos <= 0)
        throw oDB::ErrorBD{QStringLiteral("Valor de propiedad no válido"), 380};
    fuente_.setPointSizeF(puntos);
}

double ImpresoraQt::FontSize() const { return fuente_.pointSizeF(); }

bool ImpresoraQt::HacerLugar(const QString &linea, double puntos)
{
    if (puntos <= 0)
        return false;
    QFont f = fuente_;
    f.setPointSizeF(puntos);
    if (printer_) {
        const double util = printer_->pageLayout().paintRect(QPageLayout::Point).width();
        return AnchoEnPuntos(f, *printer_, linea) <= util;
    }
    // A PDF page takes its size when the document starts; later lines must fit what it has.
    const double ancho = AnchoEnPuntos(f, MedidaPdf(), linea) * 1.01;
    if (painter_.isActive())
        return ancho <= pdf_->pageLayout().paintRect(QPageLayout::Point).width();
    anchoNecesario_ = std::max(anchoNecesario_, ancho);
    return true;
}

void ImpresoraQt::Empezar()
{
    if (painter_.isActive())
        return;
    if (archivo_) {
        if (!archivo_->open(QIODevice::WriteOnly))
            throw oDB::ErrorBD{QStringLiteral("No se puede crear el archivo '%1': %2")
                                   .arg(ruta_, archivo_->errorString()),
                               75};
        pdf_ = std::make_unique<QPdfWriter>(archivo_.get());
        pdf_->setCreator(QStringLiteral("IVA Compras"));
        pdf_->setTitle(QStringLiteral("Libro IVA Compras"));
        pdf_->setPageLayout(PaginaPara(anchoNecesario_));
        dispositivo_ = pdf_.get();
    }
    if (!dispositivo_ || !painter_.begin(dispositivo_))
        throw oDB::ErrorBD{QStringLiteral("Error de impresora"), kErrorImpresora};
    y_ = 0;
    hojas_ = 1;
}

void ImpresoraQt::Print(const QString &linea)
{
    Empezar();
    const QFontMetricsF medidas(fuente_, dispositivo_);
    if (y_ > 0 && y_ + medidas.height() > dispositivo_->height()) {
        // The sheet is full: the line goes on to the next one.
        if (!dispositivo_->newPage())
            throw oDB::ErrorBD{QStringLiteral("Error de impresora"), kErrorImpresora};
        ++hojas_;
        y_ = 0;
    }
    if (!linea.isEmpty()) {
        painter_.setFont(fuente_);
        painter_.drawText(QPointF(0, y_ + medidas.ascent()), linea);
    }
    y_ += medidas.lineSpacing();
}

void ImpresoraQt::NewPage()
{
    Empezar();
    if (!dispositivo_->newPage())
        throw oDB::ErrorBD{QStringLiteral("Error de impresora"), kErrorImpresora};
    ++hojas_;
    y_ = 0;
}

void ImpresoraQt::EndDoc()
{
    if (!painter_.isActive())
        return;
    const bool dibujado = painter_.end();
    if (archivo_) {
        pdf_.reset();
        anchoNecesario_ = 0;
        dispositivo_ = nullptr;
        const bool guardado = archivo_->commit();
        const QString error = archivo_->errorString();
        archivo_ = std::make_unique<QSaveFile>(ruta_);
        if (!guardado)
            throw oDB::ErrorBD{QStringLiteral("No se puede escribir el archivo '%1': %2").arg(ruta_, error), 57};
    }
    if (!dibujado)
        throw oDB::ErrorBD{QStringLiteral("Error de impresora"), kErrorImpresora};
}

void ImpresoraTexto::Empezar()
{
    // A new document starts with an empty text.
    if (!empezado_)
        texto_.clear();
    empezado_ = true;
}

void ImpresoraTexto::Print(const QString &linea)
{
    Empezar();
    texto_ += linea + QStringLiteral("\r\n");
}

void ImpresoraTexto::NewPage()
{
    Empezar();
    texto_ += u'\f';
}

void ImpresoraTexto::EndDoc()
{
    if (!empezado_)
        return;
    oFILES::clManejo archivo;
    archivo.setUbicacion_Archivo(ruta_);
    archivo.Crear_Archivo();
    archivo.Escribir(texto_);
    archivo.Cerrar_Archivo();
    empezado_ = false;
}
