#include "platform/controls/wheel.h"

#include <QEvent>
#include <QWidget>

namespace platform {
namespace {

class WheelNeedsFocus : public QObject {
 public:
    using QObject::QObject;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) {
            return QObject::eventFilter(watched, event);
        }
        event->ignore();
        return true;
    }
};

}  // namespace

// Somebody who rolls down a pane must not put another date into a record that he passes on the way. The
// toolkit gives such fields the focus for the rolling alone, before they are asked anything.
void wheelNeedsFocus(QWidget* field) {
    field->setFocusPolicy(Qt::StrongFocus);
    field->installEventFilter(new WheelNeedsFocus(field));
}

}  // namespace platform
