#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/dao/driver.h"

namespace dao {

// What a file holds, as the statement writer asks for it: tables, read again when they have changed, and
// stored queries, parsed again only when their text has changed (a narrowed view of a large shop is a text of
// megabytes).
class FileCatalog final : public sql::Catalog {
 public:
    explicit FileCatalog(driver::Store& store) : store_(&store) {}

    void setStore(driver::Store& store);
    // Compares with the file. Call before a statement is written; the tables found stay where they are until
    // then.
    void refresh();
    std::int64_t schemaVersion() const { return schemaVersion_; }
    const std::vector<sql::TableInfo>& tables() const { return tables_; }

    const sql::TableInfo* findTable(std::string_view name) const override;
    sql::StatementPtr findQuery(std::string_view name) const override;

    // The tree of a text that is being written: it need not be read and parsed again.
    void keep(std::string_view name, std::int64_t version, sql::StatementPtr tree);

    // Texts that were kept and never came into the file: their versions go to others.
    void forgetQueries() { queries_.clear(); }

    // Which stored queries were asked for since startNoting, and in which version (0: there was none).
    using Noted = std::vector<std::pair<std::string, std::int64_t>>;
    void startNoting() { noted_.clear(); }
    const Noted& noted() const { return noted_; }
    bool stillHolds(const Noted& noted) const;

 private:
    struct Query {
        std::int64_t version = 0;
        sql::StatementPtr tree;
    };

    driver::Store* store_;
    std::int64_t schemaVersion_ = -1;
    std::vector<sql::TableInfo> tables_;
    std::unordered_map<std::string, std::size_t> tableByName_;
    mutable std::unordered_map<std::string, Query> queries_;
    mutable Noted noted_;
};

}  // namespace dao
