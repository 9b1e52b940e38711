#pragma once

#include <string>

#include "platform/sql/select_body.h"
#include "platform/sql/select_source.h"

namespace sql::writing {

// One SELECT: finds what its names mean, then writes it in its several forms. Stored queries in its FROM are
// bound by a writer of their own and become leaves of this one.
class SelectWriter {
 public:
    SelectWriter(const Statement& statement, Context& context);

    WrittenSelect write();
    WrittenSelect find(const Expression& criterion);
    // This selection as a part of another FROM.
    Leaf asLeaf(std::string name);

 private:
    SelectBody body(SelectPurpose purpose) { return SelectBodyWriter(source_, context_).write(purpose); }
    void fillFetch(WrittenSelect& result);
    std::string narrowing(const Expression& criterion, const SelectBody& whole);
    void fillNumbers(WrittenSelect& result) const;
    Leaf merged(std::string name);
    Leaf nested(std::string name);

    Context& context_;
    SelectSource source_;
};

// A leaf for a table or stored query, as FROM, UPDATE and DELETE name it.
Leaf bindName(const std::string& name, const std::string& visibleName, std::size_t position,
              Context& context);

}  // namespace sql::writing
