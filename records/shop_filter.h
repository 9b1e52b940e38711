#pragma once

#include <QString>
#include <array>
#include <string>

#include "records/stage_facts.h"

class MainView;
class RecordEditing;
class Stages;
class StageReading;
class StagesBefore;
namespace quick_filters {
struct Found;
}

// What the owner of the shop chooses about the quick filters.
struct FilterChoices {
    int DueDateDiff = 5;  // days
    bool ShowMsgBoxFilterResults = true;
};

// Narrows all stages to the services in one state of payment, and goes back to the whole shop. Both read the
// stages afresh and take the record on show away from under its fields. Both can be left by the person who
// waits for them: all stands then as it stood before, and nothing is said.
class ShopFilter {
 public:
    static constexpr int kNone = -1;

    // All of these outlive it.
    ShopFilter(Stages& stages, StageReading& reading, RecordEditing& editing, const FilterChoices& choices,
               MainView& window);

    int ActiveFilter = kNone;  // the number of the filter in force

    // `ok` is false where it found nothing, or was left, or the record on show could not be saved first: all
    // stands as it stood then. Throws dao::Error where the database could not be asked; a narrowing that
    // fails half-way shows the whole shop. A number that is no filter does nothing.
    void ApplyQuickFilter(int number, bool& ok);
    // Both ask nothing and save nothing: what was typed stands in its record's fields again afterwards, and
    // an add goes on. Where that record is gone they say so.
    void RemoveFilters();
    void RefreshAll();  // the unit of the money columns with it
    // The whole shop has been read again by somebody else.
    void forget();

 private:
    struct Before;
    using BothBefore = std::array<Before, kSelectorCount>;

    bool findAndNarrow(int number, const QString& statement, quick_filters::Found& found);
    void narrow(const quick_filters::Found& found);
    void writeQueries(const quick_filters::Found& found, bool& begun);
    void reloadWholeShop(const QString& status, bool unitToo);
    void readWholeShop(const std::array<qint32, 2>& keep, bool unitToo);
    bool showsWholeShopInstead();
    void putBack(StagesBefore& before);
    void showWholeShop(const std::array<qint32, 2>& keep, bool unitToo);
    Before takeFrom(int stageIndex, bool adding);
    void putBackTyped(const BothBefore& before, int addingStage);
    void resumeAdd(const BothBefore& before, int stageIndex);

    Stages& stages_;
    StageReading& reading_;
    RecordEditing& editing_;
    const FilterChoices& choices_;
    MainView& window_;
};
