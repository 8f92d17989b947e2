// The input controller on real widgets of a shown, active window, driven by key events.

#include "ui/common/ClCntrl.h"
#include "ui/invoice/Teclado.h"

#include <QComboBox>
#include <QListWidget>
#include <QVBoxLayout>
#include <QtTest>

namespace {
// A form that records the keys that reach its own handler.
struct Formulario : QWidget {
    QList<int> teclas;
    void keyPressEvent(QKeyEvent *e) override { teclas.append(e->key()); }
};
} // namespace

class TstClCntrl : public QObject
{
    Q_OBJECT

    std::unique_ptr<Formulario> form;

    // Adds a widget to the form; a text box is linked to a controller of its own.
    template <class W> W *Agregar(W *w, const QString &tag = QString())
    {
        SetTag(w, tag);
        form->layout()->addWidget(w);
        if constexpr (std::is_same_v<W, QLineEdit>)
            (new ClCntrl(form.get()))->sLinkText(w);
        return w;
    }

private slots:
    void init()
    {
        form = std::make_unique<Formulario>();
        new QVBoxLayout(form.get());
    }
    void cleanup() { form.reset(); }

    // Enter and Down move on, Up goes back; a "BLOCK" box keeps its Enter. The box with the focus
    // takes the colour of its tag, its text selected, and gets its white back when left.
    void teclas_data()
    {
        const QColor verde(192, 255, 192), f6(254, 228, 214), am(247, 247, 217), propio(10, 20, 30), blanco(Qt::white);
        const int enter = Qt::Key_Return, numerico = Qt::Key_Enter, abajo = Qt::Key_Down, arriba = Qt::Key_Up;
        QTest::addColumn<QString>("tag");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<int>("destino"); // box that ends with the focus: 0, 1 (the pressed one), 2
        QTest::addColumn<QColor>("conFoco");
        QTest::addColumn<QColor>("despues");
        QTest::newRow("Enter avanza") << "" << enter << 2 << verde << blanco;
        QTest::newRow("Enter numerico avanza") << "" << numerico << 2 << verde << blanco;
        QTest::newRow("BLOCK se queda el Enter") << "BLOCK" << enter << 1 << verde << verde;
        QTest::newRow("BLOCK, Enter numerico") << "BLOCK" << numerico << 1 << verde << verde;
        QTest::newRow("BLOCKX avanza") << "BLOCKX" << enter << 2 << verde << blanco;
        QTest::newRow("block avanza") << "block" << enter << 2 << verde << blanco;
        QTest::newRow("abajo") << "" << abajo << 2 << verde << blanco;
        QTest::newRow("BLOCK, arriba") << "BLOCK" << arriba << 0 << verde << blanco;
        // The suffix "#F6" counts before the prefixes, "AM" before "BB"; only at their ends.
        QTest::newRow("AM y termina en #F6") << "AM#F6" << arriba << 0 << f6 << blanco;
        // Highlighted by its suffix, but a "BB" box is never given back its white.
        QTest::newRow("BB y termina en #F6") << "BB#F6" << arriba << 0 << f6 << f6;
        QTest::newRow("AMBB") << "AMBB" << arriba << 0 << am << blanco;
        QTest::newRow("BB") << "BB" << enter << 2 << propio << propio;
        QTest::newRow("AM en el medio") << "xAM" << arriba << 0 << verde << blanco;
        QTest::newRow("#F6 al principio") << "#F6x" << arriba << 0 << verde << blanco;
    }
    void teclas()
    {
        QFETCH(QString, tag);
        QFETCH(int, tecla);
        QFETCH(int, destino);
        QFETCH(QColor, conFoco);
        QFETCH(QColor, despues);
        QLineEdit *cajas[] = {Agregar(new QLineEdit), Agregar(new QLineEdit("12"), tag), Agregar(new QLineEdit)};
        QPalette p = cajas[1]->palette();
        p.setColor(QPalette::Base, QColor(10, 20, 30));
        cajas[1]->setPalette(p);
        Mostrar(*form);
        // Focus given by the program (Tab would select the text on its own).
        cajas[1]->setFocus(Qt::OtherFocusReason);
        QCOMPARE(cajas[1]->palette().color(QPalette::Base), conFoco);
        QCOMPARE(cajas[1]->selectedText(), conFoco == QColor(10, 20, 30) ? "" : "12");
        QSignalSpy enter(cajas[1], &QLineEdit::returnPressed);

        QTest::keyClick(cajas[1], Qt::Key(tecla));

        QCOMPARE(Foco(), cajas[destino]);
        // A kept Enter reaches the box and then the form's own handler; a moving key neither.
        QCOMPARE(enter.count(), destino == 1 ? 1 : 0);
        QCOMPARE(form->teclas, destino == 1 ? QList<int>{tecla} : QList<int>{});
        QCOMPARE(cajas[1]->text(), "12");
        QCOMPARE(cajas[1]->palette().color(QPalette::Base), despues);
    }

    // Only between the keypad key's press and release is "." the decimal separator.
    void tecladoDecimalEscribeComa()
    {
        QLineEdit *txt = Agregar(new QLineEdit);
        Mostrar(*form);
        txt->setFocus();
        const std::pair<Qt::Key, Qt::KeyboardModifiers> teclas[] = {{Qt::Key_Period, Qt::KeypadModifier}, {Qt::Key_5, {}}, {Qt::Key_Period, {}},
            {Qt::Key_3, Qt::KeypadModifier}, {Qt::Key_Period, {}}, {Qt::Key_Period, Qt::KeypadModifier}};
        for (const auto &[tecla, mod] : teclas)
            QTest::keyClick(txt, tecla, mod);
        QCOMPARE(txt->text(), ",5.3.,");
    }

    void busqueda_data()
    {
        QTest::addColumn<QString>("tecleado");
        QTest::addColumn<int>("fila");
        QTest::newRow("primera que empieza") << QStringLiteral("ga") << 1;
        QTest::newRow("mas largo elige la siguiente") << QStringLiteral("garcia hu") << 2;
        QTest::newRow("acentos, sin mayusculas") << QStringLiteral("GARCÍA Y") << 4;
        QTest::newRow("antes de la seleccion anterior") << QStringLiteral("a") << 0;
        QTest::newRow("solo en el medio no coincide") << QStringLiteral("rcia") << -1;
        QTest::newRow("mas largo que el item") << QStringLiteral("perezz") << -1;
    }
    // The same prefix typed in a box searches a list and a combo box; the list shows the item under
    // the pointer as its tooltip.
    void busqueda()
    {
        QFETCH(QString, tecleado);
        QFETCH(int, fila);
        const QStringList items{"Acme", "Garcia Hnos", "Garcia Hugo", "Perez", "garcía y cía"};
        QLineEdit *buscar = Agregar(new QLineEdit);
        auto *lst = Agregar(new QListWidget);
        auto *cbo = Agregar(new QComboBox);
        lst->addItems(items);
        cbo->addItems(items);
        lst->setCurrentRow(3);
        cbo->setCurrentIndex(3);
        ClCntrl ctlLst, ctlCbo;
        ctlLst.sLinkListBox(lst);
        ctlCbo.sLinkCBoBox(cbo);
        connect(buscar, &QLineEdit::textEdited, &ctlLst, &ClCntrl::LstBuscarStr);
        connect(buscar, &QLineEdit::textEdited, &ctlCbo, &ClCntrl::BuscarCBO);
        Mostrar(*form);
        buscar->setFocus();

        QTest::keyClicks(buscar, tecleado);

        QCOMPARE(QPair(lst->currentRow(), cbo->currentIndex()), QPair(fila, fila));
        QCOMPARE(lst->selectedItems(), fila < 0 ? QList<QListWidgetItem *>{} : QList{lst->item(fila)});

        // The item under the pointer, as the platform reports its moves, is the list's tooltip.
        const auto sobre = [&](int y) {
            QTest::mouseMove(form->windowHandle(), lst->viewport()->mapTo(form.get(), QPoint(10, y)));
            return lst->toolTip();
        };
        const QRect r = lst->visualItemRect(lst->item(4));
        QCOMPARE((QStringList{sobre(r.center().y()), sobre(r.bottom() + 40)}), (QStringList{items[4], ""}));
    }
};

QTEST_MAIN(TstClCntrl)
#include "tst_clcntrl.moc"
