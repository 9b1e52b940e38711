#include "records/service_pane.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "common/window_helpers.h"
#include "platform/controls/list_view.h"
#include "records/entry_fields.h"
#include "records/entry_keys.h"
#include "records/main_fields.h"

namespace {

struct TextBox {
    int index;  // of Text1
    int helpContext;
    int stretch;  // its share of the row
    const char* title;
};
constexpr TextBox kTextBoxes[] = {{kDescription, kDescriptionHelp, 3, "Description"},
                                  {kServiceKinds, kServiceKindsHelp, 2, "Kinds of service"}};

QGroupBox* makeTextBox(const TextBox& row, EntryFields& fields, EntryKeys& keys, QWidget* pane) {
    auto* frame = new QGroupBox(QLatin1String(row.title), pane);
    auto* inside = new QVBoxLayout(frame);
    QPlainTextEdit* lines = makeLines(frame);
    lines->setReadOnly(true);
    fields.texts[static_cast<size_t>(row.index)] = lines;
    keys.add(lines, arrayName("Text1", row.index), QLatin1String(row.title), row.helpContext,
             EntryKeys::Focus::SelectsText);
    inside->addWidget(lines);
    return frame;
}

}  // namespace

ServicePane::ServicePane(EntryFields& fields, EntryKeys& keys, QWidget* parent)
    : QWidget(parent), list_(new platform::ListView(this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 9, 4, 0);
    list_->setObjectName(QStringLiteral("ListView1"));
    list_->setAccessibleName(QStringLiteral("Services"));
    setHelpContext(list_, kServiceListHelp);
    column->addWidget(list_, 3);
    auto* below = new QHBoxLayout;
    for (const TextBox& row : kTextBoxes) {
        below->addWidget(makeTextBox(row, fields, keys, this), row.stretch);
    }
    column->addSpacing(4);
    column->addLayout(below, 1);
}
