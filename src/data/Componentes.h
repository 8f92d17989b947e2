#pragma once
// The helper components the program creates by name: formatting (cFORMAT.MAIN), utilities
// (oUTL.clMAIN, oUTL.clINI) and the text-file writer (oFILES.clManejo).

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <memory>

class QSaveFile;

namespace cFORMAT {
class MAIN
{
public:
    // The value as a number; 0 when it is null, empty or not numeric.
    double EsNumero(const QVariant &v) const;
    // The value as text; empty text when it is null.
    QString EsNull(const QVariant &v) const;
};
} // namespace cFORMAT

namespace oUTL {
class clMAIN
{
public:
    QString LEERNOMBREPC() const;
    // The program's decimal separator: "," whatever the machine's locale.
    QString LEERSEPARADORDECIMAL() const;
};

// Kept for the start-up sequence, which creates and releases it; settings come from the
// settings store, so it has no members.
class clINI
{
};
} // namespace oUTL

namespace oFILES {
// Writes one text file in Latin-1. The text goes to a temporary file beside the target that
// replaces it only when Cerrar_Archivo succeeds, so a failure never leaves half a file.
class clManejo
{
public:
    clManejo();
    ~clManejo();
    void setUbicacion_Archivo(const QString &ruta) { ruta_ = ruta; }
    QString Ubicacion_Archivo() const { return ruta_; }
    // Creates the file (replacing an existing one when closed). Throws oDB::ErrorBD on failure.
    void Crear_Archivo();
    // Writes the text as it is (no line end is added).
    void Escribir(const QString &texto);
    // Puts the file in place. Throws oDB::ErrorBD when it cannot be written.
    void Cerrar_Archivo();

private:
    QString ruta_;
    std::unique_ptr<QSaveFile> archivo_;
};
} // namespace oFILES
