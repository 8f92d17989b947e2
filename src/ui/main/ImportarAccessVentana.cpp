#include "ui/main/ImportarAccessVentana.h"

#include "app/core/DialogoCarpeta.h"
#include "app/core/Sesion.h"
#include "data/ArchivoAccess.h"
#include "import/ImportarAccess.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>

namespace {

// What the conversion has done so far, while it runs. Cancel (or Esc) stops it at the next
// table or the next 100,000 rows: the import then leaves nothing behind, as on any failure.
// The window's close button does nothing.
class ProgresoConversion : public QProgressDialog
{
public:
    struct Cancelada {};

    ProgresoConversion(const QString &titulo, const QString &destino, QWidget *propietario)
        : QProgressDialog(propietario), destino_(destino)
    {
        setWindowTitle(titulo);
        setWindowModality(Qt::ApplicationModal);
        setCancelButtonText(QStringLiteral("Cancelar"));
        setRange(0, 0); // how many rows there are is known only at the end
        setMinimumDuration(0);
        setMinimumWidth(520);
        Avanzar(QStringLiteral("Preparando los libros nuevos..."));
    }

    // Shows the import's last line and lets the window paint it and take the Cancel; throws
    // Cancelada once the user has cancelled.
    void Avanzar(const QString &linea)
    {
        if (wasCanceled())
            throw Cancelada{};
        setLabelText(QStringLiteral("Convirtiendo los libros de Access en '%1'.\n\n%2")
                         .arg(QDir::toNativeSeparators(destino_), linea));
        if (!isVisible())
            show();
        QCoreApplication::processEvents();
    }

    void reject() override { cancel(); }

protected:
    void closeEvent(QCloseEvent *e) override { e->ignore(); }

private:
    QString destino_;
};

} // namespace

RespuestaAccess OfrecerImportarAccess(Sesion &s, QWidget *propietario)
{
    QString archivo;
    for (const QString &f : {s.RutaPersonal + QStringLiteral("personal.mdb"), s.RutaLibro + QStringLiteral("kestrel.mdb")})
        if (archivo.isEmpty() && archivoaccess::EsArchivoAccess(f))
            archivo = f;
    if (archivo.isEmpty())
        return RespuestaAccess::NoEsAccess;
    if (!s.mensajes)
        return RespuestaAccess::NoConvertido;

    const QString origen = QFileInfo(archivo).absolutePath();
    const QString titulo = QStringLiteral("Libros de Access");
    if (s.mensajes->MsgBox(archivoaccess::MensajeArchivoAccess(archivo) +
                               QStringLiteral("\r\n\r\n¿Desea convertirlos ahora? Se le pedirá una carpeta "
                                              "nueva o vacía para los libros convertidos."),
                           vb::vbYesNo + vb::vbQuestion, titulo) != vb::vbYes ||
        !s.dialogoCarpeta)
        return RespuestaAccess::NoConvertido;

    const QFileInfo sugerida(archivoaccess::CarpetaSugerida(origen));
    const QString destino = s.dialogoCarpeta->ElegirCarpeta(QStringLiteral("Carpeta nueva o vacía para los libros convertidos"),
                                                            sugerida.absolutePath(), sugerida.fileName(), propietario);
    if (destino.isEmpty())
        return RespuestaAccess::NoConvertido;

    importar::ResultadoImportacion r;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        ProgresoConversion progreso(titulo, destino, propietario);
        r = importar::ImportarAccess(origen, destino, [&progreso](const QString &linea) { progreso.Avanzar(linea); });
    } catch (const ProgresoConversion::Cancelada &) {
        QApplication::restoreOverrideCursor();
        s.mensajes->MsgBox(QStringLiteral("Se canceló la conversión: no se importó nada y los libros de Access "
                                          "quedan como estaban."),
                           vb::vbInformation, titulo);
        return RespuestaAccess::NoConvertido;
    } catch (const oDB::ErrorBD &e) {
        QApplication::restoreOverrideCursor();
        s.mensajes->MsgBox(e.descripcion + QStringLiteral("\r\n\r\nNo se importó nada; los libros de Access "
                                                          "quedan como estaban."),
                           vb::vbCritical, titulo);
        return RespuestaAccess::NoConvertido;
    }
    QApplication::restoreOverrideCursor();

    s.ajustes.GuardarCarpetaLibros(r.destino);
    s.RutaFacturacion = s.RutaLibro = s.RutaPersonal = r.resumen.carpeta;
    QString texto = QStringLiteral("Los libros se convirtieron en '%1': %2 empresas, %3 proveedores y %4 facturas.")
                        .arg(QDir::toNativeSeparators(r.destino))
                        .arg(r.resumen.empresas.size())
                        .arg(r.resumen.proveedores)
                        .arg(r.resumen.facturas);
    long conHora = 0;
    for (const importar::TablaImportada &t : r.tablas)
        conHora += t.filasConHora;
    if (conHora > 0)
        texto += QStringLiteral("\r\n\r\n%1 filas tenían fechas con hora; se guardó sólo el día.").arg(conHora);
    for (const QString &a : r.avisos)
        texto += QStringLiteral("\r\n\r\n") + a;
    texto += QStringLiteral("\r\n\r\nEl programa usa desde ahora esos libros.");
    s.mensajes->MsgBox(texto, vb::vbInformation, titulo);
    return RespuestaAccess::Convertido;
}
