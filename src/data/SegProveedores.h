#pragma once
// Supplier tracking: the supplier accounts of the invoicing system, kept in its own book
// "proveedores.mdb". The purchase book posts each saved invoice as a debit ("DEBE") to the
// supplier's account.

#include <QDate>
#include <QList>
#include <QString>

namespace SegProveedoresServices {

struct Imputacion {
    QString empresa;
    QString proveedor;
    QDate fecha;
    QString numero;
    QString descripcion;
    QString lado;
    double importe = 0;
    QString registrado; // when it was recorded, "dd/mm/yyyy hh:mm:ss"
};

class clMAinSP
{
public:
    void setsp_pcuituser(const QString &cuit) { cuit_ = cuit; }
    void setPathDB(const QString &ruta) { ruta_ = ruta; }

    // Records one posting in the supplier's account. The book file must exist; its table is
    // created when missing. Throws oDB::ErrorBD when it cannot record.
    void SP_IMPUTACIONESDESDEFACTURACION(const QString &cuitEmpresa, const QString &cuitProveedor,
                                         const QString &fecha, const QString &numero,
                                         const QString &descripcion, const QString &lado,
                                         double importe);

    // The postings of the company (of one supplier when proveedor is not empty), in the order
    // they were recorded.
    QList<Imputacion> Imputaciones(const QString &proveedor = QString());

private:
    QString cuit_;
    QString ruta_;
};

} // namespace SegProveedoresServices
