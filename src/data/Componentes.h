#pragma once
// The helper components the program creates by name: formatting (cFORMAT.MAIN), utilities
// (oUTL.clMAIN, oUTL.clINI) and the text-file writer (oFILES.clManejo).

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <memory>


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
// Writes text files in Latin-1. The text goes to a temporary file beside the target, synced
// to the disk, that replaces the target only when Cerrar_Archivo succeeds, so a failure never
// leaves half a file. A component that keeps its files together (setJuntos) only writes them
// at Cerrar_Archivo and puts all of them in place at PonerEnLugar: every target is then new,
// or every one is as it was (a failure leaves the earlier files untouched and creates none).
class clManejo
{
public:
    clManejo();
    ~clManejo();
    clManejo(const clManejo &) = delete;
    clManejo &operator=(const clManejo &) = delete;

    void setUbicacion_Archivo(const QString &ruta) { ruta_ = ruta; }
    QString Ubicacion_Archivo() const { return ruta_; }
    void setJuntos(bool juntos) { juntos_ = juntos; }
    // Creates the file (replacing an existing one when closed). Throws oDB::ErrorBD on failure.
    void Crear_Archivo();
    // Writes the text as it is (no line end is added).
    void Escribir(const QString &texto);
    // Puts the file in place (or, kept together, leaves it ready). Throws oDB::ErrorBD when it
    // cannot be written.
    void Cerrar_Archivo();
    // Puts every file left ready in place, all or none. Throws oDB::ErrorBD on failure.
    void PonerEnLugar();

private:
    struct Listo {
        QString destino;
        QString temporal;
    };
    void Descartar();
    QString ruta_;
    QString temporal_;
    int fd_ = -1;
    bool juntos_ = false;
    QList<Listo> listos_;
};

// The reason of a failed file operation (an errno value), in the program's words; one
// without words of its own is "error del sistema N".
QString DescripcionError(int error);
} // namespace oFILES
