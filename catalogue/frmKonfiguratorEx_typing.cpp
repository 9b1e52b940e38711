// Typing ahead in the search boxes, and the keys of the window.

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTextEdit>

#include "catalogue/frmKonfiguratorEx.h"
#include "platform/controls/keys.h"

int frmKonfiguratorEx::searchBoxOf(const QObject* widget) const {
    for (int i = 0; widget && i < kListPanes; ++i) {
        if (widget == Text1[static_cast<size_t>(i)])
            return i;
    }
    return -1;
}

void frmKonfiguratorEx::setSearchText(int index, const QString& text) {
    const QScopedValueRollback quiet(ignoreChange_, true);
    Text1[static_cast<size_t>(index)]->setText(text);
}

// Whichever row is clicked next, the same one too, its products have to be read again.
void frmKonfiguratorEx::leaveSelection(int index) {
    const auto pane = static_cast<size_t>(index);
    List1[pane]->setCurSel(-1);
    lastSelection_[pane].reset();
    clearProductList();
}

// What is typed is completed from the list; the products wait until the person has settled on a row.
void frmKonfiguratorEx::searchTextChanged(int index) {
    if (ignoreChange_) {
        ignoreChange_ = false;
        return;
    }
    const auto pane = static_cast<size_t>(index);
    platform::ListBox* list = List1[pane];
    QLineEdit* field = Text1[pane];
    if (list->curSel() >= 0 && !PrikaziSveProizvodjace)
        leaveSelection(index);
    ToolbarUpdate();
    const QString typed = field->text();
    // An emptied box stays empty, otherwise nobody could ever empty one.
    const int row = typed.isEmpty() ? -1 : list->findString(typed);
    if (row < 0)
        return;
    lastSelection_[pane].reset();
    const QString whole = list->text(row);
    if (whole.size() == typed.size()) {
        const auto select = [this, list, row] {
            list->setCurSel(row);
            ToolbarUpdate();
        };
        QMetaObject::invokeMethod(list, select, Qt::QueuedConnection);
        return;
    }
    const QString rest = whole.mid(typed.size());
    setSearchText(index, typed + rest);
    field->setSelection(static_cast<int>(whole.size()), -static_cast<int>(rest.size()));
    list->setTopIndex(row);
}

bool frmKonfiguratorEx::searchKey(int index, const QKeyEvent& key) {
    const auto pane = static_cast<size_t>(index);
    QLineEdit* field = Text1[pane];
    ignoreChange_ = false;
    switch (key.key()) {
        case Qt::Key_Backspace:
            // A key that finds nothing to take away changes nothing that would have to be passed over.
            ignoreChange_ = field->hasSelectedText() || field->cursorPosition() > 0;
            leaveSelection(index);
            ToolbarUpdate();
            return false;
        case Qt::Key_Down: {
            const int row = List1[pane]->findString(field->text());
            List1[pane]->setCurSel(row);
            focusPane(index);
            if (row >= 0 && !(index == kManufacturers && PrikaziSveProizvodjace))
                clickList(index);
            return true;
        }
        case Qt::Key_Escape:
            if (field->text().isEmpty())
                return false;
            field->clear();
            return true;
        default:
            return false;
    }
}

bool frmKonfiguratorEx::windowKey(const QKeyEvent& key) {
    const int pane = focusedListPane();
    const bool inList = pane >= 0;
    const bool inProducts = focusWidget() == ListView1;
    const bool shift = key.modifiers().testFlag(Qt::ShiftModifier);
    if (platform::isEnter(key)) {
        if (!key.isAutoRepeat())  // a key held down too long must not draw twice
            TrebovanjeExecute();
        return true;
    }
    switch (key.key()) {
        case Qt::Key_Delete:
            if (inList)
                shift ? DeleteAllGrpMft() : DeleteGrpMft();
            else if (inProducts)
                shift ? DeleteAllProduct() : DeleteProduct();
            return inList || inProducts;
        case Qt::Key_F5:
        case Qt::Key_F8: {
            const bool unsort = key.key() == Qt::Key_F8;
            if (inList)
                SortList(unsort ? kNoSort : kRefreshOnly, false);
            else if (inProducts)
                RefreshProduct(unsort);
            return inList || inProducts;
        }
        case Qt::Key_N:
            if (key.modifiers() != Qt::ControlModifier)
                return false;
            inList ? AddNewGrpMft() : AddNewProduct();
            return true;
        case Qt::Key_Space:
            for (int i = 0; i < 2; ++i) {
                if (focusWidget() == Label1[static_cast<size_t>(i)]) {
                    toggleSwitch(i);
                    return true;
                }
            }
            return false;
        case Qt::Key_Escape:
            reject();
            return true;
        default:
            return false;
    }
}
