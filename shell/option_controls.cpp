#include "shell/option_controls.h"

#include <QPushButton>

#include "common/modMain.h"
#include "common/window_helpers.h"

namespace options {

QString Caption::shown() const {
    return text ? QString::fromLatin1(text) : GetResString(id);
}

QPushButton* makeButton(int index, const Caption& caption, QWidget* window) {
    auto* button = new QPushButton(caption.shown(), window);
    button->setObjectName(arrayName("Command1", index));
    button->setAccessibleName(spokenCaption(button->text()));
    const QFontMetrics letters = window->fontMetrics();
    button->setMinimumWidth(letters.horizontalAdvance(button->text()) + 2 * letters.height());
    return button;
}

}  // namespace options
