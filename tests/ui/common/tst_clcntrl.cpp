#include "ui/common/ClCntrl.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QtTest>

// The input controller on real widgets of a shown, active window, driven by key events.
namespace {

// A form that records the keys that reach its own handler.
class Formulario : public QWidget
{
public:
    QList<int> teclas;

protected:
    void keyPressEvent(QKeyEvent *e) override { teclas.append(e->key()); }
};

QLineEdit *Caja(QWidget *form, const QString &nombre, const QString &tag = QString())
{
    auto *txt = new QLineEdit(form);
    txt->setObjectName(nombre);
    SetTag(txt, tag);
    form->layout()->addWidget(txt);
    auto *ctl = new ClCntrl(form);
    ctl->sLinkText(txt);
    return txt;
}

} // namespace

class TstClCntrl : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void enter_data();
    void enter();
    void flechasMuevenEntreCampos();
    void colores_data();
    void colores();
    void tecladoDecimalEscribeComa();
    void busquedaLista_data();
    void busquedaLista();
    void busquedaCombo_data();
    void busquedaCombo();
    void comboEnterPasaAlSiguiente();
    void tooltipDelItemBajoElPuntero();
    void vaciarTxtSoloCajasDeTexto();

private:
    void Mostrar();
    std::unique_ptr<Formulario> form;
};

void TstClCntrl::init()
{
    form = std::make_unique<Formulario>();
    new QVBoxLayout(form.get());
}

void TstClCntrl::cleanup() { form.reset(); }

void TstClCntrl::Mostrar()
{
    form->show();
    form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
}

void TstClCntrl::enter_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<int>("tecla");
    QTest::addColumn<bool>("avanza");
    QTest::newRow("sin tag") << QString() << int(Qt::Key_Return) << true;
    QTest::newRow("sin tag, Enter del teclado numerico") << QString() << int(Qt::Key_Enter) << true;
    QTest::newRow("BLOCK") << QStringLiteral("BLOCK") << int(Qt::Key_Return) << false;
    QTest::newRow("BLOCK, Enter del teclado numerico") << QStringLiteral("BLOCK") << int(Qt::Key_Enter) << false;
    QTest::newRow("BLOCKX") << QStringLiteral("BLOCKX") << int(Qt::Key_Return) << true;
    QTest::newRow("block") << QStringLiteral("block") << int(Qt::Key_Return) << true;
    QTest::newRow("AM") << QStringLiteral("AM") << int(Qt::Key_Return) << true;
}

void TstClCntrl::enter()
{
    QFETCH(QString, tag);
    QFETCH(int, tecla);
    QFETCH(bool, avanza);
    QLineEdit *a = Caja(form.get(), QStringLiteral("a"), tag);
    QLineEdit *b = Caja(form.get(), QStringLiteral("b"));
    Mostrar();
    a->setFocus();
    QTest::keyClicks(a, QStringLiteral("12"));
    QSignalSpy enterDeLaCaja(a, &QLineEdit::returnPressed);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key(tecla));

    QCOMPARE(QApplication::focusWidget(), avanza ? b : a);
    // A kept Enter reaches the box and then the form's own handler; a moving one neither.
    QCOMPARE(enterDeLaCaja.count(), avanza ? 0 : 1);
    QCOMPARE(form->teclas.contains(tecla), !avanza);
    QCOMPARE(a->text(), QStringLiteral("12"));
}

void TstClCntrl::flechasMuevenEntreCampos()
{
    QLineEdit *a = Caja(form.get(), QStringLiteral("a"));
    QLineEdit *b = Caja(form.get(), QStringLiteral("b"), QStringLiteral("BLOCK"));
    QLineEdit *c = Caja(form.get(), QStringLiteral("c"));
    Mostrar();
    b->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), a);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), b);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), c);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), b);
    QVERIFY(form->teclas.isEmpty());
}

void TstClCntrl::colores_data()
{
    const QColor verde(192, 255, 192), f6(254, 228, 214), am(247, 247, 217);
    const QColor propio(10, 20, 30), blanco(255, 255, 255);
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QColor>("conFoco");
    QTest::addColumn<QColor>("alSalir");
    QTest::newRow("vacio") << QString() << verde << blanco;
    QTest::newRow("#F6") << QStringLiteral("#F6") << f6 << blanco;
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
    QTest::newRow("BLOCK") << QStringLiteral("BLOCK") << verde << blanco;
}

void TstClCntrl::colores()
{
    QFETCH(QString, tag);
    QFETCH(QColor, conFoco);
    QFETCH(QColor, alSalir);
    QLineEdit *otra = Caja(form.get(), QStringLiteral("otra"));
    QLineEdit *txt = Caja(form.get(), QStringLiteral("txt"), tag);
    QPalette p = txt->palette();
    p.setColor(QPalette::Base, QColor(10, 20, 30));
    txt->setPalette(p);
    txt->setText(QStringLiteral("1234,50"));
    Mostrar();
    otra->setFocus();

    // The focus given by the program (not by Tab, which selects on its own).
    txt->setFocus(Qt::OtherFocusReason);
    QCOMPARE(QApplication::focusWidget(), txt);
    QCOMPARE(txt->palette().color(QPalette::Base), conFoco);
    const bool resalta = !tag.startsWith(QLatin1String("BB")) || tag.endsWith(QLatin1String("#F6"));
    QCOMPARE(txt->selectedText(), resalta ? txt->text() : QString());

    QTest::keyClick(txt, Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), otra);
    QCOMPARE(txt->palette().color(QPalette::Base), alSalir);
}

void TstClCntrl::tecladoDecimalEscribeComa()
{
    QLineEdit *txt = Caja(form.get(), QStringLiteral("txt"));
    Mostrar();
    txt->setFocus();
    ClCntrl ctl;
    QCOMPARE(ctl.Obtener_Sep_Decim(), QStringLiteral(","));

    QTest::keyClicks(txt, QStringLiteral("12"));
    QTest::keyClick(txt, Qt::Key_Period, Qt::KeypadModifier);
    QTest::keyClick(txt, Qt::Key_5);
    QCOMPARE(txt->text(), QStringLiteral("12,5"));
    // After the keypad key is released the main keyboard's "." is a plain ".".
    QTest::keyClick(txt, Qt::Key_Period);
    QTest::keyClick(txt, Qt::Key_3, Qt::KeypadModifier);
    QTest::keyClick(txt, Qt::Key_Period);
    QCOMPARE(txt->text(), QStringLiteral("12,5.3."));
    QTest::keyClick(txt, Qt::Key_Period, Qt::KeypadModifier);
    QCOMPARE(txt->text(), QStringLiteral("12,5.3.,"));
}

void TstClCntrl::busquedaLista_data()
{
    QTest::addColumn<QString>("tecleado");
    QTest::addColumn<int>("fila");
    QTest::newRow("primera que empieza") << QStringLiteral("ga") << 1;
    QTest::newRow("sin distinguir mayusculas") << QStringLiteral("GARCIA") << 1;
    QTest::newRow("mas largo elige la siguiente") << QStringLiteral("garcia hu") << 2;
    QTest::newRow("acentos, sin mayusculas") << QStringLiteral("GARCÍA Y") << 4;
    QTest::newRow("antes de la seleccion anterior") << QStringLiteral("a") << 0;
    QTest::newRow("solo en el medio no coincide") << QStringLiteral("rcia") << -1;
    QTest::newRow("ninguna") << QStringLiteral("zz") << -1;
    QTest::newRow("mas largo que el item") << QStringLiteral("perezz") << -1;
}

void TstClCntrl::busquedaLista()
{
    QFETCH(QString, tecleado);
    QFETCH(int, fila);
    QLineEdit *buscar = Caja(form.get(), QStringLiteral("buscar"));
    auto *lst = new QListWidget(form.get());
    form->layout()->addWidget(lst);
    lst->addItems({QStringLiteral("Acme"), QStringLiteral("Garcia Hnos"), QStringLiteral("Garcia Hugo"),
                   QStringLiteral("Perez"), QStringLiteral("garcía y cía")});
    ClCntrl ctl;
    ctl.sLinkListBox(lst);
    QCOMPARE(ctl.vListBox(), lst);
    connect(buscar, &QLineEdit::textEdited, &ctl, &ClCntrl::LstBuscarStr);
    lst->setCurrentRow(3);
    Mostrar();
    buscar->setFocus();

    QTest::keyClicks(buscar, tecleado);

    QCOMPARE(lst->currentRow(), fila);
    QCOMPARE(lst->selectedItems().size(), fila < 0 ? 0 : 1);
    if (fila >= 0)
        QCOMPARE(lst->selectedItems().first(), lst->item(fila));
}

void TstClCntrl::busquedaCombo_data()
{
    QTest::addColumn<QString>("tecleado");
    QTest::addColumn<int>("indice");
    QTest::newRow("prefijo") << QStringLiteral("ti") << 5;
    QTest::newRow("sin distinguir mayusculas") << QStringLiteral("tique fcb") << 6;
    QTest::newRow("el primero de varios") << QStringLiteral("n") << 4;
    QTest::newRow("ninguno") << QStringLiteral("X") << -1;
}

void TstClCntrl::busquedaCombo()
{
    QFETCH(QString, tecleado);
    QFETCH(int, indice);
    QLineEdit *buscar = Caja(form.get(), QStringLiteral("buscar"));
    auto *cbo = new QComboBox(form.get());
    form->layout()->addWidget(cbo);
    cbo->addItems({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("99"),
                   QStringLiteral("NDA"), QStringLiteral("TIQUE FCA"), QStringLiteral("TIQUE FCB"),
                   QStringLiteral("TIQUE")});
    cbo->setCurrentIndex(2);
    ClCntrl ctl;
    ctl.sLinkCBoBox(cbo);
    connect(buscar, &QLineEdit::textEdited, &ctl, &ClCntrl::BuscarCBO);
    Mostrar();
    buscar->setFocus();

    QTest::keyClicks(buscar, tecleado);

    QCOMPARE(cbo->currentIndex(), indice);
    QCOMPARE(cbo->currentText(), indice < 0 ? QString() : cbo->itemText(indice));
}

void TstClCntrl::comboEnterPasaAlSiguiente()
{
    auto *cbo = new QComboBox(form.get());
    form->layout()->addWidget(cbo);
    cbo->addItems({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    ClCntrl ctl;
    ctl.sLinkCBoBox(cbo);
    QLineEdit *sig = Caja(form.get(), QStringLiteral("sig"));
    Mostrar();
    cbo->setFocus();

    // The arrows still pick items: only Enter is the controller's.
    QTest::keyClick(cbo, Qt::Key_Down);
    QCOMPARE(cbo->currentIndex(), 1);
    QCOMPARE(QApplication::focusWidget(), cbo);
    QTest::keyClick(cbo, Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), sig);
    QCOMPARE(cbo->currentIndex(), 1);
    QVERIFY(form->teclas.isEmpty());
}

void TstClCntrl::tooltipDelItemBajoElPuntero()
{
    auto *lst = new QListWidget(form.get());
    form->layout()->addWidget(lst);
    lst->setFixedSize(120, 200);
    const QString largo = QStringLiteral("Distribuidora de Materiales del Litoral Sociedad Anonima");
    lst->addItems({QStringLiteral("Acme"), largo});
    ClCntrl ctl;
    ctl.sLinkListBox(lst);
    Mostrar();

    // The pointer moves over the window as the platform reports it.
    const auto mover = [&](const QPoint &enLista) {
        QTest::mouseMove(form->windowHandle(), lst->viewport()->mapTo(form.get(), enLista));
    };
    // A long item is wider than the list: point at its visible start.
    const QRect r1 = lst->visualItemRect(lst->item(1));
    mover(QPoint(10, r1.center().y()));
    QCOMPARE(lst->toolTip(), largo);
    mover(QPoint(10, lst->visualItemRect(lst->item(0)).center().y()));
    QCOMPARE(lst->toolTip(), QStringLiteral("Acme"));
    // Below the last item there is none.
    mover(QPoint(10, r1.bottom() + 40));
    QCOMPARE(lst->toolTip(), QString());
}

void TstClCntrl::vaciarTxtSoloCajasDeTexto()
{
    QLineEdit *a = Caja(form.get(), QStringLiteral("a"));
    auto *marco = new QGroupBox(form.get());
    auto *lm = new QVBoxLayout(marco);
    auto *b = new QLineEdit(marco);
    lm->addWidget(b);
    form->layout()->addWidget(marco);
    auto *cbo = new QComboBox(form.get());
    cbo->setEditable(true);
    cbo->addItems({QStringLiteral("A"), QStringLiteral("B")});
    cbo->setCurrentIndex(1);
    auto *spin = new QSpinBox(form.get());
    spin->setValue(7);
    auto *lb = new QLabel(QStringLiteral("Nombre"), form.get());
    a->setText(QStringLiteral("uno"));
    b->setText(QStringLiteral("dos"));

    ClCntrl::VaciarTxt(form.get());

    QCOMPARE(a->text(), QString());
    QCOMPARE(b->text(), QString());
    QCOMPARE(cbo->currentText(), QStringLiteral("B"));
    QCOMPARE(spin->value(), 7);
    QCOMPARE(spin->text(), QStringLiteral("7"));
    QCOMPARE(lb->text(), QStringLiteral("Nombre"));
}

QTEST_MAIN(TstClCntrl)
#include "tst_clcntrl.moc"
