#include "catalogue/price_list_texts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "catalogue/frmKonfigPrint_rules.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "platform/controls/keys.h"
#include "platform/system/trap.h"

namespace {

constexpr int kHeader = 0, kFooter = 1;       // Text1
constexpr int kFirmsData = 0, kContents = 1;  // Check1

struct TextFacts {
    const char* label;
    const settings::Setting* setting;
};
constexpr TextFacts kTexts[] = {{"&Header:", &settings::priceList.PageHeader},
                                {"&Footer:", &settings::priceList.PageFooter}};
constexpr TextFacts kChecks[] = {
    {"K&oristi postojece podatke o firmi (adresa, telefoni i dr.)", &settings::priceList.UseFirmsData},
    {"Vidljiv sadrzaj izvestaja (navigacioni deo sa leve strane)", &settings::priceList.TOCVisible}};

}  // namespace

// Each tick box stands under the entry that it has to do with, the contents pane under both.
PriceListTexts::PriceListTexts(QWidget* window, QGridLayout* grid) {
    for (int i = 0; i < 2; ++i) {
        addText(i, window, grid);
    }
    for (int i = 0; i < 2; ++i) {
        addCheck(i, window, grid);
    }
    grid->setColumnStretch(1, 1);
    connect(check_[kFirmsData], &QCheckBox::toggled, this, &PriceListTexts::allowFooter);
}

void PriceListTexts::addText(int index, QWidget* window, QGridLayout* grid) {
    const auto place = static_cast<std::size_t>(index);
    const QString caption = QLatin1String(kTexts[place].label);
    auto* text = new QLineEdit(window);
    text->setObjectName(arrayName("Text1", index));
    text->setAccessibleName(spokenCaption(caption));
    text->installEventFilter(this);
    auto* label = new QLabel(caption, window);
    label->setObjectName(arrayName("Label1", index));
    label->setBuddy(text);
    grid->addWidget(label, index, 0);
    grid->addWidget(text, index, 1);
    text_[place] = text;
    label_[place] = label;
}

void PriceListTexts::addCheck(int index, QWidget* window, QGridLayout* grid) {
    const auto place = static_cast<std::size_t>(index);
    auto* check = new QCheckBox(QLatin1String(kChecks[place].label), window);
    check->setObjectName(arrayName("Check1", index));
    check->setAccessibleName(spokenCaption(check->text()));
    grid->addWidget(check, 2 + index, 1);
    check_[place] = check;
}

void PriceListTexts::load() {
    for (std::size_t i = 0; i < 2; ++i) {
        text_[i]->setText(settings::text(*kTexts[i].setting));
        check_[i]->setChecked(settings::integer(*kChecks[i].setting) != 0);
    }
    allowFooter();
}

void PriceListTexts::save(platform::Trap& step) const {
    for (std::size_t i = 0; i < 2; ++i) {
        step([&] { settings::setText(*kTexts[i].setting, text_[i]->text()); });
        step([&] { settings::setInteger(*kChecks[i].setting, check_[i]->isChecked() ? 1 : 0); });
    }
}

QString PriceListTexts::header() const {
    return text_[kHeader]->text();
}

QString PriceListTexts::footer() const {
    return usesFirmsData() ? price_list::firmsFooter() : text_[kFooter]->text();
}

bool PriceListTexts::hasContents() const {
    return check_[kContents]->isChecked();
}

bool PriceListTexts::usesFirmsData() const {
    return check_[kFirmsData]->isChecked();
}

void PriceListTexts::allowFooter() {
    text_[kFooter]->setEnabled(!usesFirmsData());
    label_[kFooter]->setEnabled(!usesFirmsData());
}

bool PriceListTexts::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && platform::isEnter(*static_cast<QKeyEvent*>(event))) {
        platform::pressTab(static_cast<QWidget*>(watched));
        return true;
    }
    return QObject::eventFilter(watched, event);
}
