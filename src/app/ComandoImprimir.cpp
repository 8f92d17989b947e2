#include "app/Comandos.h"

#include "app/core/Sesion.h"
#include "data/Convenciones.h"
#include "reports/Impresoras.h"
#include "reports/LibroImpreso.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <cmath>
#include <cstdio>
#include <memory>

namespace {

// The largest font size the command takes: beyond it one ledger line is meters wide.
constexpr int kFuenteMaxima = 72;

// A numeric text as a 16-bit integer, rounded as the old platform's CInt did (halves to even);
// nullopt when it does not fit.
std::optional<qint16> Entero16(double n)
{
    const double r = std::nearbyint(n); // the default rounding mode sends halves to even
    if (r < -32768 || r > 32767)
        return std::nullopt;
    return qint16(r);
}

} // namespace

int ComandoImprimir(const QStringList &args)
{
    const QString pdf = Opcion(args, QStringLiteral("--pdf"));
    const QString textoPlano = Opcion(args, QStringLiteral("--texto"));
    if (pdf.isEmpty() == textoPlano.isEmpty()) {
        Error(QStringLiteral("uso: ivacompras imprimir --datos DIR --cuit CUIT --periodo MM/AAAA "
                             "(--pdf RUTA | --texto RUTA) [--fuente N] [--lineas N]"));
        return 2;
    }
    const QString textoFuente = Opcion(args, QStringLiteral("--fuente"), QStringLiteral("9"));
    const QString textoLineas = Opcion(args, QStringLiteral("--lineas"), QStringLiteral("30"));
    // The same checks as the main window's print fields.
    const auto fuente = conv::ANumero(textoFuente);
    if (!fuente) {
        Error(QStringLiteral("El campo FUENTE debe ser Númerico"));
        return 2;
    }
    const auto lineasLeidas = conv::ANumero(textoLineas);
    if (!lineasLeidas) {
        Error(QStringLiteral("El campo LINEAS x HOJA debe ser Númerico"));
        return 2;
    }
    const auto lineas = Entero16(*lineasLeidas);
    if (!lineas) {
        Error(QStringLiteral("Desbordamiento"));
        return 2;
    }
    // Values the main window would take but that give no ledger at all: no page for no line,
    // no text for no size.
    if (*lineas < 1) {
        Error(QStringLiteral("El campo LINEAS x HOJA debe ser de 1 o más líneas: '%1' no da ninguna hoja.")
                  .arg(textoLineas));
        return 2;
    }
    if (!(*fuente >= 1 && *fuente <= kFuenteMaxima)) {
        Error(QStringLiteral("El campo FUENTE debe estar entre 1 y %1 puntos: '%2'.")
                  .arg(QString::number(kFuenteMaxima), textoFuente));
        return 2;
    }

    // The pages are drawn without a screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int argc = 1;
    char nombre[] = "ivacompras";
    char *argv[] = {nombre, nullptr};
    QGuiApplication app(argc, argv);

    Sesion s;
    if (!PrepararSesion(s, args))
        return 1;

    std::unique_ptr<Impresora> imp;
    if (!pdf.isEmpty())
        imp = ImpresoraQt::Pdf(pdf);
    else
        imp = std::make_unique<ImpresoraTexto>(textoPlano);
    if (!ImprimirLibro(s, *imp, *fuente, *lineas))
        return 1;
    const QString ruta = QFileInfo(pdf.isEmpty() ? textoPlano : pdf).absoluteFilePath();
    std::printf("Libro impreso en %s\n", ruta.toLocal8Bit().constData());
    return 0;
}
