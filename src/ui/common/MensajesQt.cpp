#include "ui/common/MensajesQt.h"

#include <QApplication>
#include <QGridLayout>
#include <QSpacerItem>
#include <QMessageBox>
#include <QPushButton>

namespace {

QMessageBox::Icon Icono(int estilo)
{
    switch (estilo & 0x70) {
    case vb::vbCritical:
        return QMessageBox::Critical;
    case vb::vbQuestion:
        return QMessageBox::Question;
    case vb::vbExclamation:
        return QMessageBox::Warning;
    case vb::vbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// The buttons of each button group, in the order the box shows them.
QList<QMessageBox::StandardButton> Botones(int estilo)
{
    switch (estilo & 7) {
    case vb::vbOKCancel:
        return {QMessageBox::Ok, QMessageBox::Cancel};
    case 2:
        return {QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore};
    case 3:
        return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
    case vb::vbYesNo:
        return {QMessageBox::Yes, QMessageBox::No};
    case 5:
        return {QMessageBox::Retry, QMessageBox::Cancel};
    default:
        return {QMessageBox::Ok};
    }
}

int Respuesta(QMessageBox::StandardButton b)
{
    switch (b) {
    case QMessageBox::Cancel:
        return vb::vbCancel;
    case QMessageBox::Abort:
        return 3;
    case QMessageBox::Retry:
        return 4;
    case QMessageBox::Ignore:
        return 5;
    case QMessageBox::Yes:
        return vb::vbYes;
    case QMessageBox::No:
        return vb::vbNo;
    default:
        return vb::vbOK;
    }
}

// The program speaks Spanish whatever the machine's language.
QString TextoBoton(QMessageBox::StandardButton b)
{
    switch (b) {
    case QMessageBox::Yes:
        return QStringLiteral("&Sí");
    case QMessageBox::No:
        return QStringLiteral("&No");
    case QMessageBox::Cancel:
        return QStringLiteral("Cancelar");
    default:
        return QStringLiteral("Aceptar");
    }
}

// A box is at least as wide as its title needs in the title bar (the window manager's bold
// font, with room for its icon and buttons), so "IVA Compras" is never cut to "IVA... ras".
// A box without a title shows the program's name there.
void AnchoParaTitulo(QMessageBox &box)
{
    const QString titulo = box.windowTitle().isEmpty() ? QGuiApplication::applicationDisplayName() : box.windowTitle();
    QFont negrita = box.font();
    negrita.setBold(true);
    const int ancho = QFontMetrics(negrita).horizontalAdvance(titulo) * 6 / 5 + 160;
    if (auto *grilla = qobject_cast<QGridLayout *>(box.layout()))
        grilla->addItem(new QSpacerItem(ancho, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grilla->rowCount(), 0, 1,
                        grilla->columnCount());
}

} // namespace

int MensajesQt::MsgBox(const QString &texto, int estilo, const QString &titulo)
{
    QWidget *padre = padre_ ? padre_ : QApplication::activeWindow();
    QMessageBox box(padre);
    box.setIcon(Icono(estilo));
    box.setTextFormat(Qt::PlainText);
    QString t = texto;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    box.setText(t);
    box.setWindowTitle(titulo);
    box.setWindowModality(Qt::ApplicationModal);

    const QList<QMessageBox::StandardButton> botones = Botones(estilo);
    for (QMessageBox::StandardButton b : botones)
        box.addButton(b)->setText(TextoBoton(b));
    // Default button: the first unless the style names the second (256) or the third (512).
    const int porDefecto = qBound(0, (estilo & 0x300) >> 8, int(botones.size()) - 1);
    box.setDefaultButton(botones[porDefecto]);
    // Esc answers Cancel when the box has it, and closes a box with a single button.
    if (botones.contains(QMessageBox::Cancel))
        box.setEscapeButton(QMessageBox::Cancel);
    else if (botones.size() == 1)
        box.setEscapeButton(botones.first());

    AnchoParaTitulo(box);
    box.exec();
    QAbstractButton *pulsado = box.clickedButton();
    if (!pulsado)
        return Respuesta(botones.size() == 1 ? botones.first() : QMessageBox::Cancel);
    return Respuesta(box.standardButton(pulsado));
}
