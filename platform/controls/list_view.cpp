#include "platform/controls/list_view.h"

#include <algorithm>
#include <utility>

#include "platform/controls/column_menu.h"
#include "platform/controls/list_index.h"
#include "platform/controls/list_view_model.h"
#include "platform/system/trap.h"

namespace platform {
namespace {

// So many rows are made before a person's next letter.
constexpr int kRowsToSearch = 10'000;

}  // namespace

ListView::ListView(QWidget* parent)
    : GridView(parent), model_(std::make_unique<ListViewModel>()), columns_(*model_, *header()) {
    setModel(model_.get());
    offerColumns(columns_, *header());
    connect(this, &GridView::rowClicked, this, [this](int index) { tell(&ListView::itemClicked, index); });
    connect(this, &GridView::rowActivated, this,
            [this](int index) { tell(&ListView::itemActivated, index); });
}

ListView::~ListView() {
    setModel(nullptr);
}

void ListView::setSmallIcons(const QHash<QString, QIcon>& images) {
    model_->smallIcons = images;
    viewport()->update();
}

// Rows
// ------------------------------------------------------------------------------------------------------------

int ListView::count() const {
    return model_->rowCount();
}

int ListView::madeCount() const {
    return model_->rows().madeCount();
}

void ListView::addItem(ListItem item) {
    model_->add(std::move(item));
}

void ListView::clearItems() {
    const auto quiet = quietly();
    model_->clear();
}

void ListView::setLazyItems(int count, std::function<ListItem(int)> make,
                            std::function<int(const QString&)> find) {
    const auto quiet = quietly();
    model_->setLazy(count, std::move(make), std::move(find));
}

bool ListView::hasItem(const QString& key) const {
    return indexOf(key) > 0;
}

int ListView::indexOf(const QString& key) const {
    return model_->rows().rowOf(key) + 1;
}

const ListItem& ListView::item(int index) const {
    return model_->rows().item(checkedIndex(index, count()));
}

const ListItem& ListView::item(const QString& key) const {
    const int index = indexOf(key);
    if (index == 0) {
        throw RunError(35601, QStringLiteral("Element not found: %1").arg(key));
    }
    return model_->rows().item(index - 1);
}

void ListView::changeItem(const QString& key, const std::function<void(ListItem&)>& change) {
    item(key);
    model_->change(indexOf(key) - 1, change);
}

void ListView::removeItem(int index) {
    const int row = checkedIndex(index, count());
    const auto quiet = quietly();
    const bool wasSelected = selectedIndex() == index;
    model_->remove(row);
    if (wasSelected && count() > 0) {
        select(std::min(index, count()));
    }
}

// Selection
// -------------------------------------------------------------------------------------------------------

const ListItem* ListView::selectedItem() const {
    const int index = selectedIndex();
    return index == 0 ? nullptr : &item(index);
}

void ListView::select(const QString& key) {
    item(key);
    select(indexOf(key));
}

void ListView::keyboardSearch(const QString& text) {
    if (model_->rows().allMade() || count() <= kRowsToSearch) {
        GridView::keyboardSearch(text);
    }
}

// A row whose record cannot be read any more says nothing; a window must not fall over it.
void ListView::tell(void (ListView::*signal)(const QString&), int index) {
    QString key;
    Trap reading;
    reading([&] { key = item(index).Key; });
    if (!reading.failed()) {
        emit(this->*signal)(key);
    }
}

}  // namespace platform
