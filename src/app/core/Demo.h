#pragma once
// The demo book: three companies, a few dozen suppliers and some hundred invoices of 2026 with
// their VAT, gross-income and taxed-amount lines, written through the database component with
// the statements the windows use, plus the settings that make the program open it.

#include <QList>
#include <QString>
#include <QStringList>

namespace demo {

// "30712345678" (the eleven digits, as the tax authority's files take them) from the prefix (20, 23, 27, 30, 33...) and the eight-digit body; empty when
// that body has no valid check digit.
QString Cuit(int prefijo, int cuerpo);
// True when the text is a CUIT of eleven digits with the right check digit.
bool CuitValido(const QString &cuit);

struct EmpresaDemo {
    QString cuit;
    QString nombre;
};

struct PeriodoDemo {
    QString cuit;       // company
    QString periodo;    // "01/mm/yyyy"
    int facturas = 0;
};

struct ResumenDemo {
    QString carpeta;                 // absolute, ending in "/"
    QList<EmpresaDemo> empresas;
    int proveedores = 0;
    int facturas = 0;
    QList<PeriodoDemo> periodos;     // by company (in the order of empresas), then period
    PeriodoDemo propuesto;           // the company and period with the most invoices
    // Short report for the command line, under its first line (by default "Libro de
    // demostración creado en " and the folder).
    QString Texto(const QString &titulo = QString()) const;
};

// Creates personal.mdb, kestrel.mdb and proveedores.mdb in dir (made when missing) with the
// demo content, and the settings files (FACTURACION.ini, VENTO.ini) in the same folder, so that
// "ivacompras --ajustes dir" opens it on the company and period with the most invoices.
// Refuses a folder that already holds a book file. Deterministic: the same book every time.
// Throws oDB::ErrorBD on failure; nothing is left behind then.
ResumenDemo CrearDemo(const QString &dir);

} // namespace demo
