#pragma once
// What the invoice windows' tests start from: the company kEmpresa ("Empresa SA") with November
// 2026 as the current period and the suppliers Acme and Beta; the windows opened on that book,
// shown and active as a person finds them, under a main window that counts what it is asked;
// and the typing of a whole field, amount or line.

#include "Teclado.h"
#include "common/Libro.h"
#include "common/MensajesGuion.h"
#include "ui/invoice/frmADDConcepto.h"
#include "ui/invoice/frmMODConcepto.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <memory>

inline const QString kEmpresa = "20111111112";
inline const QString kAcme = "30700000011";
inline const QString kBeta = "30700000022";
inline const QString kNumero = "0001-5"; // Acme's October invoice

// Keys on the invoice windows, each ending where a person's would: on the field or button.
inline void Guardar(VentanaConcepto &w)
{
    w.cmdGuardar->setFocus();
    Tecla(Qt::Key_Return);
}
inline void Gravado(VentanaConcepto &w, const QString &monto)
{
    Campo(w.TxtGrav, monto);
    Tecla(Qt::Key_Return);
}
inline void LineaIVA(VentanaConcepto &w, const QString &tasa, const QString &valor)
{
    Campo(w.txtIVCDETIVA, tasa);
    Campo(w.txtIVCDETVLR, valor);
    Tecla(Qt::Key_Return);
}
// A gross-income line confirmed with Enter in its value box.
inline void LineaIB(VentanaConcepto &w, const QString &porcentaje, const QString &descripcion, const QString &valor)
{
    Campo(w.txtIVC_IngB, porcentaje);
    Campo(w.txtIVC_IngBDesc, descripcion);
    Campo(w.txtIVC_IngBValor, valor);
    Tecla(Qt::Key_Return);
}
// Delete on a line list, answering the question with the given answer.
inline void Borrar(QWidget *lista, MensajesGuion &m, int respuesta = vb::vbYes)
{
    lista->setFocus();
    m.Responder(respuesta);
    Tecla(Qt::Key_Delete);
}

// The book and the main window of one test.
class Facturas
{
protected:
    std::unique_ptr<LibroDePrueba> libro;
    PrincipalContador principal;

    // A fresh book: the company, its period and (unless said) both suppliers.
    void Libro(bool conProveedores = true)
    {
        libro = std::make_unique<LibroDePrueba>();
        libro->Empresa(kEmpresa, "Empresa SA");
        libro->Periodo(kEmpresa, "01/11/2026");
        if (conProveedores) {
            libro->Proveedor(kAcme, "Acme");
            libro->Proveedor(kBeta, "Beta");
        }
        principal = PrincipalContador();
    }
    MensajesGuion &Msg() { return libro->Mensajes(); }
    // The last message and its icon, as "text|style".
    QString Aviso() { return Msg().Ultimo() + u'|' + QString::number(Msg().UltimoEstilo()); }
    static QString Con(const QString &texto, int estilo) { return texto + u'|' + QString::number(estilo); }
    QStringList Filas(const QString &sql) const { return libro->Filas(sql); }
    long Contar(const QString &tabla, const QString &where = QString()) const { return libro->Contar(tabla, where); }

    std::unique_ptr<frmADDConcepto> Agregar()
    {
        auto w = std::make_unique<frmADDConcepto>(libro->S(), &principal);
        Mostrar(*w);
        return w;
    }
    // Acme's invoice kNumero dated 05/10/2026, listed under October 2026: type "B", untaxed 5 and
    // the other amounts on its header; with one taxed-amount line of the whole taxed amount.
    void FacturaDeAcme(double gravado, double iva, double ingBrutos, bool lineaGravado = true)
    {
        libro->Factura(kEmpresa, kAcme, "01/10/2026", "05/10/2026", "B", kNumero, gravado, 5, iva, ingBrutos);
        if (lineaGravado)
            libro->LineaGravado(kEmpresa, kAcme, kNumero, 1, gravado);
    }
    // The modify window on that invoice, filled from its list row as the main window fills it.
    std::unique_ptr<frmMODConcepto> Modificar(double gravado, double iva, double ingBrutos, const QString &tipo = "B")
    {
        auto w = std::make_unique<frmMODConcepto>(libro->S(), &principal);
        w->Cargar({"05/10/26", tipo, kNumero, kAcme, gravado, 5, ingBrutos, gravado + 5 + iva + ingBrutos, iva});
        Mostrar(*w);
        return w;
    }
};
