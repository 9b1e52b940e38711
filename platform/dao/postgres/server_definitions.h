#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/server_session.h"

namespace dao::postgres {

// Tables stand in the schema "shop", what the engine keeps for itself in the schema "dao".
class ServerDefinitions final : public driver::Definitions {
 public:
    explicit ServerDefinitions(ServerSession& session) : session_(session) {}

    std::int64_t schemaVersion() override { return session_.versions().schema; }
    int form() override;
    void setForm(int form) override;
    std::vector<sql::TableInfo> tables() override;
    std::vector<Relation> relations() override;
    void createTable(const TableDef& table) override;
    void dropTable(const std::string& table) override;
    void createRelation(const Relation& relation) override;
    void createIndex(const std::string& table, const std::string& field, bool unique) override;
    std::vector<driver::IndexRow> indexes() override;

    // The table as it is now; good until the schema changes. errUnknownObject.
    const sql::TableInfo& described(const std::string& table);
    void dropAll();  // the stored queries, too

 private:
    using Version = std::pair<std::int64_t, std::int64_t>;  // of the schema; how often we have changed it
    Version describedAt() const;
    void change(const std::string& text);
    void needTextDomain(int size);

    ServerSession& session_;
    std::int64_t changes_ = 0;
    Version describedIn_{-1, -1};
    std::map<std::string, sql::TableInfo> described_;
};

}  // namespace dao::postgres
