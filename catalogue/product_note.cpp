#include "catalogue/product_note.h"

#include <QPlainTextEdit>
#include <QTextCursor>

#include "catalogue/product_fields.h"

namespace {

// As in a field of one line: the cursor stands behind what was put in last.
void cutToLimit(QPlainTextEdit& note) {
    const auto length = static_cast<int>(note.toPlainText().size());
    if (length <= kProductTextLimit) {
        return;
    }
    const int tooMany = length - kProductTextLimit;
    const int end = note.textCursor().position() >= tooMany ? note.textCursor().position() : length;
    QTextCursor cut(note.document());
    cut.joinPreviousEditBlock();
    cut.setPosition(end - tooMany);
    cut.setPosition(end, QTextCursor::KeepAnchor);
    cut.removeSelectedText();
    cut.endEditBlock();
}

}  // namespace

QPlainTextEdit* addProductNote(QWidget* window) {
    auto* note = new QPlainTextEdit(window);
    note->setTabChangesFocus(true);
    note->setMinimumHeight(window->fontMetrics().height() * 5);
    QObject::connect(note, &QPlainTextEdit::textChanged, note, [note] { cutToLimit(*note); });
    return note;
}
