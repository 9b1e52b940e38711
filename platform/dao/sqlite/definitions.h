#pragma once

#include <string>
#include <vector>

#include "platform/dao/sqlite/connection.h"

namespace dao::driver {

class SqliteDefinitions final : public Definitions {
 public:
    explicit SqliteDefinitions(SqliteConnection& connection) : connection_(connection) {}

    std::int64_t schemaVersion() override;
    int form() override;
    void setForm(int form) override;
    std::vector<sql::TableInfo> tables() override;
    std::vector<Relation> relations() override;
    void createTable(const TableDef& table) override;
    void dropTable(const std::string& table) override;
    void createRelation(const Relation& relation) override;
    void createIndex(const std::string& table, const std::string& field, bool unique) override;
    std::vector<IndexRow> indexes() override;

    // Whether the open transaction has changed what the file is made of; somebody else may have, too.
    bool haveChanged() const { return changed_; }
    void noteChanged(bool changed) { changed_ = changed; }

 private:
    std::vector<std::string> tableNames();
    sql::TableInfo describe(const std::string& table);
    void createForeignIndexes(const std::string& table, const std::vector<Relation>& relations);

    SqliteConnection& connection_;
    bool changed_ = false;
};

}  // namespace dao::driver
