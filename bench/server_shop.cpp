#include "server_shop.h"

#include "data/session.h"
#include "pairs.h"
#include "plain_shop.h"
#include "platform/dao/dao.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/signpost.h"

namespace {

constexpr const char* kStocked = "bench_stocked";  // what the two others are copied from
constexpr const char* kOurs = "bench_ours";
constexpr const char* kPlain = "bench_plain";

std::string placeOf(const dao::postgres::Address& server, const char* database) {
    std::string text = "host=" + server.host + " user=" + server.user + " dbname=" + database;
    return server.port.empty() ? text : text + " port=" + server.port;
}

bool isThere(const PlainServer& server, const char* database) {
    return server.number(std::string("SELECT count(*) FROM pg_database WHERE datname='") + database + "'") !=
           0;
}

// A shop that has just been moved has no statistics yet, and no rows known to be seen by all: after a night
// on the server it has both.
void settle(const std::string& place) {
    PlainServer(place).run("VACUUM ANALYZE");
}

void carry(const PlainServer& server, const dao::postgres::Address& address,
           const std::filesystem::path& file) {
    // The file stays beside it, for those who draw from it.
    const std::filesystem::path copy = file.parent_path() / "bench-server-stock.mdb";
    const std::filesystem::path kept = file.parent_path() / "bench-server-stock.before-server.mdb";
    std::filesystem::remove(kept);
    std::filesystem::copy_file(file, copy, std::filesystem::copy_options::overwrite_existing);
    fillStock(PlainShop(copy.string()));
    const std::string made = std::string(kStocked) + "_new";
    server.run("DROP DATABASE IF EXISTS " + made);
    server.run("CREATE DATABASE " + made + " TEMPLATE template0");
    dao::moveToServer(copy.string(), connectText().toStdString(), placeOf(address, made.c_str()));
    settle(placeOf(address, made.c_str()));
    server.run("ALTER DATABASE " + made + " RENAME TO " + kStocked);
    std::filesystem::rename(kept, copy);
}

void copy(const PlainServer& server, const dao::postgres::Address& address, const char* database) {
    server.run(std::string("DROP DATABASE IF EXISTS ") + database + " WITH (FORCE)");
    server.run(std::string("CREATE DATABASE ") + database + " TEMPLATE " + kStocked);
    settle(placeOf(address, database));
}

void nameInSmallLetters(const PlainServer& shop) {
    shop.run(R"(DO $$
DECLARE each record;
BEGIN
    FOR each IN SELECT c.relname, a.attname FROM pg_class AS c JOIN pg_attribute AS a ON a.attrelid = c.oid
            WHERE c.relnamespace = 'shop'::regnamespace AND c.relkind = 'r' AND a.attnum > 0
            AND NOT a.attisdropped AND a.attname <> lower(a.attname) LOOP
        EXECUTE format('ALTER TABLE shop.%I RENAME COLUMN %I TO %I', each.relname, each.attname,
            lower(each.attname));
    END LOOP;
    FOR each IN SELECT relname FROM pg_class
            WHERE relnamespace = 'shop'::regnamespace AND relkind = 'r' AND relname <> lower(relname) LOOP
        EXECUTE format('ALTER TABLE shop.%I RENAME TO %I', each.relname, lower(each.relname));
    END LOOP;
END $$)");
}

Stock stockOf(PlainServer& shop) {
    Stock stock;
    const auto number = [&shop](const char* text) { return static_cast<int>(shop.number(text)); };
    stock.firstGroup = number("SELECT ID FROM Grupe WHERE Grupa='Grupa 0'");
    stock.firstProduct =
        number("SELECT min(ID) FROM Oprema WHERE IDGrupe=(SELECT ID FROM Grupe WHERE Grupa='Grupa 0')");
    stock.service = number("SELECT min(ID) FROM Services");
    return stock;
}

// A line for a table: what its rows come to, whatever its columns are called.
Lines rowsOn(const PlainServer& shop) {
    PlainServer::Statement tables(shop,
                                  "SELECT c.oid::regclass::text FROM pg_class AS c WHERE c.relnamespace = "
                                  "'shop'::regnamespace AND c.relkind = 'r' ORDER BY lower(c.relname)");
    Lines lines;
    while (tables.next()) {
        const std::string name(tables.row().text(0));
        PlainServer::Statement sum(
            shop,
            "SELECT count(*)||' rows, '||coalesce(sum(hashtextextended(t::text, 0)), 0) "
            "FROM " +
                name + " AS t");
        while (sum.next()) {
            lines.emplace_back(sum.row().text(0));
        }
    }
    return lines;
}

}  // namespace

ServerShop::ServerShop(const std::filesystem::path& file, const dao::postgres::Address& server,
                       const std::filesystem::path& signpost)
    : server_(server) {
    {
        const PlainServer keeper(place("postgres"));
        if (!isThere(keeper, kStocked)) {
            carry(keeper, server_, file);
        }
        copy(keeper, server_, kOurs);
        copy(keeper, server_, kPlain);
        keeper.run("CHECKPOINT");
    }
    plain_.emplace(place(kPlain));
    nameInSmallLetters(*plain_);
    stock_ = stockOf(*plain_);
    dao::postgres::Address ours = server_;
    ours.dbname = kOurs;
    dao::postgres::writeSignpost(signpost.string(), ours);
    ours_ = dao::DBEngine::OpenDatabase(signpost.string(), false, false, connectText().toStdString());
}

ServerShop::~ServerShop() = default;

std::string ServerShop::place(const char* database) const {
    return placeOf(server_, database);
}

std::int64_t ServerShop::roundTrips() {
    return ours_->impl()->file().store().roundTrips();
}

void ServerShop::checkSameRows() {
    ours_->Close();
    checkEqual("the rows of both databases", rowsOn(PlainServer(place(kOurs))), rowsOn(*plain_));
}
