#pragma once

class QWidget;

namespace platform {

// The wheel turns the value of this field (date, number, selector) only while the field has the focus, and
// rolling over it does not give it the focus; until then the wheel goes to what lies around the field. For
// fields whose value the wheel changes: QComboBox, QAbstractSpinBox and what is made of them.
void wheelNeedsFocus(QWidget* field);

}  // namespace platform
