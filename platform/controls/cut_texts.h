#pragma once

class QAbstractItemView;

namespace platform {

// A text of the list that is cut, by its column or by the edge of the list, is told whole by a tip when the
// pointer rests on it. Tips that the list has of its own stay.
void tellCutTexts(QAbstractItemView& list);

}  // namespace platform
