// The order of the services list: a clause in the statement that its rows come from.

#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/service_columns.h"

using platform::BoxIcon;
using platform::ListItem;
using platform::ListView;
using platform::Trap;

namespace {

const QString kAscending = QStringLiteral("ASC");
const QString kDescending = QStringLiteral("DESC");
const QString kUsualField = fieldOf(ServiceColumn::Started);

QString selectedKey(const ListView& list) {
    const ListItem* selected = list.selectedItem();
    return selected == nullptr ? QString() : selected->Key;
}

}  // namespace

// The clicked column becomes the one that the list is sorted by, or turns its direction round.
void frmMain::takeSortColumn(int column) {
    const QString key = ListView1->columnKey(column);
    ListView1->setColumnImages(columnImages_);
    if (key != LVWSortField) {
        if (const int before = ListView1->columnOf(LVWSortField); LVWSorted && before > 0) {
            ListView1->setColumnIcon(before, QStringLiteral("Dummy"));
        }
        LVWSortOrder = kAscending;
        LVWSortField = key;
    } else {
        LVWSortOrder = LVWSortOrder == kAscending ? kDescending : kAscending;
    }
    ListView1->setColumnIcon(
        column, LVWSortOrder == kAscending ? QStringLiteral("SortUp") : QStringLiteral("SortDown"));
    LVWSorted = true;
}

void frmMain::ListView1_ColumnClick(int column) {
    if (ListView1->count() == 0) {
        return;
    }
    const QString key = selectedKey(*ListView1);
    SetStatusText(QStringLiteral("Sorting in progress..."));
    Trap step;
    step([&] { takeSortColumn(column); });
    step([&] { stages_.reorderServices(); });
    step([&] { FillServiceList(key); });
    UpdateServiceButtons();
    SetStatusText({});
}

void frmMain::UnsortServices() {
    if (!LVWSorted || ListView1->count() == 0) {
        return;
    }
    const QString key = selectedKey(*ListView1);
    SetStatusText(QStringLiteral("Unsorting in progress..."));
    LVWSorted = false;
    LVWSortField = kUsualField;
    LVWSortOrder = kAscending;
    Trap step;
    step([&] { ListView1->setColumnImages({}); });
    step(refreshCache);
    step([&] { stages_.reorderServices(); });
    step([&] { FillServiceList(key); });
    UpdateServiceButtons();
    SetStatusText({});
    if (step.failed()) {
        box(GetResString(1042) + QLatin1Char('\n') + step.line() +
                QStringLiteral(" in line %1").arg(step.codeLine()),
            BoxIcon::Exclamation);
    }
}
