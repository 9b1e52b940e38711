#include "platform/dao/sqlite/store.h"

#include <random>
#include <thread>

#include <unistd.h>

#include "platform/dao/breaking_off.h"
#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/memory_store.h"
#include "platform/dao/sqlite/layout.h"
#include "platform/text/order.h"

namespace dao::driver {
namespace {

constexpr std::size_t kKeyDigits = 64;  // the salt stands behind them

std::int64_t orderOf(SqliteConnection& file) {
    return file.integerOf(kOrderPragma);
}

// Processes that wait for the same lock must not knock at the same moments.
int jitter() {
    static std::minstd_rand random(static_cast<unsigned>(getpid()) * 2654435761U + 1);
    return std::uniform_int_distribution<int>(1000, 8000)(random);
}

}  // namespace

std::string saltText(const std::string& key) {
    return key.substr(std::min(kKeyDigits, key.size()));
}

std::unique_ptr<Store> openMemoryStore() {
    return std::make_unique<SqliteStore>(OpenRequest{});
}

SqliteStore::SqliteStore(const OpenRequest& request, bool withSystemTables)
    : writable_(request.writable),
      salt_(saltText(request.key)),
      connection_(request, {&SqliteStore::onBusy, this}, withSystemTables) {}

int SqliteStore::onBusy(void* self, int count) {
    auto* store = static_cast<SqliteStore*>(self);
    const auto now = std::chrono::steady_clock::now();
    if (count == 0) {
        store->busySince_ = now;
    }
    const auto left = std::chrono::milliseconds(lockTimeout()) - (now - store->busySince_);
    if (left <= std::chrono::milliseconds(0)) {
        return 0;
    }
    const auto nap = std::chrono::microseconds(jitter());
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(nap, left));
    return 1;
}

void SqliteStore::beginWrite() {
    if (!writable_) {
        fail(errReadOnly);
    }
    cached("BEGIN IMMEDIATE")->run();
}

void SqliteStore::beginRead() {
    cached("BEGIN")->run();
}
void SqliteStore::commit() {
    if (definitions_.haveChanged() && !salt_.empty()) {
        writeLayout(*this, salt_, orderOf(connection_));
    }
    const Unleavable whole;
    cached("COMMIT")->run();
    definitions_.noteChanged(false);
}

void SqliteStore::rollback() noexcept {
    definitions_.noteChanged(false);
    if (!isOpen()) {
        return;
    }
    const Unleavable whole;
    try {
        cached("ROLLBACK")->run();
    } catch (const std::exception&) {
        // A rollback fails only where the store has already rolled back by itself.
        sqlite3_exec(connection_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void SqliteStore::savepoint(int level) {
    connection_.execute("SAVEPOINT dao_level" + std::to_string(level));
}
void SqliteStore::release(int level) {
    connection_.execute("RELEASE dao_level" + std::to_string(level));
}

void SqliteStore::rollbackTo(int level) noexcept {
    if (!isOpen()) {
        return;
    }
    const Unleavable whole;
    const std::string name = "dao_level" + std::to_string(level);
    sqlite3_exec(connection_.handle(), ("ROLLBACK TO " + name + ";RELEASE " + name).c_str(), nullptr, nullptr,
                 nullptr);
}

void SqliteStore::keepOrder() {
    const std::int64_t order = orderOf(connection_);
    if (order > alphabet::kOrderVersion || definitions_.form() > knownForm()) {
        fail(errNewerForm);
    }
    if (order == alphabet::kOrderVersion || !writable_) {
        return;
    }
    beginWrite();
    try {
        connection_.execute("REINDEX DAO_TEXT;" + assigned(kOrderPragma, alphabet::kOrderVersion));
        definitions_.noteChanged(true);
        commit();
    } catch (...) {
        rollback();
        throw;
    }
}

void SqliteStore::keepLayout() {
    if (!writable_ || salt_.empty()) {
        return;
    }
    bool damaged = false;
    try {
        const QuietErrors quiet;
        if (hasFreshLayout(*this, salt_)) {
            return;
        }
        beginWrite();
        definitions_.noteChanged(true);
        commit();
    } catch (const Error& error) {
        rollback();
        damaged = error.Number() == errCannotOpen;
    }
    if (damaged) {
        fail(errCannotOpen);
    }
}

}  // namespace dao::driver
