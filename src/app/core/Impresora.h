#pragma once
// The printer as the printed ledger uses it: the members of the old platform's printer object
// (font name and size, print a line, new page, end of document). The program prints on the
// default printer or into a PDF file (reports/Impresoras.h); the tests record the calls.

#include <QString>

class Impresora
{
public:
    virtual ~Impresora() = default;

    // The font of the lines printed from now on. A printer that lacks the named fixed-pitch
    // font uses a fixed-pitch one of the same metrics.
    virtual void setFontName(const QString &nombre) = 0;
    virtual QString FontName() const = 0;
    virtual void setFontSize(double puntos) = 0;
    virtual double FontSize() const = 0;

    // Makes room across the page for a line of this text at this size, before the document
    // starts: a page that can grow (a PDF file) grows to hold it. True when the line fits; a
    // printer whose paper is narrower answers false. A printer without a page holds any line.
    virtual bool HacerLugar(const QString &linea, double puntos)
    {
        (void)linea;
        (void)puntos;
        return true;
    }

    // Prints one line at the current position in the current font and moves to the next line
    // (an empty text leaves an empty line). A line that does not fit on the sheet any more goes
    // to a new sheet, as the old printer did.
    virtual void Print(const QString &linea) = 0;
    // Ends the current page; the next line starts at the top of a new one.
    virtual void NewPage() = 0;
    // Ends the document and releases it to its destination. A document with nothing printed
    // produces nothing.
    virtual void EndDoc() = 0;
};
