#pragma once

#include <array>
#include <cstddef>

class QBoxLayout;
class QCheckBox;
class QWidget;
struct MainOptions;
namespace platform {
class Trap;
}

// The check boxes of the options. The first two are switches of the main window, which keeps them itself; the
// others are switches of the whole program.
class OptionSwitches {
 public:
    // Both outlive it, the boxes are the window's.
    OptionSwitches(QWidget* window, MainOptions& options) : window_(window), options_(options) {}
    void addMainWindows(QBoxLayout* column);
    void addPrograms(QBoxLayout* column);  // behind the others
    QCheckBox* first() const { return boxes_.front(); }

    void load();
    void takeOver() const;
    void keep(platform::Trap& step) const;  // the program's, as they were taken over

 private:
    static constexpr std::size_t kCount = 7;
    void add(QBoxLayout* column, std::size_t index);
    std::array<bool*, kCount> values() const;

    QWidget* window_;
    MainOptions& options_;
    std::array<QCheckBox*, kCount> boxes_{};  // Check1
};
