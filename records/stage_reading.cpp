#include "records/stage_reading.h"

#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/main_view.h"
#include "records/stages.h"

using platform::Selection;
using platform::Trap;

namespace {

const QString kWorking = QStringLiteral("Working... Please Wait...");

}  // namespace

StageReading::StageReading(Stages& stages, MainView& window) : stages_(stages), window_(window) {}

// --- One stage.

void StageReading::FillClientCombo() {
    fill(kClients);
}

// Before anybody has gone there this is the whole shop's, and going there reads those of one client instead.
void StageReading::FillComputerCombo() {
    if (stages_.CurrentStage > kComputers) {
        return fill(kComputers);
    }
    stages_.LoadingList = true;
    stages_[kComputers].fillWhenSeen();
    window_.UpdateToolbarState();
    stages_.LoadingList = false;
}

void StageReading::fill(int index) {
    stages_.LoadingList = true;
    stages_[index].fill();
    window_.UpdateToolbarState();
    stages_.LoadingList = false;
}

void StageReading::select(int index, qint32 number) {
    Stage& stage = stages_[index];
    const platform::Selector& selector = stage.entries.selector();
    int entry = 0;
    while (entry < selector.entryCount() && selector.entryData(entry) != number) {
        ++entry;
    }
    if (number < 0 || entry == selector.entryCount() || !stage.data().isOpen()) {
        return;
    }
    stages_.LoadingList = true;
    Trap step;
    step([&] { stage.records.find(number); });
    stages_.LoadingList = false;
    if (step.failed() || stage.data().Recordset().NoMatch()) {
        return;
    }
    stage.entries.select(entry);
    stage.caption.show(selector.currentText());
}

// --- Moving on.

// The filling is a step of its own: a stage that could not be read must be emptied, or the records of the
// client before stand under the name of this one.
void StageReading::updateAhead(int oldStage, int newStage, Trap& step) {
    if (oldStage == 1 && newStage > 1) {
        updateComputers(newStage == 3, step);
    } else if (oldStage == 2 && newStage == 3 &&
               stages_[kServices].records.isStale(stages_.servicesOfComputer())) {
        step([&] { window_.SetStatusText(kWorking); });
        updateServices(step);
        step([&] { window_.SetStatusText({}); });
    }
}

void StageReading::updateComputers(bool servicesToo, Trap& step) {
    Stage& computers = stages_[kComputers];
    const Selection ofClient = stages_.computersOfClient();
    const bool stale = computers.records.isStale(ofClient);
    const QString chosen = stale ? computers.chosenName() : computers.entries.selector().currentText();
    if (chosen.isEmpty()) {
        computers.caption.showUsual();
    } else {
        computers.caption.show(chosen);
    }
    if (!stale) {
        return;
    }
    step([&] { window_.SetStatusText(kWorking); });
    step([&] { computers.records.refresh(ofClient); });
    step([&] { fill(kComputers); });
    if (servicesToo && stages_[kServices].records.isStale(stages_.servicesOfComputer())) {
        updateServices(step);
    }
    step([&] { window_.SetStatusText({}); });
}

void StageReading::updateServices(Trap& step) {
    step([&] { stages_[kServices].records.refresh(stages_.servicesOfComputer()); });
    step([&] { window_.FillServiceList({}); });
    step([&] { window_.UpdateServiceButtons(); });
}

void StageReading::reorderServices() {
    Stage& services = stages_[kServices];
    services.records.refresh(stages_.inOrder(services.data().selection));
}

// --- All of them.

void StageReading::reload(const StepRunner& step, const std::array<qint32, 2>& keep, bool unitToo) {
    Stage& clients = stages_[kClients];
    Stage& computers = stages_[kComputers];
    step([] { refreshCache(); });
    step([&] { clients.records.refresh(stages_.all(kClients)); });
    clients.dirty = false;
    step([&] { fill(kClients); });
    select(kClients, keep[0]);
    step([] { refreshCache(); });
    step([&] {
        computers.records.refresh(clients.entries.isChosen() ? stages_.computersOfClient()
                                                             : stages_.all(kComputers));
    });
    step([&] { fill(kComputers); });
    select(kComputers, keep[1]);
    computers.dirty = true;
    const Selection services = computers.entries.isChosen()
                                   ? stages_.belonging(kServices, Selection::Words::Initials)
                                   : stages_.all(kServices);
    if (unitToo) {
        step([&] { window_.showUnit(); });
    }
    step([] { refreshCache(); });
    step([&] { stages_[kServices].records.refresh(stages_.inOrder(services)); });
    step([&] { window_.FillServiceList({}); });
    window_.UpdateServiceButtons();
}

// A stage that cannot be read is emptied and leaves the others to be read.
void StageReading::reopen(Trap& step) {
    Stage& computers = stages_[kComputers];
    Stage& services = stages_[kServices];
    step([&] { fill(kClients); });
    const Selection allComputers = stages_.all(kComputers, Selection::Words::Initials);
    step([] { refreshCache(); });
    step([&] {
        computers.records.refresh(stages_[kClients].entries.isChosen() ? stages_.computersOfClient()
                                                                       : allComputers);
    });
    step([&] { fill(kComputers); });
    computers.data().selection = allComputers;
    computers.entries.remembered = -1;
    const Selection allServices = stages_.all(kServices, Selection::Words::Initials);
    step([] { refreshCache(); });
    step([&] {
        services.records.refresh(computers.entries.isChosen() ? stages_.servicesOfComputer()
                                                              : stages_.inOrder(allServices));
    });
    step([&] { window_.FillServiceList({}); });
    services.data().selection = allServices;
}
