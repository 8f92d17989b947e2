#include "data/ArchivoAccess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace archivoaccess {

bool EsArchivoAccess(const QString &ruta)
{
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    // Four bytes of version, then the engine's name ending in a zero byte.
    const QByteArray cabecera = f.read(20);
    return cabecera.size() == 20 && cabecera.startsWith(QByteArray("\x00\x01\x00\x00", 4)) &&
           (cabecera.mid(4) == QByteArray("Standard Jet DB\0", 16) ||
            cabecera.mid(4) == QByteArray("Standard ACE DB\0", 16));
}

QString CarpetaSugerida(const QString &origen)
{
    const QFileInfo info(QDir::cleanPath(QDir(origen).absolutePath()));
    return QDir::toNativeSeparators(info.dir().filePath(info.fileName() + QStringLiteral("-convertido")));
}

namespace {
QString Citar(const QString &ruta)
{
    const QString r = QDir::toNativeSeparators(ruta);
    return r.contains(u' ') ? u'"' + r + u'"' : r;
}
} // namespace

QString Comando(const QString &origen, const QString &destino)
{
    return QStringLiteral("ivacompras importar-access %1 %2").arg(Citar(origen), Citar(destino));
}

QString MensajeArchivoAccess(const QString &ruta)
{
    if (!EsArchivoAccess(ruta))
        return QString();
    const QString origen = QFileInfo(ruta).absolutePath();
    return QStringLiteral("El archivo '%1' es un libro de Microsoft Access, del programa anterior; "
                          "este programa no lo abre directamente.\r\n\r\n"
                          "Para convertir los libros de esa carpeta en libros nuevos, ejecute:\r\n\r\n"
                          "%2\r\n\r\n"
                          "Los archivos de Access no se modifican.")
        .arg(QDir::toNativeSeparators(ruta), Comando(origen, CarpetaSugerida(origen)));
}

} // namespace archivoaccess
