#include "platform/dao/sqlite/store_transaction.h"

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"

namespace dao::driver {
namespace {

std::string levelName(int level) {
    return "dao_level" + std::to_string(level);
}

}  // namespace

void SqliteTransaction::beginWrite() {
    if (!connection_.writable()) {
        fail(errReadOnly);
    }
    connection_.cached("BEGIN IMMEDIATE")->run();
}

void SqliteTransaction::beginRead() {
    connection_.cached("BEGIN")->run();
}

void SqliteTransaction::commit() {
    layout_.tellChange();
    const Unleavable whole;
    connection_.cached("COMMIT")->run();
    layout_.forgetChange();
}

void SqliteTransaction::rollback() noexcept {
    layout_.forgetChange();
    if (!isOpen()) {
        return;
    }
    const Unleavable whole;
    try {
        connection_.cached("ROLLBACK")->run();
    } catch (const std::exception&) {
        // A rollback fails only where the store has already rolled back by itself.
        sqlite3_exec(connection_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

bool SqliteTransaction::isOpen() const {
    return sqlite3_get_autocommit(connection_.handle()) == 0;
}

void SqliteTransaction::savepoint(int level) {
    connection_.execute("SAVEPOINT " + levelName(level));
}

void SqliteTransaction::release(int level) {
    connection_.execute("RELEASE " + levelName(level));
}

void SqliteTransaction::rollbackTo(int level) noexcept {
    if (!isOpen()) {
        return;
    }
    const Unleavable whole;
    const std::string name = levelName(level);
    sqlite3_exec(connection_.handle(), ("ROLLBACK TO " + name + ";RELEASE " + name).c_str(), nullptr, nullptr,
                 nullptr);
}

}  // namespace dao::driver
