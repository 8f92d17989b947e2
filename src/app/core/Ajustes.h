#pragma once
// The per-user settings store: application / section / key, text values. One INI file per
// application ("FACTURACION.ini", "VENTO.ini", "KESTREL.ini"), one group per section, in the
// folder given by --ajustes or else in the user's configuration folder.

#include <QString>

class Ajustes
{
public:
    // dir empty: the user's configuration folder ("<config>/ivacompras").
    explicit Ajustes(const QString &dir = QString());

    QString Carpeta() const { return dir_; }
    QString Archivo(const QString &aplicacion) const;

    QString Leer(const QString &aplicacion, const QString &seccion, const QString &clave,
                 const QString &defecto = QString()) const;
    void Guardar(const QString &aplicacion, const QString &seccion, const QString &clave,
                 const QString &valor) const;

private:
    QString dir_;
};
