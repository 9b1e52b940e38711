#pragma once

#include <array>
#include <functional>

#include "records/list_order.h"
#include "records/stage.h"

namespace platform {
class Trap;
}

// The three stages of the main window, and what they do together: a stage shows what belongs to the record
// chosen on the one before it, and is read again only when somebody goes there.
class Stages {
 public:
    using StepRunner = std::function<void(const std::function<void()>&)>;

    // All of these outlive the stages; `parent` owns the record sets.
    Stages(const EntryFields& fields, const ListOrder& order, MainView& window, QObject* parent);

    int current = 1;       // the stage on show, from 1
    bool loading = false;  // the fields change because records are being read, not because somebody types
    int querySuffix = 0;   // the number behind the names of this copy's stored queries

    Stage& operator[](int index) { return stages_[static_cast<size_t>(index)]; }
    const Stage& operator[](int index) const { return stages_[static_cast<size_t>(index)]; }
    auto begin() { return stages_.begin(); }
    auto end() { return stages_.end(); }
    dao::Database& database() { return stages_[0].data().Database(); }

    QString query(int index) const;  // the name of this copy's stored query
    platform::Selection all(int index,
                            platform::Selection::Words words = platform::Selection::Words::Capitals) const;
    // What belongs to the chosen client or computer; nothing where none is chosen. Services in the order in
    // force.
    platform::Selection computersOfClient() const;
    platform::Selection servicesOfComputer() const;

    void fill(int index);                              // the selector
    void select(int index, qint32 number);             // the record, where the selector still has it
    void fieldTyped(int index, const QWidget* field);  // its mark of change decides on the stage's
    void updateAhead(int oldStage, int newStage, platform::Trap& step);  // after a move; stages from 1
    void reorderServices();  // in the order in force; throws as DataControl::Refresh
    // All three. `keep`: the numbers of the client and the computer to be chosen again, -1 for the first
    // ones. `unitToo`: the money columns' unit with them.
    void reload(const StepRunner& step, const std::array<qint32, 2>& keep, bool unitToo);
    // After the file was opened again. The selections stand as those of whole tables afterwards, so that the
    // next move reads again.
    void reopen(platform::Trap& step);

 private:
    platform::Selection belonging(int index) const;
    void updateComputers(bool servicesToo, platform::Trap& step);
    void updateServices(platform::Trap& step);

    std::array<Stage, kStageCount> stages_;
    const ListOrder& order_;
    MainView& window_;
};
