#pragma once
// The printers of the ledger: paper (the machine's default printer), a PDF file and a Latin-1
// text file. Paper and PDF draw the same pages through Qt; the page is legal size (8.5 x 14 in)
// in landscape with 10 mm margins, wide enough for a 152-character line of a fixed-pitch font
// at 9 points (about 290 mm) and for the header at 10 points. A PDF page grows, keeping those
// proportions, to hold the widest line it was asked to make room for; paper cannot grow.

#include "app/core/Impresora.h"

#include <QFont>
#include <QPainter>
#include <memory>

class QPagedPaintDevice;
class QPrinter;
class QPdfWriter;
class QSaveFile;

// Pages drawn with QPainter on a printer or a PDF writer. Needs a QGuiApplication.
class ImpresoraQt : public Impresora
{
public:
    // The machine's default printer (the first one when none is marked as default).
    static std::unique_ptr<ImpresoraQt> Predeterminada();
    // A given printer, with the ledger's paper and orientation.
    static std::unique_ptr<ImpresoraQt> Papel(std::unique_ptr<QPrinter> printer);
    // A PDF file at ruta, written whole at EndDoc (an unfinished document leaves no file).
    static std::unique_ptr<ImpresoraQt> Pdf(const QString &ruta);
    ~ImpresoraQt() override;

    // A fixed-pitch family that the machine has: the named one when it is installed and
    // fixed-pitch, otherwise "Liberation Mono" (same metrics as "Courier New"), then any
    // fixed-pitch family.
    static QString FamiliaFija(const QString &nombre);

    // The family actually used, which may differ from the one asked for (see FamiliaFija).
    void setFontName(const QString &nombre) override;
    QString FontName() const override;
    void setFontSize(double puntos) override;
    double FontSize() const override;
    bool HacerLugar(const QString &linea, double puntos) override;
    void Print(const QString &linea) override;
    void NewPage() override;
    void EndDoc() override;

    // Sheets started so far.
    int Hojas() const { return hojas_; }

private:
    ImpresoraQt();
    void Empezar();
    void Preparar(QPagedPaintDevice &dispositivo);

    std::unique_ptr<QPrinter> printer_;
    std::unique_ptr<QSaveFile> archivo_;
    std::unique_ptr<QPdfWriter> pdf_;
    QPagedPaintDevice *dispositivo_ = nullptr;
    QPainter painter_;
    QFont fuente_;
    QString ruta_;
    double y_ = 0;
    int hojas_ = 0;
    // Width in points of the widest line a PDF page must hold.
    double anchoNecesario_ = 0;
};

// The pages as text: every printed line followed by CR LF, a form feed between pages, written
// in Latin-1 at EndDoc through the file writer (an unfinished document leaves no file).
class ImpresoraTexto : public Impresora
{
public:
    explicit ImpresoraTexto(const QString &ruta) : ruta_(ruta) {}

    void setFontName(const QString &nombre) override { nombre_ = nombre; }
    QString FontName() const override { return nombre_; }
    void setFontSize(double puntos) override { puntos_ = puntos; }
    double FontSize() const override { return puntos_; }
    void Print(const QString &linea) override;
    void NewPage() override;
    void EndDoc() override;

    // The text of the last document.
    QString Texto() const { return texto_; }

private:
    void Empezar();
    QString ruta_;
    QString nombre_;
    double puntos_ = 9;
    QString texto_;
    bool empezado_ = false;
};
