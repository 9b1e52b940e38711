#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/dao/sqlite/store.h"

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

struct Table : sqlite3_vtab {
    sqlite3* db;
};

// All functions that can fail return a result code of the library.
class Cursor : public sqlite3_vtab_cursor {
 public:
    explicit Cursor(sqlite3* db) : sqlite3_vtab_cursor{}, db_(db) {}
    ~Cursor() { sqlite3_finalize(one_); }
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    // The same table and field for as long as the cursor is open.
    int find(sqlite3_value* table, sqlite3_value* field, std::int64_t number);
    void leave() { passed_ = kNoSuchRow; }  // on no row
    bool isAtEnd() const { return passed_ == kNoSuchRow; }
    std::int64_t number() const { return number_; }
    std::int64_t passed() const { return passed_; }

 private:
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

int Cursor::find(sqlite3_value* table, sqlite3_value* field, std::int64_t number) {
    if (select_.empty()) {
        const std::string passed = textOf(field);
        select_ = "SELECT rowid, " + (passed.empty() ? "NULL" : quotedName(passed)) + " FROM " +
                  quotedName(textOf(table));
    }
    number_ = number;
    if (!hasAll_ && ++asked_ <= kFew) {
        return lookUp();
    }
    const int code = hasAll_ ? SQLITE_OK : readAll();
    passed_ = all_.find(number);
    return code;
}

int Cursor::lookUp() {
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

int Cursor::readAll() {
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

// No exception may pass through the library.
template <typename Body>
int guarded(Body&& body) {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

int connect(sqlite3* db, void*, int, const char* const*, sqlite3_vtab** out, char**) {
    const int code = sqlite3_declare_vtab(
        db, "CREATE TABLE x(number INTEGER, passed INTEGER, \"table\" HIDDEN, field HIDDEN)");
    if (code != SQLITE_OK) {
        return code;
    }
    return guarded([&] {
        *out = new Table{{}, db};
        return SQLITE_OK;
    });
}

int disconnect(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

// Rows are found by table, field and number, in this order of arguments, or not at all.
int bestIndex(sqlite3_vtab*, sqlite3_index_info* info) {
    constexpr Column kAsked[] = {kTable, kField, kNumber};
    int argument = 0;
    for (const Column column : kAsked) {
        for (int i = 0; i < info->nConstraint; ++i) {
            const auto& constraint = info->aConstraint[i];
            if (constraint.usable != 0 && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ &&
                constraint.iColumn == column) {
                info->aConstraintUsage[i].argvIndex = ++argument;
                info->aConstraintUsage[i].omit = column == kNumber ? 0 : 1;
                break;
            }
        }
    }
    if (argument != static_cast<int>(std::size(kAsked))) {
        return SQLITE_CONSTRAINT;
    }
    info->estimatedCost = 1;
    info->estimatedRows = 1;
    info->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
    return SQLITE_OK;
}

int open(sqlite3_vtab* table, sqlite3_vtab_cursor** out) {
    return guarded([&] {
        *out = new Cursor(static_cast<Table*>(table)->db);
        return SQLITE_OK;
    });
}

int close(sqlite3_vtab_cursor* cursor) {
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* base, int, const char*, int, sqlite3_value** values) {
    auto* cursor = static_cast<Cursor*>(base);
    if (sqlite3_value_numeric_type(values[2]) != SQLITE_INTEGER) {
        cursor->leave();
        return SQLITE_OK;
    }
    return guarded([&] { return cursor->find(values[0], values[1], sqlite3_value_int64(values[2])); });
}

int next(sqlite3_vtab_cursor* cursor) {
    static_cast<Cursor*>(cursor)->leave();
    return SQLITE_OK;
}

int eof(sqlite3_vtab_cursor* cursor) {
    return static_cast<Cursor*>(cursor)->isAtEnd() ? 1 : 0;
}

int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int index) {
    const auto* cursor = static_cast<Cursor*>(base);
    if (index == kNumber) {
        sqlite3_result_int64(context, cursor->number());
    } else if (index == kPassed && cursor->passed() != kNothing) {
        sqlite3_result_int64(context, cursor->passed());
    }
    return SQLITE_OK;
}

int rowid(sqlite3_vtab_cursor* cursor, sqlite3_int64* out) {
    *out = static_cast<Cursor*>(cursor)->number();
    return SQLITE_OK;
}

sqlite3_module makeModule() {
    sqlite3_module module{};
    module.xConnect = &connect;
    module.xDisconnect = &disconnect;
    module.xBestIndex = &bestIndex;
    module.xOpen = &open;
    module.xClose = &close;
    module.xFilter = &filter;
    module.xNext = &next;
    module.xEof = &eof;
    module.xColumn = &column;
    module.xRowid = &rowid;
    return module;
}

}  // namespace

void installLinks(sqlite3* db) {
    static const sqlite3_module kModule = makeModule();
    sqlite3_create_module_v2(db, "dao_links", &kModule, nullptr, nullptr);
}

}  // namespace dao::driver
