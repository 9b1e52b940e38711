#include "platform/dao/sqlite/long_statements.h"

#include <sqlcipher/sqlite3.h>

#include "platform/dao/breaking_off.h"

namespace dao::driver {
namespace {

constexpr int kStepsBetweenQuestions = 1000;  // some hundred rows

}  // namespace

LongStatements::LongStatements(sqlite3* db) : db_(db) {
    sqlite3_progress_handler(
        db_, kStepsBetweenQuestions, [](void*) { return isGoingOn() ? 0 : 1; }, nullptr);
}

LongStatements::~LongStatements() {
    sqlite3_progress_handler(db_, 0, nullptr, nullptr);
}

}  // namespace dao::driver
