#include "platform/controls/selector.h"

#include <QAbstractListModel>
#include <QListView>
#include <QSignalBlocker>
#include <memory>
#include <utility>

#include "platform/controls/cut_texts.h"
#include "platform/controls/focus_style.h"
#include "platform/controls/wheel.h"

namespace platform {
namespace {

// A popup in the style of a menu measures every entry before it opens. With the clients of twenty years in it
// that is a wait at each click, so the list always drops down as a list of a few lines that scrolls.
class ListPopup : public FocusStyle {
 public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        if (hint == SH_ComboBox_Popup) {
            return 0;
        }
        return FocusStyle::styleHint(hint, option, widget, data);
    }
};

NameList::Name nameOf(const QByteArray& utf8, qint32 number) {
    return {{utf8.constData(), static_cast<std::size_t>(utf8.size())}, number};
}

}  // namespace

class Selector::Model : public QAbstractListModel {
 public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : names->size();
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || !has(index.row())) {
            return {};
        }
        if (role == Qt::DisplayRole || role == Qt::EditRole) {
            return names->text(index.row());
        }
        return role == Qt::UserRole ? QVariant(names->at(index.row()).number) : QVariant();
    }

    bool has(int index) const { return index >= 0 && index < names->size(); }

    void setAll(std::shared_ptr<NameList> sorted) {
        beginResetModel();
        names = std::move(sorted);
        endResetModel();
    }
    int insert(NameList::Name name) {
        const int index = names->placeFor(name.text);
        beginInsertRows({}, index, index);
        names->insert(index, name);
        endInsertRows();
        return index;
    }
    void remove(int index) {
        beginRemoveRows({}, index, index);
        names->remove(index);
        endRemoveRows();
    }
    void replace(int index, const QString& text) {
        names->replace(index, text.toStdString());
        emit dataChanged(this->index(index), this->index(index));
    }

    std::shared_ptr<NameList> names = std::make_shared<NameList>();
};

Selector::Selector(QWidget* parent) : QComboBox(parent), model_(new Model(this)) {
    auto* style = new ListPopup;
    style->setParent(this);
    setStyle(style);
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    tellCutTexts(*list);
    setModel(model_);
    setView(list);
    setEditable(false);
    setMinimumContentsLength(12);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMaxVisibleItems(20);
    // Rolling past a selector on the way down a pane must not put another client on the screen.
    wheelNeedsFocus(this);
}

void Selector::clearEntries() {
    setEntries(NameList());
}

void Selector::setEntries(const QList<Entry>& entries) {
    NameList names;
    for (const Entry& entry : entries) {
        names.add(nameOf(entry.text.toUtf8(), entry.data));
    }
    names.sort();
    setEntries(std::move(names));
}

void Selector::setEntries(NameList sorted) {
    putBack({std::make_shared<NameList>(std::move(sorted)), -1});
}

Selector::Kept Selector::keep() const {
    return {model_->names, currentIndex()};
}

void Selector::putBack(const Kept& kept) {
    const QSignalBlocker quiet(this);
    model_->setAll(kept.names);
    setCurrentIndex(kept.index);
}

int Selector::addEntry(const QString& text, qint32 number) {
    const bool nothingSelected = currentIndex() < 0;
    const QSignalBlocker quiet(this);
    const int index = model_->insert(nameOf(text.toUtf8(), number));
    if (nothingSelected) {
        setCurrentIndex(-1);
    }
    return index;
}

void Selector::removeEntry(int index) {
    if (!model_->has(index)) {
        return;
    }
    const int selected = currentIndex();
    const QSignalBlocker quiet(this);
    model_->remove(index);
    if (index == selected || selected < 0) {
        setCurrentIndex(-1);
    } else {
        setCurrentIndex(selected > index ? selected - 1 : selected);
    }
    update();
}

void Selector::replaceText(int index, const QString& text) {
    if (!model_->has(index)) {
        return;
    }
    const QSignalBlocker quiet(this);
    model_->replace(index, text);
    update();
}

int Selector::entryCount() const {
    return model_->rowCount();
}

QString Selector::entryText(int index) const {
    return model_->has(index) ? model_->names->text(index) : QString();
}

qint32 Selector::entryData(int index) const {
    return model_->has(index) ? model_->names->at(index).number : -1;
}

int Selector::findPrefix(const QString& text) const {
    return model_->names->findPrefix(text);
}

}  // namespace platform
