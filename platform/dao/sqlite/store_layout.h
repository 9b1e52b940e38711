#pragma once

#include <string>

#include "platform/dao/sqlite/connection.h"
#include "platform/dao/sqlite/definitions.h"

namespace dao::driver {

// The salt in such a key, hexadecimal; empty where there is no key.
std::string saltText(const std::string& key);

// What a shop's file tells of itself apart from its first page (layout.h), kept in step with what it holds. A
// store in memory tells nothing.
class StoreLayout {
 public:
    // Both outlive it. `key`: the file's.
    StoreLayout(SqliteConnection& connection, SqliteDefinitions& definitions, const std::string& key)
        : connection_(connection), definitions_(definitions), salt_(saltText(key)) {}

    bool isTold() const { return !salt_.empty(); }
    bool isFresh();
    std::int64_t order();  // of the indexes of texts: see kOrderPragma

    // The open transaction changes what the file is made of.
    void noteChange() { definitions_.noteChanged(true); }
    // Before its commit: what it has changed is told.
    void tellChange();
    // The transaction has come to its end.
    void forgetChange() noexcept { definitions_.noteChanged(false); }

 private:
    SqliteConnection& connection_;
    SqliteDefinitions& definitions_;
    std::string salt_;  // hexadecimal
};

}  // namespace dao::driver
