#pragma once
// Scripted message service: records every box shown and answers questions from a script.

#include "app/core/Servicios.h"

#include <QList>
#include <QString>

class MensajesGuion : public Mensajes
{
public:
    struct Mostrado {
        QString texto;
        int estilo;
        QString titulo;
    };

    int MsgBox(const QString &texto, int estilo, const QString &titulo) override;

    // Answers for the next questions, in order; when none is left a question is answered Yes.
    void Responder(int respuesta) { respuestas_.append(respuesta); }

    QList<Mostrado> mostrados;
    QString Ultimo() const { return mostrados.isEmpty() ? QString() : mostrados.last().texto; }
    int UltimoEstilo() const { return mostrados.isEmpty() ? -1 : mostrados.last().estilo; }
    void Limpiar() { mostrados.clear(); respuestas_.clear(); }

private:
    QList<int> respuestas_;
};
