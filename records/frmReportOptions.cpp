#include "records/frmReportOptions.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QVBoxLayout>

#include "common/help.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/system/trap.h"

namespace {

constexpr int kHelpContext = 7010;
constexpr size_t kOk = 0, kCancel = 1, kHelp = 2;

struct Choice {
    const char* caption;
    bool ReportChoices::*choice;
};
constexpr Choice kChoiceRows[] = {
    {"In&clude Client data in the report", &ReportChoices::IncludeClients},
    {"&Show data only for selected client", &ReportChoices::ShowOnlySelectedClient},
    {"Print &birth details", &ReportChoices::PrintBirthDetails},
    {"&Print PID card details", &ReportChoices::PrintPIDCardDetails},
    {"Print &address details", &ReportChoices::PrintAddressDetails},
    {"Print c&ontact details", &ReportChoices::PrintContactDetails},
    {"Print co&mments", &ReportChoices::PrintClientComments},
    {"Incl&ude Computer data in the report", &ReportChoices::IncludeComputers},
    {"Sho&w data only for selected computer", &ReportChoices::ShowOnlySelectedComputer},
    {"Pri&nt processor and memory details", &ReportChoices::PrintMemoryDetails},
    {"Print stora&ge devices details", &ReportChoices::PrintStorageDetails},
    {"Print p&eripheral devices details", &ReportChoices::PrintPheriperalDetails},
    {"Print operating s&ystem details", &ReportChoices::PrintOSDetails},
    {"Prin&t comments", &ReportChoices::PrintComputerComments},
    {"Include Ser&vice data in the report", &ReportChoices::IncludeServices},
    {"Show &data only for selected service", &ReportChoices::ShowOnlySelectedService},
};

// A box that heads a group, and the last of those that it enables. A computer's box holds the services too,
// and each looks at nothing but itself: the people of the shop know the window so.
struct Head {
    int index;
    int last;
};
constexpr Head kHeads[] = {{0, 6}, {7, 15}, {14, 15}};

// The frame around each head and the boxes below it: where it stands in the grid.
struct Frame {
    int first, last;
    int row, column, columns;
};
constexpr Frame kFrames[] = {{0, 6, 0, 0, 1}, {7, 13, 0, 1, 1}, {14, 15, 1, 0, 2}};
constexpr int kGridRows = 2, kGridColumns = 2;

constexpr const char* kButtons[] = {"OK", "Cancel", "&Help"};

}  // namespace

frmReportOptions::frmReportOptions(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmReportOptions"));
    setWindowTitle(QStringLiteral("Report Options"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(14, 14, 14, 12);
    grid->setSpacing(10);
    buildChoices(grid);
    buildButtons(grid);
}

frmReportOptions::~frmReportOptions() {
    Unload();
}

void frmReportOptions::buildChoices(QGridLayout* grid) {
    const int indent = style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                       style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
    for (const Frame& frame : kFrames) {
        auto* box = new QGroupBox(this);
        auto* column = new QVBoxLayout(box);
        for (int i = frame.first; i <= frame.last; ++i) {
            const Choice& row = kChoiceRows[i];
            auto* check = new QCheckBox(QString::fromLatin1(row.caption), box);
            check->setObjectName(QStringLiteral("Check1(%1)").arg(i));
            check->setAccessibleName(spokenCaption(QString::fromLatin1(row.caption)));
            auto* line = new QHBoxLayout;
            line->setContentsMargins(i == frame.first ? 0 : indent, 0, 0, 0);
            line->addWidget(check);
            line->addStretch(1);
            column->addLayout(line);
            connect(check, &QCheckBox::toggled, this, [this, i] {
                if (!loading_) {
                    checkClicked(i);
                }
            });
            Check1[static_cast<size_t>(i)] = check;
        }
        column->addStretch(1);
        grid->addWidget(box, frame.row, frame.column, 1, frame.columns);
    }
}

void frmReportOptions::buildButtons(QGridLayout* grid) {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch(1);
    for (size_t i = 0; i < Command1.size(); ++i) {
        Command1[i] = new QPushButton(QString::fromLatin1(kButtons[i]), this);
        Command1[i]->setObjectName(QStringLiteral("Command1(%1)").arg(i));
        Command1[i]->setAccessibleName(spokenCaption(QString::fromLatin1(kButtons[i])));
        row->addWidget(Command1[i]);
    }
    Command1[kOk]->setDefault(true);
    grid->addLayout(row, kGridRows, 0, 1, kGridColumns);
    connect(Command1[kOk], &QPushButton::clicked, this, &frmReportOptions::confirm);
    connect(Command1[kCancel], &QPushButton::clicked, this, &frmReportOptions::reject);
    connect(Command1[kHelp], &QPushButton::clicked, this, [] { showHelp(kHelpContext); });
}

void frmReportOptions::load() {
    if (!loaded_) {
        adjustSize();
        moveToPlace(this, settings::text(settings::ReportOptionsPosition));
        loaded_ = true;
    }
    loading_ = true;
    for (size_t i = 0; i < Check1.size(); ++i) {
        Check1[i]->setChecked(this->*kChoiceRows[i].choice);
    }
    loading_ = false;
    for (const Head& head : kHeads) {
        checkClicked(head.index);
    }
}

void frmReportOptions::Display() {
    load();
    Check1[0]->setFocus();
    exec();
}

void frmReportOptions::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    if (isMinimized()) {
        return;
    }
    platform::Trap step;  // a place that cannot be kept: the choices still count
    step([&] { settings::setText(settings::ReportOptionsPosition, placeOf(this)); });
}

void frmReportOptions::checkClicked(int index) {
    for (const Head& head : kHeads) {
        for (int i = index + 1; head.index == index && i <= head.last; ++i) {
            Check1[static_cast<size_t>(i)]->setEnabled(Check1[static_cast<size_t>(index)]->isChecked());
        }
    }
}

void frmReportOptions::confirm() {
    for (size_t i = 0; i < Check1.size(); ++i) {
        this->*kChoiceRows[i].choice = Check1[i]->isChecked();
    }
    cancelled_ = false;
    WinHelp(helpFile(), HELP_QUIT);
    accept();
}

void frmReportOptions::reject() {
    cancelled_ = true;
    WinHelp(helpFile(), HELP_QUIT);
    QDialog::reject();
}

// The close box leaves the help page open, for those who went back to read.
void frmReportOptions::closeEvent(QCloseEvent* event) {
    cancelled_ = true;
    event->ignore();
    QDialog::reject();
}

void frmReportOptions::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        showHelp(kHelpContext);
        return;
    }
    QDialog::keyPressEvent(event);
}
