#include "records/record_pane.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "common/window_helpers.h"
#include "platform/controls/date_field.h"
#include "platform/controls/pictures.h"
#include "platform/controls/selector.h"
#include "platform/controls/shades.h"
#include "records/address_button.h"
#include "records/block_area.h"
#include "records/entry_fields.h"
#include "records/main_fields.h"

using Focus = EntryKeys::Focus;

namespace {

constexpr int kShortestField = 10;  // letters

QString labelText(const EntryRow& row) {
    return QLatin1String(row.caption) + (row.missingId != 0 ? QStringLiteral(" *") : QString());
}

QString spokenCaption(const EntryRow& row) {
    return row.caption[0] == '\0' ? QStringLiteral("Comments") : ::spokenCaption(QLatin1String(row.caption));
}

bool isAddress(const EntryRow& row) {
    return row.kind == EntryKind::Line && (row.index == kEMail || row.index == kWeb);
}

}  // namespace

RecordPane::RecordPane(int stageIndex, EntryFields& fields, EntryKeys& keys, QWidget* parent)
    : QWidget(parent), stageIndex_(stageIndex), table_(entryPane(stageIndex)), fields_(fields), keys_(keys) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 9, 4, 0);
    buildSelectorRow(column);
    buildBlocks(column);
}

// --- The selector.

void RecordPane::buildSelectorRow(QVBoxLayout* column) {
    const QString caption = spokenCaption(QLatin1String(table_.selectorCaption));
    typeAhead_ = new QLineEdit(this);
    typeAhead_->setPlaceholderText(QStringLiteral("Type to find"));
    const QString spoken = QStringLiteral("Find a ") + caption.toLower();
    typeAhead_->addAction(platform::icon(QStringLiteral("Find")), QLineEdit::LeadingPosition)
        ->setText(spoken);
    keys_.add(typeAhead_, arrayName("Text2", stageIndex_), spoken, table_.typeAheadContext,
              Focus::SelectsText);
    selector_ = new platform::Selector(this);
    keys_.add(selector_, arrayName("Combo1", stageIndex_), caption, table_.selectorContext);
    auto* label = new QLabel(QLatin1String(table_.selectorCaption), this);
    label->setBuddy(selector_);
    auto* row = new QHBoxLayout;
    row->addWidget(typeAhead_, 1);
    row->addSpacing(8);
    row->addWidget(label);
    row->addWidget(selector_, 3);
    column->addLayout(row);
    column->addSpacing(4);
    connect(typeAhead_, &QLineEdit::textChanged, this, [this] { findTyped(); });
}

void RecordPane::findTyped() {
    const int found = selector_->findPrefix(typeAhead_->text());
    if (found >= 0) {
        selector_->setCurrentIndex(found);
    }
    const bool misses = found < 0 && !typeAhead_->text().isEmpty();
    platform::showNothingFound(*typeAhead_, misses ? QStringLiteral("Nothing begins with this") : QString());
}

// --- The blocks of fields.

void RecordPane::buildBlocks(QVBoxLayout* column) {
    auto* area = new BlockArea(this);
    auto* grid = new QGridLayout(area->widget());
    grid->setContentsMargins(0, 0, 0, 0);
    QList<QGridLayout*> insides;
    for (const EntryBlock& block : table_.blocks) {
        insides.append(addBlock(block, grid));
    }
    QList<int> labelWidths(insides.size(), 0);  // the widest label of each block
    for (const EntryRow& row : table_.rows) {
        int& widest = labelWidths[row.block];
        widest = qMax(widest, addRow(row, insides.at(row.block)));
    }
    alignFields(insides, labelWidths);
    grid->setRowStretch(grid->rowCount() - 1, 1);
    column->addWidget(area, 1);
}

QGridLayout* RecordPane::addBlock(const EntryBlock& block, QGridLayout* grid) {
    auto* frame = new QGroupBox(QLatin1String(block.title), grid->parentWidget());
    auto* inside = new QGridLayout(frame);
    inside->setColumnStretch(1, 1);
    grid->addWidget(frame, block.row, block.column, block.rowSpan, block.columnSpan);
    grid->setColumnStretch(block.column, 1);
    return inside;
}

// Fields below one another begin at one line, also where they stand in different blocks.
void RecordPane::alignFields(const QList<QGridLayout*>& insides, const QList<int>& labelWidths) {
    QHash<int, int> widest;  // by the block's column
    for (qsizetype i = 0; i < insides.size(); ++i) {
        int& width = widest[table_.blocks[static_cast<size_t>(i)].column];
        width = qMax(width, labelWidths.at(i));
    }
    for (qsizetype i = 0; i < insides.size(); ++i) {
        QGridLayout* inside = insides.at(i);
        if (inside->count() == 1) {
            continue;  // a text of several lines takes the whole frame
        }
        inside->setColumnMinimumWidth(0, widest.value(table_.blocks[static_cast<size_t>(i)].column));
        inside->setRowStretch(inside->rowCount(), 1);
    }
}

// The width of the label that stands before the field; 0 where there is none.
int RecordPane::addRow(const EntryRow& row, QGridLayout* inside) {
    const int line = inside->rowCount();
    QWidget* field = makeField(row);
    if (row.kind == EntryKind::Lines) {
        inside->addWidget(field, line, 0, 1, 2);
        return 0;
    }
    if (row.kind == EntryKind::Check) {
        inside->addWidget(field, line, 1);
        return 0;
    }
    auto* label = new QLabel(labelText(row), inside->parentWidget());
    label->setBuddy(field);
    if (row.missingId != 0) {
        label->setToolTip(QStringLiteral("Required"));
    }
    inside->addWidget(label, line, 0);
    if (isAddress(row)) {
        auto* cell = new QHBoxLayout;
        cell->setSpacing(4);
        cell->addWidget(field);
        cell->addWidget(makeOpener(row.index == kWeb));
        inside->addLayout(cell, line, 1);
    } else {
        inside->addWidget(field, line, 1);
    }
    return label->sizeHint().width();
}

QWidget* RecordPane::makeField(const EntryRow& row) {
    const auto i = static_cast<size_t>(row.index);
    switch (row.kind) {
        case EntryKind::Line:
        case EntryKind::Lines:
            break;
        case EntryKind::Date:
            fields_.dates[i] = new platform::DateField(true, this);
            keys_.add(fields_.dates[i], arrayName("DTPicker1", row.index), spokenCaption(row),
                      row.helpContext);
            return fields_.dates[i];
        case EntryKind::Check:
            fields_.firm = new QCheckBox(QLatin1String(row.caption), this);
            keys_.add(fields_.firm, QStringLiteral("Check1"), spokenCaption(row), row.helpContext);
            return fields_.firm;
    }
    return makeText(row);
}

QWidget* RecordPane::makeText(const EntryRow& row) {
    QWidget*& field = fields_.texts[static_cast<size_t>(row.index)];
    if (row.kind == EntryKind::Lines) {
        field = makeLines(this);
    } else {
        field = new QLineEdit(this);
        field->setMinimumWidth(fontMetrics().averageCharWidth() * kShortestField);
    }
    keys_.add(field, arrayName("Text1", row.index), spokenCaption(row), row.helpContext, Focus::SelectsText);
    return field;
}

QToolButton* RecordPane::makeOpener(bool isWeb) {
    auto* button =
        new AddressButton(isWeb ? AddressButton::Kind::Web : AddressButton::Kind::Mail, fields_, this);
    keys_.add(button, arrayName("Command1", isWeb ? 1 : 0), button->toolTip(), isWeb ? kWebHelp : kMailHelp);
    return button;
}
