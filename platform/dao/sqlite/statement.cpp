#include <algorithm>

#include "platform/dao/failure.h"
#include "platform/dao/sqlite/store.h"

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

}  // namespace

SqliteStatement::SqliteStatement(SqliteStore* store, sqlite3_stmt* statement)
    : store_(store), statement_(statement) {
    store_->live_.insert(this);
}

SqliteStatement::~SqliteStatement() {
    if (store_ != nullptr) {
        store_->live_.erase(this);
    }
    finalize();
}

void SqliteStatement::finalize() noexcept {
    sqlite3_finalize(statement_);
    statement_ = nullptr;
    store_ = nullptr;
}

void SqliteStatement::check() const {
    if (store_ == nullptr) {
        fail(errObjectClosed);
    }
}

void SqliteStatement::bind(int index, const Value& value) {
    check();
    const int code = std::visit(Binder{statement_, index}, value.store());
    if (code != SQLITE_OK) {
        store_->failWith(code);
    }
}

void SqliteStatement::bindInteger(int index, std::int64_t value) {
    check();
    const int code = sqlite3_bind_int64(statement_, index, value);
    if (code != SQLITE_OK) {
        store_->failWith(code);
    }
}

void SqliteStatement::bindRowKey(int index, std::int64_t key) {
    check();
    const int code =
        key == kNoRow ? sqlite3_bind_null(statement_, index) : sqlite3_bind_int64(statement_, index, key);
    if (code != SQLITE_OK) {
        store_->failWith(code);
    }
}

// Sets are tables here, known by their numbers.
void SqliteStatement::bindNumbers(int, sql::IdSetPtr) {
    fail(errInvalidOperation);
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
    store_->failWith(code);
}

std::int64_t SqliteStatement::run() {
    check();
    const ResetLater later(statement_);
    while (step()) {
    }
    return sqlite3_changes(store_->handle());
}

void SqliteStatement::readKeys(std::vector<std::int64_t>& out, int columns) {
    check();
    const ResetLater later(statement_);
    int code = SQLITE_DONE;
    while ((code = sqlite3_step(statement_)) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            std::int64_t key = sqlite3_column_int64(statement_, column);
            if (key == 0 && sqlite3_column_type(statement_, column) == SQLITE_NULL) {
                key = kNoRow;
            }
            out.push_back(key);
        }
    }
    if (code != SQLITE_DONE) {
        store_->failWith(code);
    }
}

void SqliteStatement::addCell(RowBlock& block, int column) const {
    sqlite3_value* const value = sqlite3_column_value(statement_, column);
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
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            if (text == nullptr) {
                throw std::bad_alloc();
            }
            block.addText({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
            break;
        }
    }
}

std::size_t SqliteStatement::readRows(RowBlock& block, int skip, std::vector<std::int64_t>* keys,
                                      std::size_t limit, const std::vector<int>* places) {
    check();
    const ResetLater later(statement_);
    const int columns = static_cast<int>(block.columns());
    int needed = skip + columns;
    if (places != nullptr) {
        needed = skip + 1 + (columns == 0 ? -1 : *std::max_element(places->begin(), places->end()));
    }
    std::size_t rows = 0;
    while (rows < limit && step()) {
        if (rows == 0 && sqlite3_column_count(statement_) < needed) {
            fail(errInvalidOperation);
        }
        if (keys != nullptr) {
            keys->push_back(sqlite3_column_int64(statement_, 0));
        }
        block.startRow();
        for (int column = 0; column < columns; ++column) {
            const int place = places == nullptr ? column : (*places)[static_cast<std::size_t>(column)];
            if (place < 0) {
                block.addUnread();
            } else {
                addCell(block, place + skip);
            }
        }
        block.endRow();
        ++rows;
    }
    return rows;
}

}  // namespace dao::driver
