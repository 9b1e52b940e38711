#include "records/main_options.h"

#include <algorithm>
#include <limits>

#include "common/modMain.h"
#include "records/main_choices.h"
#include "records/program_windows.h"

namespace {

using Small = std::numeric_limits<qint16>;

qint16 small(int number) {
    return static_cast<qint16>(std::clamp<int>(number, Small::min(), Small::max()));
}

}  // namespace

void OpenOptions(QWidget& window, ProgramWindows& windows, MainChoices& choices, ShopFilter& filter) {
    const bool inDinars = CeneDinarske;
    const float rate = KursKupovni;
    MainOptions options{choices.session.AlwaysCreateBackupDB, small(choices.filter.DueDateDiff),
                        choices.filter.ShowMsgBoxFilterResults, small(choices.DefaultGST)};
    if (windows.editOptions(&window, options)) {
        choices.session.AlwaysCreateBackupDB = options.AlwaysCreateBackupDB;
        choices.filter.DueDateDiff = options.DueDateDiff;
        choices.filter.ShowMsgBoxFilterResults = options.ShowFilterStatistics;
        choices.DefaultGST = options.DefaultGST;
    }
    if (CeneDinarske != inDinars || KursKupovni != rate) {
        filter.RefreshAll();
    }
}
