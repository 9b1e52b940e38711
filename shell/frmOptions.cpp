#include "shell/frmOptions.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "common/help.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/boxes.h"
#include "platform/controls/keys.h"
#include "platform/system/trap.h"
#include "shell/option_controls.h"

using options::Caption;
using options::makeButton;

namespace {

constexpr int kTopic = 7011;
constexpr char kTag[] = "Tag";

// The list for a day of one's choice: prices are often worked out afterwards.
constexpr char kRatePageAddress[] = "https://webappcenter.nbs.rs/ExchangeRateWebApp/ExchangeRate/IndexByDate";
constexpr char kRatePageTip[] = "Sajt Narodne Banke Srbije, stranica sa kursnom listom na zeljeni dan";

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmOptions::frmOptions(QWidget* parent)
    : QDialog(parent), numbers_(*new OptionNumbers(this)), tabs_(new QTabWidget(this)) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(GetResString(450));
    setAccessibleName(windowTitle());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    tabs_->setObjectName(QStringLiteral("SSTab1"));
    tabs_->setAccessibleName(windowTitle());
    tabs_->addTab(buildGeneral(), QStringLiteral("&Opste"));
    tabs_->addTab(firm_.build(this), QStringLiteral("&Firma"));
    column->addWidget(tabs_, 1);
    column->addWidget(buildButtons());
    platform::keysTurnPages(tabs_);
    for (QLineEdit* field : findChildren<QLineEdit*>()) {
        field->installEventFilter(this);
    }
}

frmOptions::~frmOptions() {
    Unload();
}

QWidget* frmOptions::buildGeneral() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 0));
    auto* column = new QVBoxLayout(panel);
    column->setSpacing(8);
    switches_.addMainWindows(column);
    auto* numbers = new QGridLayout;
    numbers_.addDaysAndTax(numbers);
    column->addLayout(numbers);
    column->addWidget(buildRate());
    switches_.addPrograms(column);
    auto* units = new QHBoxLayout;
    auto* openUnits = makeButton(4, Caption{0, "Jedinice Mere..."}, this);
    connect(openUnits, &QPushButton::clicked, this, [this] { onUnits(); });
    units->addWidget(openUnits);
    units->addStretch(1);
    column->addSpacing(4);
    column->addLayout(units);
    column->addStretch(1);
    return panel;
}

QWidget* frmOptions::buildRate() {
    auto* frame = new QGroupBox(QStringLiteral("&Kupovni kurs EUR:"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* row = new QHBoxLayout(frame);
    row->addWidget(numbers_.addRate(spokenCaption(frame->title())));
    ratePage_ = makeButton(3, Caption{0, "&NBS -->"}, this);
    connect(ratePage_, &QPushButton::clicked, this,
            [this] { LaunchAssociated(this, ratePage_->property(kTag).toString()); });
    row->addWidget(ratePage_);
    row->addStretch(1);
    return frame;
}

QWidget* frmOptions::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    row->addStretch(1);
    auto* ok = makeButton(0, Caption{451}, this);
    auto* cancel = makeButton(1, Caption{452}, this);
    auto* help = makeButton(2, Caption{453}, this);
    for (QPushButton* button : {ok, cancel, help}) {
        row->addWidget(button);
    }
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmOptions::okClicked);
    connect(cancel, &QPushButton::clicked, this, &frmOptions::reject);
    connect(help, &QPushButton::clicked, this, [] { showHelp(kTopic); });
    connect(&numbers_, &OptionNumbers::changed, ok, &QWidget::setEnabled);
    return panel;
}

// Filling ---------------------------------------------------------------------------------------------------

void frmOptions::Display() {
    if (!loaded_) {
        loaded_ = true;
        load();
    }
    exec();
}

void frmOptions::load() {
    switches_.load();
    numbers_.load(*this);
    ratePage_->setProperty(kTag, QString::fromLatin1(kRatePageAddress));
    ratePage_->setToolTip(QString::fromLatin1(kRatePageTip));
    firm_.load();
    adjustSize();
    moveToPlace(this, settings::text(settings::OptionsPosition));
    switches_.first()->setFocus();
}

void frmOptions::Unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    platform::Trap step;  // a place that cannot be kept must not disturb the work
    if (!isMinimized()) {
        step([&] { settings::setText(settings::OptionsPosition, placeOf(this)); });
    }
    WinHelp(helpFile(), HELP_QUIT);
}

// Keys ------------------------------------------------------------------------------------------------------

// Enter in a field goes on as the Tab key does.
bool frmOptions::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && platform::isEnter(*static_cast<QKeyEvent*>(event))) {
        platform::pressTab(static_cast<QWidget*>(watched));
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmOptions::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        showHelp(kTopic);
        return;
    }
    QDialog::keyPressEvent(event);
}

// The end ---------------------------------------------------------------------------------------------------

void frmOptions::okClicked() {
    if (!settleNumbers()) {
        return;
    }
    switches_.takeOver();
    numbers_.takeOver(*this);
    keep();
    cancelled_ = false;
    WinHelp(helpFile(), HELP_QUIT);
    accept();
}

bool frmOptions::settleNumbers() {
    QLineEdit* wrong = numbers_.settle();
    if (wrong == nullptr) {
        return true;
    }
    tabs_->setCurrentIndex(0);
    wrong->setFocus();
    return false;
}

void frmOptions::keep() {
    platform::Trap step;
    switches_.keep(step);
    firm_.keep(step);
    numbers_.keepRate(step);
    // What was chosen holds until the program is closed; that it will not be there tomorrow has to be told.
    if (step.failed()) {
        box(this, GetResString(1040) + QLatin1Char('\n') + step.line(), platform::BoxIcon::Exclamation);
    }
}

void frmOptions::reject() {
    cancelled_ = true;
    WinHelp(helpFile(), HELP_QUIT);
    QDialog::reject();
}
