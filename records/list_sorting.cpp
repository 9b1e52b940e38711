#include "records/list_sorting.h"

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/list_view.h"
#include "platform/system/trap.h"
#include "records/list_order.h"
#include "records/main_view.h"
#include "records/service_columns.h"
#include "records/stage_reading.h"

using platform::BoxIcon;
using platform::ListItem;
using platform::ListView;
using platform::Trap;

namespace {

constexpr const char* kPictures[] = {"SortDown", "SortUp", "Dummy"};
const QString kAscending = QStringLiteral("ASC");
const QString kDescending = QStringLiteral("DESC");
const QString kUsualField = fieldOf(ServiceColumn::Started);

QString selectedKey(const ListView& list) {
    const ListItem* selected = list.selectedItem();
    return selected == nullptr ? QString() : selected->Key;
}

}  // namespace

ListSorting::ListSorting(const MainStart& start, ListView& list, StageReading& reading, ListOrder& order,
                         MainView& window)
    : start_(start), list_(list), reading_(reading), order_(order), window_(window) {}

bool ListSorting::CreateColumnImages(QString& errorText) {
    Trap step;
    step([&] {
        start_.begin(StartStep::ColumnImages);
        for (const char* key : kPictures) {
            loadPicture(pictures_, key);
        }
    });
    return outcome(step, 161, errorText);
}

void ListSorting::takeFromSettings() {
    order_.LVWSortOrder = order_.LVWSortOrder == kAscending ? kAscending : kDescending;
    const int column = list_.columns().indexOf(order_.LVWSortField);
    if (column == 0) {
        forget();
    }
    if (!order_.LVWSorted) {
        return;
    }
    list_.columns().setImages(pictures_);
    showArrow(column);
}

void ListSorting::showArrow(int column) {
    list_.columns().setIcon(
        column, order_.LVWSortOrder == kAscending ? QStringLiteral("SortUp") : QStringLiteral("SortDown"));
}

void ListSorting::forget() {
    order_.LVWSorted = false;
    order_.LVWSortField = kUsualField;
    order_.LVWSortOrder = kAscending;
}

// The clicked column becomes the one that the list is sorted by, or turns its direction round.
void ListSorting::takeColumn(int column) {
    const QString key = list_.columns().key(column);
    list_.columns().setImages(pictures_);
    if (key != order_.LVWSortField) {
        const int before = list_.columns().indexOf(order_.LVWSortField);
        if (order_.LVWSorted && before > 0) {
            list_.columns().setIcon(before, QStringLiteral("Dummy"));
        }
        order_.LVWSortOrder = kAscending;
        order_.LVWSortField = key;
    } else {
        order_.LVWSortOrder = order_.LVWSortOrder == kAscending ? kDescending : kAscending;
    }
    showArrow(column);
    order_.LVWSorted = true;
}

void ListSorting::ListView1_ColumnClick(int column) {
    if (list_.count() == 0) {
        return;
    }
    const QString key = selectedKey(list_);
    window_.SetStatusText(QStringLiteral("Sorting in progress..."));
    Trap step;
    step([&] { takeColumn(column); });
    step([&] { reading_.reorderServices(); });
    step([&] { window_.FillServiceList(key); });
    window_.UpdateServiceButtons();
    window_.SetStatusText({});
}

void ListSorting::UnsortServices() {
    if (!order_.LVWSorted || list_.count() == 0) {
        return;
    }
    const QString key = selectedKey(list_);
    window_.SetStatusText(QStringLiteral("Unsorting in progress..."));
    forget();
    Trap step;
    step([&] { list_.columns().setImages({}); });
    step(refreshCache);
    step([&] { reading_.reorderServices(); });
    step([&] { window_.FillServiceList(key); });
    window_.UpdateServiceButtons();
    window_.SetStatusText({});
    if (step.failed()) {
        window_.box(GetResString(1042) + QLatin1Char('\n') + step.line() +
                        QStringLiteral(" in line %1").arg(step.codeLine()),
                    BoxIcon::Exclamation);
    }
}
