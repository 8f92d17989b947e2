#include "ui/main/ImportarAccessVentana.h"

#include "app/core/DialogoGuardar.h"
#include "app/core/Sesion.h"
#include "data/ArchivoAccess.h"
#include "import/ImportarAccess.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QFileInfo>

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
        !s.dialogo)
        return RespuestaAccess::NoConvertido;

    const QFileInfo sugerida(archivoaccess::CarpetaSugerida(origen));
    const QString destino = s.dialogo->GuardarComo(QStringLiteral("Carpeta para los libros convertidos"),
                                                   {{QStringLiteral("Carpeta nueva o vacía"), QStringLiteral("*")}},
                                                   sugerida.absolutePath(), sugerida.fileName(), propietario);
    if (destino.isEmpty())
        return RespuestaAccess::NoConvertido;

    importar::ResultadoImportacion r;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        r = importar::ImportarAccess(origen, destino);
    } catch (const oDB::ErrorBD &e) {
        QApplication::restoreOverrideCursor();
        s.mensajes->MsgBox(e.descripcion + QStringLiteral("\r\n\r\nNo se importó nada; los libros de Access "
                                                          "quedan como estaban."),
                           vb::vbCritical, titulo);
        return RespuestaAccess::NoConvertido;
    }
    QApplication::restoreOverrideCursor();

    importar::ApuntarAjustes(s.ajustes, r.destino);
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
