#include "platform/dao/row_walk.h"

#include <utility>

#include "platform/dao/failure.h"
#include "platform/dao/recordset_impl.h"
#include "platform/dao/snapshot.h"

namespace dao {

// The record set is a snapshot of a few rows, and then of the next ones.
void walkRows(const Database& database, std::string statement, const BeginWalk& begin) {
    if (!database) {
        fail(errObjectClosed);
    }
    auto source = std::make_unique<Snapshot>(database.impl(), std::move(statement));
    Snapshot& rows = *source;
    const auto set = std::make_shared<RecordsetImpl>(database.impl(), dbOpenSnapshot, std::move(source));
    const Recordset given(set);
    AtRow atRow;
    rows.readBlocks([&] { atRow = begin(given); },
                    [&] {
                        RowCursor& cursor = set->leave();
                        for (cursor.start(); !cursor.EOF(); cursor.MoveNext()) {
                            atRow();
                        }
                    });
    set->Close();
}

}  // namespace dao
