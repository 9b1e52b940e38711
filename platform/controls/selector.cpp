#include "platform/controls/selector.h"

#include <QAbstractListModel>
#include <QListView>
#include <QSignalBlocker>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/cut_texts.h"
#include "platform/controls/focus_style.h"
#include "platform/controls/wheel.h"
#include "platform/text/order.h"

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

std::string keyOf(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return alphabet::orderKey({bytes.constData(), static_cast<size_t>(bytes.size())});
}

// Eight bytes of a key in one number that orders as they do: most names differ in their first sixteen, and
// tens of thousands of them are put in order while somebody waits.
quint64 bytesOf(const std::string& key, size_t from) {
    quint64 bytes = 0;
    for (size_t i = from; i < from + 8; ++i) {
        bytes = (bytes << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    }
    return bytes;
}

}  // namespace

class Selector::Model : public QAbstractListModel {
 public:
    using QAbstractListModel::QAbstractListModel;

    // The key is that of the text an entry came in with. A text replaced later leaves it alone, and with it
    // the entry's place and the order of all others.
    struct Row {
        QString text;
        std::string key;
        qint32 data;
    };

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || static_cast<size_t>(index.row()) >= rows.size()) {
            return {};
        }
        const Row& row = rows[static_cast<size_t>(index.row())];
        if (role == Qt::DisplayRole || role == Qt::EditRole) {
            return row.text;
        }
        return role == Qt::UserRole ? QVariant(row.data) : QVariant();
    }

    bool has(int index) const { return index >= 0 && index < rowCount(); }

    void setAll(std::vector<Row> sorted) {
        beginResetModel();
        rows = std::move(sorted);
        endResetModel();
    }
    int insert(Row row) {
        const auto after = std::upper_bound(rows.begin(), rows.end(), row, before);
        const int index = static_cast<int>(after - rows.begin());
        beginInsertRows({}, index, index);
        rows.insert(after, std::move(row));
        endInsertRows();
        return index;
    }
    void remove(int index) {
        beginRemoveRows({}, index, index);
        rows.erase(rows.begin() + index);
        endRemoveRows();
    }
    void replace(int index, const QString& text) {
        rows[static_cast<size_t>(index)].text = text;
        emit dataChanged(this->index(index), this->index(index));
    }

    static bool before(const Row& a, const Row& b) { return a.key < b.key; }

    std::vector<Row> rows;
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
    setEntries({});
}

void Selector::setEntries(QList<Entry> entries) {
    struct Place {
        quint64 head, neck;
        std::string key;
        qsizetype entry;
    };
    std::vector<Place> order;
    order.reserve(static_cast<size_t>(entries.size()));
    for (qsizetype i = 0; i < entries.size(); ++i) {
        std::string key = keyOf(entries.at(i).text);
        const quint64 head = bytesOf(key, 0), neck = bytesOf(key, 8);
        order.push_back({head, neck, std::move(key), i});
    }
    std::sort(order.begin(), order.end(), [](const Place& a, const Place& b) {
        if (a.head != b.head) {
            return a.head < b.head;
        }
        if (a.neck != b.neck) {
            return a.neck < b.neck;
        }
        const int keys = a.key.compare(b.key);
        return keys != 0 ? keys < 0 : a.entry < b.entry;
    });
    std::vector<Model::Row> rows;
    rows.reserve(order.size());
    for (Place& place : order) {
        rows.push_back(
            {std::move(entries[place.entry].text), std::move(place.key), entries[place.entry].data});
    }
    const QSignalBlocker quiet(this);
    model_->setAll(std::move(rows));
    setCurrentIndex(-1);
}

int Selector::addEntry(const QString& text, qint32 number) {
    const bool nothingSelected = currentIndex() < 0;
    const QSignalBlocker quiet(this);
    const int index = model_->insert({text, keyOf(text), number});
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
    return model_->has(index) ? model_->rows[static_cast<size_t>(index)].text : QString();
}

qint32 Selector::entryData(int index) const {
    return model_->has(index) ? model_->rows[static_cast<size_t>(index)].data : -1;
}

int Selector::findPrefix(const QString& text) const {
    const auto begins = [&](const Model::Row& row) { return row.text.startsWith(text, Qt::CaseInsensitive); };
    const auto found = std::find_if(model_->rows.begin(), model_->rows.end(), begins);
    return found == model_->rows.end() ? -1 : static_cast<int>(found - model_->rows.begin());
}

}  // namespace platform
