#pragma once
// The main window started as a person starts it: the company and period window opens over it
// (modal) and F11 confirms the company and period it proposes.

#include "ui/main/VentanaModal.h"
#include "ui/main/frmMAIN.h"
#include "ui/main/frmOpciones.h"

#include <QComboBox>
#include <QTest>

// The start-up with the proposal confirmed; what Form_Load answers.
inline bool Arrancar(frmMAIN &w)
{
    AlAbrirse<frmOpciones>([](frmOpciones &f) { QTest::keyClick(f.cboUSR, Qt::Key_F11); });
    return w.Form_Load();
}

// The start-up confirmed and the window shown on screen.
inline void ArrancarYMostrar(frmMAIN &w)
{
    QVERIFY(Arrancar(w));
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
}
