#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QLocale>
#include <functional>

#include "common/list_columns.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"

// The desktop's letters in another size, as long as it lives.
class Letters {
 public:
    Letters(const QString& family, int pixels) : usual_(QApplication::font()) {
        QFont font(family);
        font.setPixelSize(pixels);
        QApplication::setFont(font);
    }
    ~Letters() { QApplication::setFont(usual_); }

 private:
    QFont usual_;
};

// Header and cells of a list with these columns at their default widths, sorted by each of them in turn, at
// every size of letters and in every language of our shops: all of it can be read. `row`: one as people have
// it, made in the language of the moment.
inline void expectNothingCut(std::span<const ListColumn> columns,
                             const std::function<platform::ListItem()>& row) {
    const QLocale usual;
    for (const char* language : {"en_US", "en_GB", "de_DE", "sr_Latn_RS"}) {
        QLocale::setDefault(QLocale(QLatin1String(language)));
        for (const char* family : {"DejaVu Sans", "DejaVu Serif"}) {
            for (const int pixels : {11, 12, 13, 15, 16, 18, 24}) {
                const Letters letters(QLatin1String(family), pixels);
                platform::ListView list;
                platform::Trap step;
                addColumns(list, columns);
                placeColumns(list, defaultWidths(columns), defaultPositions(columns), step);
                list.columns().setImages({{"ASC", platform::icon("SortUp")}});
                list.addItem(row());
                QStyleOptionViewItem cell;
                cell.initFrom(&list);
                cell.widget = &list;
                for (int column = 1; column <= list.columns().count(); ++column) {
                    list.columns().setIcon(column, "ASC");
                    const int room = list.header()->sectionSize(column - 1);
                    const QModelIndex index = list.model()->index(0, column - 1);
                    ASSERT_LE(list.header()->sectionSizeHint(column - 1), room)
                        << language << " " << family << " " << pixels << " "
                        << list.columns().text(column).toStdString();
                    ASSERT_LE(list.itemDelegate()->sizeHint(cell, index).width(), room)
                        << language << " " << family << " " << pixels << " "
                        << index.data().toString().toStdString();
                }
            }
        }
    }
    QLocale::setDefault(usual);
}
