#include "platform/dao/sqlite/table_halves.h"

#include <numeric>
#include <optional>
#include <thread>
#include <vector>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/key_range.h"

namespace dao::driver {
namespace {

// What a statement gives in the one row that it has; nothing where it fails.
std::optional<std::vector<std::int64_t>> numbersOf(sqlite3* db, const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    std::optional<std::vector<std::int64_t>> numbers;
    if (sqlite3_prepare_v2(db, text.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
        numbers.emplace();
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            numbers->push_back(sqlite3_column_int64(statement, column));
        }
    }
    sqlite3_finalize(statement);
    return numbers;
}

// The question also takes the lock that keeps others from writing, where a transaction is open.
bool isLarge(sqlite3* db) {
    const auto pages = numbersOf(db, "PRAGMA page_count");
    return pages && pages->front() * static_cast<std::int64_t>(kPageSize) > readByTwoFrom();
}

// Whether it keeps others from writing, and has written nothing.
bool onlyReads(sqlite3* db) {
    int lock = SQLITE_LOCK_NONE;
    return sqlite3_file_control(db, "main", SQLITE_FCNTL_LOCKSTATE, &lock) == SQLITE_OK &&
           lock == SQLITE_LOCK_SHARED;
}

// Whether the file that it reads stands in its place no longer.
bool hasMoved(sqlite3* db) {
    int moved = 1;
    return sqlite3_file_control(db, "main", SQLITE_FCNTL_HAS_MOVED, &moved) != SQLITE_OK || moved != 0;
}

}  // namespace

std::int64_t& readByTwoFrom() {
    static std::int64_t bytes = kPageCache;
    return bytes;
}

TableHalves::TableHalves(const LibraryHandle& first, std::string_view text,
                         const std::string& table) noexcept {
    const bool refersToSets = text.find("idset(") != std::string_view::npos;
    if (refersToSets || std::thread::hardware_concurrency() < 2) {
        return;
    }
    try {
        const QuietErrors quiet;
        open(first, std::string(text), table);
    } catch (const std::exception&) {
        statement_ = nullptr;
    }
}

void TableHalves::open(const LibraryHandle& first, const std::string& text, const std::string& table) {
    if (!isLarge(first.get()) || !onlyReads(first.get())) {
        return;
    }
    const auto ends = numbersOf(first.get(), KeyRange::ends(table));
    if (!ends) {
        return;
    }
    connection_ = first.openBeside();
    if (connection_ != nullptr && !hasMoved(first.get())) {
        middle_ = std::midpoint(ends->front(), ends->back());
        statement_ = connection_->prepare(text);
    }
}

ReadBeside::ReadBeside(const std::function<void()>& read) noexcept {
    try {
        done_ = std::async(std::launch::async, [read, leftBy = leftBy()] {
            const ErrorsAside aside;
            std::optional<Leavable> leavable;
            if (leftBy != nullptr) {
                leavable.emplace(*leftBy);
            }
            read();
        });
    } catch (const std::exception&) {
        done_ = {};  // no thread is to be had
    }
}

bool ReadBeside::isDone() {
    try {
        if (done_.valid()) {
            done_.get();
            return true;
        }
    } catch (const std::exception&) {
        return false;
    }
    return false;
}

}  // namespace dao::driver
