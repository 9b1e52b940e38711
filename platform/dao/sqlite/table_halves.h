#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "platform/dao/sqlite/library.h"

namespace dao::driver {

// Row keys of a table, both ends among them.
struct KeySpan {
    std::int64_t first, last;
};
inline constexpr KeySpan kAllKeys{std::numeric_limits<std::int64_t>::min(),
                                  std::numeric_limits<std::int64_t>::max()};

// Bytes. A file that is larger than the page cache is deciphered anew each time somebody goes through it,
// which takes most of the time: then two read it, each a half of the table. A test may choose another bound.
std::int64_t& readByTwoFrom();

// A table's rows in two halves, and a statement over a connection beside that reads the upper one as it
// stands for the first connection: that has begun to read, so that nobody can write, and has written nothing
// itself.
class TableHalves {
 public:
    // `text` is a statement over the table, whose name is quoted.
    TableHalves(const LibraryHandle& first, std::string_view text, const std::string& table) noexcept;

    // nullptr: not worth it, or not to be had; then there are no halves.
    const std::shared_ptr<SqliteStatement>& beside() const { return statement_; }
    KeySpan lower() const { return {kAllKeys.first, middle_}; }
    KeySpan upper() const { return {middle_ + 1, kAllKeys.last}; }

 private:
    void open(const LibraryHandle& first, const std::string& text, const std::string& table);

    std::unique_ptr<Beside> connection_;
    std::shared_ptr<SqliteStatement> statement_;
    std::int64_t middle_ = 0;
};

// A piece of work of the engine that another thread does meanwhile. It is left with the work of the thread
// that made it, and goes to its end before this does.
class ReadBeside {
 public:
    explicit ReadBeside(const std::function<void()>& read) noexcept;
    // Waits for it. False where it could not be done.
    bool isDone();

 private:
    std::future<void> done_;
};

}  // namespace dao::driver
