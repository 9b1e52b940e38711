// The panes of the three stages: their fields, and what all entry fields have in common.

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "common/help.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "platform/controls/keys.h"
#include "platform/controls/pictures.h"
#include "platform/system/trap.h"
#include "records/frmMain.h"
#include "records/main_fields.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

constexpr const char* kHelpContext = "HelpContextID";
constexpr const char* kEntry = "entryField";  // what Enter walks through
constexpr const char* kSelectsAll = "selectsAllOnFocus";
constexpr int kPanels = 2;          // panes with entry fields
constexpr int kShortestField = 10;  // letters

QString labelText(const EntryRow& row) {
    return QLatin1String(row.caption) + (row.missingId != 0 ? QStringLiteral(" *") : QString());
}

void selectAllOf(QObject* field) {
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        line->selectAll();
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        lines->selectAll();
    }
}

QPlainTextEdit* makeLines(QWidget* parent) {
    auto* lines = new QPlainTextEdit(parent);
    lines->setTabChangesFocus(true);
    lines->setMinimumHeight(lines->fontMetrics().lineSpacing() * 3);
    return lines;
}

}  // namespace

void frmMain::registerEntry(QWidget* widget, const QString& name, const QString& accessibleName,
                            int helpContext) {
    widget->setObjectName(name);
    widget->setAccessibleName(accessibleName);
    widget->setProperty(kHelpContext, helpContext);
    QWidget* keyTaker = widget;
    if (auto* date = qobject_cast<platform::DateField*>(widget)) {
        keyTaker = date->edit();
        date->edit()->setAccessibleName(accessibleName);
        if (date->checkBox() != nullptr) {
            date->checkBox()->setProperty(kEntry, true);
            date->checkBox()->installEventFilter(this);
        }
    }
    keyTaker->setProperty(kEntry, true);
    keyTaker->installEventFilter(this);
}

void frmMain::buildPanes() {
    auto* inside = new QWidget(this);
    auto* column = new QVBoxLayout(inside);
    column->setContentsMargins(8, 8, 8, 8);  // 125 twips above the tab strip and below the panes
    column->setSpacing(0);
    panes_ = new QStackedWidget(inside);
    for (int i = 0; i < 3; ++i) {
        Picture1[static_cast<size_t>(i)] = new QWidget(panes_);
        QWidget* pane = Picture1[static_cast<size_t>(i)];
        pane->setObjectName(arrayName("Picture1", i));
        auto* paneColumn = new QVBoxLayout(pane);
        paneColumn->setContentsMargins(4, 9, 4, 0);
        if (i < kPanels) {
            buildSelectorRow(i, paneColumn);
            buildBlocks(i, paneColumn);
        } else {
            buildServicePane(paneColumn);
        }
        panes_->addWidget(pane);
    }
    Picture1[0]->setProperty(kHelpContext, kClientPaneHelp);
    column->addWidget(panes_, 1);
    setCentralWidget(inside);
    auto* help = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(help, &QShortcut::activated, this, &frmMain::showHelpOfFocus);
}

void frmMain::buildSelectorRow(int stageIndex, QVBoxLayout* column) {
    const auto i = static_cast<size_t>(stageIndex);
    const EntryPane& pane = entryPane(stageIndex);
    const QString caption = QLatin1String(pane.selectorCaption);
    auto* row = new QHBoxLayout;
    Text2[i] = new QLineEdit(Picture1[i]);
    Text2[i]->setPlaceholderText(QStringLiteral("Type to find"));
    Text2[i]->setProperty(kSelectsAll, true);
    Text2[i]->addAction(platform::icon(QStringLiteral("Find")), QLineEdit::LeadingPosition);
    registerEntry(Text2[i], arrayName("Text2", stageIndex), QStringLiteral("Find a ") + caption.toLower(),
                  pane.typeAheadContext);
    Combo1[i] = new platform::Selector(Picture1[i]);
    stages_[stageIndex].setSelector(Combo1[i]);
    registerEntry(Combo1[i], arrayName("Combo1", stageIndex), caption, pane.selectorContext);
    auto* label = new QLabel(caption, Picture1[i]);
    label->setBuddy(Combo1[i]);
    row->addWidget(Text2[i], 1);
    row->addSpacing(8);
    row->addWidget(label);
    row->addWidget(Combo1[i], 3);
    column->addLayout(row);
    column->addSpacing(4);
    connect(Text2[i], &QLineEdit::textChanged, this, [this, stageIndex] { typeAheadChanged(stageIndex); });
    connect(Combo1[i], &QComboBox::currentIndexChanged, this,
            [this, stageIndex] { editing_.choose(stageIndex); });
}

QWidget* frmMain::makeField(const EntryRow& row) {
    const auto i = static_cast<size_t>(row.index);
    const QString caption = row.caption[0] == '\0' ? QStringLiteral("Comments") : QLatin1String(row.caption);
    switch (row.kind) {
        case EntryKind::Line:
            Text1[i] = new QLineEdit(this);
            Text1[i]->setMinimumWidth(fontMetrics().averageCharWidth() * kShortestField);
            break;
        case EntryKind::Lines:
            Text1[i] = makeLines(this);
            break;
        case EntryKind::Date:
            DTPicker1[i] = new platform::DateField(true, this);
            registerEntry(DTPicker1[i], arrayName("DTPicker1", row.index), caption, row.helpContext);
            return DTPicker1[i];
        case EntryKind::Check:
            Check1 = new QCheckBox(caption, this);
            registerEntry(Check1, QStringLiteral("Check1"), caption, row.helpContext);
            return Check1;
    }
    Text1[i]->setProperty(kSelectsAll, true);
    registerEntry(Text1[i], arrayName("Text1", row.index), caption, row.helpContext);
    return Text1[i];
}

void frmMain::buildBlocks(int stageIndex, QVBoxLayout* column) {
    const EntryPane& pane = entryPane(stageIndex);
    auto* grid = new QGridLayout;
    QList<QGridLayout*> insides;
    for (const EntryBlock& block : pane.blocks) {
        auto* frame = new QGroupBox(QLatin1String(block.title), Picture1[static_cast<size_t>(stageIndex)]);
        insides.append(new QGridLayout(frame));
        insides.last()->setColumnStretch(1, 1);
        grid->addWidget(frame, block.row, block.column, block.rowSpan, block.columnSpan);
        grid->setColumnStretch(block.column, 1);
    }
    QHash<int, int> labelWidths;  // by the block's column: fields below one another begin at one line
    for (const EntryRow& row : pane.rows) {
        const int width = addRow(row, insides.at(row.block));
        int& widest = labelWidths[pane.blocks[static_cast<size_t>(row.block)].column];
        widest = qMax(widest, width);
    }
    for (int i = 0; i < insides.size(); ++i) {
        QGridLayout* inside = insides.at(i);
        if (inside->count() == 1) {
            continue;  // a text of several lines takes the whole frame
        }
        inside->setColumnMinimumWidth(0, labelWidths.value(pane.blocks[static_cast<size_t>(i)].column));
        inside->setRowStretch(inside->rowCount(), 1);
    }
    grid->setRowStretch(grid->rowCount() - 1, 1);
    column->addLayout(grid, 1);
}

// The width of the label that stands before the field; 0 where there is none.
int frmMain::addRow(const EntryRow& row, QGridLayout* inside) {
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
    if (row.kind == EntryKind::Line && (row.index == kEMail || row.index == kWeb)) {
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

// The small button that opens the address in the field before it.
QToolButton* frmMain::makeOpener(bool isWeb) {
    const size_t i = isWeb ? 1 : 0;
    Command1[i] = new QToolButton(this);
    Command1[i]->setIcon(platform::icon(isWeb ? QStringLiteral("Web") : QStringLiteral("Mail")));
    Command1[i]->setToolTip(isWeb ? QStringLiteral("Open the web page") : QStringLiteral("Write an e-mail"));
    Command1[i]->setAutoRaise(true);
    registerEntry(Command1[i], arrayName("Command1", static_cast<int>(i)), Command1[i]->toolTip(),
                  isWeb ? kWebHelp : kMailHelp);
    connect(Command1[i], &QToolButton::clicked, this,
            [this, isWeb] { OpenWebOrMail(fieldText(isWeb ? kWeb : kEMail), isWeb); });
    return Command1[i];
}

void frmMain::OpenWebOrMail(const QString& address, bool isWeb) {
    QString target = address.trimmed();
    if (target.isEmpty()) {
        return;
    }
    if (!target.contains(isWeb ? QLatin1Char('.') : QLatin1Char('@'))) {
        box(GetResString(isWeb ? 130 : 131), BoxIcon::Exclamation);
        fields_.focus(isWeb ? kWeb : kEMail);
        return;
    }
    const QString scheme = isWeb ? QStringLiteral("http://") : QStringLiteral("mailto:");
    if (!target.contains(scheme, Qt::CaseInsensitive)) {
        target.prepend(scheme);
    }
    Trap step;
    step([&] { LaunchAssociated(this, target); });
    step.clear();
}

void frmMain::buildServicePane(QVBoxLayout* column) {
    ListView1 = new platform::ListView(Picture1[2]);
    ListView1->setObjectName(QStringLiteral("ListView1"));
    ListView1->setAccessibleName(QStringLiteral("Services"));
    ListView1->setProperty(kHelpContext, kServiceListHelp);
    column->addWidget(ListView1, 3);
    auto* below = new QHBoxLayout;
    const struct {
        int index, helpContext, stretch;
        const char* title;
    } boxes[] = {{kDescription, kDescriptionHelp, 3, "Description"},
                 {kServiceKinds, kServiceKindsHelp, 2, "Kinds of service"}};
    for (const auto& entry : boxes) {
        auto* frame = new QGroupBox(QLatin1String(entry.title), Picture1[2]);
        auto* inside = new QVBoxLayout(frame);
        QPlainTextEdit* lines = makeLines(frame);
        lines->setReadOnly(true);
        lines->setProperty(kSelectsAll, true);
        Text1[static_cast<size_t>(entry.index)] = lines;
        registerEntry(lines, arrayName("Text1", entry.index), QLatin1String(entry.title), entry.helpContext);
        inside->addWidget(lines);
        below->addWidget(frame, entry.stretch);
    }
    column->addSpacing(4);
    column->addLayout(below, 1);
}

void frmMain::bindFields() {
    for (const Stage& stage : stages_) {
        for (const EntryRow& row : stage.rows()) {
            stage.data().bind(fields_.of(row), QLatin1String(row.field));
        }
    }
}

// After bindFields: a field's mark of change must be set before we ask for it. A date has none: changing it
// alone does not make a record one to be saved.
void frmMain::connectFields() {
    for (Stage& stage : stages_) {
        for (const EntryRow& row : stage.rows()) {
            connectField(stage.index(), fields_.of(row));
        }
    }
    for (int description : {kDescription, kServiceKinds}) {
        connectField(kServices, Text1[static_cast<size_t>(description)]);
    }
}

void frmMain::connectField(int stageIndex, QWidget* field) {
    const auto typed = [this, stageIndex, field] { stages_.fieldTyped(stageIndex, field); };
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        connect(line, &QLineEdit::textChanged, this, typed);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(field)) {
        connect(lines, &QPlainTextEdit::textChanged, this, typed);
    } else if (auto* check = qobject_cast<QCheckBox*>(field)) {
        connect(check, &QCheckBox::toggled, this, typed);
    }
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && watched->property(kSelectsAll).toBool()) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        // A click sets the cursor after it has given the focus, so the selecting waits until the click is
        // done.
        if (reason == Qt::MouseFocusReason) {
            QTimer::singleShot(0, watched, [watched] { selectAllOf(watched); });
        } else if (reason != Qt::PopupFocusReason) {
            selectAllOf(watched);
        }
    }
    if (event->type() == QEvent::KeyPress && watched->property(kEntry).toBool()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            auto* lines = qobject_cast<QPlainTextEdit*>(watched);
            if ((key->modifiers() & Qt::ControlModifier) != 0 && lines != nullptr && !lines->isReadOnly()) {
                lines->insertPlainText(QStringLiteral("\n"));
            } else {
                platform::pressTab(static_cast<QWidget*>(watched));
            }
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::showHelpOfFocus() {
    const QWidget* at = QApplication::focusWidget();
    while (at != nullptr && !at->property(kHelpContext).isValid()) {
        at = at->parentWidget();
    }
    showHelp(at != nullptr ? at->property(kHelpContext).toInt() : kClientPaneHelp);
}
