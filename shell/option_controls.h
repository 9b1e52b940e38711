#pragma once

#include <QString>

class QPushButton;
class QWidget;

// What the pages of the options have in common: where their captions come from.
namespace options {

// A caption out of the string table, or one of the window's own.
struct Caption {
    int id = 0;  // looked at where there is no text
    const char* text = nullptr;
    QString shown() const;
};

// Command1(index), wide enough for its caption and some air.
QPushButton* makeButton(int index, const Caption& caption, QWidget* window);

}  // namespace options
