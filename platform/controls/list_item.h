#pragma once

#include <QList>
#include <QString>
#include <utility>

namespace platform {

// One row of a ListView. Key is unique and not empty. Sub-items count from 1, as the columns behind the
// first.
struct ListItem {
    QString Key;
    QString Text;
    QString SmallIcon;  // key into the view's small icons; empty: none
    QList<QString> subItems;
    QString Tag;
    const QString& SubItems(int i) const { return subItems.at(i - 1); }
    void setSubItems(int i, QString text) {
        while (subItems.size() < i) {
            subItems.append(QString());
        }
        subItems[i - 1] = std::move(text);
    }
};

}  // namespace platform
