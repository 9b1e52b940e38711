#include "records/stages.h"

#include "common/window_helpers.h"
#include "platform/system/trap.h"
#include "records/main_view.h"

using platform::Selection;
using platform::Trap;

namespace {

const QString kWorking = QStringLiteral("Working... Please Wait...");

QString numbered(const Stage& stage) {
    return QStringLiteral("%1=%2").arg(QLatin1String(stage.facts().key)).arg(stage.chosen());
}

}  // namespace

Stages::Stages(const EntryFields& fields, const ListOrder& order, MainView& window, QObject* parent)
    : stages_{Stage(kClients, fields, window, parent), Stage(kComputers, fields, window, parent),
              Stage(kServices, fields, window, parent)},
      order_(order),
      window_(window) {}

// --- Selections.

QString Stages::query(int index) const {
    return QLatin1String(stageFacts(index).query) + QString::number(querySuffix);
}

Selection Stages::all(int index, Selection::Words words) const {
    return Selection::all(query(index), words);
}

// An entry that is not there has the number -1, and that of no record.
Selection Stages::belonging(int index) const {
    return all(index).matching(numbered((*this)[index - 1]));
}

Selection Stages::computersOfClient() const {
    return belonging(kComputers);
}

Selection Stages::servicesOfComputer() const {
    return belonging(kServices).orderedBy(order_.inForce());
}

// --- One stage.

void Stages::fill(int index) {
    loading = true;
    (*this)[index].fill();
    window_.UpdateToolbarState();
    loading = false;
}

void Stages::select(int index, qint32 number) {
    Stage& stage = (*this)[index];
    const platform::Selector& selector = stage.selector();
    int entry = 0;
    while (entry < selector.entryCount() && selector.entryData(entry) != number) {
        ++entry;
    }
    if (number < 0 || entry == selector.entryCount() || !stage.data().isOpen()) {
        return;
    }
    loading = true;
    Trap step;
    step([&] { stage.findRecord(number); });
    loading = false;
    if (step.failed() || stage.data().Recordset().NoMatch()) {
        return;
    }
    stage.select(entry);
    stage.showCaption(selector.currentText());
}

void Stages::fieldTyped(int index, const QWidget* field) {
    if (loading) {
        return;
    }
    (*this)[index].dirty = (*this)[index].data().DataChanged(field);
    window_.UpdateToolbarState();
}

// --- Moving on.

// The filling is a step of its own: a stage that could not be read must be emptied, or the records of the
// client before stand under the name of this one.
void Stages::updateAhead(int oldStage, int newStage, Trap& step) {
    if (oldStage == 1 && newStage > 1) {
        updateComputers(newStage == 3, step);
    } else if (oldStage == 2 && newStage == 3 && (*this)[kServices].isStale(servicesOfComputer())) {
        step([&] { window_.SetStatusText(kWorking); });
        updateServices(step);
        step([&] { window_.SetStatusText({}); });
    }
}

void Stages::updateComputers(bool servicesToo, Trap& step) {
    Stage& computers = (*this)[kComputers];
    const Selection ofClient = computersOfClient();
    const QString chosen = computers.selector().currentText();
    if (chosen.isEmpty()) {
        computers.showUsualCaption();
    } else {
        computers.showCaption(chosen);
    }
    if (!computers.isStale(ofClient)) {
        return;
    }
    step([&] { window_.SetStatusText(kWorking); });
    step([&] { computers.refresh(ofClient); });
    step([&] { fill(kComputers); });
    if (servicesToo && (*this)[kServices].isStale(servicesOfComputer())) {
        updateServices(step);
    }
    step([&] { window_.SetStatusText({}); });
}

void Stages::updateServices(Trap& step) {
    step([&] { (*this)[kServices].refresh(servicesOfComputer()); });
    step([&] { window_.FillServiceList({}); });
    step([&] { window_.UpdateServiceButtons(); });
}

void Stages::reorderServices() {
    Stage& services = (*this)[kServices];
    services.refresh(services.data().selection().orderedBy(order_.inForce()));
}

// --- All of them.

void Stages::reload(const StepRunner& step, const std::array<qint32, 2>& keep, bool unitToo) {
    Stage& clients = (*this)[kClients];
    Stage& computers = (*this)[kComputers];
    step([] { refreshCache(); });
    step([&] { clients.refresh(all(kClients)); });
    clients.dirty = false;
    step([&] { fill(kClients); });
    select(kClients, keep[0]);
    step([] { refreshCache(); });
    step([&] { computers.refresh(clients.isChosen() ? computersOfClient() : all(kComputers)); });
    step([&] { fill(kComputers); });
    select(kComputers, keep[1]);
    computers.dirty = true;
    const Selection services = computers.isChosen()
                                   ? all(kServices, Selection::Words::Initials).matching(numbered(computers))
                                   : all(kServices);
    if (unitToo) {
        step([&] { window_.showUnit(); });
    }
    step([] { refreshCache(); });
    step([&] { (*this)[kServices].refresh(services.orderedBy(order_.inForce())); });
    step([&] { window_.FillServiceList({}); });
    window_.UpdateServiceButtons();
}

// A stage that cannot be read is emptied and leaves the others to be read.
void Stages::reopen(Trap& step) {
    Stage& computers = (*this)[kComputers];
    Stage& services = (*this)[kServices];
    step([&] { fill(kClients); });
    const Selection allComputers = all(kComputers, Selection::Words::Initials);
    step([] { refreshCache(); });
    step([&] { computers.refresh((*this)[kClients].isChosen() ? computersOfClient() : allComputers); });
    step([&] { fill(kComputers); });
    computers.data().select(allComputers);
    computers.remembered = -1;
    const Selection allServices = all(kServices, Selection::Words::Initials);
    step([] { refreshCache(); });
    step([&] {
        services.refresh(computers.isChosen() ? servicesOfComputer()
                                              : allServices.orderedBy(order_.inForce()));
    });
    step([&] { window_.FillServiceList({}); });
    services.data().select(allServices);
}
