#pragma once

#include <QEvent>

namespace platform {

// Whether the event is something that a person does to a window: keys, clicks, the wheel, touches, shortcuts,
// the context menu. Moves of the pointer, drags and closing are not among them: who holds a window still
// decides about these by itself.
bool isPersonsDoing(QEvent::Type type);

}  // namespace platform
