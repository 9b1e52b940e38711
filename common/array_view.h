#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <utility>

// One array to look at, whose values live in several objects.
template <typename T, std::size_t Size>
class ArrayView {
 public:
    explicit ArrayView(const std::array<T*, Size>& places) : places_(places) {}
    T& operator[](std::size_t index) const { return *places_[index]; }

 private:
    std::array<T*, Size> places_;
};

// The same where a value has to be asked for before it can be looked at.
template <typename T>
class AskedView {
 public:
    explicit AskedView(std::function<T(std::size_t)> ask) : ask_(std::move(ask)) {}
    T operator[](std::size_t index) const { return ask_(index); }

 private:
    std::function<T(std::size_t)> ask_;
};
