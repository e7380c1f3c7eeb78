#pragma once
// Driving widgets in tests without a display: one QApplication on the offscreen platform,
// and simulated keys and clicks delivered to a modal window once it is up.
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace kivdb::testing {

// The test run's QApplication, made on first use and kept to the end; nullptr when a
// non-GUI application was made earlier, since then no GUI one can exist.
inline QApplication* guiApplication() {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) return app;
    if (QCoreApplication::instance()) return nullptr;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "kivdb_tests";
    static char* argv[] = {name, nullptr};
    return new QApplication(argc, argv);
}

inline void sendKey(QWidget* target, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier), release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

inline void click(QWidget* target) {
    QPointF at = QRectF(target->rect()).center(), global = target->mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

// Runs `act` on the next modal window once it is shown (polling for about two seconds).
// A window that `act` leaves open is closed, so a failing test cannot hang.
inline void whenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, act, tries = 0]() mutable {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible()) {
            act(modal);
            QTimer::singleShot(0, [handled = QPointer<QWidget>(modal)] {
                if (handled && handled->isVisible()) handled->close();
            });
        } else if (++tries < 200) {
            return;
        }
        timer->stop();
        timer->deleteLater();
    });
    timer->start(10);
}

}  // namespace kivdb::testing
