#include "records/shop_filter.h"

#include <optional>
#include <utility>

#include "common/window_helpers.h"
#include "platform/controls/long_wait.h"
#include "platform/system/trap.h"
#include "records/main_view.h"
#include "records/quick_filters.h"
#include "records/record_editing.h"
#include "records/stage_reading.h"
#include "records/stages.h"
#include "records/stages_before.h"
#include "records/typed_entry.h"

using platform::BoxIcon;
using platform::LongWait;
using platform::Trap;

namespace {

// The window says that it is at work, until the object goes.
class AtWork {
 public:
    AtWork(MainView& window, const QString& text) : window_(window), wait_(text) {
        window_.setWaiting(true);
        window_.SetStatusText(text);
    }
    ~AtWork() {
        window_.SetStatusText({});
        window_.setWaiting(false);
    }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

    bool isLeft() const { return wait_.isLeft(); }

 private:
    MainView& window_;
    const LongWait wait_;
};

quick_filters::Found findServices(dao::Database& database, const QString& statement) {
    quick_filters::Found found;
    LongWait::run([&] {
        dao::Recordset rows = database.OpenRecordset(statement.toStdString(), dao::dbOpenSnapshot);
        refreshCache();
        found = quick_filters::collect(rows);
        rows.Close();
    });
    return found;
}

}  // namespace

// What stood on a stage before it was read afresh.
struct ShopFilter::Before {
    qint32 chosen;    // the record to be chosen again; -1: none
    qint32 typedFor;  // the record that `typed` belongs to; -1: none
    QString entry;
    TypedEntry typed;
};

ShopFilter::ShopFilter(Stages& stages, StageReading& reading, RecordEditing& editing,
                       const FilterChoices& choices, MainView& window)
    : stages_(stages), reading_(reading), editing_(editing), choices_(choices), window_(window) {}

// --- The filters.

void ShopFilter::ApplyQuickFilter(int number, bool& ok) {
    ok = true;
    const QString statement = quick_filters::statement(number, choices_.DueDateDiff);
    if (statement.isEmpty()) {
        return;
    }
    // Leaving a record saves it here as it does everywhere else.
    ok = editing_.saveWhatIsTyped();
    if (!ok) {
        return;
    }
    quick_filters::Found found;
    if (!findAndNarrow(number, statement, found)) {
        ok = false;
        return;
    }
    ok = !found.isEmpty();
    if (!ok) {
        window_.box(QStringLiteral("Quick filtering didn't result with any data."), BoxIcon::Information);
    } else if (choices_.ShowMsgBoxFilterResults) {
        window_.box(quick_filters::statistics(found), BoxIcon::Information);
    }
}

// False where it was left.
bool ShopFilter::findAndNarrow(int number, const QString& statement, quick_filters::Found& found) {
    const AtWork working(window_, QStringLiteral("Filtering data... Please wait..."));
    try {
        found = findServices(stages_.database(), statement);
        if (!found.isEmpty()) {
            narrow(found);
            ActiveFilter = number;
            window_.showFilter(number);
        }
    } catch (const dao::Error&) {
        if (!working.isLeft()) {
            throw;
        }
        return false;
    }
    return true;
}

// A window that shows a part of the shop and does not say so would hide clients from the people at the desk:
// narrowing that fails half-way ends with the whole shop in view, and one that is left with what was there.
void ShopFilter::narrow(const quick_filters::Found& found) {
    StagesBefore before(stages_, ActiveFilter != kNone);
    bool begun = false;
    try {
        writeQueries(found, begun);
        reading_.reload(
            [](const std::function<void()>& deed) {
                LongWait::needStay();
                deed();
            },
            {-1, -1}, false);
    } catch (...) {  // passed on
        if (LongWait::wasLeft() || !begun || !showsWholeShopInstead()) {
            putBack(before);
        }
        throw;
    }
}

// False where it was left.
bool ShopFilter::showsWholeShopInstead() {
    try {
        showWholeShop({stages_[kClients].chosen(), stages_[kComputers].chosen()}, false);
    } catch (const dao::Error&) {
        return false;
    }
    return true;
}

// The stages read the stored queries of this copy.
void ShopFilter::writeQueries(const quick_filters::Found& found, bool& begun) {
    const quick_filters::IdList* const lists[] = {&found.clients, &found.computers, &found.services};
    for (const Stage& stage : stages_) {
        LongWait::finish([&] {
            setWorkQuery(stages_, stage.index(), lists[stage.index()]->selection(stage.facts().table));
        });
        begun = true;
    }
    for (const Stage& stage : stages_) {
        stage.data().selection = stages_.all(stage.index());
    }
}

// --- Back to the whole shop.

void ShopFilter::RemoveFilters() {
    reloadWholeShop(QStringLiteral("Removing filters... Please wait..."), false);
}

void ShopFilter::RefreshAll() {
    reloadWholeShop(QStringLiteral("Refreshing... Please wait..."), true);
}

// Nobody is asked anything here: amounts that stayed in the unit of yesterday would be written back as
// amounts of today's by the next service that is edited.
void ShopFilter::reloadWholeShop(const QString& status, bool unitToo) {
    const int addingStage = std::exchange(editing_.AddNewMode, false) ? stages_.CurrentStage - 1 : -1;
    const BothBefore before = {takeFrom(kClients, addingStage == kClients),
                               takeFrom(kComputers, addingStage == kComputers)};
    {
        const AtWork working(window_, status);
        readWholeShop({before[0].chosen, before[1].chosen}, unitToo);
    }
    if (addingStage >= 0) {
        resumeAdd(before, addingStage);
    }
    putBackTyped(before, addingStage);
}

// What is left keeps what was shown, but for the unit: the amounts must not be those of another.
void ShopFilter::readWholeShop(const std::array<qint32, 2>& keep, bool unitToo) {
    std::optional<StagesBefore> before;
    Trap keeping;
    keeping([&] { before.emplace(stages_, ActiveFilter != kNone); });
    try {
        showWholeShop(keep, unitToo);
    } catch (const dao::Error&) {
        if (before) {
            putBack(*before);
        }
        if (unitToo) {
            window_.showUnit();
            window_.FillServiceList(window_.selectedService());
        }
    }
}

void ShopFilter::showWholeShop(const std::array<qint32, 2>& keep, bool unitToo) {
    Trap trap;
    const StageReading::StepRunner step = [&trap](const std::function<void()>& deed) {
        LongWait::needStay();
        trap(deed);
    };
    for (const Stage& stage : stages_) {
        step([&] { LongWait::finish([&] { setWorkQuery(stages_, stage.index(), wholeTable(stage)); }); });
        step([&] { stage.data().selection = stages_.all(stage.index()); });
        step([] { refreshCache(); });
    }
    reading_.reload(step, keep, unitToo);
    forget();
}

void ShopFilter::putBack(StagesBefore& before) {
    before.putBack();
    window_.UpdateToolbarState();
    window_.UpdateServiceButtons();
}

void ShopFilter::forget() {
    ActiveFilter = kNone;
    window_.showNoFilter();
}

// --- What was typed and not saved yet.

// A new record gives way to the one under it, which is the one to be chosen again.
ShopFilter::Before ShopFilter::takeFrom(int stageIndex, bool adding) {
    Stage& stage = stages_[stageIndex];
    Before before{stage.chosen(), -1, stage.chosenName(), TypedEntry(stage)};
    if (adding) {
        stage.records.dropPendingRow();
    }
    before.typedFor = stage.records.key();
    // After a delete the selector may stand elsewhere than the fields. What is being typed belongs to the
    // fields; the records of the next stage belong to the selector.
    if (adding || (stageIndex == stages_.CurrentStage - 1 && !before.typed.isEmpty())) {
        before.chosen = before.typedFor;
    }
    return before;
}

// What was typed goes back to its own record and to no other. On a stage that was left it has been saved, or
// the person has been told why not, so its end is told only to whoever is looking at it.
void ShopFilter::putBackTyped(const BothBefore& before, int addingStage) {
    QString missing;
    bool gone = false;
    for (int i = 0; i < kSelectorCount; ++i) {
        const Before& was = before[static_cast<size_t>(i)];
        if (i == addingStage || was.typed.isEmpty()) {
            continue;
        }
        if (was.typedFor >= 0 && stages_[i].records.key() == was.typedFor) {
            was.typed.putBack(stages_[i]);
            window_.UpdateToolbarState();
        } else if (i == stages_.CurrentStage - 1) {
            gone = true;
            missing = was.entry;
        }
    }
    if (gone) {
        editing_.tellMissing(missing);
    }
}

// The new record goes on being added. A new computer whose client is gone has nobody to belong to.
void ShopFilter::resumeAdd(const BothBefore& before, int stageIndex) {
    if (stageIndex == kComputers &&
        (before[0].chosen < 0 || stages_[kClients].chosen() != before[0].chosen)) {
        return editing_.tellMissing(before[0].entry);
    }
    if (editing_.beginAdd(stages_[stageIndex])) {
        before[static_cast<size_t>(stageIndex)].typed.putBack(stages_[stageIndex]);
        window_.UpdateToolbarState();
    }
}
