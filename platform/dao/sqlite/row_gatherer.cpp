#include "platform/dao/sqlite/row_gatherer.h"

#include <utility>

namespace dao::driver {

void RowGatherer::install(sqlite3* db) {
    for (const char* name : {"dao_gather", "dao_sorted"}) {
        sqlite3_create_function_v2(db, name, -1, SQLITE_UTF8, this, nullptr, &RowGatherer::step,
                                   &RowGatherer::finish, nullptr);
    }
}

int RowGatherer::run(sqlite3_stmt* statement, const Take& take) {
    const Take* const around = std::exchange(take_, &take);
    const int code = sqlite3_step(statement);
    take_ = around;
    if (failure_ != nullptr) {
        std::rethrow_exception(std::exchange(failure_, nullptr));
    }
    return code;
}

// No exception may pass through the library.
void RowGatherer::step(sqlite3_context* context, int, sqlite3_value** columns) {
    auto* self = static_cast<RowGatherer*>(sqlite3_user_data(context));
    if (self->take_ == nullptr) {
        sqlite3_result_error(context, "nobody gathers the rows", -1);
        return;
    }
    try {
        (*self->take_)(columns);
    } catch (...) {  // passed on by run
        self->failure_ = std::current_exception();
        sqlite3_result_error(context, "the rows were not taken", -1);
    }
}

}  // namespace dao::driver
