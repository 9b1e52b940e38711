#include "catalogue/frmKonfigPrint.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <source_location>
#include <utility>

#include "catalogue/ActiveReport1.h"
#include "catalogue/frmKonfigPrint_rules.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "data/session.h"
#include "platform/controls/boxes.h"
#include "platform/controls/data_control.h"
#include "platform/controls/keys.h"
#include "platform/controls/pictures.h"
#include "platform/controls/wait_pointer.h"
#include "platform/system/trap.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

const QString kWindow = QStringLiteral("frmKonfigPrint");

constexpr int kSets = 2;
constexpr const char* kTextLabels[] = {"&Header:", "&Footer:"};
constexpr const settings::Setting* kTexts[] = {&settings::priceList.PageHeader,
                                               &settings::priceList.PageFooter};
constexpr const char* kCheckCaptions[] = {"K&oristi postojece podatke o firmi (adresa, telefoni i dr.)",
                                          "Vidljiv sadrzaj izvestaja (navigacioni deo sa leve strane)"};
constexpr const settings::Setting* kChecks[] = {&settings::priceList.UseFirmsData,
                                                &settings::priceList.TOCVisible};
constexpr const char* kSetNames[] = {"Option1", "Option2"};
constexpr const char* kSetTitles[] = {"Sta&mpati Proizvode:", "&Dodatni Uslov:"};
constexpr const settings::Setting* kSetSettings[] = {&settings::priceList.OptionRangeIndex,
                                                     &settings::priceList.OptionStateIndex};
constexpr const char* kRoundings[] = {"Ceo broj", "Jedna decimala", "Dve decimale"};

struct OptionRow {
    int set, index;
    const char* caption;
};
constexpr OptionRow kOptions[] = {
    {0, 0, "&Sve Proizvode"},
    {0, 1, "Koji pripadaju samo izabranoj &Grupi"},
    {0, 2, "Koji pripadaju samo izabranom &Proizvodjacu"},
    {0, 3, "&Koji pripadaju samo izabranoj Grupi i samo izabranom Proizvodjacu"},
    {1, 0, "&Bez obzira na kolicinu proizvoda"},
    {1, 1, "Samo proizvode kojih &Ima na stanju (Kolicina > 0)"},
    {1, 2, "Samo proizvode kojih &Nema na stanju (Kolicina = 0)"},
};

QString spokenOf(QString label) {
    return label.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

size_t at(int index) {
    return static_cast<size_t>(index);
}

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmKonfigPrint::frmKonfigPrint(QWidget* parent) : QDialog(parent) {
    setObjectName(kWindow);
    setWindowTitle(QStringLiteral("Opcije Stampanja"));
    onShow = [this](ActiveReport1& report) { report.Show(true, this); };
    data_ = new platform::DataControl(this);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 14, 14, 12);
    column->setSpacing(10);
    auto* grid = new QGridLayout;
    buildTexts(grid);
    column->addLayout(grid);
    for (int set = 0; set < kSets; ++set) {
        column->addWidget(buildOptions(set));
    }
    column->addWidget(buildRounding());
    column->addStretch(1);
    column->addWidget(buildButtons());
    connectControls();
}

frmKonfigPrint::~frmKonfigPrint() {
    Unload();
}

// Each tick box stands under the entry that it has to do with, the contents pane under both.
void frmKonfigPrint::buildTexts(QGridLayout* grid) {
    for (int i = 0; i < 2; ++i) {
        const QString caption = QLatin1String(kTextLabels[i]);
        text_[at(i)] = new QLineEdit(this);
        text_[at(i)]->setObjectName(arrayName("Text1", i));
        text_[at(i)]->setAccessibleName(spokenOf(caption));
        label_[at(i)] = new QLabel(caption, this);
        label_[at(i)]->setObjectName(arrayName("Label1", i));
        label_[at(i)]->setBuddy(text_[at(i)]);
        grid->addWidget(label_[at(i)], i, 0);
        grid->addWidget(text_[at(i)], i, 1);
    }
    for (int i = 0; i < 2; ++i) {
        check_[at(i)] = new QCheckBox(QLatin1String(kCheckCaptions[i]), this);
        check_[at(i)]->setObjectName(arrayName("Check1", i));
        check_[at(i)]->setAccessibleName(spokenOf(check_[at(i)]->text()));
        grid->addWidget(check_[at(i)], 2 + i, 1);
    }
    grid->setColumnStretch(1, 1);
}

QWidget* frmKonfigPrint::buildOptions(int set) {
    auto* frame = new QGroupBox(QLatin1String(kSetTitles[set]), this);
    frame->setObjectName(arrayName("Frame1", set));
    frame->setAccessibleName(spokenOf(frame->title()));
    options_[at(set)] = new QButtonGroup(this);
    auto* column = new QVBoxLayout(frame);
    for (const OptionRow& row : kOptions) {
        if (row.set != set) {
            continue;
        }
        auto* option = new QRadioButton(QLatin1String(row.caption), frame);
        option->setObjectName(arrayName(kSetNames[set], row.index));
        option->setAccessibleName(spokenOf(option->text()));
        options_[at(set)]->addButton(option, row.index);
        column->addWidget(option);
    }
    return frame;
}

QWidget* frmKonfigPrint::buildRounding() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    combo_ = new QComboBox(panel);
    combo_->setObjectName(QStringLiteral("Combo1"));
    for (int decimals = 0; decimals < static_cast<int>(std::size(kRoundings)); ++decimals) {
        combo_->addItem(QLatin1String(kRoundings[decimals]), decimals);
    }
    auto* label = new QLabel(QStringLiteral("Broj de&cimala za zaokruzivanje cene:"), panel);
    label->setObjectName(QStringLiteral("Label2"));
    label->setBuddy(combo_);
    combo_->setAccessibleName(spokenOf(label->text()));
    row->addWidget(label);
    row->addWidget(combo_);
    row->addStretch(1);
    return panel;
}

QWidget* frmKonfigPrint::buildButtons() {
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 4, 0, 0);
    row->addStretch(1);
    const char* const captions[] = {"Stampaj...", "Otkazi"};
    for (int i = 0; i < 2; ++i) {
        auto* button = new QPushButton(QLatin1String(captions[i]), panel);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spokenOf(button->text()));
        command_[at(i)] = button;
        row->addWidget(button);
    }
    command_[0]->setIcon(platform::icon(QStringLiteral("Print")));
    command_[0]->setToolTip(QStringLiteral("Pregled cenovnika pre stampe"));
    command_[0]->setDefault(true);
    return panel;
}

void frmKonfigPrint::connectControls() {
    connect(check_[kFirmsData], &QCheckBox::toggled, this, &frmKonfigPrint::firmsDataClicked);
    connect(command_[0], &QPushButton::clicked, this, &frmKonfigPrint::print);
    connect(command_[1], &QPushButton::clicked, this, &frmKonfigPrint::reject);
    for (QLineEdit* text : text_) {
        text->installEventFilter(this);
    }
    platform::enterPressesButtons(this);
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
    for (int i = 0; i < 2; ++i) {
        text_[at(i)]->setText(settings::text(*kTexts[i]));
        check_[at(i)]->setChecked(settings::integer(*kChecks[i]) != 0);
    }
    firmsDataClicked();
    // A setting that names no choice of the window: the first one, which is the usual one.
    for (int set = 0; set < kSets; ++set) {
        QAbstractButton* option = options_[at(set)]->button(settings::integer(*kSetSettings[set]));
        (option ? option : options_[at(set)]->button(0))->setChecked(true);
    }
    combo_->setCurrentIndex(qMax(0, combo_->findData(settings::integer(settings::priceList.PriceRoundUp))));
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

void frmKonfigPrint::firmsDataClicked() {
    const bool typed = !check_[kFirmsData]->isChecked();
    text_[kFooter]->setEnabled(typed);
    label_[kFooter]->setEnabled(typed);
}

bool frmKonfigPrint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && platform::isEnter(*static_cast<QKeyEvent*>(event))) {
        platform::pressTab(static_cast<QWidget*>(watched));
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

// Printing --------------------------------------------------------------------------------------------------

int frmKonfigPrint::optionOf(int set) const {
    return options_[at(set)]->checkedId();
}

void frmKonfigPrint::saveChoice(Trap& step) {
    for (int i = 0; i < 2; ++i) {
        step([&] { settings::setText(*kTexts[i], text_[at(i)]->text()); });
        step([&] { settings::setInteger(*kChecks[i], check_[at(i)]->isChecked() ? 1 : 0); });
    }
    for (int set = 0; set < kSets; ++set) {
        step([&] { settings::setInteger(*kSetSettings[set], optionOf(set)); });
    }
    step([&] { settings::setInteger(settings::priceList.PriceRoundUp, combo_->currentData().toInt()); });
}

void frmKonfigPrint::print() {
    Trap step;
    saveChoice(step);
    QString errorText;
    bool ok = true;
    step([&] { ok = DoPrintDataReport(errorText); });
    if (!ok) {
        platform::showBox({errorText, GetResString(1), BoxIcon::Exclamation}, this);
    }
    if (step.failed()) {
        platform::showBox({step.line(), GetResString(1), BoxIcon::Critical}, this);
    }
}

QString frmKonfigPrint::PriceListQuery() const {
    return price_list::statement({optionOf(0), optionOf(1), idGrupe_, idProizvodjaca_});
}

QString frmKonfigPrint::BuildFooterText() const {
    return check_[kFirmsData]->isChecked() ? price_list::firmsFooter() : text_[kFooter]->text();
}

bool frmKonfigPrint::DoPrintDataReport(QString& errorText) {
    bool failed = false;
    const auto step = [&](auto&& work, std::source_location where = std::source_location::current()) {
        Trap one;
        one(work, where);
        if (!one.failed()) {
            return;
        }
        failed = true;
        // The window had another name when the shop's people learnt to read this one out.
        errorText += QStringLiteral("%1 Prog. linija: %2; frmDobavljaciAll -> DoPrintDataReport procedure.\n")
                         .arg(one.line())
                         .arg(one.codeLine());
    };
    QString footer;
    step([&] { footer = BuildFooterText(); });
    {
        const platform::WaitPointer wait;
        step([&] { data_->DatabaseName = databasePath(); });
        step([&] {
            const QString password = BuildDatabasePassword();
            if (!data_->Connect.contains(password)) {
                data_->Connect += QStringLiteral(";Pwd=") + password;
            }
        });
        step([&] { data_->setRecordSource(PriceListQuery()); });
        step([&] { data_->Refresh(); });
    }
    if (!failed) {
        step([&] { showList(footer); });
    }
    data_->Close();  // the colleagues' exclusive use of the file must not wait for the next list
    if (errorText.endsWith(QLatin1Char('\n'))) {
        errorText.chop(1);
    }
    return !failed;
}

void frmKonfigPrint::showList(const QString& footer) {
    if (data_->Recordset().RecordCount() == 0) {
        platform::showBox({QStringLiteral("Nema podataka koji zadovoljavaju postavljene uslove."),
                           GetResString(1), BoxIcon::Information},
                          this);
        return;
    }
    ActiveReport1 report;
    report.setReportHeader(text_[kHeader]->text());
    report.setReportFooter(footer);
    report.setPriceRoundUp(combo_->currentData().toInt());
    report.setTOCVisible(check_[kContents]->isChecked());
    report.setRecordset(data_->Recordset());
    onShow(report);
}
