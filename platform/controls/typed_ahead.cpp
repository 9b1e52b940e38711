#include "platform/controls/typed_ahead.h"

#include <QCoreApplication>
#include <utility>

namespace platform {

bool TypedAhead::keep(QObject* receiver, const QEvent& event) {
    const bool isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
    if (isKey) {
        keys_.push_back({receiver, std::unique_ptr<QEvent>(event.clone())});
    }
    return isKey;
}

void TypedAhead::giveBack() {
    for (Kept& key : std::exchange(keys_, {})) {
        if (key.receiver) {
            QCoreApplication::postEvent(key.receiver, key.event.release());
        }
    }
}

}  // namespace platform
