#include "platform/controls/view_columns.h"

#include <QHeaderView>

#include "platform/controls/list_index.h"
#include "platform/controls/list_view_model.h"

namespace platform {

int ViewColumns::checked(int column) const {
    return checkedIndex(column, count());
}

void ViewColumns::add(const QString& key, const QString& text, HeaderAlignment alignment) {
    Qt::Alignment side = Qt::AlignLeft;
    if (alignment != HeaderAlignment::Left) {
        side = alignment == HeaderAlignment::Right ? Qt::AlignRight : Qt::AlignHCenter;
    }
    model_.addColumn({key, text, side, {}, {}});
}

int ViewColumns::count() const {
    return static_cast<int>(model_.columns.size());
}

QString ViewColumns::key(int column) const {
    return model_.columns.at(checked(column)).key;
}

int ViewColumns::indexOf(const QString& key) const {
    for (int i = 0; i < model_.columns.size(); ++i) {
        if (model_.columns.at(i).key.compare(key, Qt::CaseInsensitive) == 0) {
            return i + 1;
        }
    }
    return 0;
}

QString ViewColumns::text(int column) const {
    return model_.columns.at(checked(column)).text;
}

void ViewColumns::setText(int column, const QString& text) {
    model_.columns[checked(column)].text = text;
    model_.headerChanged();
}

int ViewColumns::width(int column) const {
    const int section = checked(column);
    return model_.columns.at(section).width.twips(header_.sectionSize(section));
}

void ViewColumns::setWidth(int column, int twips) {
    const int section = checked(column);
    header_.resizeSection(section, model_.columns[section].width.show(twips));
}

int ViewColumns::position(int column) const {
    return header_.visualIndex(checked(column)) + 1;
}

void ViewColumns::setPosition(int column, int position) {
    header_.moveSection(header_.visualIndex(checked(column)), checked(position));
}

void ViewColumns::setPositions(const QList<int>& positions) {
    QList<int> columnAt(count(), 0);  // the column for each place; 0: still free
    QList<int> left;
    for (int column = 1; column <= count(); ++column) {
        const int place = positions.value(column - 1) - 1;
        if (place >= 0 && place < count() && columnAt.at(place) == 0) {
            columnAt[place] = column;
        } else {
            left.append(column);
        }
    }
    for (int place = 0; place < columnAt.size(); ++place) {
        const int column = columnAt.at(place) != 0 ? columnAt.at(place) : left.takeFirst();
        setPosition(column, place + 1);
    }
}

void ViewColumns::setIcon(int column, const QString& imageKey) {
    model_.columns[checked(column)].icon = imageKey;
    model_.headerChanged();
}

QString ViewColumns::icon(int column) const {
    return model_.columns.at(checked(column)).icon;
}

void ViewColumns::setImages(const QHash<QString, QIcon>& images) {
    model_.columnImages = images;
    for (ListViewModel::Column& column : model_.columns) {
        if (images.isEmpty()) {
            column.icon.clear();
        }
    }
    model_.headerChanged();
}

}  // namespace platform
