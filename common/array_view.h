#pragma once

#include <array>
#include <cstddef>

// One array to look at, whose values live in several objects.
template <typename T, std::size_t Size>
class ArrayView {
 public:
    explicit ArrayView(const std::array<T*, Size>& places) : places_(places) {}
    T& operator[](std::size_t index) const { return *places_[index]; }

 private:
    std::array<T*, Size> places_;
};
