#pragma once

#include <sqlcipher/sqlite3.h>

#include <cstdint>
#include <new>
#include <span>
#include <utility>

// A function that a statement of the file may name where a table stands. `Cursor` is one use of it in one
// statement, and has:
//
// - `Context`: the type of what is told of it at its installation, and kept for as long as the connection
// - `static constexpr kColumns`: "CREATE TABLE x(...)", its columns, with the arguments hidden behind them
// - `static int bestIndex(sqlite3_index_info*)`
// - `explicit Cursor(Context*)`
// - `int filter(int plan, std::span<sqlite3_value*>)`: goes to the first row; std::bad_alloc may leave it
// - `void next()` and `bool isAtEnd() const`
// - `void column(sqlite3_context*, int) const` and `std::int64_t rowid() const`
//
// An int is a result code of the library.
namespace dao::driver {

// The place in `info` of the condition that `column` equals something, where it can be used; -1: none.
inline int equalTo(const sqlite3_index_info* info, int column) {
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        if (constraint.usable != 0 && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ &&
            constraint.iColumn == column) {
            return i;
        }
    }
    return -1;
}

// What the condition compares with comes to `filter` as its argument of this number, from 1.
inline void use(sqlite3_index_info* info, int constraint, int argument) {
    info->aConstraintUsage[constraint].argvIndex = argument;
    info->aConstraintUsage[constraint].omit = 1;
}

template <typename Cursor>
class TableFunction {
 public:
    static void install(sqlite3* db, const char* name, typename Cursor::Context* context) {
        static const sqlite3_module kModule = makeModule();
        sqlite3_create_module_v2(db, name, &kModule, context, nullptr);
    }

 private:
    struct Table : sqlite3_vtab {
        explicit Table(void* told) : sqlite3_vtab{}, context(static_cast<typename Cursor::Context*>(told)) {}
        typename Cursor::Context* context;
    };
    struct Place : sqlite3_vtab_cursor {
        explicit Place(sqlite3_vtab* table)
            : sqlite3_vtab_cursor{}, cursor(static_cast<Table*>(table)->context) {}
        Cursor cursor;
    };

    static Cursor& at(sqlite3_vtab_cursor* place) { return static_cast<Place*>(place)->cursor; }

    // No exception may pass through the library.
    template <typename Body>
    static int guarded(Body&& body) {
        try {
            return std::forward<Body>(body)();
        } catch (const std::bad_alloc&) {
            return SQLITE_NOMEM;
        }
    }

    static int connect(sqlite3* db, void* context, int, const char* const*, sqlite3_vtab** out, char**) {
        const int code = sqlite3_declare_vtab(db, Cursor::kColumns);
        if (code != SQLITE_OK) {
            return code;
        }
        return guarded([&] {
            *out = new Table(context);
            return SQLITE_OK;
        });
    }
    static int disconnect(sqlite3_vtab* table) {
        delete static_cast<Table*>(table);
        return SQLITE_OK;
    }
    static int bestIndex(sqlite3_vtab*, sqlite3_index_info* info) { return Cursor::bestIndex(info); }
    static int open(sqlite3_vtab* table, sqlite3_vtab_cursor** out) {
        return guarded([&] {
            *out = new Place(table);
            return SQLITE_OK;
        });
    }
    static int close(sqlite3_vtab_cursor* place) {
        delete static_cast<Place*>(place);
        return SQLITE_OK;
    }
    static int filter(sqlite3_vtab_cursor* place, int plan, const char*, int count, sqlite3_value** values) {
        return guarded([&] { return at(place).filter(plan, {values, static_cast<std::size_t>(count)}); });
    }
    static int next(sqlite3_vtab_cursor* place) {
        at(place).next();
        return SQLITE_OK;
    }
    static int eof(sqlite3_vtab_cursor* place) { return at(place).isAtEnd() ? 1 : 0; }
    static int column(sqlite3_vtab_cursor* place, sqlite3_context* context, int index) {
        at(place).column(context, index);
        return SQLITE_OK;
    }
    static int rowid(sqlite3_vtab_cursor* place, sqlite3_int64* out) {
        *out = at(place).rowid();
        return SQLITE_OK;
    }

    static sqlite3_module makeModule() {
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
};

}  // namespace dao::driver
