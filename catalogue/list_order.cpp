#include "catalogue/list_order.h"

#include "catalogue/catalogue_pane.h"
#include "common/window_helpers.h"
#include "platform/controls/list_box.h"

using platform::SortTag;

void ListOrder::sortBy(SortMode mode, bool force) {
    const QString remembered = list_.selectedText();
    SortTag sort = readSortTag(pane_.sortTag, list_.window());
    if (mode == SortMode::NoSort) {
        list_.setToolTip(QString());
        sort = {false, QString(), QStringLiteral("ASC")};
    } else if (mode == SortMode::Ascending || mode == SortMode::Descending) {
        if (!turn(sort, mode == SortMode::Ascending, force)) {
            return;
        }
    }
    pane_.sortTag = writeSortTag({sort.sorted, QLatin1String(field_), sort.order}, list_.window());
    pane_.update(remembered, mode == SortMode::NoSort);
    pane_.takeFocus();
}

bool ListOrder::turn(SortTag& sort, bool isUp, bool force) {
    const QString order = isUp ? QStringLiteral("ASC") : QStringLiteral("DESC");
    const QString way = isUp ? QStringLiteral("rastucim") : QStringLiteral("opadajucim");
    if (sort.sorted && sort.order == order && !force) {
        box(list_.window(), QStringLiteral("Lista je vec sortirana po %1 nazivima.").arg(way),
            platform::BoxIcon::Information);
        return false;
    }
    sort.sorted = true;
    sort.order = order;
    list_.setToolTip(QStringLiteral("Lista je sortirana po %1 nazivima.").arg(way));
    return true;
}

void ListOrder::tell() const {
    const SortTag order = pane_.sort();
    if (order.sorted) {
        list_.setToolTip(order.order == QLatin1String("ASC")
                             ? QStringLiteral("Lista je sortirana po rastucim nazivima.")
                             : QStringLiteral("Lista je sortirana po opdajucim nazivima."));
    }
}
