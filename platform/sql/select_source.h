#pragma once

#include <string>
#include <vector>

#include "platform/sql/joins.h"
#include "platform/sql/scope.h"

namespace sql::writing {

// What one SELECT reads: the tables and queries behind its FROM, how they are joined, and what follows from
// that for its rows. All of it is known before a word of the statement is written, and stays as it is.
class SelectSource {
 public:
    // The leaf for a part of a FROM that is no join, under the name that the statement gives it.
    using BindLeaf = Leaf (*)(const FromNode& node, const std::string& name, Context& context);
    // Throws NameError and SyntaxError.
    SelectSource(const Statement& statement, Context& context, BindLeaf bindLeaf);

    const Statement& statement() const { return statement_; }
    const std::vector<Leaf>& leaves() const { return leaves_; }
    const JoinNode& join() const { return *join_; }
    bool isGrouped() const { return grouped_; }
    bool hasKeys() const { return hasKeys_; }  // each of its rows is told by the keys of its tables
    int unique() const { return unique_; }     // see WrittenSelect::uniqueSource
    bool isOneTable() const;                   // with its own rows and their keys
    // Those of WHERE, but for the one that the set of the only leaf stands for.
    std::vector<const Expression*> conditions() const;
    std::vector<ResultSource> sources() const;  // none without keys

 private:
    void shortenJoins(const Scope& scope);
    void findIdSet(const Scope& scope, Context& context);
    bool isPinned(const Scope& scope) const;

    const Statement& statement_;
    std::vector<Leaf> leaves_;
    JoinNodePtr join_;
    bool grouped_;
    bool hasKeys_ = false;
    int unique_ = -1;
    const Expression* driver_ = nullptr;  // the condition that the only leaf's idSet stands for
};

}  // namespace sql::writing
