#include <algorithm>
#include <memory>
#include <utility>

#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/function_state.h"
#include "platform/dao/sqlite/table_function.h"

// idset(N): the numbers that a narrowed view of the shop's services was made of, as a table of one column.
// They stay where the writer put them; nothing is copied into the file.
//
// dao_in_idset(N, VALUE): whether a whole number is one of them. Whoever asks for one after the other, as the
// rows of a table come, finds each at once.
//
// idlist(N): numbers in any order, each with its place n in the list, from 1. idlist(N, n): the one there.
namespace dao::driver {
namespace {

constexpr int kValueColumn = 0;
constexpr int kNumberColumn = 1;  // hidden: the argument
constexpr int kPlaceColumn = 2;   // hidden
enum Plan { kAll = 1, kOne = 2, kAtPlace = 4 };

// The numbers from one place to another.
class NumbersCursor {
 public:
    using Context = LibraryHandle;
    static constexpr const char* kColumns = "CREATE TABLE x(value INTEGER, number HIDDEN, n HIDDEN)";

    explicit NumbersCursor(LibraryHandle* library) : library_(library) {}

    int filter(int plan, std::span<sqlite3_value*> values);
    void next() { ++at_; }
    bool isAtEnd() const { return at_ >= end_; }
    void column(sqlite3_context* context, int index) const;
    std::int64_t rowid() const { return (*set_)[at_]; }

 private:
    void goTo(sqlite3_value* value);
    void goToPlace(std::int64_t place);

    LibraryHandle* library_;
    sql::IdSetPtr set_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
};

int NumbersCursor::filter(int plan, std::span<sqlite3_value*> values) {
    set_.reset();
    at_ = end_ = 0;
    const bool asked = (plan & kAll) != 0 && !values.empty();
    const sql::IdSetPtr* found = asked ? library_->findIdSet(sqlite3_value_int64(values[0])) : nullptr;
    if (found == nullptr) {
        return SQLITE_ERROR;
    }
    set_ = *found;
    end_ = set_->size();
    if ((plan & kOne) != 0) {
        goTo(values[1]);
    } else if ((plan & kAtPlace) != 0) {
        goToPlace(sqlite3_value_int64(values[1]));
    }
    return SQLITE_OK;
}

void NumbersCursor::goTo(sqlite3_value* value) {
    if (sqlite3_value_numeric_type(value) == SQLITE_NULL) {
        end_ = 0;
        return;
    }
    const std::int64_t wanted = sqlite3_value_int64(value);
    const auto found = std::lower_bound(set_->begin(), set_->end(), wanted);
    at_ = static_cast<std::size_t>(found - set_->begin());
    end_ = found != set_->end() && *found == wanted ? at_ + 1 : at_;
}

void NumbersCursor::goToPlace(std::int64_t place) {
    at_ = static_cast<std::size_t>(place - 1);
    end_ = std::min(at_ + 1, set_->size());
}

void NumbersCursor::column(sqlite3_context* context, int index) const {
    if (index == kValueColumn) {
        sqlite3_result_int64(context, (*set_)[at_]);
    } else if (index == kPlaceColumn) {
        sqlite3_result_int64(context, static_cast<sqlite3_int64>(at_) + 1);
    }
}

bool usesNumbers(sqlite3_index_info* info) {
    const int number = equalTo(info, kNumberColumn);
    if (number < 0) {
        info->estimatedCost = 1e99;
        return false;
    }
    info->idxNum = kAll;
    use(info, number, 1);
    return true;
}

struct SetCursor : NumbersCursor {
    using NumbersCursor::NumbersCursor;
    static int bestIndex(sqlite3_index_info* info);
};

int SetCursor::bestIndex(sqlite3_index_info* info) {
    info->estimatedRows = 1000000000;
    if (!usesNumbers(info)) {
        return SQLITE_OK;
    }
    info->estimatedCost = 1000;
    info->estimatedRows = 1000;
    const int byColumn = equalTo(info, kValueColumn);
    const int value = byColumn >= 0 ? byColumn : equalTo(info, -1);  // the row's own number is the value
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

// A list is gone through from its first number to its last: it stands in no order to be searched by.
struct ListCursor : NumbersCursor {
    using NumbersCursor::NumbersCursor;
    static int bestIndex(sqlite3_index_info* info);
};

int ListCursor::bestIndex(sqlite3_index_info* info) {
    info->estimatedRows = 1;
    if (!usesNumbers(info)) {
        return SQLITE_OK;
    }
    info->estimatedCost = 1;
    const int place = equalTo(info, kPlaceColumn);
    if (place >= 0) {
        info->idxNum = kAll | kAtPlace;
        use(info, place, 2);
    }
    return SQLITE_OK;
}

// A set, and where in it the last number was asked for.
class AskedSet {
 public:
    explicit AskedSet(sql::IdSetPtr set) : set_(std::move(set)) {}

    bool has(std::int64_t number);

 private:
    sql::IdSetPtr set_;
    std::size_t at_ = 0;  // the first that is not lower
};

bool AskedSet::has(std::int64_t number) {
    constexpr std::size_t kNear = 8;
    const sql::IdSet& numbers = *set_;
    const bool goesOn = at_ == 0 || numbers[at_ - 1] < number;
    const std::size_t near = std::min(at_ + kNear, numbers.size());
    while (goesOn && at_ < near && numbers[at_] < number) {
        ++at_;
    }
    if (!goesOn || (at_ == near && at_ < numbers.size())) {
        at_ = static_cast<std::size_t>(std::lower_bound(numbers.begin(), numbers.end(), number) -
                                       numbers.begin());
    }
    return at_ < numbers.size() && numbers[at_] == number;
}

// nullptr: no set bears that number.
std::unique_ptr<AskedSet> makeAskedSet(sqlite3_context* context, sqlite3_value* number) {
    const auto* const library = static_cast<LibraryHandle*>(sqlite3_user_data(context));
    const sql::IdSetPtr* const found = library->findIdSet(sqlite3_value_int64(number));
    return found == nullptr ? nullptr : std::make_unique<AskedSet>(*found);
}

void isInSet(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[1]) == SQLITE_NULL) {
        return;
    }
    withinLibrary(context, [&] {
        auto* const asked =
            keptWithStatement<AskedSet>(context, [&] { return makeAskedSet(context, values[0]); });
        if (asked == nullptr) {
            return sqlite3_result_error_code(context, SQLITE_ERROR);
        }
        sqlite3_result_int(context, asked->has(sqlite3_value_int64(values[1])) ? 1 : 0);
    });
}

}  // namespace

void installIdSets(LibraryHandle& library) {
    sqlite3_create_function_v2(library.get(), "dao_in_idset", 2, SQLITE_UTF8, &library, &isInSet, nullptr,
                               nullptr, nullptr);
    TableFunction<SetCursor>::install(library.get(), "idset", &library);
    TableFunction<ListCursor>::install(library.get(), "idlist", &library);
}

}  // namespace dao::driver
