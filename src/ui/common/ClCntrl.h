#pragma once
// The field input controller: gives a linked text box, list or combo box the program's keyboard,
// colour and search behaviour. A window creates one ClCntrl per control it equips.
//  - Text box: Enter moves to the next field (unless the tag is exactly "BLOCK"), Up/Down move
//    to the previous/next field, the field is highlighted on focus by its tag and its text
//    selected, the keypad's decimal key types the decimal separator.
//  - Combo box: Enter moves to the next field; BuscarCBO positions it by a typed prefix.
//  - List: LstBuscarStr positions it by a typed prefix; the item under the pointer is shown as
//    the list's tooltip.

#include <QObject>
#include <QString>

class QComboBox;
class QLineEdit;
class QListWidget;
class QWidget;

// The tag of a control: a short text set in the window's design (a dynamic property "Tag").
QString Tag(const QObject *control);
void SetTag(QObject *control, const QString &tag);

class ClCntrl : public QObject
{
    Q_OBJECT
public:
    explicit ClCntrl(QObject *parent = nullptr);

    void sLinkText(QLineEdit *txt);
    void sLinkListBox(QListWidget *lst);
    void sLinkCBoBox(QComboBox *cbo);

    QLineEdit *vTextCtrl() const { return vTextCtrl_; }
    QListWidget *vListBox() const { return vListBox_; }
    QComboBox *vCboBox() const { return vCboBox_; }

    // Selects the first item that begins with texto (case-insensitive); none when no match.
    void LstBuscarStr(const QString &texto);
    void BuscarCBO(const QString &texto);

    // The decimal separator the keypad's decimal key types.
    QString Obtener_Sep_Decim() const;

    // Empties every text box of the window.
    static void VaciarTxt(QWidget *form);

protected:
    bool eventFilter(QObject *obj, QEvent *ev) override;

private:
    QLineEdit *vTextCtrl_ = nullptr;
    QListWidget *vListBox_ = nullptr;
    QComboBox *vCboBox_ = nullptr;
    QString sepDecimal_;
    bool tecladoDecimal_ = false;
};
