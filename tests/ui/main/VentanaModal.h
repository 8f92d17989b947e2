#pragma once
// Drives a window that another window opens with exec(): the steps run as soon as the window
// is the active modal one, with real key events on its widgets.

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

template <class Ventana>
void AlAbrirse(std::function<void(Ventana &)> pasos)
{
    auto *timer = new QTimer;
    auto intentos = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, pasos, intentos] {
        QPointer<Ventana> v = qobject_cast<Ventana *>(QApplication::activeModalWidget());
        if (!v) {
            if (++*intentos > 500)
                timer->deleteLater();
            return;
        }
        timer->stop();
        timer->deleteLater();
        v->activateWindow();
        if (QTest::qWaitFor([&v] { return !v || QApplication::activeWindow() == v; }) && v)
            pasos(*v);
        // A step that failed must not leave the test waiting on the window.
        if (v && v->isVisible())
            static_cast<QDialog *>(v.data())->done(0); // QFileDialog hides done()
    });
    timer->start(10);
}
