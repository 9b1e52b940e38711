#pragma once

#include <array>

class QButtonGroup;
class QComboBox;
class QWidget;
namespace platform {
class Trap;
}

// Which products come on a price list, and how their prices are rounded: two sets of choices and a list of
// the window that asks for it.
class PriceListOptions {
 public:
    static constexpr int kRange = 0, kStock = 1, kSets = 2;

    explicit PriceListOptions(QWidget* window) : window_(window) {}
    QWidget* addSet(int set);
    QWidget* addRounding();

    void load();  // as the settings keep it
    void save(platform::Trap& step) const;
    int chosen(int set) const;
    int decimals() const;

 private:
    QWidget* window_;
    std::array<QButtonGroup*, kSets> sets_{};  // Option1, Option2
    QComboBox* rounding_ = nullptr;
};
