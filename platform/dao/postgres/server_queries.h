#pragma once

#include <map>
#include <string>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/server_session.h"

namespace dao::postgres {

// The stored queries have versions of their own: nobody reads his rows anew for somebody else's.
class ServerQueries final : public driver::StoredQueries {
 public:
    explicit ServerQueries(ServerSession& session) : session_(session) {}

    std::vector<driver::StoredQueryRow> queries() override;
    std::int64_t queryVersion(std::string_view name) override;
    std::optional<std::string> queryText(std::string_view name) override;
    std::int64_t writeQuery(std::string_view name, std::string_view text) override;
    bool dropQuery(std::string_view name) override;

 private:
    struct KnownQuery {
        std::string name;
        std::int64_t version = 0;
    };
    void refreshQueries();

    ServerSession& session_;
    Versions queriesIn_{0, 0, -1, -1};
    std::map<std::string, KnownQuery> queries_;  // by the bytes that their names compare by
};

}  // namespace dao::postgres
