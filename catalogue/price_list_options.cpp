#include "catalogue/price_list_options.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"

namespace {

struct SetFacts {
    const char* name;
    const char* title;
    const settings::Setting* setting;
};
constexpr SetFacts kFacts[] = {{"Option1", "Sta&mpati Proizvode:", &settings::priceList.OptionRangeIndex},
                               {"Option2", "&Dodatni Uslov:", &settings::priceList.OptionStateIndex}};
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

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

QWidget* PriceListOptions::addSet(int set) {
    const SetFacts& facts = kFacts[set];
    auto* frame = new QGroupBox(QLatin1String(facts.title), window_);
    frame->setObjectName(arrayName("Frame1", set));
    frame->setAccessibleName(spokenCaption(frame->title()));
    sets_[at(set)] = new QButtonGroup(window_);
    auto* column = new QVBoxLayout(frame);
    for (const OptionRow& row : kOptions) {
        if (row.set != set) {
            continue;
        }
        auto* option = new QRadioButton(QLatin1String(row.caption), frame);
        option->setObjectName(arrayName(facts.name, row.index));
        option->setAccessibleName(spokenCaption(option->text()));
        sets_[at(set)]->addButton(option, row.index);
        column->addWidget(option);
    }
    return frame;
}

QWidget* PriceListOptions::addRounding() {
    auto* panel = new QWidget(window_);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    rounding_ = new QComboBox(panel);
    rounding_->setObjectName(QStringLiteral("Combo1"));
    for (int places = 0; places < static_cast<int>(std::size(kRoundings)); ++places) {
        rounding_->addItem(QLatin1String(kRoundings[places]), places);
    }
    auto* label = new QLabel(QStringLiteral("Broj de&cimala za zaokruzivanje cene:"), panel);
    label->setObjectName(QStringLiteral("Label2"));
    label->setBuddy(rounding_);
    rounding_->setAccessibleName(spokenCaption(label->text()));
    row->addWidget(label);
    row->addWidget(rounding_);
    row->addStretch(1);
    return panel;
}

// A setting that names no choice of the window: the first one, which is the usual one.
void PriceListOptions::load() {
    for (int set = 0; set < kSets; ++set) {
        QAbstractButton* option = sets_[at(set)]->button(settings::integer(*kFacts[set].setting));
        (option ? option : sets_[at(set)]->button(0))->setChecked(true);
    }
    rounding_->setCurrentIndex(
        qMax(0, rounding_->findData(settings::integer(settings::priceList.PriceRoundUp))));
}

void PriceListOptions::save(platform::Trap& step) const {
    for (int set = 0; set < kSets; ++set) {
        step([&] { settings::setInteger(*kFacts[set].setting, chosen(set)); });
    }
    step([&] { settings::setInteger(settings::priceList.PriceRoundUp, decimals()); });
}

int PriceListOptions::chosen(int set) const {
    return sets_[at(set)]->checkedId();
}

int PriceListOptions::decimals() const {
    return rounding_->currentData().toInt();
}
