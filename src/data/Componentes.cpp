#include "data/Componentes.h"

#include "data/Convenciones.h"
#include "data/oDB.h"

#include <QSaveFile>
#include <QSysInfo>

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

clManejo::clManejo() = default;
clManejo::~clManejo() = default; // an unclosed file is discarded, the old one stays

void clManejo::Crear_Archivo()
{
    archivo_ = std::make_unique<QSaveFile>(ruta_);
    if (!archivo_->open(QIODevice::WriteOnly)) {
        const QString error = archivo_->errorString();
        archivo_.reset();
        throw oDB::ErrorBD{QStringLiteral("No se puede crear el archivo '%1': %2").arg(ruta_, error), 75};
    }
}

void clManejo::Escribir(const QString &texto)
{
    if (!archivo_)
        throw oDB::ErrorBD{QStringLiteral("El archivo '%1' no está abierto.").arg(ruta_), 52};
    const QByteArray bytes = conv::ALatin1(texto);
    if (archivo_->write(bytes) != bytes.size())
        throw oDB::ErrorBD{QStringLiteral("No se puede escribir el archivo '%1': %2")
                               .arg(ruta_, archivo_->errorString()), 57};
}

void clManejo::Cerrar_Archivo()
{
    if (!archivo_)
        return;
    const bool ok = archivo_->commit();
    const QString error = archivo_->errorString();
    archivo_.reset();
    if (!ok)
        throw oDB::ErrorBD{QStringLiteral("No se puede escribir el archivo '%1': %2").arg(ruta_, error), 57};
}

} // namespace oFILES
