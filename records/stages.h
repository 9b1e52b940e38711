#pragma once

#include <array>

#include "records/list_order.h"
#include "records/stage.h"

// The three stages of the main window, and what each of them has to hold: a stage shows what belongs to the
// record chosen on the one before it.
class Stages {
 public:
    // All of these outlive the stages; `parent` owns the record sets.
    Stages(const EntryFields& fields, const ListOrder& order, MainView& window, QObject* parent);

    int CurrentStage = 1;      // the stage on show, from 1
    bool LoadingList = false;  // the fields change because records are being read, not because somebody types
    int QuerySuffix = 0;       // the number behind the names of this copy's stored queries

    Stage& operator[](int index) { return stages_[static_cast<size_t>(index)]; }
    const Stage& operator[](int index) const { return stages_[static_cast<size_t>(index)]; }
    auto begin() { return stages_.begin(); }
    auto end() { return stages_.end(); }
    dao::Database& database() { return stages_[0].data().Database(); }

    QString query(int index) const;  // the name of this copy's stored query
    platform::Selection all(int index,
                            platform::Selection::Words words = platform::Selection::Words::Capitals) const;
    // What belongs to the record chosen on the stage before; nothing where none is chosen.
    platform::Selection belonging(
        int index, platform::Selection::Words words = platform::Selection::Words::Capitals) const;
    // The same of the chosen client or computer. Services in the order in force.
    platform::Selection computersOfClient() const;
    platform::Selection servicesOfComputer() const;
    platform::Selection inOrder(const platform::Selection& services) const;  // in the one in force

    void fieldTyped(int index, const QWidget* field);  // its mark of change decides on the stage's

 private:
    std::array<Stage, kStageCount> stages_;
    const ListOrder& order_;
    MainView& window_;
};
