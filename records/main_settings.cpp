#include "records/main_settings.h"

#include <QWidget>
#include <array>
#include <vector>

#include "common/list_columns.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/list_view.h"
#include "platform/system/trap.h"
#include "records/main_choices.h"

using platform::BoxIcon;
using platform::Trap;

namespace {

template <typename T>
struct Kept {
    const settings::Setting& setting;
    T& value;
};

auto flags(MainChoices& choices) {
    ReportChoices& report = choices.report;
    return std::to_array<Kept<bool>>({
        {settings::ToolbarVisible, choices.ToolbarVisible},
        {settings::StatusbarVisible, choices.StatusbarVisible},
        {settings::LVWSorted, choices.order.LVWSorted},
        {settings::IncludeClients, report.IncludeClients},
        {settings::IncludeComputers, report.IncludeComputers},
        {settings::IncludeServices, report.IncludeServices},
        {settings::ShowOnlySelectedClient, report.ShowOnlySelectedClient},
        {settings::ShowOnlySelectedComputer, report.ShowOnlySelectedComputer},
        {settings::ShowOnlySelectedService, report.ShowOnlySelectedService},
        {settings::PrintBirthDetails, report.PrintBirthDetails},
        {settings::PrintPIDCardDetails, report.PrintPIDCardDetails},
        {settings::PrintAddressDetails, report.PrintAddressDetails},
        {settings::PrintContactDetails, report.PrintContactDetails},
        {settings::PrintClientComments, report.PrintClientComments},
        {settings::PrintMemoryDetails, report.PrintMemoryDetails},
        {settings::PrintStorageDetails, report.PrintStorageDetails},
        {settings::PrintPheriperalDetails, report.PrintPheriperalDetails},
        {settings::PrintOSDetails, report.PrintOSDetails},
        {settings::PrintComputerComments, report.PrintComputerComments},
        {settings::AlwaysCreateBackupDB, choices.session.AlwaysCreateBackupDB},
        {settings::ShowFilterStatistics, choices.filter.ShowMsgBoxFilterResults},
    });
}

auto numbers(MainChoices& choices) {
    return std::to_array<Kept<int>>({
        {settings::DefaultGST, choices.DefaultGST},
        {settings::DueDateDiff, choices.filter.DueDateDiff},
    });
}

auto words(MainChoices& choices) {
    return std::to_array<Kept<QString>>({
        {settings::LVWSortField, choices.order.LVWSortField},
        {settings::LVWSortOrder, choices.order.LVWSortOrder},
    });
}

// In the order of the lines that a failure is told with.
std::vector<settings::Entry> entries(const QWidget& window, MainChoices& choices,
                                     const platform::ListView& list) {
    std::vector<settings::Entry> all;
    if (!window.isMinimized()) {
        all.push_back({settings::MainPosition, placeOf(&window)});
    }
    for (const Kept<bool>& kept : flags(choices)) {
        all.push_back({kept.setting, settings::textOf(kept.value)});
    }
    for (const Kept<int>& kept : numbers(choices)) {
        all.push_back({kept.setting, settings::textOf(kept.value)});
    }
    for (const Kept<QString>& kept : words(choices)) {
        all.push_back({kept.setting, kept.value});
    }
    if (list.columns().count() > 0) {
        all.push_back({settings::LVWColumnWidths, columnWidths(list)});
        all.push_back({settings::LVWColumnPositions, columnPositions(list)});
    }
    return all;
}

}  // namespace

void LoadSettings(QWidget& window, MainChoices& choices) {
    Trap step;
    // The typed readings below give the default instead of failing.
    step([] { settings::requireReadable(); });
    step([&] { moveToPlace(&window, settings::text(settings::MainPosition)); });
    for (const Kept<bool>& kept : flags(choices)) {
        step([&] { kept.value = settings::boolean(kept.setting); });
    }
    for (const Kept<int>& kept : numbers(choices)) {
        step([&] { kept.value = settings::integer(kept.setting); });
    }
    for (const Kept<QString>& kept : words(choices)) {
        step([&] { kept.value = settings::text(kept.setting); });
    }
    if (step.failed()) {
        box(&window, GetResString(1041) + QLatin1Char('\n') + step.line(), BoxIcon::Exclamation);
    }
}

void SaveSettings(QWidget& window, MainChoices& choices, const platform::ListView& list) {
    const std::vector<settings::Entry> all = entries(window, choices, list);
    std::size_t failed = 0;
    Trap step;
    step([&] {
        failed = settings::firstUnsaved(all);  // a file that could not be written may not be read either
        settings::setTexts(all);
    });
    if (step.failed()) {
        box(&window,
            GetResString(1040) + QLatin1Char('\n') + step.line() +
                QStringLiteral(" in line %1").arg(failed + 1),
            BoxIcon::Exclamation);
    }
}
