#include "platform/dao/postgres/server_store.h"

#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/limits.h"
#include "platform/text/order.h"

namespace dao::postgres {

ServerStore::ServerStore(std::shared_ptr<Link> link, Unfinished) : link_(std::move(link)), session_(link_) {}

ServerStore::ServerStore(std::shared_ptr<Link> link) : ServerStore(std::move(link), Unfinished{}) {
    const Result shop = session_.run("SELECT to_regclass('dao.shop') IS NOT NULL");
    if (!shop.boolean(0, 0)) {
        fail(errUnrecognisedFormat, "The database on " + placeText(link_->address()) + " holds no shop.");
    }
    const Result state = session_.run("SELECT whole, order_version, form FROM dao.shop");
    if (state.rows() != 1 || !state.boolean(0, 0)) {
        fail(errUnrecognisedFormat, "The shop on " + placeText(link_->address()) +
                                        " is unfinished: moving it there was broken off.");
    }
    if (state.integer(0, 1) > alphabet::kOrderVersion || state.integer(0, 2) > driver::knownForm()) {
        fail(errNewerForm);
    }
}

std::shared_ptr<driver::Statement> ServerStore::prepare(std::string_view text) {
    return session_.prepare(text);
}

// The connection keeps what the server prepared for it.
std::shared_ptr<driver::Statement> ServerStore::cached(const std::string& text) {
    return session_.prepare(text);
}

// A server that was set back to an earlier day counts its versions anew, but at other moments.
std::string ServerStore::state() {
    return std::string(
        session_
            .run("SELECT concat_ws(' ', s.identity, s.form, s.schema_version,"
                 " (SELECT sum(last_value) FROM pg_sequences WHERE schemaname = 'shop'),"
                 " (SELECT md5(string_agg(concat_ws(' ', number, version, extract(epoch FROM changed)), ','"
                 " ORDER BY number)) FROM dao.writers WHERE version > 0)) FROM dao.shop AS s")
            .text(0, 0));
}

}  // namespace dao::postgres
