#pragma once
// The add-invoice window: records one purchase invoice of the current company in the current
// period. The first header save inserts the IVC row (saved flag), later ones update it. With
// Chk_EnviarASeguimiento ticked, every press of "Guardar" also posts the invoice to supplier
// tracking.

#include "ui/invoice/VentanaConcepto.h"

class QCheckBox;

class frmADDConcepto : public VentanaConcepto
{
    Q_OBJECT
public:
    frmADDConcepto(Sesion &sesion, Principal *principal, QWidget *parent = nullptr);

    bool IVAValidar() override;
    void cmdGuardar_Click() override;
    void cmdCerrar_Click() override;

    QCheckBox *Chk_EnviarASeguimiento = nullptr;

protected:
    // Before an amount is written the supplier shown follows the CUIT it is written under.
    void AntesDeAgregarGravado() override { SincronizarProvDesdeId(); }
    // An invoice without gross-income lines: this window clears the VAT total (label and
    // IVARIN), not the gross-income one, when it lists them. Kept as the book has always done.
    void SinLineasIngBrutos() override;
    // Esc does not close this window: it clears the VAT line being entered.
    bool TeclaVentana(int tecla) override;

private:
    void Inicializar();
    QString SentenciaInsert() const;
    QString SentenciaUpdate() const;
};
