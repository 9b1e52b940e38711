#pragma once

class QKeyEvent;
class QKeySequence;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QWidget;

namespace platform {

// What a field for a number takes from the keyboard: digits and the user's decimal separator, once that is
// pressed on the main keys, on the numeric pad or, under a locale with a comma, as a point. True where the
// key has been dealt with (dropped, or turned into the separator); commands such as Ctrl+V and the editing
// keys pass.
struct NumberKeys {
    bool decimals = true;        // false: digits only
    bool letterNCounts = false;  // under a locale whose separator is no point, "n" writes the separator
};
bool filterNumberKey(QLineEdit& field, const QKeyEvent& key, NumberKeys rule = {});

// Enter or Return, on the main keys or the pad, with no modifier but the pad's.
bool isEnter(const QKeyEvent& key);
// The Tab key, as if the person had pressed it: the focus goes on to the next control of the window.
void pressTab(QWidget* focus);

// From now on Enter presses the button of this window that has the focus, whatever Enter does elsewhere in
// it; where the window has a default button, the one with the focus is marked in its place. Command and tool
// buttons, no check boxes. Call it once, when all the buttons and the default among them are there.
void enterPressesButtons(QWidget* window);

// From now on the key presses the button of its window, as a person would who goes there first: what is just
// being typed elsewhere counts, and whoever is held in a field by what stands there presses nothing. A button
// that is off or hidden stays as it is.
void keyPressesButton(const QKeySequence& key, QPushButton* button);
// From now on Ctrl+Page Up and Ctrl+Page Down turn the pages. At the first and the last they do nothing.
void keysTurnPages(QTabWidget* pages);

}  // namespace platform
