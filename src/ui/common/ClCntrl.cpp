#include "ui/common/ClCntrl.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QColor>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMouseEvent>
#include <QPalette>
#include <QVariant>
#include <optional>

namespace {

const char *const kTag = "Tag";

// Highlight of a text box with the focus, chosen by its tag; nullopt when the box keeps its
// colours ("BB" tags). The order of the tests matters: "AMBB" is an "AM" tag.
std::optional<QColor> ColorFoco(const QString &tag)
{
    if (tag.endsWith(QLatin1String("#F6")))
        return QColor(254, 228, 214);
    if (tag.startsWith(QLatin1String("AM")))
        return QColor(247, 247, 217);
    if (tag.startsWith(QLatin1String("BB")))
        return std::nullopt;
    return QColor(192, 255, 192);
}

void PintarFondo(QLineEdit *txt, const QColor &color)
{
    QPalette p = txt->palette();
    p.setColor(QPalette::Base, color);
    txt->setPalette(p);
}

// The keystroke "{TAB}" (or "+{TAB}" going back), delivered to the control and processed
// before returning, so the focus has moved when this comes back.
void EnviarTab(QWidget *control, bool atras)
{
    QKeyEvent ev(QEvent::KeyPress, atras ? Qt::Key_Backtab : Qt::Key_Tab,
                 atras ? Qt::ShiftModifier : Qt::NoModifier);
    QCoreApplication::sendEvent(control, &ev);
}

bool EsEnter(const QKeyEvent *k)
{
    return k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter;
}

// The field with the focus always shows it, whichever way the focus came (a window that opens
// with a field already chosen, a click, a key): an entry field in the colour of its tag, a
// combo box or a spin box in the plain colour; leaving, each gets its own colours back. One
// for the whole program, started by the first controller.
class ResaltadoFoco : public QObject
{
public:
    static void Instalar()
    {
        static ResaltadoFoco *r = nullptr;
        if (!r && qApp) {
            r = new ResaltadoFoco(qApp);
            connect(qApp, &QApplication::focusChanged, r, &ResaltadoFoco::Cambio);
        }
    }

private:
    using QObject::QObject;
    static constexpr const char *kPaleta = "PaletaSinFoco";

    // The control that shows the focus: the combo or spin box around its own editor.
    static QWidget *Control(QWidget *w)
    {
        if (w && (qobject_cast<QComboBox *>(w->parentWidget()) || qobject_cast<QAbstractSpinBox *>(w->parentWidget())))
            return w->parentWidget();
        return w;
    }

    void Cambio(QWidget *antes, QWidget *ahora)
    {
        antes = Control(antes);
        ahora = Control(ahora);
        if (antes == ahora)
            return;
        if (auto *txt = qobject_cast<QLineEdit *>(antes)) {
            if (!Tag(txt).startsWith(QLatin1String("BB")))
                PintarFondo(txt, QColor(255, 255, 255));
        } else if (antes && antes->property(kPaleta).isValid()) {
            antes->setPalette(antes->property(kPaleta).value<QPalette>());
            antes->setProperty(kPaleta, QVariant());
        }
        if (auto *txt = qobject_cast<QLineEdit *>(ahora)) {
            if (const auto color = ColorFoco(Tag(txt)))
                PintarFondo(txt, *color);
        } else if (qobject_cast<QComboBox *>(ahora) || qobject_cast<QAbstractSpinBox *>(ahora)) {
            if (!ahora->property(kPaleta).isValid())
                ahora->setProperty(kPaleta, QVariant::fromValue(ahora->palette()));
            QPalette p = ahora->palette();
            p.setColor(QPalette::Button, QColor(192, 255, 192));
            p.setColor(QPalette::Base, QColor(192, 255, 192));
            ahora->setPalette(p);
        }
    }
};

} // namespace

QString Tag(const QObject *control)
{
    return control ? control->property(kTag).toString() : QString();
}

void SetTag(QObject *control, const QString &tag)
{
    if (control)
        control->setProperty(kTag, tag);
}

ClCntrl::ClCntrl(QObject *parent) : QObject(parent)
{
    ResaltadoFoco::Instalar();
    // The program keeps the Argentine conventions whatever the machine's locale.
    sepDecimal_ = QLocale(QLocale::Spanish, QLocale::Argentina).decimalPoint();
}

void ClCntrl::sLinkText(QLineEdit *txt)
{
    vTextCtrl_ = txt;
    if (txt)
        txt->installEventFilter(this);
}

void ClCntrl::sLinkListBox(QListWidget *lst)
{
    vListBox_ = lst;
    if (lst) {
        // The pointer moves over the viewport; tracking makes them arrive without a button.
        lst->viewport()->setMouseTracking(true);
        lst->viewport()->installEventFilter(this);
    }
}

void ClCntrl::sLinkCBoBox(QComboBox *cbo)
{
    vCboBox_ = cbo;
    if (cbo)
        cbo->installEventFilter(this);
}

void ClCntrl::LstBuscarStr(const QString &texto)
{
    if (!vListBox_)
        return;
    int encontrado = -1;
    for (int i = 0; i < vListBox_->count(); ++i) {
        if (vListBox_->item(i)->text().startsWith(texto, Qt::CaseInsensitive)) {
            encontrado = i;
            break;
        }
    }
    if (encontrado < 0) {
        vListBox_->setCurrentRow(-1);
        vListBox_->clearSelection();
    } else {
        vListBox_->setCurrentRow(encontrado);
    }
}

void ClCntrl::BuscarCBO(const QString &texto)
{
    if (!vCboBox_)
        return;
    // MatchStartsWith without MatchCaseSensitive compares without case.
    vCboBox_->setCurrentIndex(vCboBox_->findText(texto, Qt::MatchStartsWith));
}

QString ClCntrl::Obtener_Sep_Decim() const { return sepDecimal_; }

void ClCntrl::VaciarTxt(QWidget *form)
{
    if (!form)
        return;
    const auto cajas = form->findChildren<QLineEdit *>();
    for (QLineEdit *txt : cajas) {
        // The editors inside combo boxes and spin boxes are parts of those controls.
        QWidget *padre = txt->parentWidget();
        if (qobject_cast<QComboBox *>(padre) || qobject_cast<QAbstractSpinBox *>(padre))
            continue;
        txt->setText(QString());
    }
}

bool ClCntrl::eventFilter(QObject *obj, QEvent *ev)
{
    if (vTextCtrl_ && obj == vTextCtrl_) {
        QLineEdit *txt = vTextCtrl_;
        switch (ev->type()) {
        case QEvent::FocusIn: {
            const auto color = ColorFoco(Tag(txt));
            if (!color)
                break;
            PintarFondo(txt, *color);
            txt->selectAll();
            break;
        }
        case QEvent::FocusOut:
            if (!Tag(txt).startsWith(QLatin1String("BB")))
                PintarFondo(txt, QColor(255, 255, 255));
            break;
        case QEvent::KeyPress: {
            auto *k = static_cast<QKeyEvent *>(ev);
            if (k->key() == Qt::Key_Up) {
                EnviarTab(txt, true);
                return true;
            }
            if (k->key() == Qt::Key_Down) {
                EnviarTab(txt, false);
                return true;
            }
            if (k->key() == Qt::Key_Period && (k->modifiers() & Qt::KeypadModifier))
                tecladoDecimal_ = true;
            if (tecladoDecimal_ && k->text() == QLatin1String(".") && !sepDecimal_.isEmpty()) {
                // The keypad's decimal key types the program's separator instead.
                const QString sep = sepDecimal_.left(1);
                QKeyEvent reemplazo(QEvent::KeyPress, sep == QLatin1String(",") ? Qt::Key_Comma : 0,
                                    k->modifiers() & ~Qt::KeypadModifier, sep, k->isAutoRepeat());
                QCoreApplication::sendEvent(txt, &reemplazo);
                return true;
            }
            if (EsEnter(k) && Tag(txt) != QLatin1String("BLOCK")) {
                EnviarTab(txt, false);
                return true;
            }
            break;
        }
        case QEvent::KeyRelease:
            tecladoDecimal_ = false;
            break;
        default:
            break;
        }
        return false;
    }

    if (vCboBox_ && obj == vCboBox_) {
        if (ev->type() == QEvent::KeyPress && EsEnter(static_cast<QKeyEvent *>(ev))) {
            EnviarTab(vCboBox_, false);
            return true;
        }
        return false;
    }

    if (vListBox_ && obj == vListBox_->viewport()) {
        if (ev->type() == QEvent::MouseMove) {
            const auto *m = static_cast<QMouseEvent *>(ev);
            // itemAt works in the viewport's pixels, where the event's position already is.
            QListWidgetItem *item = vListBox_->itemAt(m->position().toPoint());
            vListBox_->setToolTip(item ? item->text() : QString());
        }
        return false;
    }
    return QObject::eventFilter(obj, ev);
}
