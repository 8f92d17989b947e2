#pragma once
// Recording printer: keeps every line printed, with the font size it was printed at, sheet by
// sheet (a sheet ends at NewPage), and counts the documents ended.

#include "app/core/Impresora.h"

#include <QList>
#include <QStringList>

class ImpresoraGrabadora : public Impresora
{
public:
    struct Linea {
        QString texto;
        double puntos;
    };

    void setFontName(const QString &nombre) override { nombre_ = nombre; }
    QString FontName() const override { return nombre_; }
    void setFontSize(double puntos) override { puntos_ = puntos; }
    double FontSize() const override { return puntos_; }
    void Print(const QString &linea) override
    {
        if (hojas.isEmpty())
            hojas.append(QList<Linea>());
        hojas.last().append(Linea{linea, puntos_});
    }
    void NewPage() override
    {
        if (hojas.isEmpty())
            hojas.append(QList<Linea>());
        hojas.append(QList<Linea>());
    }
    void EndDoc() override { ++documentos; }

    // The texts of one sheet, or of all sheets together (hoja -1), in order.
    QStringList Textos(int hoja = -1) const
    {
        QStringList out;
        for (int i = 0; i < hojas.size(); ++i)
            if (hoja < 0 || i == hoja)
                for (const Linea &l : hojas[i])
                    out << l.texto;
        return out;
    }

    QList<QList<Linea>> hojas;
    int documentos = 0;

private:
    QString nombre_;
    double puntos_ = 0;
};
