#include "catalogue/type_ahead.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include "catalogue/catalogue_switch.h"
#include "platform/controls/list_box.h"
#include "platform/controls/shades.h"

TypeAhead::TypeAhead(QLineEdit* box, platform::ListBox* list, const CatalogueSwitch& allManufacturers)
    : QObject(box), box_(box), list_(list), allManufacturers_(allManufacturers) {
    connect(box_, &QLineEdit::textChanged, this, &TypeAhead::textChanged);
}

void TypeAhead::setText(const QString& text) {
    const QScopedValueRollback quiet(ignoreChange_, true);
    box_->setText(text);
}

// The products wait until the person has settled on a row.
void TypeAhead::textChanged() {
    const QString typed = box_->text();
    // An emptied box stays empty, otherwise nobody could ever empty one.
    const int row = typed.isEmpty() ? -1 : list_->findString(typed);
    const bool misses = row < 0 && !typed.isEmpty();
    platform::showNothingFound(*box_, misses ? QStringLiteral("Nista ne pocinje ovako") : QString());
    if (ignoreChange_) {
        ignoreChange_ = false;
        return;
    }
    if (list_->curSel() >= 0 && !allManufacturers_.isOn()) {
        emit left();
    }
    emit changed();
    if (row >= 0) {
        emit matched();
        complete(row, typed);
    }
}

void TypeAhead::complete(int row, const QString& typed) {
    const QString whole = list_->text(row);
    if (whole.size() == typed.size()) {
        const auto select = [this, row] {
            list_->setCurSel(row);
            emit changed();
        };
        QMetaObject::invokeMethod(list_, select, Qt::QueuedConnection);
        return;
    }
    const QString rest = whole.mid(typed.size());
    setText(typed + rest);
    box_->setSelection(static_cast<int>(whole.size()), -static_cast<int>(rest.size()));
    list_->setTopIndex(row);
}

bool TypeAhead::key(const QKeyEvent& key) {
    ignoreChange_ = false;
    switch (key.key()) {
        case Qt::Key_Backspace:
            // A key that finds nothing to take away changes nothing that would have to be passed over.
            ignoreChange_ = box_->hasSelectedText() || box_->cursorPosition() > 0;
            emit left();
            emit changed();
            return false;
        case Qt::Key_Down: {
            const int row = list_->findString(box_->text());
            list_->setCurSel(row);
            emit entered(row);
            return true;
        }
        case Qt::Key_Escape:
            if (box_->text().isEmpty()) {
                return false;
            }
            box_->clear();
            return true;
        default:
            return false;
    }
}
