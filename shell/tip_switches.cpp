#include "shell/tip_switches.h"

#include <QBoxLayout>
#include <QCheckBox>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "shell/tip_failure.h"

using platform::Trap;

void TipSwitches::addTo(QBoxLayout* column) {
    atStartup_ = makeBox("chkLoadTipsAtStartup", 10208);
    atRandom_ = makeBox("chkShowTipsAtRandom", 10209);
    for (QCheckBox* box : {atStartup_, atRandom_}) {
        column->addWidget(box, 0, Qt::AlignLeft);
    }
    QObject::connect(atStartup_, &QCheckBox::clicked, window_, [this] { keepAtStartup(); });
    QObject::connect(atRandom_, &QCheckBox::clicked, window_, [this] { keepAtRandom(); });
}

QCheckBox* TipSwitches::makeBox(const char* name, int captionId) {
    auto* box = new QCheckBox(GetResString(captionId), window_);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(spokenCaption(box->text()));
    return box;
}

void TipSwitches::load() {
    atStartup_->setChecked(ShowTipsAtStartup);
    atRandom_->setChecked(ShowTipsAtRandom);
}

void TipSwitches::keepAtStartup() {
    Trap step;
    step([&] { settings::setBoolean(settings::ShowTipsAtStartup, atStartup_->isChecked()); });
    step([&] { ShowTipsAtStartup = atStartup_->isChecked(); });
    if (step.failed()) {
        tellTipFailure(10210, step, window_);
    }
}

void TipSwitches::keepAtRandom() {
    Trap step;
    step([&] { settings::setBoolean(settings::ShowTipsAtRandom, atRandom_->isChecked()); });
    step([&] { ShowTipsAtRandom = atRandom_->isChecked(); });
    if (step.failed()) {
        tellTipFailure(10211, step, window_);
    }
}
