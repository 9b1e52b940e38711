#pragma once

#include <QString>

#include "platform/controls/boxes.h"

class QWidget;
namespace dao {
class Field;
class Value;
}  // namespace dao

// What every window does in the same words.

// "Text1(7)": the name of one control of an array.
QString arrayName(const char* array, int index);
// A caption as a screen reader says it: without the marks of its letter and of the field behind it.
QString spokenCaption(QString caption);
// A box of this program over `owner`.
platform::BoxAnswer box(QWidget* owner, const QString& text, platform::BoxIcon icon,
                        platform::BoxButtons buttons = platform::BoxButtons::Ok,
                        platform::BoxAnswer preselected = platform::BoxAnswer::Yes);
// The number that a person sees in `text`; 0 where it is none.
float numberOf(const QString& text);
// The same where none is a fault: throws platform::RunError 13.
float singleOf(const QString& text);
// Of a text; the empty text where the value is Null or no text.
QString textOf(const dao::Value& value);
QString textOf(const dao::Field& field);
// Before a record is looked for: what other workstations have written counts.
void refreshCache();
