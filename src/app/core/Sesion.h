#pragma once
// The process-wide session state: filled at start-up and when the user picks a company and
// period, read by every window. Tests make a fresh one.

#include "app/core/Ajustes.h"
#include "app/core/Servicios.h"
#include "data/Componentes.h"
#include "data/oDB.h"

#include <QDate>
#include <QString>
#include <memory>

class DialogoAbrir;
class DialogoCarpeta;
class DialogoGuardar;
class Impresora;

struct Sesion {
    QDate FechaHoy;
    QString SeparadorDecimal;
    QString RutaFacturacion;
    QString RutaLibro;
    QString RutaPersonal;
    QString NombrePC;
    double IvaRIN = 0;
    double IvaRNI = 0;
    double ImpFuente = 9;
    qint16 ImpLineasHoja = 30;
    bool Cancelado = false;
    QString CuitUsuario;
    QString NombreUsuario;
    QString ConIva;
    QString DomicilioUsuario;
    QString EmailUsuario;
    QString Periodo;
    QString PeriodoDesde;
    QString PeriodoHasta;
    qint16 MesPeriodo = 0;
    double TotGravado = 0;
    double TotNoGravado = 0;
    double TotIva = 0;
    double TotIvaNoInscripto = 0;
    double TotIngBrutos = 0;
    QString PrvCuitSeleccionado;
    QString NroFacSeleccionada;

    std::unique_ptr<oDB::clManejo> dbPersonal;
    std::unique_ptr<oDB::clManejo> dbLibro;
    std::unique_ptr<cFORMAT::MAIN> oFormato;

    // The settings store and the services the windows use (not owned).
    Ajustes ajustes;
    Mensajes *mensajes = nullptr;
    DialogoGuardar *dialogo = nullptr;
    DialogoAbrir *dialogoAbrir = nullptr; // the standard dialog when none is set
    DialogoCarpeta *dialogoCarpeta = nullptr;
    Impresora *impresora = nullptr;

    explicit Sesion(const Ajustes &a = Ajustes()) : ajustes(a) {}

    // Start-up step 1: the two database components and the formatting component, not
    // connected yet.
    void CrearComponentes();
    // Connects dbPersonal to "personal.mdb" and dbLibro to "kestrel.mdb" in their folders.
    void Conectar();
    // The period as the messages name it: "11/2026".
    QString MesAnio() const;
};

// The text that opens a book file through the database component.
QString CadenaConexion(const QString &carpeta, const QString &archivo);

// Reads the settings into the session (see LeerDatos in modGBPROC). False when the
// locations test failed.
bool LeerDatos(Sesion &s);

// The bounds of the period: PeriodoDesde is the first day of the period's month and
// PeriodoHasta the day before the first of the following month, both as short date texts.
// For a December period the following month is written as month 13, which the lenient date
// reading takes as 13 January of the same year: PeriodoHasta is then 31 December of the
// previous year. Kept as the program has always done it.
void CalcularLimitesPeriodo(Sesion &s);
