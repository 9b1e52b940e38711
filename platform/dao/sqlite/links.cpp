#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/dao/sqlite/store.h"
#include "platform/dao/sqlite/table_function.h"

// dao_links(TABLE, FIELD): the numbers of a table's rows, each with the number that it passes on: of each
// computer the client. A filter that finds a tenth of the shop's services asks for a hundred thousand of
// them; the first few are looked for in the file, and then all are read, which takes less.
namespace dao::driver {
namespace {

enum Column { kNumber, kPassed, kTable, kField };
constexpr int kFew = 64;

// What a row passes on where it passes on nothing, and where there is no such row.
constexpr std::int64_t kNothing = INT64_MIN;
constexpr std::int64_t kNoSuchRow = INT64_MIN + 1;

// A whole number as a row holds it. What is none links to nothing.
std::int64_t wholeOf(sqlite3_stmt* row, int column) {
    return sqlite3_column_type(row, column) == SQLITE_INTEGER ? sqlite3_column_int64(row, column) : kNothing;
}

// What is passed on by each row. Numbers that lie close together, as a counter gives them, are places in a
// vector.
class PassedOn {
 public:
    void assign(const std::vector<std::int64_t>& pairs);  // number and what it passes on, end to end
    std::int64_t find(std::int64_t number) const;

 private:
    static constexpr std::uint64_t kSparse = 4;  // places for each row

    std::int64_t first_ = 0;
    std::vector<std::int64_t> near_;
    std::unordered_map<std::int64_t, std::int64_t> far_;
};

void PassedOn::assign(const std::vector<std::int64_t>& pairs) {
    std::int64_t last = first_ = pairs.empty() ? 0 : pairs.front();
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        first_ = std::min(first_, pairs[at]);
        last = std::max(last, pairs[at]);
    }
    const std::uint64_t span = static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first_);
    if (span / kSparse <= pairs.size()) {
        near_.assign(span + 1, kNoSuchRow);
    }
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        if (near_.empty()) {
            far_.emplace(pairs[at], pairs[at + 1]);
        } else {
            near_[static_cast<std::size_t>(pairs[at] - first_)] = pairs[at + 1];
        }
    }
}

std::int64_t PassedOn::find(std::int64_t number) const {
    const std::uint64_t place = static_cast<std::uint64_t>(number) - static_cast<std::uint64_t>(first_);
    if (!near_.empty()) {
        return place < near_.size() ? near_[place] : kNoSuchRow;
    }
    const auto found = far_.find(number);
    return found == far_.end() ? kNoSuchRow : found->second;
}

class LinksCursor {
 public:
    using Context = sqlite3;
    static constexpr const char* kColumns =
        "CREATE TABLE x(number INTEGER, passed INTEGER, \"table\" HIDDEN, field HIDDEN)";

    explicit LinksCursor(sqlite3* db) : db_(db) {}
    ~LinksCursor() { sqlite3_finalize(one_); }
    LinksCursor(const LinksCursor&) = delete;
    LinksCursor& operator=(const LinksCursor&) = delete;

    static int bestIndex(sqlite3_index_info* info);
    int filter(int plan, std::span<sqlite3_value*> values);
    void next() { passed_ = kNoSuchRow; }  // on no row
    bool isAtEnd() const { return passed_ == kNoSuchRow; }
    void column(sqlite3_context* context, int index) const;
    std::int64_t rowid() const { return number_; }

 private:
    int find(std::int64_t number);
    int lookUp();
    int readAll();

    sqlite3* db_;
    std::string select_;  // what is passed on, and the number, of all rows
    sqlite3_stmt* one_ = nullptr;
    int asked_ = 0;
    bool hasAll_ = false;
    PassedOn all_;
    std::int64_t number_ = 0;
    std::int64_t passed_ = kNoSuchRow;
};

std::string textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text == nullptr ? std::string() : text;
}

// Rows are found by table, field and number, in this order of arguments, or not at all.
int LinksCursor::bestIndex(sqlite3_index_info* info) {
    int argument = 0;
    for (const Column column : {kTable, kField, kNumber}) {
        const int constraint = equalTo(info, column);
        if (constraint < 0) {
            return SQLITE_CONSTRAINT;
        }
        use(info, constraint, ++argument);
        info->aConstraintUsage[constraint].omit = column == kNumber ? 0 : 1;
    }
    info->estimatedCost = 1;
    info->estimatedRows = 1;
    info->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
    return SQLITE_OK;
}

// The same table and field for as long as the cursor is open.
int LinksCursor::filter(int, std::span<sqlite3_value*> values) {
    if (select_.empty()) {
        const std::string passed = textOf(values[1]);
        select_ = "SELECT rowid, " + (passed.empty() ? "NULL" : quotedName(passed)) + " FROM " +
                  quotedName(textOf(values[0]));
    }
    if (sqlite3_value_numeric_type(values[2]) != SQLITE_INTEGER) {
        next();
        return SQLITE_OK;
    }
    return find(sqlite3_value_int64(values[2]));
}

int LinksCursor::find(std::int64_t number) {
    number_ = number;
    if (!hasAll_ && ++asked_ <= kFew) {
        return lookUp();
    }
    const int code = hasAll_ ? SQLITE_OK : readAll();
    passed_ = all_.find(number);
    return code;
}

int LinksCursor::lookUp() {
    if (one_ == nullptr) {
        const int code = sqlite3_prepare_v2(db_, (select_ + " WHERE rowid = ?1").c_str(), -1, &one_, nullptr);
        if (code != SQLITE_OK) {
            return code;
        }
    }
    sqlite3_bind_int64(one_, 1, number_);
    passed_ = sqlite3_step(one_) == SQLITE_ROW ? wholeOf(one_, 1) : kNoSuchRow;
    return sqlite3_reset(one_);
}

int LinksCursor::readAll() {
    sqlite3_stmt* all = nullptr;
    const int code = sqlite3_prepare_v2(db_, select_.c_str(), -1, &all, nullptr);
    if (code != SQLITE_OK) {
        return code;
    }
    std::vector<std::int64_t> pairs;
    while (sqlite3_step(all) == SQLITE_ROW) {
        pairs.push_back(sqlite3_column_int64(all, 0));
        pairs.push_back(wholeOf(all, 1));
    }
    const int ended = sqlite3_finalize(all);
    if (ended == SQLITE_OK) {
        all_.assign(pairs);
        hasAll_ = true;
    }
    return ended;
}

void LinksCursor::column(sqlite3_context* context, int index) const {
    if (index == kNumber) {
        sqlite3_result_int64(context, number_);
    } else if (index == kPassed && passed_ != kNothing) {
        sqlite3_result_int64(context, passed_);
    }
}

}  // namespace

void installLinks(sqlite3* db) {
    TableFunction<LinksCursor>::install(db, "dao_links", db);
}

}  // namespace dao::driver
