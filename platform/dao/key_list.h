#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/dao/key_runs.h"

namespace dao {

// The rows of a dynaset, by number: one key for each table that takes part. One table of which few numbers
// are missing is told by the runs between these, which for the services of twenty years spares the room of
// millions; one in ascending order is a bare vector that is searched by halves.
class KeyList {
 public:
    KeyList() = default;
    // One key a row: `first` and those that follow it. Without rows it does not matter which that is.
    KeyList(std::int64_t first, std::size_t rows);
    // `stride` keys a row; `unique`: which of them no two rows share, -1 where there is none.
    explicit KeyList(std::vector<std::int64_t> keys, int stride = 1, int unique = 0);

    std::size_t size() const { return rows_; }
    int stride() const { return static_cast<int>(stride_); }
    std::vector<std::int64_t> at(std::size_t row) const;
    std::int64_t key(std::size_t row, int source) const {
        return runs_.isEmpty() ? keys_[row * stride_ + static_cast<std::size_t>(source)] : runs_.at(row);
    }
    bool isAscending() const { return ascending_; }

    std::optional<std::size_t> find(std::span<const std::int64_t> row) const;
    // The first row that has this key for this source.
    std::optional<std::size_t> findKey(std::int64_t key, int source) const;

    void append(std::span<const std::int64_t> row);
    void replace(std::size_t row, std::span<const std::int64_t> keys);
    void erase(std::size_t row);

 private:
    bool isAt(std::size_t row, std::span<const std::int64_t> keys) const;
    void buildPlaces() const;
    void tellEach();

    KeyRuns runs_;  // keys_ is empty where there are any
    std::vector<std::int64_t> keys_;
    std::size_t stride_ = 1;
    std::size_t rows_ = 0;  // asked at each step of a walk
    int unique_ = 0;
    bool ascending_ = true;
    // Unique key to row, made when first asked for.
    mutable std::unordered_map<std::int64_t, std::size_t> places_;
    mutable bool placesKnown_ = false;
};

}  // namespace dao
