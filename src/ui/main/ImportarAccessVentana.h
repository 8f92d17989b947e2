#pragma once
// The books of the old program met by the company and period window (at start-up or on F6):
// the user is told which file is an Access book and is offered to convert the folder there and
// then, into a folder of his choice; the settings then point at the converted books.

class QWidget;
struct Sesion;

enum class RespuestaAccess {
    NoEsAccess,   // neither personal.mdb nor kestrel.mdb of the session is an Access book
    NoConvertido, // the user said No or cancelled the folder, or the import failed (and said so)
    Convertido,   // the books were converted and the session and settings point at them
};

// Asks (Yes/No through s.mensajes) whether to convert the Access books of the session's folder,
// asks for the new folder through s.dialogo, runs the import and reports it.
RespuestaAccess OfrecerImportarAccess(Sesion &s, QWidget *propietario);
