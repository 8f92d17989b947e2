#pragma once
// The hand-off of a saved invoice to supplier tracking (modGBPROC).

#include <QString>
#include <QVariant>

struct Sesion;

// Posts the invoice as a debit ("DEBE") to the supplier's account in
// RutaFacturacion + "proveedores.mdb". A failure is reported in a critical box; nothing is
// retried. The result is never assigned (empty), as the caller ignores it.
QVariant SP_EnviarASeguimiento(Sesion &s, const QString &cuitEmpresa, const QString &cuitProveedor,
                               const QString &fecha, const QString &numero,
                               const QString &descripcion, double importe);
