#include "records/main_window_view.h"

#include <QCheckBox>

#include "records/frmMain.h"
#include "records/main_fields.h"

QString MainWindowView::tabCaption(int tab) const {
    return window_.TabStrip1 == nullptr ? QString() : window_.TabStrip1->caption(tab - 1);
}

QString MainWindowView::serviceKey() const {
    const platform::ListItem* row = window_.ListView1->selectedItem();
    return row == nullptr ? QString() : row->Key;
}

QString MainWindowView::serviceColumn(int column) const {
    const platform::ListItem* row = window_.ListView1->selectedItem();
    if (row == nullptr || column < 1 || column > window_.ListView1->columnCount())
        return QString();
    return column == 1 ? row->Text : row->subItems.value(column - 2);
}

QString MainWindowView::serviceDescription() const {
    return window_.fieldText(kDescription);
}

QString MainWindowView::clientField(const QString& field) const {
    for (const EntryRow& row : entryPane(0).rows) {
        if (row.kind != EntryKind::Date && row.kind != EntryKind::Check && field == QLatin1String(row.field))
            return window_.fieldText(row.index);
    }
    return QString();
}

bool MainWindowView::isFirm() const {
    return window_.Check1->isChecked();
}
