#pragma once
// A real book for the tests: personal.mdb, kestrel.mdb and proveedores.mdb created in a
// temporary folder, with a session connected to them and a settings store of its own.

#include "app/core/Sesion.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

class MensajesGuion;

class LibroDePrueba
{
public:
    LibroDePrueba();
    ~LibroDePrueba();

    QString Carpeta() const { return dir_.path() + u'/'; }
    QString CarpetaAjustes() const { return dir_.path() + QStringLiteral("/ajustes"); }

    // Writes the settings that point the program at this book.
    void EscribirUbicaciones() const;
    // Writes the company and the period the program remembers from its last run; an empty
    // value is left unwritten.
    void Recordar(const QString &cuit, const QString &periodo) const;

    // A session connected to the book, with its settings store, a scripted message service,
    // today's date fixed and the given company and period ("dd/mm/yyyy") as current.
    Sesion &S() { return *sesion_; }
    MensajesGuion &Mensajes() { return *mensajes_; }
    void Periodo(const QString &cuit, const QString &periodo);

    // Runs statements on a file of the book ("kestrel.mdb" unless said), failing the test
    // (through an exception) if one fails.
    void Ejecutar(const QString &sql) const { Ejecutar(QStringLiteral("kestrel.mdb"), {sql}); }
    void Ejecutar(const QString &archivo, const QStringList &sentencias) const;

    // Rows of a query as clip text lines ("a|b|c"), for assertions.
    QStringList Filas(const QString &sql, const QString &archivo = QStringLiteral("kestrel.mdb")) const;
    long Contar(const QString &tabla, const QString &where = QString()) const;

    // Fills the book with data: a company, a supplier, an invoice.
    void Empresa(const QString &cuit, const QString &nombre, const QString &conIva = QStringLiteral("S"));
    void Proveedor(const QString &cuit, const QString &nombre);
    void Factura(const QString &empresa, const QString &proveedor, const QString &periodo,
                 const QString &fecha, const QString &tipo, const QString &numero,
                 double gravado, double noGravado, double iva, double ingBrutos);
    void LineaIVA(const QString &empresa, const QString &proveedor, const QString &numero, int id,
                  double tasa, const QString &descripcion, double valor);
    void LineaIB(const QString &empresa, const QString &proveedor, const QString &numero, int id,
                 double tasa, const QString &descripcion, double valor);
    void LineaGravado(const QString &empresa, const QString &proveedor, const QString &numero,
                      int id, double valor);

private:
    QTemporaryDir dir_;
    std::unique_ptr<MensajesGuion> mensajes_;
    std::unique_ptr<Sesion> sesion_;
};
