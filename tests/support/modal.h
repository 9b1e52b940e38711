#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>

// Of a window whose owner is active the toolkit says that it is active itself, a moment too early for a test
// that presses keys.
inline bool waitUntilActive(const QWidget& window) {
    return QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; });
}

// Does `deed`, which opens a modal window of the type Window and comes back when it is closed; `work` happens
// in it meanwhile. Whoever leaves the window open has made a mistake in the test.
template <typename Window>
void inModal(const std::function<void()>& deed, const std::function<void(Window&)>& work) {
    bool opened = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (window == nullptr || opened) {
            return;
        }
        opened = true;
        watch.stop();
        EXPECT_TRUE(waitUntilActive(*window));
        work(*window);
        if (window->isVisible()) {
            ADD_FAILURE() << "the window is still open";
            window->hide();
        }
    });
    watch.start(1);
    deed();
    EXPECT_TRUE(opened) << "the window did not open";
    QCoreApplication::processEvents();
}
