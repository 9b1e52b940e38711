#include "catalogue/frmKonfigPrint.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "catalogue/ActiveReport1.h"
#include "catalogue/frmKonfigPrint_rules.h"
#include "catalogue/price_list_options.h"
#include "catalogue/price_list_steps.h"
#include "catalogue/price_list_texts.h"
#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "data/session.h"
#include "platform/controls/data_control.h"
#include "platform/controls/keys.h"
#include "platform/controls/long_wait.h"
#include "platform/controls/pictures.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/trap.h"

using platform::BoxIcon;
using platform::Trap;

// Building --------------------------------------------------------------------------------------------------

frmKonfigPrint::frmKonfigPrint(QWidget* parent) : QDialog(parent), data_(new platform::DataControl(this)) {
    setObjectName(QStringLiteral("frmKonfigPrint"));
    setWindowTitle(QStringLiteral("Opcije Stampanja"));
    onShow = [this](ActiveReport1& report) { report.Show(true, this); };

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 14, 14, 12);
    column->setSpacing(10);
    auto* grid = new QGridLayout;
    texts_ = std::make_unique<PriceListTexts>(this, grid);
    column->addLayout(grid);
    options_ = std::make_unique<PriceListOptions>(this);
    for (int set = 0; set < PriceListOptions::kSets; ++set) {
        column->addWidget(options_->addSet(set));
    }
    column->addWidget(options_->addRounding());
    column->addStretch(1);
    column->addWidget(buildButtons());
    platform::enterPressesButtons(this);
    explainByF1(this, PriceListTopic);
}

frmKonfigPrint::~frmKonfigPrint() {
    Unload();
}

QWidget* frmKonfigPrint::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    row->addStretch(1);
    const char* const captions[] = {"Stampaj...", "Otkazi"};
    std::array<QPushButton*, 2> buttons{};
    for (int i = 0; i < 2; ++i) {
        auto* button = new QPushButton(QLatin1String(captions[i]), panel);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spokenCaption(button->text()));
        buttons[static_cast<std::size_t>(i)] = button;
        row->addWidget(button);
    }
    buttons[0]->setIcon(platform::icon(QStringLiteral("Print")));
    buttons[0]->setToolTip(QStringLiteral("Pregled cenovnika pre stampe"));
    buttons[0]->setDefault(true);
    platform::keyPressesButton(QKeySequence(Qt::CTRL | Qt::Key_P), buttons[0]);
    connect(buttons[0], &QPushButton::clicked, this, &frmKonfigPrint::print);
    connect(buttons[1], &QPushButton::clicked, this, &frmKonfigPrint::reject);
    return panel;
}

// Showing ---------------------------------------------------------------------------------------------------

void frmKonfigPrint::Display() {
    if (!loaded_) {
        load();
    }
    setModal(true);
    exec();
}

void frmKonfigPrint::load() {
    loaded_ = true;
    adjustSize();
    moveToPlace(this, settings::text(settings::priceList.WindowData));
    texts_->load();
    options_->load();
}

void frmKonfigPrint::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    Trap step;  // a place that cannot be kept must not hold the catalogue up
    step([&] {
        if (!isMinimized()) {
            settings::setText(settings::priceList.WindowData, placeOf(this));
        }
    });
}

void frmKonfigPrint::reject() {
    hide();
}

// Printing --------------------------------------------------------------------------------------------------

void frmKonfigPrint::print() {
    Trap step;
    texts_->save(step);
    options_->save(step);
    QString errorText;
    bool ok = true;
    step([&] { ok = DoPrintDataReport(errorText); });
    if (!ok) {
        box(this, errorText, BoxIcon::Exclamation);
    }
    if (step.failed()) {
        box(this, step.line(), BoxIcon::Critical);
    }
}

QString frmKonfigPrint::PriceListQuery() const {
    return price_list::statement({options_->chosen(PriceListOptions::kRange),
                                  options_->chosen(PriceListOptions::kStock), idGrupe_, idProizvodjaca_});
}

QString frmKonfigPrint::BuildFooterText() const {
    return texts_->footer();
}

bool frmKonfigPrint::DoPrintDataReport(QString& errorText) {
    PriceListSteps step(errorText);
    QString footer;
    step([&] { footer = BuildFooterText(); });
    const bool left = !readProducts(step);
    if (left) {
        errorText.clear();
    } else if (!step.failed()) {
        step([&] { showList(footer); });
    }
    data_->Close();  // the colleagues' exclusive use of the file must not wait for the next list
    if (errorText.endsWith(QLatin1Char('\n'))) {
        errorText.chop(1);
    }
    return left || !step.failed();
}

// False where the person who waits has left it.
bool frmKonfigPrint::readProducts(PriceListSteps& step) {
    const platform::WaitPointer pointer;
    const platform::LongWait wait(QStringLiteral("Popunjavanje podacima je u toku... Molim sacekajte..."));
    step([&] { data_->DatabaseName = databasePath(); });
    step([&] {
        const QString password = BuildDatabasePassword();
        if (!data_->Connect.contains(password)) {
            data_->Connect += QStringLiteral(";Pwd=") + password;
        }
    });
    step([&] { data_->selection = platform::Selection::statement(PriceListQuery()); });
    step([&] { data_->Refresh(); });
    return !wait.isLeft();
}

void frmKonfigPrint::showList(const QString& footer) {
    if (data_->Recordset().RecordCount() == 0) {
        box(this, QStringLiteral("Nema podataka koji zadovoljavaju postavljene uslove."),
            BoxIcon::Information);
        return;
    }
    ActiveReport1 report;
    report.setReportHeader(texts_->header());
    report.setReportFooter(footer);
    report.setPriceRoundUp(options_->decimals());
    report.setTOCVisible(texts_->hasContents());
    report.setRecordset(data_->Recordset());
    onShow(report);
}
