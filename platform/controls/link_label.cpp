#include "platform/controls/link_label.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/controls/dressing.h"
#include "platform/controls/shades.h"

namespace platform {

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    setAccessibleName(text);
}

void LinkLabel::setHot(bool hot) {
    if (hot == hot_) {
        return;
    }
    hot_ = hot;
    QFont shown = font();
    shown.setUnderline(hot);
    setFont(shown);
    keepDressed(*this, [this] { dress(); });
}

void LinkLabel::dress() {
    QPalette colours;
    if (hot_) {
        colours.setColor(QPalette::WindowText, readable(QColor(0, 0, 255), QApplication::palette()));
    }
    setPalette(colours);
}

void LinkLabel::enterEvent(QEnterEvent* event) {
    setHot(isEnabled());
    QLabel::enterEvent(event);
}

void LinkLabel::leaveEvent(QEvent* event) {
    setHot(hasFocus());
    QLabel::leaveEvent(event);
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
    setHot(true);
    QLabel::focusInEvent(event);
}

void LinkLabel::focusOutEvent(QFocusEvent* event) {
    setHot(underMouse() && isEnabled());
    QLabel::focusOutEvent(event);
}

void LinkLabel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        setHot(false);
        if (isEnabled()) {
            setCursor(Qt::PointingHandCursor);
        } else {
            unsetCursor();
        }
    }
    QLabel::changeEvent(event);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) {
        return QLabel::mouseReleaseEvent(event);
    }
    event->accept();
    emit clicked();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            event->accept();
            emit clicked();
            return;
        default:
            QLabel::keyPressEvent(event);
    }
}

}  // namespace platform
