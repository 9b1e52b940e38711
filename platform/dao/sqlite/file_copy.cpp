#include "platform/dao/sqlite/file_copy.h"

#include "platform/dao/failure.h"
#include "platform/dao/sqlite/long_statements.h"
#include "platform/dao/sqlite/texts.h"
#include "platform/text/order.h"

namespace dao::driver {
namespace {

// Tables before their rows, rows before their indexes: each is then written once, from front to end.
void copyTables(SqliteConnection& from) {
    const auto textsFrom = [&from](const std::string& what) {
        return textsOf(
            *from.prepare("SELECT " + what + " AND name NOT LIKE 'sqlite!_%' ESCAPE '!' ORDER BY rowid"));
    };
    // The file keeps these statements from their first word on as it wrote them itself.
    const auto createIn = [&from](const std::string& text, std::string_view verb) {
        if (text.compare(0, verb.size(), verb) != 0) {
            fail(errCannotOpen);
        }
        from.execute(std::string(verb) + "target." + text.substr(verb.size()));
    };
    // Where its tables begin in the copy, the copy puts down for itself.
    const std::string tables =
        "FROM main.sqlite_master WHERE type='table' AND name NOT LIKE 'dao!_layout!_%' ESCAPE '!'";
    for (const Value& table : textsFrom("sql " + tables)) {
        createIn(table.textRef(), "CREATE TABLE ");
    }
    for (const Value& table : textsFrom("name " + tables)) {
        from.execute("INSERT INTO target." + quotedName(table.textRef()) + " SELECT * FROM main." +
                     quotedName(table.textRef()));
    }
    for (const Value& index : textsFrom("sql FROM main.sqlite_master WHERE type='index'")) {
        const bool unique = index.textRef().rfind("CREATE UNIQUE", 0) == 0;
        createIn(index.textRef(), unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ");
    }
    const auto countsIn = [&from](const char* schema) {
        return from
            .prepare("SELECT 1 FROM " + std::string(schema) + ".sqlite_master WHERE name='sqlite_sequence'")
            ->scalar(Type::Long)
            .has_value();
    };
    if (countsIn("main") && countsIn("target")) {
        from.execute(
            "DELETE FROM target.sqlite_sequence;"
            "INSERT INTO target.sqlite_sequence(name,seq) SELECT name,seq FROM main.sqlite_sequence");
    }
}

// The key is made for the first page that is written: here, where one that has no room is still known from
// what may fail later. It is not always told as that.
void attach(SqliteConnection& to, const OpenRequest& target) {
    try {
        to.execute("ATTACH " + quotedText(target.path) + " AS target KEY \"x'" + target.key + "'\"");
        to.execute(cipherSettings("target"));
        to.execute(assigned("PRAGMA target.application_id", alphabet::kOrderVersion));
    } catch (...) {
        to.forsake();
        throw;
    }
}

}  // namespace

void copyInto(SqliteStore& store, const OpenRequest& target) {
    SqliteConnection& from = store.connection();
    attach(from, target);
    from.execute("PRAGMA foreign_keys = OFF; PRAGMA target.synchronous = FULL; PRAGMA cache_spill = ON");
    store.transaction().beginWrite();
    try {
        const LongStatements longOnes(from.handle());
        copyTables(from);
        from.execute(assigned("PRAGMA target.user_version", store.definitions().form()));
        store.transaction().commit();
    } catch (...) {
        store.transaction().rollback();
        throw;
    }
    from.execute("DETACH target");
}

}  // namespace dao::driver
