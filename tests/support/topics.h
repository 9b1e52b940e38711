#pragma once

#include <QApplication>
#include <QList>
#include <QTest>
#include <QWidget>

#include "common/help.h"

// The topics that the help is asked for while F1 is pressed in the window, wherever its focus is.
inline QList<int> topicsOfF1(QWidget& window) {
    static QList<int> topics;
    topics.clear();
    setHelpViewer([](const QString&, HelpCommand command, int context) {
        if (command == HELP_CONTEXT) {
            topics.append(context);
        }
        return true;
    });
    QWidget* focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
    QTest::keyClick(focus, Qt::Key_F1);
    setHelpViewer(nullptr);
    return topics;
}
