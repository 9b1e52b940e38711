#pragma once

#include <QtGlobal>
#include <array>
#include <functional>

class MainView;
class Stages;
namespace platform {
class Trap;
}

// Reads the stages: all of them, or those ahead of the one that was left. A stage is read again only when
// somebody goes there.
class StageReading {
 public:
    using StepRunner = std::function<void(const std::function<void()>&)>;

    // Both outlive it.
    StageReading(Stages& stages, MainView& window);

    // The selectors.
    void FillClientCombo();
    void FillComputerCombo();

    void updateAhead(int oldStage, int newStage, platform::Trap& step);  // after a move; stages from 1
    void reorderServices();  // in the order in force; throws as DataControl::Refresh
    // All three. `keep`: the numbers of the client and the computer to be chosen again, -1 for the first
    // ones. `unitToo`: the money columns' unit with them.
    void reload(const StepRunner& step, const std::array<qint32, 2>& keep, bool unitToo);
    // After the file was opened again. The selections stand as those of whole tables afterwards, so that the
    // next move reads again.
    void reopen(platform::Trap& step);

 private:
    void fill(int index);                   // the selector
    void select(int index, qint32 number);  // the record, where the selector still has it
    void updateComputers(bool servicesToo, platform::Trap& step);
    void updateServices(platform::Trap& step);

    Stages& stages_;
    MainView& window_;
};
