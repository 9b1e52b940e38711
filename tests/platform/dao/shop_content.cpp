#include "platform/dao/shop_content.h"

namespace daotest {
namespace {

std::string lineOf(dao::Recordset& set) {
    std::string line;
    for (int field = 0; field < set.FieldCount(); ++field) {
        line += set.Fields(field).Value().asText() + '|';
    }
    return line;
}

}  // namespace

void contentOf(dao::Database& db, Content& found) {
    for (int i = 0; i < db.TableDefs().Count(); ++i) {
        const std::string name = db.TableDefs()[i].Name();
        dao::Recordset set = db.OpenRecordset(name, dao::dbOpenSnapshot);
        std::multiset<std::string>& rows = found[name];
        for (; !set.EOF(); set.MoveNext()) {
            rows.insert(lineOf(set));
        }
    }
}

Content contentOf(dao::Database& db) {
    Content found;
    contentOf(db, found);
    return found;
}

std::size_t rowsIn(const Content& of) {
    std::size_t rows = 0;
    for (const auto& [name, lines] : of) {
        rows += lines.size();
    }
    return rows;
}

}  // namespace daotest
