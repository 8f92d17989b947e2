#pragma once
// What the other windows ask of the main window after they change the book.

class Principal
{
public:
    virtual ~Principal() = default;
    // Reloads the main window's invoice list and the session's period totals
    // (gf_IVCCRGGRDXCLIP on its grid); true when it completed.
    virtual bool RecargarGrilla() = 0;
    // Rewrites the main window's five total labels from the session totals ("00.00").
    virtual void MostrarTotales() = 0;
};
