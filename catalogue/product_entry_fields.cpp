#include "catalogue/product_entry_fields.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include "catalogue/product_note.h"
#include "common/window_helpers.h"
#include "platform/controls/keys.h"
#include "platform/system/numbers.h"

namespace {

// The order in which an entry is made.
constexpr ProductField kTabOrder[] = {ProductField::Name,  ProductField::Description, ProductField::Price,
                                      ProductField::Stock, ProductField::Unit,        ProductField::Note};

void chainTabs(const ProductEntryFields& fields) {
    for (std::size_t i = 1; i < std::size(kTabOrder); ++i) {
        QWidget::setTabOrder(fields.widget(kTabOrder[i - 1]), fields.widget(kTabOrder[i]));
    }
}

// A menu of the field, or another program in front: nobody has come or left.
bool isPassing(Qt::FocusReason reason) {
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
}

}  // namespace

// Building --------------------------------------------------------------------------------------------------

ProductEntryFields::ProductEntryFields(QWidget* window, QGridLayout* grid)
    : window_(window), captions_(window), figures_(window), units_(window) {
    for (const ProductFieldRow& row : productFields()) {
        place(row, *grid);
    }
    chainTabs(*this);
}

void ProductEntryFields::place(const ProductFieldRow& row, QGridLayout& grid) {
    QWidget* field = make(row.name);
    widgets_[static_cast<std::size_t>(row.name)] = field;
    field->installEventFilter(this);
    QLabel* label = captions_.add(row.name, field);
    if (row.columns == 0) {
        grid.addWidget(label, row.row, 0, 1, kProductFieldColumns);
        grid.addWidget(field, row.row + 1, 0, 1, kProductFieldColumns);
    } else {
        grid.addWidget(label, row.row, row.column);
        grid.addWidget(field, row.row, row.column + 1, 1, row.columns);
    }
}

QWidget* ProductEntryFields::make(ProductField field) {
    if (field == ProductField::Unit) {
        units_.box()->setObjectName(QStringLiteral("Combo1"));
        connect(units_.box(), &QComboBox::currentIndexChanged, this, [this, field] { emit changed(field); });
        return units_.box();
    }
    QWidget* made = nullptr;
    if (field == ProductField::Note) {
        note_ = addProductNote(window_);
        made = note_;
        connect(note_, &QPlainTextEdit::textChanged, this, [this, field] { emit changed(field); });
    } else {
        made = makeLine(field);
    }
    made->setObjectName(arrayName("Text1", static_cast<int>(field)));
    return made;
}

QLineEdit* ProductEntryFields::makeLine(ProductField field) {
    auto* line = new QLineEdit(window_);
    if (isFigure(field)) {
        line->setAlignment(Qt::AlignRight);
    } else {
        line->setMaxLength(kProductTextLimit);
    }
    connect(line, &QLineEdit::textChanged, this, [this, field] { emit changed(field); });
    return line;
}

// What stands there -----------------------------------------------------------------------------------------

QString ProductEntryFields::text(ProductField field) const {
    if (field == ProductField::Unit) {
        return units_.box()->currentText();
    }
    return field == ProductField::Note ? note_->toPlainText()
                                       : static_cast<const QLineEdit*>(widget(field))->text();
}

void ProductEntryFields::setText(ProductField field, const QString& text) {
    if (field == ProductField::Unit) {
        units_.choose(text);
        return;
    }
    if (field == ProductField::Note) {
        note_->setPlainText(text);
        return;
    }
    auto* line = static_cast<QLineEdit*>(widget(field));
    line->setText(text);
    line->setCursorPosition(0);
}

QLineEdit* ProductEntryFields::figure(ProductField field) const {
    return isFigure(field) ? static_cast<QLineEdit*>(widget(field)) : nullptr;
}

bool ProductEntryFields::hasRefused() {
    for (const ProductFieldRow& row : productFields()) {
        QLineEdit* line = figure(row.name);
        if (line != nullptr && figures_.isRefused(*line, row.refusal)) {
            line->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return false;
}

bool ProductEntryFields::isHeld() const {
    for (const ProductFieldRow& row : productFields()) {
        const QLineEdit* line = figure(row.name);
        if (line != nullptr && line == window_->focusWidget()) {
            return !platform::readSingle(line->text());
        }
    }
    return false;
}

// Keys and focus --------------------------------------------------------------------------------------------

bool ProductEntryFields::eventFilter(QObject* watched, QEvent* event) {
    for (const ProductFieldRow& row : productFields()) {
        if (watched != widget(row.name)) {
            continue;
        }
        if (event->type() == QEvent::KeyPress && runKey(row.name, *static_cast<QKeyEvent*>(event))) {
            return true;
        }
        if (event->type() == QEvent::FocusIn) {
            enter(row.name, static_cast<QFocusEvent*>(event)->reason());
        }
        if (event->type() == QEvent::FocusOut) {
            leave(row.name, static_cast<QFocusEvent*>(event)->reason());
        }
    }
    return QObject::eventFilter(watched, event);
}

bool ProductEntryFields::runKey(ProductField field, const QKeyEvent& key) {
    const bool isAnyEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isAnyEnter && field == ProductField::Note && key.modifiers().testFlag(Qt::ControlModifier)) {
        note_->insertPlainText(QStringLiteral("\n"));
        return true;
    }
    if (isAnyEnter) {
        platform::pressTab(widget(field));
        return true;
    }
    QLineEdit* line = figure(field);
    return line != nullptr && platform::filterNumberKey(*line, key, {.letterNCounts = true});
}

void ProductEntryFields::enter(ProductField field, Qt::FocusReason reason) {
    captions_.setFocused(field, true);
    if (field == ProductField::Unit) {
        return;
    }
    emit entered(field);
    if (isPassing(reason)) {
        return;
    }
    const auto selectAll = [entry = widget(field)] { QMetaObject::invokeMethod(entry, "selectAll"); };
    // A click sets the cursor after it has brought the focus, so the selecting waits until it is done.
    if (reason == Qt::MouseFocusReason) {
        QTimer::singleShot(0, widget(field), selectAll);
    } else {
        selectAll();
    }
}

void ProductEntryFields::leave(ProductField field, Qt::FocusReason reason) {
    if (isPassing(reason)) {
        return;
    }
    captions_.setFocused(field, false);
    QLineEdit* line = figure(field);
    if (window_->isVisible() && line != nullptr && figures_.isRefused(*line, rowOf(field).refusal)) {
        line->setFocus(Qt::OtherFocusReason);
    }
}
