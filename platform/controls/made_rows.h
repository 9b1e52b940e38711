#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/controls/list_item.h"

namespace platform {

// The rows of a list that have been made, by their serial numbers from 1. They lie in pages, of which there
// are those that somebody has looked at; a row stays where it is until it is removed.
class MadeRows {
 public:
    int count() const { return count_; }
    ListItem* find(int serial) {  // nullptr: it is not made
        const std::size_t page = pageOf(serial);
        if (page >= pages_.size() || pages_[page] == nullptr) {
            return nullptr;
        }
        Place& place = (*pages_[page])[placeOf(serial)];
        return place ? &*place : nullptr;
    }
    bool contains(int serial) { return find(serial) != nullptr; }
    // In place of the one that was there.
    ListItem& put(int serial, ListItem item) {
        Place& place = placeFor(serial);
        count_ += place ? 0 : 1;
        return place.emplace(std::move(item));
    }
    void remove(int serial) {
        if (contains(serial)) {
            placeFor(serial).reset();
            --count_;
        }
    }
    void clear() {
        pages_.clear();
        count_ = 0;
    }

 private:
    static constexpr std::size_t kPageRows = 64;
    using Place = std::optional<ListItem>;
    using Page = std::array<Place, kPageRows>;

    static std::size_t pageOf(int serial) { return static_cast<std::size_t>(serial) / kPageRows; }
    static std::size_t placeOf(int serial) { return static_cast<std::size_t>(serial) % kPageRows; }
    Place& placeFor(int serial) {
        const std::size_t page = pageOf(serial);
        if (page >= pages_.size()) {
            pages_.resize(page + 1);
        }
        if (pages_[page] == nullptr) {
            pages_[page] = std::make_unique<Page>();
        }
        return (*pages_[page])[placeOf(serial)];
    }

    std::vector<std::unique_ptr<Page>> pages_;
    int count_ = 0;
};

}  // namespace platform
