#include "platform/dao/record_source.h"

#include <string>

#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
#include "platform/dao/keyset.h"
#include "platform/dao/names.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/recordset_impl.h"
#include "platform/dao/snapshot.h"

namespace dao {
namespace {

std::string_view bareName(std::string_view source) {
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!source.empty() && isSpace(source.front())) {
        source.remove_prefix(1);
    }
    while (!source.empty() && (isSpace(source.back()) || source.back() == ';')) {
        source.remove_suffix(1);
    }
    if (source.size() > 2 && source.front() == '[' && source.find(']') == source.size() - 1) {
        source = source.substr(1, source.size() - 2);
    }
    return source;
}

}  // namespace

std::shared_ptr<RecordsetImpl> openRecords(const std::shared_ptr<DatabaseImpl>& database,
                                           std::string_view source, RecordsetType type) {
    OpenFile& from = database->file();
    const ReadScope scope(from.store());  // one look at what has changed is enough for all of it
    const std::string_view name = bareName(source);
    const bool isTable = name.size() <= kLongestName && from.table(name) != nullptr;
    const bool isName =
        isTable || (name.size() <= kLongestName && from.store().storedQueries().queryVersion(name) != 0);
    if (type != dbOpenTable && type != dbOpenDynaset && type != dbOpenSnapshot) {
        fail(errInvalidOperation);
    }
    if (type == dbOpenTable && !isTable) {
        fail(isName ? errInvalidOperation : errUnknownObject,
             isName ? std::string()
                    : "The engine can't find the input table or query '" + std::string(name) + "'.");
    }
    if (!isName && !name.empty() && name.find_first_of(" \t\r\n(") == std::string_view::npos) {
        fail(errUnknownObject, "The engine can't find the input table or query '" + std::string(name) + "'.");
    }
    std::string statement = isName ? "SELECT * FROM [" + std::string(name) + ']' : std::string(source);

    std::unique_ptr<RowSource> rows;
    if (type == dbOpenSnapshot || from.compile(statement)->select.sources.empty()) {
        rows = std::make_unique<Snapshot>(database, std::move(statement));
    } else {
        rows = std::make_unique<Keyset>(database, std::move(statement));
    }
    rows->open();
    auto set = std::make_shared<RecordsetImpl>(database, type, std::move(rows));
    database->keep(set);
    return set;
}

}  // namespace dao
