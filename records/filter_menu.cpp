#include "records/filter_menu.h"

#include "platform/system/trap.h"
#include "records/main_bars.h"
#include "records/main_status.h"
#include "records/main_view.h"
#include "records/quick_filters.h"
#include "records/shop_filter.h"

using platform::BoxIcon;

FilterMenu::FilterMenu(ShopFilter& filter, MainBars& bars, MainStatus& status, MainView& window)
    : filter_(filter), bars_(bars), status_(status), window_(window) {}

void FilterMenu::mnuQuickSearch_Click(int index) {
    if (index == 0) {
        return filter_.RemoveFilters();
    }
    const int number = index - quick_filters::kFirstPosition;
    if (!quick_filters::isFilter(number)) {
        window_.box(QStringLiteral("Unknown index: mnuQuickSearch_Click(%1)").arg(index),
                    BoxIcon::Exclamation);
        return;
    }
    choose(number);
}

void FilterMenu::choose(int number) {
    bool ok = false;
    platform::Trap step;
    step([&] { filter_.ApplyQuickFilter(number, ok); });
    if (step.failed()) {
        window_.box(QStringLiteral("An unexpected error has occured - ") + step.line(), BoxIcon::Exclamation);
        return;
    }
    if (!ok) {
        return;
    }
    bars_.toolbar.setEnabled(Command::DropFilter, true);
    bars_.toolbar.allowFiltersBut(number);
}

void FilterMenu::drop() {
    bars_.toolbar.setEnabled(Command::DropFilter, false);
    if (filter_.ActiveFilter != ShopFilter::kNone) {
        filter_.RemoveFilters();
    }
    bars_.toolbar.setEnabled(Command::DropFilter, filter_.ActiveFilter != ShopFilter::kNone);
}

void FilterMenu::showNoFilter() {
    bars_.toolbar.setEnabled(Command::DropFilter, false);
    status_.ShowFilterCaption(ShopFilter::kNone, true);
    bars_.toolbar.allowFiltersBut(-1);
}
