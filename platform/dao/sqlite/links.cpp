#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/function_state.h"
#include "platform/dao/sqlite/key_range.h"
#include "platform/sql/close_numbers.h"

// dao_link(TABLE, FIELD, NUMBER): what the row of that number holds in a field: of a computer the client; or,
// where the field is '', the number itself. Null where there is no such row. A filter that finds a tenth of
// the shop's services asks for a hundred thousand of them; the first few are looked for in the file, and then
// all are read, which takes less.
namespace dao::driver {
namespace {

constexpr int kFew = 64;

// What a row passes on where it passes on nothing, or where there is no such row.
constexpr std::int64_t kNothing = INT64_MIN;

// A whole number as a row holds it. What is none links to nothing.
std::int64_t wholeOf(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_INTEGER ? sqlite3_value_int64(value) : kNothing;
}

// What is passed on by each row. Numbers that lie close together, as a counter gives them, are places in a
// vector.
class PassedOn {
 public:
    void assign(const std::vector<std::int64_t>& pairs);  // number and what it passes on, end to end
    // Each of so many numbers from `first` on passes on itself.
    void assignThemselves(std::int64_t first, std::uint64_t count);
    std::int64_t find(std::int64_t number) const;

 private:
    static constexpr std::uint64_t kSparse = 8;  // places for each row

    std::int64_t first_ = 0;
    std::uint64_t themselves_ = 0;
    std::vector<std::int64_t> near_;
    std::unordered_map<std::int64_t, std::int64_t> far_;
};

void PassedOn::assign(const std::vector<std::int64_t>& pairs) {
    std::int64_t last = first_ = pairs.empty() ? 0 : pairs.front();
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        first_ = std::min(first_, pairs[at]);
        last = std::max(last, pairs[at]);
    }
    if (sql::areClose(first_, last, pairs.size() / 2, kSparse)) {
        near_.assign(sql::spanOf(first_, last) + 1, kNothing);
    }
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        if (near_.empty()) {
            far_.emplace(pairs[at], pairs[at + 1]);
        } else {
            near_[static_cast<std::size_t>(pairs[at] - first_)] = pairs[at + 1];
        }
    }
}

void PassedOn::assignThemselves(std::int64_t first, std::uint64_t count) {
    first_ = first;
    themselves_ = count;
}

std::int64_t PassedOn::find(std::int64_t number) const {
    const std::uint64_t place = sql::spanOf(first_, number);
    if (place < themselves_) {
        return number;
    }
    if (!near_.empty()) {
        return place < near_.size() ? near_[place] : kNothing;
    }
    const auto found = far_.find(number);
    return found == far_.end() ? kNothing : found->second;
}

// What one place of a statement asks for, as long as the statement runs. Functions that can fail return a
// result code of the library.
class Links {
 public:
    Links(LibraryHandle& library, const std::string& table, const std::string& field)
        : library_(library),
          table_(table),
          passed_(field.empty() ? "rowid" : quotedName(field)),
          themselves_(field.empty()) {}
    ~Links() { sqlite3_finalize(one_); }
    Links(const Links&) = delete;
    Links& operator=(const Links&) = delete;

    int find(std::int64_t number, std::int64_t& passed);

 private:
    int lookUp(std::int64_t number, std::int64_t& passed);
    int countAll();
    int readAll();

    LibraryHandle& library_;
    std::string table_;
    std::string passed_;  // the column
    bool themselves_;     // passed on are the numbers
    sqlite3_stmt* one_ = nullptr;
    int asked_ = 0;
    bool hasAll_ = false;
    PassedOn all_;
};

int Links::find(std::int64_t number, std::int64_t& passed) {
    if (!hasAll_ && ++asked_ <= kFew) {
        return lookUp(number, passed);
    }
    int code = hasAll_ || !themselves_ ? SQLITE_OK : countAll();
    if (code == SQLITE_OK && !hasAll_) {
        code = readAll();
    }
    passed = all_.find(number);
    return code;
}

int Links::lookUp(std::int64_t number, std::int64_t& passed) {
    if (one_ == nullptr) {
        const std::string text = "SELECT " + passed_ + " FROM " + quotedName(table_) + " WHERE rowid = ?1";
        const int code = sqlite3_prepare_v2(library_.get(), text.c_str(), -1, &one_, nullptr);
        if (code != SQLITE_OK) {
            return code;
        }
    }
    sqlite3_bind_int64(one_, 1, number);
    passed = sqlite3_step(one_) == SQLITE_ROW ? wholeOf(sqlite3_column_value(one_, 0)) : kNothing;
    return sqlite3_reset(one_);
}

// Where no number is missing, nothing has to be read.
int Links::countAll() {
    sqlite3_stmt* counted = nullptr;
    const int code =
        sqlite3_prepare_v2(library_.get(), KeyRange::question(table_).c_str(), -1, &counted, nullptr);
    if (code != SQLITE_OK) {
        return code;
    }
    if (sqlite3_step(counted) == SQLITE_ROW) {
        const KeyRange range = {sqlite3_column_int64(counted, 0), sqlite3_column_int64(counted, 1),
                                static_cast<std::uint64_t>(sqlite3_column_int64(counted, 2))};
        hasAll_ = range.hasAll();
        all_.assignThemselves(range.first, hasAll_ ? range.rows : 0);
    }
    return sqlite3_finalize(counted);
}

int Links::readAll() {
    std::string text(RowGatherer::kHead);
    text.append("rowid, ").append(passed_).append(") FROM ").append(quotedName(table_));
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(library_.get(), text.c_str(), -1, &prepared, nullptr);
    if (code != SQLITE_OK) {
        return code;
    }
    std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> all(prepared, &sqlite3_finalize);
    std::vector<std::int64_t> pairs;
    library_.gatherer().run(all.get(), [&pairs](sqlite3_value** row) {
        pairs.push_back(sqlite3_value_int64(row[0]));
        pairs.push_back(wholeOf(row[1]));
    });
    const int ended = sqlite3_finalize(all.release());
    if (ended == SQLITE_OK) {
        all_.assign(pairs);
        hasAll_ = true;
    }
    return ended;
}

int answer(sqlite3_context* context, sqlite3_value** values) {
    auto* const links = keptWithStatement<Links>(context, [&] {
        auto& library = *static_cast<LibraryHandle*>(sqlite3_user_data(context));
        return std::make_unique<Links>(library, std::string(textOf(values[0])),
                                       std::string(textOf(values[1])));
    });
    std::int64_t passed = kNothing;
    const int code = links->find(sqlite3_value_int64(values[2]), passed);
    if (code == SQLITE_OK && passed != kNothing) {
        sqlite3_result_int64(context, passed);
    }
    return code;
}

void link(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_numeric_type(values[2]) != SQLITE_INTEGER) {
        return;
    }
    withinLibrary(context, [&] {
        const int code = answer(context, values);
        if (code != SQLITE_OK) {
            sqlite3_result_error_code(context, code);
        }
    });
}

}  // namespace

void installLinks(LibraryHandle& library) {
    sqlite3_create_function_v2(library.get(), "dao_link", 3, SQLITE_UTF8, &library, &link, nullptr, nullptr,
                               nullptr);
}

}  // namespace dao::driver
