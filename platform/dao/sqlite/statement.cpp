#include "platform/dao/sqlite/statement.h"

#include <algorithm>
#include <span>

#include "platform/dao/failure.h"

namespace dao::driver {
namespace {

// Resets the statement however the call ends: a statement left on a row holds the file's read lock, and
// nobody else in the office could save.
class ResetLater {
 public:
    explicit ResetLater(sqlite3_stmt* statement) : statement_(statement) {}
    ~ResetLater() { sqlite3_reset(statement_); }
    ResetLater(const ResetLater&) = delete;
    ResetLater& operator=(const ResetLater&) = delete;

 private:
    sqlite3_stmt* statement_;
};

struct Binder {
    sqlite3_stmt* statement;
    int index;
    int operator()(std::monostate) const { return sqlite3_bind_null(statement, index); }
    int operator()(bool v) const { return sqlite3_bind_int64(statement, index, v ? -1 : 0); }
    int operator()(std::int32_t v) const { return sqlite3_bind_int64(statement, index, v); }
    int operator()(float v) const { return sqlite3_bind_double(statement, index, v); }
    int operator()(double v) const { return sqlite3_bind_double(statement, index, v); }
    int operator()(Currency v) const { return sqlite3_bind_int64(statement, index, v.scaled()); }
    int operator()(Date v) const { return sqlite3_bind_double(statement, index, v.days); }
    int operator()(const std::string& v) const {
        return sqlite3_bind_text64(statement, index, v.data(), v.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
};

std::int64_t keyOf(sqlite3_value* value) {
    const std::int64_t key = sqlite3_value_int64(value);
    return key == 0 && sqlite3_value_type(value) == SQLITE_NULL ? kNoRow : key;
}

// False, and nothing added, where one of them is Null.
bool addKeys(KeyOrder& to, std::span<sqlite3_value* const> keys) {
    for (sqlite3_value* const key : keys) {
        if (sqlite3_value_type(key) == SQLITE_NULL) {
            to.takeBack();
            return false;
        }
        to.put(sqlite3_value_int64(key));
    }
    return true;
}

void addCell(RowBlock& block, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            block.addInteger(sqlite3_value_int64(value));
            break;
        case SQLITE_FLOAT:
            block.addReal(sqlite3_value_double(value));
            break;
        case SQLITE_NULL:
            block.addNull();
            break;
        default: {
            // As it lies there: asked for as a text, it would be copied to have a zero put behind it.
            const auto* text = static_cast<const char*>(sqlite3_value_blob(value));
            block.addText({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
            break;
        }
    }
}

// Puts rows into a block, as Statement::readRows is told to.
class RowAdder {
 public:
    RowAdder(RowBlock& block, int skip, std::vector<std::int64_t>* keys, const std::vector<int>* places)
        : block_(block), keys_(keys) {
        for (int column = 0; column < static_cast<int>(block.columns()); ++column) {
            const int place = places == nullptr ? column : (*places)[static_cast<std::size_t>(column)];
            cells_.push_back(place == kNowhere ? -1 : place + skip);
        }
        needed_ = 1 + (cells_.empty() ? skip - 1 : std::ranges::max(cells_));
    }

    int needed() const { return needed_; }  // columns of the statement

    void operator()(sqlite3_value* const* row) const {
        if (keys_ != nullptr) {
            keys_->push_back(sqlite3_value_int64(row[0]));
        }
        block_.startRow();
        for (const int cell : cells_) {
            if (cell < 0) {
                block_.addUnread();
            } else {
                addCell(block_, row[cell]);
            }
        }
        block_.endRow();
    }

 private:
    RowBlock& block_;
    std::vector<std::int64_t>* keys_;
    std::vector<int> cells_;  // where a column of the block stands in the statement; -1: nowhere
    int needed_ = 0;
};

std::string_view textOf(sqlite3_stmt* statement) {
    return statement == nullptr ? std::string_view() : std::string_view(sqlite3_sql(statement));
}

}  // namespace

SqliteStatement::SqliteStatement(LibraryHandle& library, sqlite3_stmt* statement)
    : library_(&library),
      statement_(statement),
      gathers_(textOf(statement).starts_with(RowGatherer::kHead)),
      sorted_(SortedColumns::of(textOf(statement))) {
    library_->statements().insert(this);
}

SqliteStatement::~SqliteStatement() {
    if (library_ != nullptr) {
        library_->statements().erase(this);
    }
    finalize();
}

void SqliteStatement::finalize() noexcept {
    sqlite3_finalize(statement_);
    statement_ = nullptr;
    library_ = nullptr;
}

void SqliteStatement::check() const {
    if (library_ == nullptr) {
        fail(errObjectClosed);
    }
}

void SqliteStatement::bind(int index, const Value& value) {
    check();
    const int code = std::visit(Binder{statement_, index}, value.store());
    if (code != SQLITE_OK) {
        library_->failWith(code);
    }
}

void SqliteStatement::bindInteger(int index, std::int64_t value) {
    check();
    const int code = sqlite3_bind_int64(statement_, index, value);
    if (code != SQLITE_OK) {
        library_->failWith(code);
    }
}

void SqliteStatement::bindRowKey(int index, std::int64_t key) {
    check();
    const int code =
        key == kNoRow ? sqlite3_bind_null(statement_, index) : sqlite3_bind_int64(statement_, index, key);
    if (code != SQLITE_OK) {
        library_->failWith(code);
    }
}

// Lists are tables here, known by their numbers: below zero, where no set is. The next one takes its place.
void SqliteStatement::bindNumbers(int index, sql::IdSetPtr numbers) {
    library_->setIdSet(-index, std::move(numbers));
    bindInteger(index, -index);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code == SQLITE_DONE) {
        return false;
    }
    if (code == SQLITE_CONSTRAINT_FOREIGNKEY &&
        std::string_view(sqlite3_sql(statement_)).substr(0, 6) == "DELETE") {
        fail(errRelatedRecordExists);
    }
    library_->failWith(code);
}

std::int64_t SqliteStatement::run() {
    check();
    const ResetLater later(statement_);
    while (step()) {
    }
    return sqlite3_changes(library_->get());
}

void SqliteStatement::gather(const RowGatherer::Take& take) {
    const int code = library_->gatherer().run(statement_, take);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        library_->failWith(code);
    }
}

KeyOrder SqliteStatement::gatherSorted(const KeySpan& span, const RowGatherer::Take& take) {
    bindInteger(1, span.first);
    bindInteger(2, span.last);
    KeyOrder keys(sorted_.keys);
    gather([&](sqlite3_value** row) {
        if (addKeys(keys, {row + SortedColumns::kBefore, sorted_.keys})) {
            take(row);
        }
    });
    return keys;
}

void SqliteStatement::readSortedKeys(std::vector<std::int64_t>& out, int columns) {
    const KeyOrder keys = gatherSorted(kAllKeys, [](sqlite3_value**) {});
    for (const std::uint32_t row : keys.order()) {
        for (int column = 0; column < columns; ++column) {
            out.push_back(keys.key(row, static_cast<std::size_t>(column)));
        }
    }
}

KeyOrder SqliteStatement::gatherRows(const KeySpan& span, RowBlock& block) {
    check();
    const ResetLater later(statement_);
    const RowAdder add(block, SortedColumns::kBefore, nullptr, &sorted_.shown);
    return gatherSorted(span, [&](sqlite3_value** row) { add(row); });
}

// What the other one does not come to the end with is read here, and fails here where it has to.
KeyOrder SqliteStatement::gatherByTwo(const TableHalves& halves, RowBlock& block) {
    RowBlock upper;
    upper.reset({block.types().begin(), block.types().end()});
    KeyOrder upperKeys(sorted_.keys);
    ReadBeside beside([&] { upperKeys = halves.beside()->gatherRows(halves.upper(), upper); });
    KeyOrder keys = gatherRows(halves.lower(), block);
    if (beside.isDone()) {
        block.append(upper, 0, upper.rows());
        keys.append(upperKeys);
    } else {
        keys.append(gatherRows(halves.upper(), block));
    }
    return keys;
}

void SqliteStatement::readSortedRows(RowBlock& block) {
    const std::size_t before = block.rows();
    const TableHalves halves(*library_, textOf(statement_), sorted_.table);
    const KeyOrder keys =
        halves.beside() != nullptr ? gatherByTwo(halves, block) : gatherRows(kAllKeys, block);
    block.reorder(before, keys.order());
}

// What comes row after row is taken in one way, whoever steps: `take` is given the row's columns, and says
// whether it wants another row. What stands behind the last that it wants is passed over.
template <typename Take>
void SqliteStatement::eachRow(const Take& take) {
    bool more = true;
    if (gathers_) {
        gather([&](sqlite3_value** row) { more = more && take(row); });
        return;
    }
    std::vector<sqlite3_value*> row(static_cast<std::size_t>(sqlite3_column_count(statement_)));
    while (more && step()) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            row[column] = sqlite3_column_value(statement_, static_cast<int>(column));
        }
        more = take(row.data());
    }
}

void SqliteStatement::readKeys(std::vector<std::int64_t>& out, int columns) {
    check();
    const ResetLater later(statement_);
    if (isSorted()) {
        return readSortedKeys(out, columns);
    }
    eachRow([&](sqlite3_value* const* row) {
        for (int column = 0; column < columns; ++column) {
            out.push_back(keyOf(row[column]));
        }
        return true;
    });
}

std::size_t SqliteStatement::readRows(RowBlock& block, int skip, std::vector<std::int64_t>* keys,
                                      std::size_t limit, const std::vector<int>* places) {
    check();
    const ResetLater later(statement_);
    const std::size_t before = block.rows();
    if (isSorted()) {
        readSortedRows(block);
    } else if (limit > 0) {
        const RowAdder add(block, skip, keys, places);
        const bool fits = gathers_ || sqlite3_column_count(statement_) >= add.needed();
        eachRow([&](sqlite3_value* const* row) {
            if (!fits) {
                fail(errInvalidOperation);
            }
            add(row);
            return block.rows() - before < limit;
        });
    }
    return block.rows() - before;
}

void SqliteStatement::readBlocks(RowBlock& block, const std::function<void()>& take) {
    check();
    const ResetLater later(statement_);
    const auto handOver = [&](std::size_t from) {
        if (block.rows() >= from) {
            take();
            block.clear();
        }
    };
    if (isSorted()) {
        readSortedRows(block);
    } else {
        const RowAdder add(block, 0, nullptr, nullptr);
        eachRow([&](sqlite3_value* const* row) {
            add(row);
            handOver(kRowsAtOnce);
            return true;
        });
    }
    handOver(1);
}

}  // namespace dao::driver
