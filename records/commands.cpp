#include "records/commands.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr const char* kNotYet[] = {
    // Quick filters, and what takes them away.
    "mnuQuickSearch(0)",
    "mnuQuickSearch(2)",
    "mnuQuickSearch(3)",
    "mnuQuickSearch(4)",
    "mnuQuickSearch(5)",
    "mnuQuickSearch(6)",
    "FNP",
    "NFNP",
    "NFP",
    "NFNPDD",
    "NFPDD",
    "RemoveFilter",
    // The text report and its options.
    "mnuView(3)",
    "mnuView(4)",
    "ViewReport",
    // Options.
    "mnuView(8)",
    // Reading everything afresh.
    "mnuView(10)",
    "Refresh",
    // The legend.
    "mnuHelp(3)",
    "mnuPopup(0)",
    // Sorting by a click on a header, and its end.
    "ColumnClick",
    "mnuPopup(12)",
    // The preview of the clients by a click on the status bar.
    "ActiveReport1",
    // The tip of the day after the start.
    "TipOfTheDay",
};

}  // namespace

bool isNotYet(const QString& command) {
    return std::any_of(std::begin(kNotYet), std::end(kNotYet),
                       [&](const char* name) { return command == QLatin1String(name); });
}
