#include "platform/dao/sqlite/long_statements.h"

#include <sqlcipher/sqlite3.h>

#include "platform/dao/breaking_off.h"

namespace dao::driver {
namespace {

constexpr int kStepsBetweenQuestions = 1000;  // some hundred rows

void ask(sqlite3* db, bool (*mustEnd)()) {
    sqlite3_progress_handler(
        db, kStepsBetweenQuestions, [](void* asked) { return reinterpret_cast<bool (*)()>(asked)() ? 1 : 0; },
        reinterpret_cast<void*>(mustEnd));
}

}  // namespace

void letLeave(sqlite3* db) {
    ask(db, [] { return isLeft(); });
}

LongStatements::LongStatements(sqlite3* db) : db_(db) {
    ask(db_, [] { return !isGoingOn(); });
}

LongStatements::~LongStatements() {
    letLeave(db_);
}

}  // namespace dao::driver
