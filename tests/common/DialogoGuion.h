#pragma once
// Scripted save dialog: records what it was asked and answers the path it was given (the empty
// text is the user cancelling).

#include "app/core/DialogoGuardar.h"

#include <QList>
#include <QString>

class DialogoGuion : public DialogoGuardar
{
public:
    struct Pedido {
        QString titulo;
        QList<FiltroArchivo> filtros;
        QString carpetaInicial;
        QString nombreInicial;
        QWidget *propietario = nullptr;
    };

    explicit DialogoGuion(const QString &respuesta = QString()) : respuesta(respuesta) {}

    QString GuardarComo(const QString &titulo, const QList<FiltroArchivo> &filtros,
                        const QString &carpetaInicial, const QString &nombreInicial,
                        QWidget *propietario) override
    {
        pedidos.append({titulo, filtros, carpetaInicial, nombreInicial, propietario});
        return respuesta;
    }

    QString respuesta;
    QList<Pedido> pedidos;
};
