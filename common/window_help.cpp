#include "common/window_help.h"

#include <QShortcut>
#include <QWidget>

#include "common/help.h"

void explainByF1(QWidget* window, WindowTopic topic) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::Key_F1), window);
    QObject::connect(shortcut, &QShortcut::activated, window, [topic] { showHelp(topic); });
}
