#pragma once

#include <QApplication>
#include <QList>
#include <QTest>
#include <QWidget>

#include "common/help.h"

// The topics that the help is asked for, as long as this lives; one at a time.
class AskedTopics {
 public:
    AskedTopics() {
        asked().clear();
        setHelpViewer([](const QString&, HelpCommand command, int context) {
            if (command == HELP_CONTEXT) {
                asked().append(context);
            }
            return true;
        });
    }
    ~AskedTopics() { setHelpViewer(nullptr); }

    const QList<int>& all() const { return asked(); }
    void clear() { asked().clear(); }

 private:
    static QList<int>& asked() {  // the viewer is a function without a place of its own
        static QList<int> topics;
        return topics;
    }
};

// Those of F1 pressed in the window, wherever its focus is.
inline QList<int> topicsOfF1(QWidget& window) {
    const AskedTopics topics;
    QWidget* focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
    QTest::keyClick(focus, Qt::Key_F1);
    return topics.all();
}
