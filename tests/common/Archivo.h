#pragma once
// The bytes of a file the program wrote, for byte-for-byte comparisons.

#include <QByteArray>
#include <QFile>
#include <QString>

// The whole file; "<no file>" when it cannot be read, so a missing file fails the comparison
// with a plain reason.
inline QByteArray Leer(const QString &ruta)
{
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray("<no file>");
    return f.readAll();
}

inline void EscribirArchivo(const QString &ruta, const QByteArray &bytes)
{
    QFile f(ruta);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(ruta));
}
