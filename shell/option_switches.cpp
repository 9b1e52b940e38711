#include "shell/option_switches.h"

#include <QBoxLayout>
#include <QCheckBox>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/program_windows.h"
#include "shell/option_controls.h"

namespace {

constexpr std::size_t kMainWindows = 2;  // the main window's stand before the program's
constexpr std::size_t kTipsAtStartup = 5, kTipsAtRandom = 6;

constexpr options::Caption kCaptions[] = {
    {454},
    {457},
    {0, "&Cene prikazi u Dinarima"},
    {0, "A&utomatski koriguj uneti tekst (velika i mala slova)"},
    {0, "Pitaj pre &brisanja stavki u bilo kojoj listi"},
    {0, "Pri p&okretanju programa prikazi Tip of Day"},
    {0, "&Menjaj Tip of Day po slucajnom redosledu"},
};

}  // namespace

void OptionSwitches::addMainWindows(QBoxLayout* column) {
    for (std::size_t i = 0; i < kMainWindows; ++i) {
        add(column, i);
    }
}

void OptionSwitches::addPrograms(QBoxLayout* column) {
    for (std::size_t i = kMainWindows; i < kCount; ++i) {
        add(column, i);
    }
    QObject::connect(boxes_[kTipsAtStartup], &QCheckBox::toggled, boxes_[kTipsAtRandom],
                     &QWidget::setEnabled);
}

void OptionSwitches::add(QBoxLayout* column, std::size_t index) {
    auto* box = new QCheckBox(kCaptions[index].shown(), window_);
    box->setObjectName(arrayName("Check1", static_cast<int>(index)));
    box->setAccessibleName(spokenCaption(box->text()));
    boxes_[index] = box;
    auto* row = new QHBoxLayout;  // a click beside the words must not change a switch
    if (index == kTipsAtRandom) {
        row->addSpacing(20);
    }
    row->addWidget(box);
    row->addStretch(1);
    column->addLayout(row);
}

// Where the switches behind the check boxes live, in the order of the boxes.
std::array<bool*, OptionSwitches::kCount> OptionSwitches::values() const {
    return {&options_.AlwaysCreateBackupDB,
            &options_.ShowFilterStatistics,
            &CeneDinarske,
            &MakeProperCase,
            &AskBeforeDelete,
            &ShowTipsAtStartup,
            &ShowTipsAtRandom};
}

void OptionSwitches::load() {
    const auto stand = values();
    for (std::size_t i = 0; i < kCount; ++i) {
        boxes_[i]->setChecked(*stand[i]);
    }
    boxes_[kTipsAtRandom]->setEnabled(boxes_[kTipsAtStartup]->isChecked());
}

void OptionSwitches::takeOver() const {
    const auto stand = values();
    for (std::size_t i = 0; i < kCount; ++i) {
        *stand[i] = boxes_[i]->isChecked();
    }
}

void OptionSwitches::keep(platform::Trap& step) const {
    struct Switch {
        const settings::Setting& setting;
        bool value;
    };
    const Switch switches[] = {
        {settings::CeneDinarske, CeneDinarske},         {settings::AskBeforeDelete, AskBeforeDelete},
        {settings::MakeProperCase, MakeProperCase},     {settings::ShowTipsAtStartup, ShowTipsAtStartup},
        {settings::ShowTipsAtRandom, ShowTipsAtRandom},
    };
    for (const Switch& each : switches) {
        step([&] { settings::setBoolean(each.setting, each.value); });
    }
}
