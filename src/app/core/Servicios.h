#pragma once
// Services that the windows and the reports reach through an interface, so that the program
// uses the real ones (message boxes, save dialog, printer) and the tests scripted doubles.

#include <QString>
#include <QStringList>

// Message box styles and answers, with the values of the old platform.
namespace vb {
enum Estilo : int {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbSystemModal = 4096,
};
enum Respuesta : int { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

// Key codes as the windows' key-down handlers name them.
enum Tecla : int {
    vbKeyReturn = 13,
    vbKeyEscape = 27,
    vbKeyInsert = 45,
    vbKeyDelete = 46,
    vbKeyUp = 38,
    vbKeyDown = 40,
    vbKeyDecimal = 110,
    vbKeyF5 = 116,
    vbKeyF6 = 117,
    vbKeyF8 = 119,
    vbKeyF9 = 120,
    vbKeyF10 = 121,
    vbKeyF11 = 122,
    vbKeyF12 = 123,
};
} // namespace vb

class Mensajes
{
public:
    virtual ~Mensajes() = default;
    // Shows a message box; style is the sum of buttons and icon (vb::Estilo); the answer is
    // a vb::Respuesta.
    virtual int MsgBox(const QString &texto, int estilo = vb::vbOKOnly,
                       const QString &titulo = QString()) = 0;
};

// Messages as the command line gives them: written to standard error, questions answered No.
class MensajesConsola : public Mensajes
{
public:
    int MsgBox(const QString &texto, int estilo, const QString &titulo) override;
};

// The error report of a procedure's error trap: the error's description, two line breaks, its
// number and the location text of the procedure, in one critical box.
void MostrarError(Mensajes &m, const QString &descripcion, int numero, const QString &seccion);
