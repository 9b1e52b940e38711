#include "shell/frmOptions.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <cmath>
#include <limits>
#include <optional>

#include "common/help.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/boxes.h"
#include "platform/controls/keys.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

constexpr int kTopic = 7011;
constexpr float kRateOfBlank = 82;  // not the default that is offered for a wrong rate: that is 81
constexpr char kTag[] = "Tag";

constexpr int kDays = 0, kTax = 1, kRate = 2;                              // Text1
constexpr int kOk = 0, kCancel = 1, kHelp = 2, kRatePage = 3, kUnits = 4;  // Command1
constexpr int kTipsAtStartup = 5, kTipsAtRandom = 6;                       // Check1
constexpr int kGlobalSwitches = 2;  // from here on the boxes are switches of the whole program

// The list for a day of one's choice: prices are often worked out afterwards.
constexpr char kRatePageAddress[] = "https://webappcenter.nbs.rs/ExchangeRateWebApp/ExchangeRate/IndexByDate";
constexpr char kRatePageTip[] = "Sajt Narodne Banke Srbije, stranica sa kursnom listom na zeljeni dan";

// A caption out of the string table, or one of the window's own.
struct Caption {
    int id = 0;
    const char* text = nullptr;
    QString shown() const { return text ? QString::fromLatin1(text) : GetResString(id); }
};

constexpr Caption kCheckCaptions[] = {
    {454},
    {457},
    {0, "&Cene prikazi u Dinarima"},
    {0, "A&utomatski koriguj uneti tekst (velika i mala slova)"},
    {0, "Pitaj pre &brisanja stavki u bilo kojoj listi"},
    {0, "Pri p&okretanju programa prikazi Tip of Day"},
    {0, "&Menjaj Tip of Day po slucajnom redosledu"},
};
constexpr Caption kCommandCaptions[] = {{451}, {452}, {453}, {0, "&NBS -->"}, {0, "Jedinice Mere..."}};

struct NumberRow {
    int before;  // texts around the field; 0: none
    int after;
    const char* usual;  // what is offered where something wrong was typed
    const char* wrong;
};
constexpr NumberRow kNumberRows[] = {
    {455, 456, "0", "Uneti broj dana ne predstavlja korektnu numericku vrednost."},
    {458, 0, "18", "Uneta vrednost poreza ne predstavlja korektnu numericku vrednost."},
    {0, 0, "81", "Uneti kupovni kurs ne predstavlja korektnu numericku vrednost."},
};
constexpr char kRateOfNothing[] =
    "Uneti kupovni kurs mora biti veci od nule. U protivnom, sve dinarske cene ce biti = 0.";
constexpr char kAskForDefault[] = "Zelite li da bude upisana podrazumevana vrednost?";

struct FirmRow {
    const char* label;
    const settings::Setting& setting;
};
constexpr FirmRow kFirmRows[] = {
    {"Adresa:", settings::firm.frmSettAdresa},   {"Grad:", settings::firm.frmSettGrad},
    {"Post. broj:", settings::firm.frmSettZip},  {"Telefon:", settings::firm.frmSettTel},
    {"Fax:", settings::firm.frmSettFax},         {"E-mail:", settings::firm.frmSettEmail},
    {"Sajt:", settings::firm.frmSettWWW},        {"Mat. broj:", settings::firm.frmSettMatBr},
    {"Reg. broj:", settings::firm.frmSettRegBr}, {"Sifra del.:", settings::firm.frmSettSifDel},
    {"PIB:", settings::firm.frmSettPIB},         {"PDV:", settings::firm.frmSettPDV},
    {"Racun br.:", settings::firm.frmSettRnBr},
};
constexpr int kFirstFiscal = 7;  // the numbers that the tax office wants on a document

const settings::Setting& firmSetting(int index) {
    return kFirmRows[index].setting;
}

QString spoken(QString caption) {
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

template <typename Array>
auto& at(Array& array, int index) {
    return array[static_cast<std::size_t>(index)];
}

// Days and percents fit 16 bits. What does not is no number to the shop either.
std::optional<qint16> wholeNumber(const QString& text) {
    const std::optional<double> number = platform::readNumber(text);
    if (!number) {
        return std::nullopt;
    }
    const double whole = std::nearbyint(*number);
    if (whole < std::numeric_limits<qint16>::min() || whole > std::numeric_limits<qint16>::max()) {
        return std::nullopt;
    }
    return static_cast<qint16>(whole);
}

bool isNumberFor(int index, const QString& text) {
    return index == kRate ? platform::readSingle(text).has_value() : wholeNumber(text).has_value();
}

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmOptions::frmOptions(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(GetResString(450));
    setAccessibleName(windowTitle());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("SSTab1"));
    tabs_->setAccessibleName(windowTitle());
    tabs_->addTab(buildGeneral(), QStringLiteral("&Opste"));
    tabs_->addTab(buildFirm(), QStringLiteral("&Firma"));
    column->addWidget(tabs_, 1);
    column->addWidget(buildButtons());
    connectControls();
}

frmOptions::~frmOptions() {
    Unload();
}

QWidget* frmOptions::buildGeneral() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 0));
    auto* column = new QVBoxLayout(panel);
    column->setSpacing(8);
    addChecks(column, 0, kGlobalSwitches - 1);
    auto* numbers = new QGridLayout;
    buildNumbers(numbers);
    column->addLayout(numbers);
    column->addWidget(buildRate());
    addChecks(column, kGlobalSwitches, kChecks - 1);
    auto* units = new QHBoxLayout;
    units->addWidget(makeButton(kUnits));
    units->addStretch(1);
    column->addSpacing(4);
    column->addLayout(units);
    column->addStretch(1);
    return panel;
}

void frmOptions::addChecks(QBoxLayout* column, int from, int to) {
    for (int i = from; i <= to; ++i) {
        auto* check = new QCheckBox(kCheckCaptions[i].shown(), this);
        check->setObjectName(arrayName("Check1", i));
        check->setAccessibleName(spoken(check->text()));
        at(check_, i) = check;
        auto* row = new QHBoxLayout;  // a click beside the words must not change a switch
        if (i == kTipsAtRandom) {
            row->addSpacing(20);
        }
        row->addWidget(check);
        row->addStretch(1);
        column->addLayout(row);
    }
}

QLineEdit* frmOptions::makeNumber(int index, const QString& accessible) {
    auto* field = new QLineEdit(this);
    field->setObjectName(arrayName("Text1", index));
    field->setAccessibleName(accessible);
    field->setAlignment(Qt::AlignRight);
    field->setFixedWidth(fontMetrics().averageCharWidth() * 12);
    at(text1_, index) = field;
    return field;
}

void frmOptions::buildNumbers(QGridLayout* grid) {
    int labels = 0;
    const auto makeLabel = [&](const QString& text) {
        auto* label = new QLabel(text, this);
        label->setObjectName(arrayName("Label1", labels++));
        return label;
    };
    for (int i = 0; i < kRate; ++i) {
        QLabel* before = makeLabel(GetResString(kNumberRows[i].before));
        QString accessible = spoken(before->text());
        grid->addWidget(before, i, 0);
        if (kNumberRows[i].after != 0) {
            QLabel* after = makeLabel(GetResString(kNumberRows[i].after));
            accessible += QStringLiteral(" ... ") + after->text();
            grid->addWidget(after, i, 2);
        }
        QLineEdit* field = makeNumber(i, accessible);
        before->setBuddy(field);
        grid->addWidget(field, i, 1);
    }
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(3, 1);
}

QWidget* frmOptions::buildRate() {
    auto* frame = new QGroupBox(QStringLiteral("&Kupovni kurs EUR:"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* row = new QHBoxLayout(frame);
    row->addWidget(makeNumber(kRate, spoken(frame->title())));
    row->addWidget(makeButton(kRatePage));
    row->addStretch(1);
    return frame;
}

QWidget* frmOptions::buildFirm() {
    auto* panel = new QWidget(this);
    panel->setObjectName(arrayName("Picture1", 1));
    auto* column = new QVBoxLayout(panel);
    column->addWidget(buildFirmFields(QStringLiteral("Opsti podaci:"), 0, kFirstFiscal - 1));
    column->addWidget(buildFirmFields(QStringLiteral("Fiskalni podaci:"), kFirstFiscal, kFirmFields - 1));
    column->addStretch(1);
    return panel;
}

QWidget* frmOptions::buildFirmFields(const QString& title, int from, int to) {
    auto* frame = new QGroupBox(title, this);
    auto* grid = new QGridLayout(frame);
    for (int i = from; i <= to; ++i) {
        auto* field = new QLineEdit(frame);
        field->setObjectName(arrayName("Text2", i));
        auto* label = new QLabel(QString::fromLatin1(kFirmRows[i].label), frame);
        label->setObjectName(arrayName("Label2", i));
        label->setBuddy(field);
        field->setAccessibleName(spoken(title) + QLatin1Char(' ') + spoken(label->text()));
        at(text2_, i) = field;
        grid->addWidget(label, i - from, 0);
        grid->addWidget(field, i - from, 1);
    }
    grid->setHorizontalSpacing(10);
    // The same first column in both frames, so that the fields stand under each other.
    grid->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(QStringLiteral("Sifra del.:   ")));
    return frame;
}

QPushButton* frmOptions::makeButton(int index) {
    auto* button = new QPushButton(kCommandCaptions[index].shown(), this);
    button->setObjectName(arrayName("Command1", index));
    button->setAccessibleName(spoken(button->text()));
    button->setMinimumWidth(fontMetrics().horizontalAdvance(button->text()) + 2 * fontMetrics().height());
    at(command_, index) = button;
    return button;
}

QWidget* frmOptions::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    row->addStretch(1);
    for (const int index : {kOk, kCancel, kHelp}) {
        row->addWidget(makeButton(index));
    }
    at(command_, kOk)->setDefault(true);
    return panel;
}

void frmOptions::connectControls() {
    connect(at(command_, kOk), &QPushButton::clicked, this, &frmOptions::okClicked);
    connect(at(command_, kCancel), &QPushButton::clicked, this, &frmOptions::reject);
    connect(at(command_, kHelp), &QPushButton::clicked, this, [] { showHelp(kTopic); });
    connect(at(command_, kRatePage), &QPushButton::clicked, this,
            [this] { LaunchAssociated(this, at(command_, kRatePage)->property(kTag).toString()); });
    connect(at(command_, kUnits), &QPushButton::clicked, this, [this] { onUnits(); });
    connect(at(check_, kTipsAtStartup), &QCheckBox::toggled, at(check_, kTipsAtRandom), &QWidget::setEnabled);
    for (int i = 0; i < kNumbers; ++i) {
        connect(at(text1_, i), &QLineEdit::textChanged, this, [this, i] { numberChanged(i); });
        at(text1_, i)->installEventFilter(this);
    }
    for (QLineEdit* field : text2_) {
        field->installEventFilter(this);
    }
}

// Filling ---------------------------------------------------------------------------------------------------

void frmOptions::Display() {
    if (!loaded_) {
        loaded_ = true;
        load();
    }
    exec();
}

// Where the switches behind the check boxes live, in the order of the boxes.
std::array<bool*, frmOptions::kChecks> frmOptions::switches() {
    return {&AlwaysCreateBackupDB, &ShowFilterStatistics, &CeneDinarske,    &MakeProperCase,
            &AskBeforeDelete,      &ShowTipsAtStartup,    &ShowTipsAtRandom};
}

void frmOptions::load() {
    const auto values = switches();
    for (int i = 0; i < kChecks; ++i) {
        at(check_, i)->setChecked(*at(values, i));
    }
    at(check_, kTipsAtRandom)->setEnabled(at(check_, kTipsAtStartup)->isChecked());
    loadNumbers();
    at(command_, kRatePage)->setProperty(kTag, QString::fromLatin1(kRatePageAddress));
    at(command_, kRatePage)->setToolTip(QString::fromLatin1(kRatePageTip));
    for (int i = 0; i < kFirmFields; ++i) {
        at(text2_, i)->setText(settings::scrambled(firmSetting(i)));
    }
    adjustSize();
    moveToPlace(this, settings::text(settings::OptionsPosition));
    at(check_, 0)->setFocus();
}

void frmOptions::loadNumbers() {
    const QString texts[] = {QString::number(DueDateDiff), QString::number(DefaultGST),
                             platform::textOfSingle(KursKupovni)};
    for (int i = 0; i < kNumbers; ++i) {
        at(text1_, i)->setText(texts[i]);
        at(text1_, i)->setProperty(kTag, QString::fromLatin1(kNumberRows[i].usual));
    }
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

// What is typed ---------------------------------------------------------------------------------------------

bool frmOptions::eventFilter(QObject* watched, QEvent* event) {
    int number = 0;
    while (number < kNumbers && at(text1_, number) != watched) {
        ++number;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (platform::isEnter(key)) {
            platform::pressTab(static_cast<QWidget*>(watched));
            return true;
        }
        if (number < kNumbers &&
            platform::filterNumberKey(*at(text1_, number), key, {number == kRate, number == kRate})) {
            return true;
        }
    }
    if (event->type() == QEvent::FocusOut && number < kNumbers) {
        // Another program's window, or the menu of the field itself, is no leaving.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            numberLeft(number);
        }
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

void frmOptions::numberChanged(int index) {
    const QString text = at(text1_, index)->text();
    const bool isAboveZero = index != kRate || platform::readSingle(text).value_or(0.0F) > 0;
    at(command_, kOk)->setEnabled(isNumberFor(index, text) && isAboveZero);
}

void frmOptions::numberLeft(int index) {
    if (asking_ || !isVisible()) {
        return;
    }
    asking_ = true;
    if (!settleNumber(index)) {
        at(text1_, index)->setFocus();
    }
    asking_ = false;
}

bool frmOptions::settleNumber(int index) {
    QLineEdit* field = at(text1_, index);
    const char* line = nullptr;
    if (!isNumberFor(index, field->text())) {
        line = kNumberRows[index].wrong;
    } else if (index == kRate && platform::readSingle(field->text()).value_or(0.0F) <= 0) {
        line = kRateOfNothing;
    }
    if (!line) {
        return true;
    }
    if (!asksForDefault(line)) {
        return false;
    }
    field->setText(field->property(kTag).toString());
    return true;
}

bool frmOptions::asksForDefault(const char* line) {
    return platform::showBox({QLatin1String(line) + QLatin1Char('\n') + QLatin1String(kAskForDefault),
                              GetResString(1), platform::BoxIcon::Exclamation, platform::BoxButtons::YesNo},
                             this) == platform::BoxAnswer::Yes;
}

// The end ---------------------------------------------------------------------------------------------------

void frmOptions::okClicked() {
    if (!settleNumbers()) {
        return;
    }
    takeOver();
    keep();
    cancelled_ = false;
    WinHelp(helpFile(), HELP_QUIT);
    accept();
}

// A change in one field gives OK free again whatever stands in the others, so they are looked at once more. A
// field left blank has a value of its own.
bool frmOptions::settleNumbers() {
    for (int i = 0; i < kNumbers; ++i) {
        QLineEdit* field = at(text1_, i);
        if (field->text().trimmed().isEmpty() || settleNumber(i)) {
            continue;
        }
        tabs_->setCurrentIndex(0);
        field->setFocus();
        return false;
    }
    return true;
}

void frmOptions::takeOver() {
    const auto values = switches();
    for (int i = 0; i < kChecks; ++i) {
        *at(values, i) = at(check_, i)->isChecked();
    }
    DueDateDiff = wholeNumber(at(text1_, kDays)->text()).value_or(0);
    DefaultGST = wholeNumber(at(text1_, kTax)->text()).value_or(0);
    KursKupovni = platform::readSingle(at(text1_, kRate)->text()).value_or(kRateOfBlank);
}

void frmOptions::keep() {
    platform::Trap step;
    const std::pair<const settings::Setting&, bool> globals[] = {
        {settings::CeneDinarske, CeneDinarske},         {settings::AskBeforeDelete, AskBeforeDelete},
        {settings::MakeProperCase, MakeProperCase},     {settings::ShowTipsAtStartup, ShowTipsAtStartup},
        {settings::ShowTipsAtRandom, ShowTipsAtRandom},
    };
    for (const auto& [setting, value] : globals) {
        step([&] { settings::setBoolean(setting, value); });
    }
    for (int i = 0; i < kFirmFields; ++i) {
        step([&] { settings::setScrambled(firmSetting(i), at(text2_, i)->text().trimmed()); });
    }
    step([&] { settings::setText(settings::KursKupovni, platform::textOfSingle(KursKupovni)); });
    // What was chosen holds until the program is closed; that it will not be there tomorrow has to be told.
    if (step.failed()) {
        platform::showBox({GetResString(1040) + QLatin1Char('\n') + step.line(), GetResString(1),
                           platform::BoxIcon::Exclamation},
                          this);
    }
}

void frmOptions::reject() {
    cancelled_ = true;
    WinHelp(helpFile(), HELP_QUIT);
    QDialog::reject();
}
