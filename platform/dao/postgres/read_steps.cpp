#include "platform/dao/postgres/read_steps.h"

namespace dao::postgres {

Step versionsStep(int writer) {
    return {
        "SELECT s.schema_version,"
        " (SELECT coalesce(sum(version), 0)::bigint FROM dao.writers WHERE number <> $1),"
        " (SELECT count(*) FROM dao.queries), (SELECT coalesce(max(version), 0) FROM dao.queries)"
        " FROM dao.shop AS s",
        Parameters().integer4(writer)};
}

Versions versionsFrom(const Result& answer) {
    return {answer.integer(0, 0), answer.integer(0, 1), answer.integer(0, 2), answer.integer(0, 3)};
}

std::vector<Step> beginningOfRead(int writer) {
    return {{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY", {}, false}, versionsStep(writer)};
}

}  // namespace dao::postgres
