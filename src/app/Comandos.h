#pragma once
// The program's command line: each command runs the same code as the windows.

#include <QString>
#include <QStringList>
#include <optional>
#include <cstdio>

struct Sesion;

// The value that follows "--name" in args; empty when absent.
QString Opcion(const QStringList &args, const QString &nombre);
// The same, or porDefecto when "--name" is not given at all.
QString Opcion(const QStringList &args, const QString &nombre, const QString &porDefecto);
bool TieneOpcion(const QStringList &args, const QString &nombre);
// Writes the text to a standard stream (stdout, stderr) in the local encoding, at once.
void Escribir(std::FILE *f, const QString &texto);
// A line of the command's own to standard error: what a window would show in a box.
void Error(const QString &texto);

// Prepares a session for a command that works on one company and period, as the company and
// period window would: --datos DIR (folder of personal.mdb and kestrel.mdb, also of
// proveedores.mdb), --cuit CUIT (a company of USR), --periodo MM/AAAA. Connects both books,
// fills the company fields from USR and the period bounds. On failure writes the reason to
// standard error and returns false.
// Messages the session would show in a window go to standard error, unless the caller set its own.
bool PrepararSesion(Sesion &s, const QStringList &args);

// --formato texto|csv (texto when absent): true for csv, false for texto, nullopt for anything else.
std::optional<bool> FormatoCsv(const QStringList &args);

// ivacompras crear-bases DIR
int ComandoCrearBases(const QStringList &args);
// ivacompras demo DIR: a demo book and its settings in DIR
int ComandoDemo(const QStringList &args);
// ivacompras cuenta --datos DIR --cuit CUIT [--proveedor CUIT]
int ComandoCuenta(const QStringList &args);
// ivacompras exportar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo RUTA.xls [--ajustes DIR]
int ComandoExportar(const QStringList &args);
// ivacompras imprimir --datos DIR --cuit CUIT --periodo MM/AAAA (--pdf RUTA | --texto RUTA)
//                     [--fuente N] [--lineas N]
int ComandoImprimir(const QStringList &args);
// ivacompras verificar --datos DIR --cuit CUIT --periodo MM/AAAA [--formato texto|csv]
int ComandoVerificar(const QStringList &args);
// ivacompras importar-access ORIGEN DESTINO
int ComandoImportarAccess(const QStringList &args);
// ivacompras conciliar --datos DIR --cuit CUIT --periodo MM/AAAA --archivo RUTA [--cargar]
//                      [--formato texto|csv]
int ComandoConciliar(const QStringList &args);
