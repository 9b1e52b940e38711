#include "platform/dao/postgres/shop_making.h"

#include "platform/dao/failure.h"
#include "platform/dao/postgres/shop_script.h"

namespace dao::postgres {
namespace {

void dropUnfinished(Connection& server) {
    server.execute("DROP SCHEMA IF EXISTS shop CASCADE; DROP SCHEMA dao CASCADE");
}

void replaceUnfinished(Connection& server, const Address& address) {
    if (!server.run("SELECT to_regclass('dao.shop') IS NOT NULL").boolean(0, 0)) {
        return;
    }
    if (server.run("SELECT 1 FROM dao.shop WHERE whole").rows() != 0) {
        fail(errObjectExists, "The database on " + placeText(address) + " already holds a shop.");
    }
    dropUnfinished(server);
}

}  // namespace

NewShop::NewShop(const Address& address) : link_(Link::to(address)) {
    if (!link_->locks().enterExclusive()) {
        fail(errFileInUse);
    }
    try {
        Connection& server = link_->connection();
        replaceUnfinished(server, address);
        server.execute("BEGIN;" + shopScript() + "COMMIT");
        store_ = std::make_unique<ServerStore>(link_, ServerStore::Unfinished{});
    } catch (...) {
        link_->locks().leaveExclusive();
        throw;
    }
}

NewShop::~NewShop() {
    store_.reset();
    link_->locks().leaveExclusive();
}

void NewShop::finish() {
    link_->connection().execute(finishShop());
}

void NewShop::giveUp() noexcept {
    try {
        const QuietErrors quiet;
        dropUnfinished(link_->connection());
    } catch (const std::exception&) {
        // The next one who makes a shop there takes it away.
    }
}

}  // namespace dao::postgres
