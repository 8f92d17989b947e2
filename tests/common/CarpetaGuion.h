#pragma once
// Scripted folder dialog: records what it was asked and answers the folder it was given (the
// empty text is the user cancelling).

#include "app/core/DialogoCarpeta.h"

#include <QList>
#include <QString>

class CarpetaGuion : public DialogoCarpeta
{
public:
    struct Pedido {
        QString titulo;
        QString carpetaInicial;
        QString nombreInicial;
    };

    explicit CarpetaGuion(const QString &respuesta = QString()) : respuesta(respuesta) {}

    QString ElegirCarpeta(const QString &titulo, const QString &carpetaInicial, const QString &nombreInicial,
                          QWidget *) override
    {
        pedidos.append({titulo, carpetaInicial, nombreInicial});
        return respuesta;
    }

    QString respuesta;
    QList<Pedido> pedidos;
};
