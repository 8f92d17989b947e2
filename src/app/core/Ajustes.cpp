#include "app/core/Ajustes.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

Ajustes::Ajustes(const QString &dir) : dir_(dir)
{
    if (dir_.isEmpty())
        dir_ = QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
                   .filePath(QStringLiteral("ivacompras"));
}

QString Ajustes::Archivo(const QString &aplicacion) const
{
    return QDir(dir_).filePath(aplicacion + QStringLiteral(".ini"));
}

QString Ajustes::Leer(const QString &aplicacion, const QString &seccion, const QString &clave,
                      const QString &defecto) const
{
    QSettings s(Archivo(aplicacion), QSettings::IniFormat);
    const QVariant v = s.value(seccion + u'/' + clave, defecto);
    // An unquoted value written by hand with a comma ("IVARIN=10,5") is read by the INI
    // format as a list: it is one text.
    if (v.typeId() == QMetaType::QStringList)
        return v.toStringList().join(u',');
    return v.toString();
}

void Ajustes::Guardar(const QString &aplicacion, const QString &seccion, const QString &clave,
                      const QString &valor) const
{
    QDir().mkpath(dir_);
    QSettings s(Archivo(aplicacion), QSettings::IniFormat);
    s.setValue(seccion + u'/' + clave, valor);
    s.sync();
}

void Ajustes::GuardarCarpetaLibros(const QString &carpeta, bool tablas) const
{
    QString c = QDir(carpeta).absolutePath();
    if (!c.endsWith(u'/'))
        c += u'/';
    for (const char *clave : {"FACTURACION", "KESTRELRAS", "PERSONAL", "SYSTABLAS"})
        if (tablas || qstrcmp(clave, "SYSTABLAS") != 0)
            Guardar(QStringLiteral("FACTURACION"), QStringLiteral("BASES"), QString::fromLatin1(clave), c);
}

void Ajustes::GuardarHistorial(const QString &cuit, const QString &periodo) const
{
    Guardar(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("USRSNROCUIT"), cuit);
    Guardar(QStringLiteral("VENTO"), QStringLiteral("HISTORIAL"), QStringLiteral("IVCFPERIOD"), periodo);
}
