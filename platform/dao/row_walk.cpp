#include "platform/dao/row_walk.h"

#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/snapshot.h"

namespace dao {

void walkRows(const Database& database, std::string statement, const BeginWalk& begin) {
    if (!database) {
        fail(errObjectClosed);
    }
    Snapshot::walk(database.impl(), std::move(statement), begin);
}

}  // namespace dao
