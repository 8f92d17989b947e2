#include "data/Componentes.h"

#include "data/Convenciones.h"
#include "data/oDB.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSysInfo>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cFORMAT {

double MAIN::EsNumero(const QVariant &v) const
{
    if (v.isNull() || !v.isValid())
        return 0;
    if (v.typeId() == QMetaType::QDate)
        return conv::FechaASerial(v.toDate());
    if (v.typeId() == QMetaType::QString)
        return conv::ANumero(v.toString()).value_or(0);
    bool ok = false;
    const double n = v.toDouble(&ok);
    return ok ? n : 0;
}

QString MAIN::EsNull(const QVariant &v) const { return conv::Texto(v); }

} // namespace cFORMAT

namespace oUTL {

QString clMAIN::LEERNOMBREPC() const { return QSysInfo::machineHostName(); }

QString clMAIN::LEERSEPARADORDECIMAL() const { return QStringLiteral(","); }

} // namespace oUTL

namespace oFILES {

QString DescripcionError(int error)
{
    switch (error) {
    case ENOSPC:
        return QStringLiteral("no queda espacio en el disco");
    case EDQUOT:
        return QStringLiteral("se agotó la cuota de disco del usuario");
    case EACCES:
    case EPERM:
        return QStringLiteral("no tiene permiso para escribir allí");
    case EROFS:
        return QStringLiteral("el disco es de solo lectura");
    case ENOENT:
        return QStringLiteral("la carpeta no existe");
    case ENOTDIR:
        return QStringLiteral("la ruta no es una carpeta");
    case EISDIR:
        return QStringLiteral("la ruta es una carpeta");
    case EIO:
        return QStringLiteral("error de lectura o escritura en el disco");
    case EFBIG:
        return QStringLiteral("el archivo es demasiado grande");
    case ENAMETOOLONG:
        return QStringLiteral("el nombre es demasiado largo");
    case EBUSY:
    case ETXTBSY:
        return QStringLiteral("el archivo está en uso");
    case EMFILE:
    case ENFILE:
        return QStringLiteral("hay demasiados archivos abiertos");
    case ENOMEM:
        return QStringLiteral("no alcanza la memoria");
    case EEXIST:
        return QStringLiteral("ya existe un archivo con ese nombre");
    default:
        // The system's own text follows the machine's language: the number alone is kept.
        return QStringLiteral("error del sistema %1").arg(error);
    }
}

namespace {

[[noreturn]] void Fallar(const QString &ruta, int error, int numero)
{
    const QString texto = numero == 75 ? QStringLiteral("No se puede crear el archivo '%1': %2")
                                       : QStringLiteral("No se puede escribir el archivo '%1': %2");
    throw oDB::ErrorBD{texto.arg(ruta, DescripcionError(error)), numero};
}

QByteArray Nativo(const QString &ruta) { return QFile::encodeName(ruta); }

// Syncs the folder of a file, so that a rename into it survives a power cut.
void SincronizarCarpeta(const QString &ruta)
{
    const int fd = ::open(Nativo(QFileInfo(ruta).absolutePath()).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

clManejo::clManejo() = default;

// An unclosed or unplaced file is discarded; the old one stays.
clManejo::~clManejo() { Descartar(); }

void clManejo::Descartar()
{
    if (fd_ >= 0) {
        ::close(fd_);
        fd_ = -1;
    }
    if (!temporal_.isEmpty())
        ::unlink(Nativo(temporal_).constData());
    temporal_.clear();
    for (const Listo &l : std::as_const(listos_))
        ::unlink(Nativo(l.temporal).constData());
    listos_.clear();
}

void clManejo::Crear_Archivo()
{
    if (fd_ >= 0) {
        ::close(fd_);
        ::unlink(Nativo(temporal_).constData());
        fd_ = -1;
    }
    // A new name beside the target, never an existing file; the usual permissions.
    for (int intento = 0; intento < 100 && fd_ < 0; ++intento) {
        temporal_ = ruta_ + QStringLiteral(".%1-%2.tmp").arg(::getpid()).arg(QRandomGenerator::global()->generate());
        fd_ = ::open(Nativo(temporal_).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd_ < 0 && errno != EEXIST) {
            const int error = errno;
            temporal_.clear();
            Fallar(ruta_, error, 75);
        }
    }
    if (fd_ < 0) {
        temporal_.clear();
        Fallar(ruta_, EEXIST, 75);
    }
}

void clManejo::Escribir(const QString &texto)
{
    if (fd_ < 0)
        throw oDB::ErrorBD{QStringLiteral("El archivo '%1' no está abierto.").arg(ruta_), 52};
    const QByteArray bytes = conv::ALatin1(texto);
    const char *p = bytes.constData();
    qsizetype falta = bytes.size();
    while (falta > 0) {
        const ssize_t n = ::write(fd_, p, size_t(falta));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            const int error = n < 0 ? errno : ENOSPC;
            Descartar();
            Fallar(ruta_, error, 57);
        }
        p += n;
        falta -= n;
    }
}

void clManejo::Cerrar_Archivo()
{
    if (fd_ < 0)
        return;
    // What the disk did not take shows at the sync or the close at the latest.
    int error = ::fsync(fd_) == 0 ? 0 : errno;
    if (::close(fd_) != 0 && error == 0)
        error = errno;
    fd_ = -1;
    if (error != 0) {
        Descartar();
        Fallar(ruta_, error, 57);
    }
    listos_.append({ruta_, temporal_});
    temporal_.clear();
    if (!juntos_)
        PonerEnLugar();
}

void clManejo::PonerEnLugar()
{
    // Each earlier target is first kept under a second name (a hard link), so that a rename
    // that fails can give back every target already replaced.
    struct Paso {
        QString respaldo;
        bool habia = false;
    };
    QList<Paso> hechos;
    for (const Listo &l : std::as_const(listos_)) {
        Paso p;
        p.respaldo = l.temporal + QStringLiteral(".ant");
        struct stat info;
        p.habia = ::lstat(Nativo(l.destino).constData(), &info) == 0;
        int error = 0;
        // Where the disk has no hard links (a memory stick), the earlier file is moved aside.
        if (p.habia && S_ISDIR(info.st_mode))
            error = EISDIR, p.habia = false;
        else if (p.habia && ::link(Nativo(l.destino).constData(), Nativo(p.respaldo).constData()) != 0 &&
            ::rename(Nativo(l.destino).constData(), Nativo(p.respaldo).constData()) != 0)
            error = errno, p.habia = false;
        else if (::rename(Nativo(l.temporal).constData(), Nativo(l.destino).constData()) != 0)
            error = errno;
        if (error != 0) {
            if (p.habia && ::lstat(Nativo(l.destino).constData(), &info) != 0)
                ::rename(Nativo(p.respaldo).constData(), Nativo(l.destino).constData());
            else if (p.habia)
                ::unlink(Nativo(p.respaldo).constData());
            for (qsizetype i = hechos.size() - 1; i >= 0; --i) {
                const Listo &antes = listos_[i];
                if (hechos[i].habia)
                    ::rename(Nativo(hechos[i].respaldo).constData(), Nativo(antes.destino).constData());
                else
                    ::unlink(Nativo(antes.destino).constData());
            }
            const QString destino = l.destino;
            listos_.remove(0, hechos.size());
            Descartar();
            Fallar(destino, error, 57);
        }
        hechos.append(p);
    }
    for (qsizetype i = 0; i < hechos.size(); ++i) {
        if (hechos[i].habia)
            ::unlink(Nativo(hechos[i].respaldo).constData());
        SincronizarCarpeta(listos_[i].destino);
    }
    listos_.clear();
}

} // namespace oFILES
