#include <algorithm>

#include "platform/dao/sqlite/store.h"

// idset(N): the numbers that a narrowed view of the shop's services was made of, as a table of one column.
// They stay where the writer put them; nothing is copied into the file.
//
// idlist(N): numbers in any order, each with its place n in the list, from 1. idlist(N, n): the one there.
namespace dao::driver {
namespace {

constexpr int kValueColumn = 0;
constexpr int kNumberColumn = 1;  // hidden: the argument
constexpr int kPlaceColumn = 2;   // hidden
enum Plan { kAll = 1, kOne = 2, kAtPlace = 4 };

struct Table : sqlite3_vtab {
    SqliteStore* store;
};

struct Cursor : sqlite3_vtab_cursor {
    sql::IdSetPtr set;
    std::size_t at;
    std::size_t end;
};

int connect(sqlite3* db, void* store, int, const char* const*, sqlite3_vtab** out, char**) {
    const int code = sqlite3_declare_vtab(db, "CREATE TABLE x(value INTEGER, number HIDDEN, n HIDDEN)");
    if (code != SQLITE_OK) {
        return code;
    }
    *out = new Table{{}, static_cast<SqliteStore*>(store)};
    return SQLITE_OK;
}

int disconnect(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

int bestIndex(sqlite3_vtab*, sqlite3_index_info* info) {
    int number = -1;
    int value = -1;
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        if (constraint.usable == 0 || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) {
            continue;
        }
        if (constraint.iColumn == kNumberColumn) {
            number = i;
        } else if (constraint.iColumn == kValueColumn || constraint.iColumn == -1) {
            value = i;
        }
    }
    if (number < 0) {
        info->estimatedCost = 1e99;
        info->estimatedRows = 1000000000;
        return SQLITE_OK;
    }
    info->idxNum = kAll;
    info->aConstraintUsage[number].argvIndex = 1;
    info->aConstraintUsage[number].omit = 1;
    info->estimatedCost = 1000;
    info->estimatedRows = 1000;
    if (value >= 0) {
        info->idxNum = kAll | kOne;
        info->aConstraintUsage[value].argvIndex = 2;
        info->estimatedCost = 10;
        info->estimatedRows = 1;
        info->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
    }
    if (info->nOrderBy == 1 && info->aOrderBy[0].iColumn <= kValueColumn && info->aOrderBy[0].desc == 0) {
        info->orderByConsumed = 1;
    }
    return SQLITE_OK;
}

int equalTo(const sqlite3_index_info* info, int column) {
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        if (constraint.usable != 0 && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ &&
            constraint.iColumn == column) {
            return i;
        }
    }
    return -1;
}

void use(sqlite3_index_info* info, int constraint, int argument) {
    info->aConstraintUsage[constraint].argvIndex = argument;
    info->aConstraintUsage[constraint].omit = 1;
}

// A list is gone through from its first number to its last: it stands in no order to be searched by.
int bestIndexOfList(sqlite3_vtab*, sqlite3_index_info* info) {
    const int number = equalTo(info, kNumberColumn);
    const int place = equalTo(info, kPlaceColumn);
    info->estimatedCost = number < 0 ? 1e99 : 1;
    info->estimatedRows = 1;
    if (number >= 0) {
        info->idxNum = kAll;
        use(info, number, 1);
    }
    if (number >= 0 && place >= 0) {
        info->idxNum = kAll | kAtPlace;
        use(info, place, 2);
    }
    return SQLITE_OK;
}

int open(sqlite3_vtab*, sqlite3_vtab_cursor** out) {
    *out = new Cursor{};
    return SQLITE_OK;
}

int close(sqlite3_vtab_cursor* cursor) {
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* base, int plan, const char*, int count, sqlite3_value** values) {
    auto* cursor = static_cast<Cursor*>(base);
    cursor->set.reset();
    cursor->at = cursor->end = 0;
    if ((plan & kAll) == 0 || count < 1) {
        return SQLITE_ERROR;
    }
    const sql::IdSetPtr* found =
        static_cast<Table*>(base->pVtab)->store->findIdSet(sqlite3_value_int64(values[0]));
    if (found == nullptr) {
        return SQLITE_ERROR;
    }
    cursor->set = *found;
    cursor->end = cursor->set->size();
    if ((plan & kOne) != 0 && count > 1) {
        if (sqlite3_value_numeric_type(values[1]) == SQLITE_NULL) {
            cursor->end = 0;
            return SQLITE_OK;
        }
        const std::int64_t wanted = sqlite3_value_int64(values[1]);
        const auto at = std::lower_bound(cursor->set->begin(), cursor->set->end(), wanted);
        cursor->at = static_cast<std::size_t>(at - cursor->set->begin());
        cursor->end = at != cursor->set->end() && *at == wanted ? cursor->at + 1 : cursor->at;
    }
    if ((plan & kAtPlace) != 0 && count > 1) {
        cursor->at = static_cast<std::size_t>(sqlite3_value_int64(values[1]) - 1);
        cursor->end = std::min(cursor->at + 1, cursor->set->size());
    }
    return SQLITE_OK;
}

int next(sqlite3_vtab_cursor* cursor) {
    ++static_cast<Cursor*>(cursor)->at;
    return SQLITE_OK;
}

int eof(sqlite3_vtab_cursor* base) {
    const auto* cursor = static_cast<Cursor*>(base);
    return cursor->at >= cursor->end ? 1 : 0;
}

int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int index) {
    const auto* cursor = static_cast<Cursor*>(base);
    if (index == kValueColumn) {
        sqlite3_result_int64(context, (*cursor->set)[cursor->at]);
    } else if (index == kPlaceColumn) {
        sqlite3_result_int64(context, static_cast<sqlite3_int64>(cursor->at) + 1);
    }
    return SQLITE_OK;
}

int rowid(sqlite3_vtab_cursor* base, sqlite3_int64* out) {
    const auto* cursor = static_cast<Cursor*>(base);
    *out = (*cursor->set)[cursor->at];
    return SQLITE_OK;
}

using BestIndex = int (*)(sqlite3_vtab*, sqlite3_index_info*);

sqlite3_module makeModule(BestIndex best) {
    sqlite3_module module{};
    module.xConnect = &connect;
    module.xDisconnect = &disconnect;
    module.xBestIndex = best;
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

void installIdSets(sqlite3* db, SqliteStore* store) {
    static const sqlite3_module kSets = makeModule(&bestIndex);
    static const sqlite3_module kLists = makeModule(&bestIndexOfList);
    sqlite3_create_module_v2(db, "idset", &kSets, store, nullptr);
    sqlite3_create_module_v2(db, "idlist", &kLists, store, nullptr);
}

}  // namespace dao::driver
