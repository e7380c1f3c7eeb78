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
#include <memory>

namespace kivdb::testing_gui {

// The test run's QApplication, created on first use; nullptr when a non-GUI application
// was made earlier and no GUI one can exist.
inline QApplication* guiApplication() {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) return app;
    if (QCoreApplication::instance()) return nullptr;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "kivdb_tests";
    static char* argv[] = {name, nullptr};
    return new QApplication(argc, argv);  // lives until the process ends
}

inline void sendKey(QWidget* target, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

inline void click(QWidget* target) {
    QPointF at = QRectF(target->rect()).center();
    QPointF global = target->mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

// Runs `act` on the modal window as soon as one is shown. If none appears within about two
// seconds the timer gives up; if `act` leaves the window open, it is closed so the test
// cannot hang.
inline void whenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    auto tries = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, tries, act] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible()) {
            act(modal);
            timer->stop();
            timer->deleteLater();
            QTimer::singleShot(0, [handled = QPointer<QWidget>(modal)] {
                if (handled && handled->isVisible()) handled->close();
            });
        } else if (++*tries > 200) {
            timer->deleteLater();
        }
    });
    timer->start(10);
}

}  // namespace kivdb::testing_gui
