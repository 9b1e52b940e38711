#include "platform/dao/sqlite/store.h"

#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/dao/memory_store.h"
#include "platform/text/order.h"

namespace dao::driver {

std::unique_ptr<Store> openMemoryStore() {
    return std::make_unique<SqliteStore>(OpenRequest{});
}

SqliteStore::SqliteStore(const OpenRequest& request, bool withSystemTables)
    : connection_(request, patience_.handler(), withSystemTables),
      layout_(connection_, definitions_, request.key) {}

void SqliteStore::keepOrder() {
    const std::int64_t order = layout_.order();
    if (order > alphabet::kOrderVersion || definitions_.form() > knownForm()) {
        fail(errNewerForm);
    }
    if (order == alphabet::kOrderVersion || !writable()) {
        return;
    }
    transaction_.beginWrite();
    try {
        connection_.execute("REINDEX DAO_TEXT;" + assigned(kOrderPragma, alphabet::kOrderVersion));
        layout_.noteChange();
        transaction_.commit();
    } catch (...) {
        transaction_.rollback();
        throw;
    }
}

void SqliteStore::keepLayout() {
    if (!writable() || !layout_.isTold()) {
        return;
    }
    bool damaged = false;
    try {
        const QuietErrors quiet;
        if (layout_.isFresh()) {
            return;
        }
        transaction_.beginWrite();
        layout_.noteChange();
        transaction_.commit();
    } catch (const Error& error) {
        transaction_.rollback();
        damaged = error.Number() == errCannotOpen;
    }
    if (damaged) {
        fail(errCannotOpen);
    }
}

}  // namespace dao::driver
