#include "records/command_table.h"

#include <array>

#include "common/help.h"
#include "common/modMain.h"
#include "common/window_helpers.h"
#include "records/filter_menu.h"
#include "records/frmLegend.h"
#include "records/list_sorting.h"
#include "records/main_options.h"
#include "records/main_shape.h"
#include "records/program_windows.h"
#include "records/quick_filters.h"
#include "records/record_editing.h"
#include "records/record_removal.h"
#include "records/report_run.h"
#include "records/service_commands.h"
#include "records/shop_filter.h"
#include "records/shop_session.h"
#include "records/stages.h"

namespace {

using State = CommandState;
using Targets = CommandTargets;

bool clientChosen(const State& s) {
    return s.clientChosen;
}
bool computerChosen(const State& s) {
    return s.computerChosen;
}
bool serviceListed(const State& s) {
    return s.hasServices;
}
bool serviceEditable(const State& s) {
    return s.computerChosen && s.hasServices;
}
bool onServices(const State& s) {
    return s.stage == 3;
}
bool onListedServices(const State& s) {
    return s.stage == 3 && s.hasServices;
}
bool onEditableServices(const State& s) {
    return s.stage == 3 && serviceEditable(s);
}
bool onChosenService(const State& s) {
    return s.stage == 3 && s.serviceChosen;
}
bool dirty(const State& s) {
    return s.dirty;
}

// One of the three by the stage on show.
bool byStage(const State& s, bool client, bool computer, bool service) {
    return s.stage == 1 ? client : s.stage == 2 ? computer : service;
}
bool addable(const State& s) {
    return byStage(s, true, s.clientChosen, s.computerChosen);
}
bool addableByButton(const State& s) {
    return byStage(s, true, s.hasClients, s.hasComputers);
}
// While a record is being added nothing is chosen; what there was before is still there to be deleted.
bool removable(const State& s) {
    return byStage(s, s.clientChosen || (s.adding && s.hasClients),
                   s.computerChosen || (s.adding && s.hasComputers), s.hasServices);
}
bool removableByButton(const State& s) {
    return byStage(s, s.hasClients, s.hasComputers, s.hasServices);
}

constexpr CommandRow filterRow(Command name, int number, void (*action)(Targets&), Rule isActive) {
    const int position = quick_filters::kFirstPosition + number;
    return {name,
            action,
            {Menu::QuickSearch, position, quick_filters::kFilters[static_cast<std::size_t>(number)].textId,
             nullptr, isActive},
            {},
            {},
            nullptr,
            number};
}

template <int number>
constexpr CommandRow quickFilter(Command name) {
    return filterRow(
        name, number,
        [](Targets& to) { to.filters.mnuQuickSearch_Click(quick_filters::kFirstPosition + number); },
        [](const State& s) { return s.activeFilter == number; });
}

void tellComingLater(Targets& to) {
    box(&to.window, GetResString(166), platform::BoxIcon::Information);
}

void tellHowToFilter(Targets& to) {
    box(&to.window,
        QStringLiteral(
            "Press a little down arrow on the very righ of this button to select a filter to apply."),
        platform::BoxIcon::Information);
}

void openHelpIndex(Targets&) {
    if (CheckHelpFile()) {
        WinHelp(helpFile(), HELP_KEY);
    }
}

void saveRecord(Targets& to) {
    bool ok = false;
    to.editing.SaveRecord(to.stages.CurrentStage, ok);
}

void deleteRecord(Targets& to) {
    to.removal.DeleteRecord(to.stages.CurrentStage - 1);
}

void openInvoice(Targets& to) {
    to.services.openDocument(true);
}

void openLegend(Targets& to) {
    frmLegend legend(&to.window);
    legend.Display();
    legend.Unload();
}

void restartDatabase(Targets& to) {
    if (!to.session.restartOrTell(false)) {
        to.unload();
    }
}

void compactDatabase(Targets& to) {
    if (!to.session.restartOrTell(true)) {
        to.unload();
    }
}

constexpr std::array kRows = {
    CommandRow{Command::AddRecord,
               [](Targets& to) { to.editing.AddNewRecord(); },
               {Menu::Database, 0, 501, addable},
               {},
               {"NewRecord", 0, 2101, true, Renewal::WithRecords, addableByButton},
               "Ctrl+N"},
    CommandRow{Command::EditService,
               [](Targets& to) { to.services.editSelected(); },
               {Menu::Database, 1, 502, onEditableServices},
               {Menu::Popup, 2, 803, serviceEditable},
               {"EditRecord", 1, 2104, false, Renewal::WithServices, onListedServices}},
    CommandRow{Command::DeleteRecord,
               deleteRecord,
               {Menu::Database, 3, 504, removable},
               {Menu::Popup, 5, 806, serviceListed},
               {"DeleteRecord", 3, 2102, true, Renewal::WithRecords, removableByButton}},
    CommandRow{Command::SaveRecord,
               saveRecord,
               {Menu::Database, 5, 506, dirty},
               {},
               {"SaveRecord", 5, 2103, true, Renewal::WithRecords, dirty},
               "Ctrl+S"},
    CommandRow{Command::Search, tellComingLater, {Menu::Database, 7, 508, clientChosen}},
    CommandRow{
        Command::QuickFilter, nullptr, {Menu::Database, 8, 509, clientChosen, nullptr, Menu::QuickSearch}},
    CommandRow{Command::Utilities, nullptr, {Menu::Database, 10, 511, nullptr, nullptr, Menu::Utilities}},
    CommandRow{Command::Exit, [](Targets& to) { to.unload(); }, {Menu::Database, 12, 513}},

    CommandRow{Command::RemoveFilters,
               [](Targets& to) { to.filter.RemoveFilters(); },
               {Menu::QuickSearch, 0, 521, [](const State& s) { return s.activeFilter != -1; }}},
    quickFilter<0>(Command::FilterFinishedNotPaid),
    quickFilter<1>(Command::FilterNotFinishedNotPaid),
    quickFilter<2>(Command::FilterNotFinishedPaid),
    quickFilter<3>(Command::FilterDueNotPaid),
    quickFilter<4>(Command::FilterDuePaid),

    CommandRow{Command::Invoice,
               openInvoice,
               {Menu::Utilities, 0, 548, onListedServices},
               {Menu::Popup, 9, 810, serviceListed},
               {"Invoice", 15, 2113, false, Renewal::WithServices, onListedServices},
               "Ctrl+P"},
    CommandRow{Command::Quotation,
               [](Targets& to) { to.services.openDocument(false); },
               {Menu::Utilities, 1, 549, onListedServices},
               {},
               {"Quotation", 16, 2114, false, Renewal::WithServices, onListedServices}},
    CommandRow{Command::RestartDatabase, restartDatabase, {Menu::Utilities, 3, 551}},
    CommandRow{Command::CompactDatabase, compactDatabase, {Menu::Utilities, 4, 552}},

    CommandRow{Command::ShowToolbar,
               [](Targets& to) { to.shape.ToggleToolbar(); },
               {Menu::View, 0, 601, nullptr, [](const State& s) { return s.toolbarShown; }}},
    CommandRow{Command::ShowStatusBar,
               [](Targets& to) { to.shape.ToggleStatusBar(); },
               {Menu::View, 1, 602, nullptr, [](const State& s) { return s.statusBarShown; }}},
    CommandRow{Command::ReportOptions,
               [](Targets& to) { to.report.OpenReportOptions(); },
               {Menu::View, 3, 604, clientChosen}},
    CommandRow{
        Command::Report,
        [](Targets& to) { to.report.GenerateReport(); },
        {Menu::View, 4, 605, clientChosen},
        {},
        {"ViewReport", 12, 2108, true, Renewal::WithRecords, [](const State& s) { return s.hasClients; }}},
    CommandRow{Command::PriceList,
               [](Targets& to) { to.services.openRequisition(); },
               {Menu::View, 6, 607, onChosenService},
               {Menu::Popup, 7, 808, serviceListed},
               {"PriceList", 14, 2117, false, Renewal::WithServices, onListedServices}},
    CommandRow{Command::Options,
               [](Targets& to) { OpenOptions(to.window, to.windows, to.choices, to.filter); },
               {Menu::View, 8, 609}},
    CommandRow{Command::Refresh,
               [](Targets& to) { to.filter.RefreshAll(); },
               {Menu::View, 10, 611},
               {},
               {"Refresh", 10, 2116},
               "F5"},

    CommandRow{Command::HelpContents,
               [](Targets&) { showHelpContents(); },
               {Menu::Help, 0, 701},
               {},
               {"Help", 18, 2115}},
    CommandRow{Command::HelpIndex, openHelpIndex, {Menu::Help, 1, 702}},
    CommandRow{
        Command::Legend, openLegend, {Menu::Help, 3, 704, onServices}, {Menu::Popup, 0, 801, serviceListed}},
    CommandRow{Command::About, [](Targets& to) { to.windows.showAbout(&to.window); }, {Menu::Help, 5, 706}},

    CommandRow{Command::AddService,
               [](Targets& to) { to.services.addNew(); },
               {},
               {Menu::Popup, 3, 804, computerChosen}},
    // The shop's people are used to both entries of this menu opening the invoice.
    CommandRow{Command::QuotationOfRow, openInvoice, {}, {Menu::Popup, 10, 811, serviceListed}},
    CommandRow{Command::Unsort,
               [](Targets& to) { to.sorting.UnsortServices(); },
               {},
               {Menu::Popup, 12, 813, [](const State& s) { return s.sorted && s.hasServices; }}},

    CommandRow{Command::ChooseFilter,
               tellHowToFilter,
               {},
               {},
               {"ApplyFilter", 7, 2111, true, Renewal::Never, nullptr, true}},
    CommandRow{Command::DropFilter,
               [](Targets& to) { to.filters.drop(); },
               {},
               {},
               {"RemoveFilter", 8, 2112, false}},
};

static_assert(kRows.size() == static_cast<std::size_t>(Command::Count), "each command has its row");

}  // namespace

std::span<const CommandRow> commandTable() {
    return kRows;
}
