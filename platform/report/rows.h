#pragma once

#include <QString>
#include <memory>

namespace dao {
class Recordset;
class Value;
}  // namespace dao
namespace platform {
class Trap;
}

namespace report {

// Where the rows of a report come from. Values are those of the row that next() went to.
class RowSource {
 public:
    virtual ~RowSource() = default;
    virtual void rewind() = 0;                           // before the first row
    virtual bool next() = 0;                             // false: no more rows
    virtual dao::Value value(const QString& field) = 0;  // throws dao::Error 3265 for an unknown field
    virtual qint64 count() = 0;                          // of all rows, for the progress bar
};

// What a report makes of rows that are not all that its design asks for.
struct RowsTaken {
    // A field that the rows do not have is Null, and no error.
    bool lacking = false;
    // The rows end where they cannot be read on, a value that cannot be read is Null, and what went wrong is
    // noted here instead of being thrown; cleared when the rows begin anew. Lives as long as the rows.
    platform::Trap* failure = nullptr;
};

// The rows of a record set, from its first one; those that somebody deletes meanwhile are left out. The set's
// current row moves. A record set that was never opened has no rows.
std::unique_ptr<RowSource> rowsOf(const dao::Recordset& rows, const RowsTaken& taken = {});

}  // namespace report
