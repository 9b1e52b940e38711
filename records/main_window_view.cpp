#include "records/main_window_view.h"

#include <QCheckBox>

#include "platform/controls/list_view.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"
#include "records/stage_switch.h"
#include "records/stage_tabs.h"

QString MainWindowView::tabCaption(int tab) const {
    return tabs_.tabs() == nullptr ? QString() : tabs_.tabs()->caption(tab - 1);
}

std::optional<qint32> MainWindowView::serviceId() const {
    const platform::ListItem* row = services_.selectedItem();
    return row == nullptr ? std::nullopt : std::optional(ServiceCells(*row).serviceId());
}

QString MainWindowView::serviceStarted() const {
    return shown(ServiceColumn::Started);
}

QString MainWindowView::serviceDiscount() const {
    return shown(ServiceColumn::Discount);
}

QString MainWindowView::serviceTax() const {
    return shown(ServiceColumn::Tax);
}

QString MainWindowView::shown(ServiceColumn column) const {
    const platform::ListItem* row = services_.selectedItem();
    return row == nullptr ? QString() : cellOf(*row, column);
}

QString MainWindowView::serviceDescription() const {
    return fields_.text(kDescription);
}

QString MainWindowView::clientField(const QString& field) const {
    for (const EntryRow& row : entryPane(0).rows) {
        if (row.kind != EntryKind::Date && row.kind != EntryKind::Check &&
            field == QLatin1String(row.field)) {
            return fields_.text(row.index);
        }
    }
    return QString();
}

bool MainWindowView::isFirm() const {
    return fields_.firm->isChecked();
}
