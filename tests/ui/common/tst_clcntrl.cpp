// The input controller on real widgets of a shown, active window, driven by key events.

#include "ui/common/ClCntrl.h"
#include "ui/invoice/Teclado.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <QtTest>

namespace {
// A form that records the keys that reach its own handler.
class Formulario : public QWidget
{
public:
    QList<int> teclas;

protected:
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

    void teclas_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<int>("tecla");
        QTest::addColumn<int>("destino"); // box that ends with the focus: 0, 1 (the pressed one), 2
        QTest::newRow("Enter avanza") << QString() << int(Qt::Key_Return) << 2;
        QTest::newRow("Enter numerico avanza") << QString() << int(Qt::Key_Enter) << 2;
        QTest::newRow("BLOCK se queda el Enter") << QStringLiteral("BLOCK") << int(Qt::Key_Return) << 1;
        QTest::newRow("BLOCK, Enter numerico") << QStringLiteral("BLOCK") << int(Qt::Key_Enter) << 1;
        QTest::newRow("BLOCKX avanza") << QStringLiteral("BLOCKX") << int(Qt::Key_Return) << 2;
        QTest::newRow("block avanza") << QStringLiteral("block") << int(Qt::Key_Return) << 2;
        QTest::newRow("abajo") << QString() << int(Qt::Key_Down) << 2;
        // Up on an untagged box is walked in colores.
        QTest::newRow("BLOCK, arriba") << QStringLiteral("BLOCK") << int(Qt::Key_Up) << 0;
    }
    void teclas()
    {
        QFETCH(QString, tag);
        QFETCH(int, tecla);
        QFETCH(int, destino);
        QLineEdit *cajas[] = {Agregar(new QLineEdit), Agregar(new QLineEdit, tag), Agregar(new QLineEdit)};
        Mostrar(*form);
        cajas[1]->setFocus();
        QTest::keyClicks(cajas[1], QStringLiteral("12"));
        QSignalSpy enter(cajas[1], &QLineEdit::returnPressed);

        QTest::keyClick(QApplication::focusWidget(), Qt::Key(tecla));

        QCOMPARE(QApplication::focusWidget(), cajas[destino]);
        // A kept Enter reaches the box and then the form's own handler; a moving key neither.
        QCOMPARE(enter.count(), destino == 1 ? 1 : 0);
        QCOMPARE(form->teclas, destino == 1 ? QList<int>{tecla} : QList<int>{});
        QCOMPARE(cajas[1]->text(), QStringLiteral("12"));
    }

    void colores_data()
    {
        const QColor verde(192, 255, 192), f6(254, 228, 214), am(247, 247, 217);
        const QColor propio(10, 20, 30), blanco(255, 255, 255);
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QColor>("conFoco");
        QTest::addColumn<QColor>("alSalir");
        QTest::newRow("vacio") << QString() << verde << blanco;
        QTest::newRow("termina en #F6") << QStringLiteral("IMPORTE#F6") << f6 << blanco;
        QTest::newRow("AM y termina en #F6") << QStringLiteral("AM#F6") << f6 << blanco;
        // Highlighted by its suffix, but a "BB" box is never given back its white.
        QTest::newRow("BB y termina en #F6") << QStringLiteral("BB#F6") << f6 << f6;
        QTest::newRow("AM") << QStringLiteral("AM") << am << blanco;
        QTest::newRow("AMBB") << QStringLiteral("AMBB") << am << blanco;
        QTest::newRow("BB") << QStringLiteral("BB") << propio << propio;
        QTest::newRow("BBAM") << QStringLiteral("BBAM") << propio << propio;
        QTest::newRow("AM en el medio") << QStringLiteral("xAM") << verde << blanco;
        QTest::newRow("#F6 al principio") << QStringLiteral("#F6x") << verde << blanco;
    }
    void colores()
    {
        QFETCH(QString, tag);
        QFETCH(QColor, conFoco);
        QFETCH(QColor, alSalir);
        QLineEdit *otra = Agregar(new QLineEdit);
        QLineEdit *txt = Agregar(new QLineEdit(QStringLiteral("1234,50")), tag);
        QPalette p = txt->palette();
        p.setColor(QPalette::Base, QColor(10, 20, 30));
        txt->setPalette(p);
        Mostrar(*form);
        otra->setFocus();

        // Focus given by the program (Tab would select the text on its own).
        txt->setFocus(Qt::OtherFocusReason);
        QCOMPARE(txt->palette().color(QPalette::Base), conFoco);
        QCOMPARE(txt->selectedText(), conFoco == QColor(10, 20, 30) ? QString() : txt->text());
        QTest::keyClick(txt, Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget(), otra);
        QCOMPARE(txt->palette().color(QPalette::Base), alSalir);
    }

    // Only between the keypad key's press and release is "." the decimal separator.
    void tecladoDecimalEscribeComa()
    {
        QLineEdit *txt = Agregar(new QLineEdit);
        Mostrar(*form);
        txt->setFocus();
        QTest::keyClicks(txt, QStringLiteral("12"));
        const std::pair<Qt::Key, Qt::KeyboardModifiers> teclas[] = {{Qt::Key_Period, Qt::KeypadModifier}, {Qt::Key_5, {}}, {Qt::Key_Period, {}},
            {Qt::Key_3, Qt::KeypadModifier}, {Qt::Key_Period, {}}, {Qt::Key_Period, Qt::KeypadModifier}};
        for (const auto &[tecla, mod] : teclas)
            QTest::keyClick(txt, tecla, mod);
        QCOMPARE(txt->text(), QStringLiteral("12,5.3.,"));
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
    // The same prefix typed in a box searches a list and a combo box.
    void busqueda()
    {
        QFETCH(QString, tecleado);
        QFETCH(int, fila);
        const QStringList items{QStringLiteral("Acme"), QStringLiteral("Garcia Hnos"), QStringLiteral("Garcia Hugo"),
                                QStringLiteral("Perez"), QStringLiteral("garcía y cía")};
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
    }

    // The item under the pointer, as the platform reports its moves, is the list's tooltip.
    void tooltipDelItemBajoElPuntero()
    {
        auto *lst = Agregar(new QListWidget);
        lst->setFixedSize(120, 200);
        const QString largo = QStringLiteral("Distribuidora de Materiales del Litoral Sociedad Anonima");
        lst->addItems({QStringLiteral("Acme"), largo});
        ClCntrl ctl;
        ctl.sLinkListBox(lst);
        Mostrar(*form);
        const auto sobre = [&](int y) {
            QTest::mouseMove(form->windowHandle(), lst->viewport()->mapTo(form.get(), QPoint(10, y)));
            return lst->toolTip();
        };
        const QRect r1 = lst->visualItemRect(lst->item(1));
        QCOMPARE((QStringList{sobre(r1.center().y()), sobre(lst->visualItemRect(lst->item(0)).center().y()), sobre(r1.bottom() + 40)}),
                 (QStringList{largo, "Acme", ""}));
    }
};

QTEST_MAIN(TstClCntrl)
#include "tst_clcntrl.moc"
