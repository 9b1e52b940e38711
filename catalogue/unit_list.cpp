#include "catalogue/unit_list.h"

#include <QFontMetrics>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "data/session.h"
#include "platform/controls/data_control.h"
#include "platform/controls/list_box.h"
#include "platform/dao/recordset.h"
#include "platform/system/trap.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

struct Order {
    const char* how;
    const char* already;
    const char* tip;
};
constexpr Order kAscending = {"ASC", "Jedinice mere su vec sortirane po rastucim nazivima.",
                              "Lista jedinica mera je sortirana po rastucim nazivima."};
constexpr Order kDescending = {"DESC", "Jedinice mere su vec sortirane po opadajucim nazivima.",
                               "Lista jedinica mera je sortirana po opadajucim nazivima."};

}  // namespace

UnitList::UnitList(QWidget* window)
    : QObject(window),
      window_(window),
      data_(new platform::DataControl(window)),
      list_(new platform::ListBox(window)) {
    list_->setObjectName(QStringLiteral("List1"));
    list_->setAccessibleName(QStringLiteral("Jedinice mere"));
    const QFontMetrics metrics = window->fontMetrics();
    list_->setMinimumSize(metrics.averageCharWidth() * 34, metrics.height() * 10);
    connect(list_, &platform::ListBox::clicked, this, &UnitList::changed);
}

bool UnitList::hasRows() const {
    return list_->count() > 0;
}

bool UnitList::hasSelection() const {
    return hasRows() && list_->curSel() >= 0;
}

bool UnitList::isNotAscending() const {
    return !Sorted || SortedHow != QLatin1String(kAscending.how);
}

bool UnitList::isNotDescending() const {
    return !Sorted || SortedHow == QLatin1String(kAscending.how);
}

// Filling ---------------------------------------------------------------------------------------------------

void UnitList::refresh(const QString& selectName, bool reset) {
    if (reset) {
        Sorted = false;
        SortedHow = QStringLiteral("ASC");
    }
    data_->DatabaseName = databasePath();
    const platform::Selection units = platform::Selection::all(QStringLiteral("JM"));
    data_->selection = Sorted ? units.orderedBy(QStringLiteral("Naziv ") + SortedHow) : units;
    const QString failure = fill();
    select(selectName);
    if (!failure.isEmpty()) {
        box(window_,
            QStringLiteral("Neocekivana greska prilikom popunjavanja liste jedinica mera:\n\n") + failure,
            BoxIcon::Exclamation);
    }
    if (list_->isVisible()) {
        list_->setFocus();
    }
    emit changed();
}

// A unit that somebody deletes meanwhile costs its own line only.
QString UnitList::fill() {
    Trap step;
    list_->resetContent();
    step([&] { data_->Refresh(); });
    bool goesOn = false;
    dao::Recordset rows = data_->Recordset();
    if (data_->isOpen()) {
        step([&] { goesOn = !rows.EOF(); });
    }
    while (goesOn) {
        step([&] { addRow(rows); });
        goesOn = false;
        step([&] {
            rows.MoveNext();
            goesOn = !rows.EOF() && step.number() != dao::errLocked;
        });
    }
    if (list_->count() > 0) {
        step([&] { data_->MoveFirst(); });
    }
    if (!step.failed()) {
        return {};
    }
    return QStringLiteral("%1\nLinija koda: %2; frmJM -> FillListBox()")
        .arg(step.line())
        .arg(step.codeLine());
}

void UnitList::addRow(const dao::Recordset& rows) {
    list_->addString(textOf(rows["Naziv"]), rows["AID"].asLong());
}

void UnitList::select(const QString& name) {
    const int row = name.isEmpty() ? -1 : list_->findString(name);
    if (row >= 0) {
        list_->setCurSel(row);
        list_->setTopIndex(row);
    }
}

// Order -----------------------------------------------------------------------------------------------------

void UnitList::load() {
    Sorted = settings::boolean(settings::units.Sorted);
    SortedHow = settings::text(settings::units.SortedHow);
    if (!Sorted) {
        sort(SortMode::RefreshOnly, false);
    } else {
        sort(SortedHow == QLatin1String("ASC") ? SortMode::Ascending : SortMode::Descending, true);
    }
}

void UnitList::save() const {
    Trap step;  // an order that cannot be kept must not disturb the work
    step([&] { settings::setInteger(settings::units.Sorted, Sorted ? 1 : 0); });
    step([&] { settings::setText(settings::units.SortedHow, SortedHow); });
}

void UnitList::sort(SortMode mode, bool force) {
    const QString remembered = list_->selectedText();
    if (mode == SortMode::NoSort) {
        list_->setToolTip(QString());
    }
    if (mode == SortMode::Ascending || mode == SortMode::Descending) {
        const Order& order = mode == SortMode::Ascending ? kAscending : kDescending;
        const QString how = QString::fromLatin1(order.how);
        if (Sorted && SortedHow == how && !force) {
            box(window_, QString::fromLatin1(order.already), BoxIcon::Information);
            return;
        }
        Sorted = true;
        SortedHow = how;
        list_->setToolTip(QString::fromLatin1(order.tip));
    }
    refresh(remembered, mode == SortMode::NoSort);
}
