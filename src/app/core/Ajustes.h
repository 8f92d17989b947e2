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

    // Points the BASES keys the program reads (FACTURACION, KESTRELRAS, PERSONAL and, with
    // tablas, SYSTABLAS) at the books' folder, written absolute and ending in "/".
    void GuardarCarpetaLibros(const QString &carpeta, bool tablas = false) const;
    // The company and period proposed at the next start (VENTO, HISTORIAL).
    void GuardarHistorial(const QString &cuit, const QString &periodo) const;

private:
    QString dir_;
};
