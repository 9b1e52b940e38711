#pragma once

#include <string>
#include <vector>

#include "platform/sql/expressions.h"
#include "platform/sql/joins.h"
#include "platform/sql/scope.h"

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
    // One column of the result.
    struct Column {
        ScopeField field;      // field.source counts through all leaves
        std::string leafName;  // empty: computed
        std::string leafField;
    };
    // Everything behind SELECT's columns, and what the names mean behind this FROM.
    struct Body {
        FromText from;
        std::vector<Leaf> groupLeaves;  // their fields as they stand outside of counting functions
        std::vector<Column> columns;
        std::vector<std::string> conditions;
        std::string groups;            // GROUP BY ... HAVING ...
        std::vector<OrderTerm> order;  // without the keys
    };
    // What a text is for: all rows; all, as a part of another FROM; or those found by their keys.
    enum class Purpose { All, Part, Fetch };
    class OrderNames;
    class CriterionNames;
    class GroupNames;

    JoinNodePtr bindFrom(const FromNode& node);
    void bindSource(const FromNode& node);
    void findIdSet(const Scope& scope);
    bool isPinned(const Scope& scope) const;
    void checkSize(const Body& body) const;
    void checkGrouped(const Expression& e, const Scope& scope) const;
    bool isColumn(const Expression& name, const std::vector<Column>& columns) const;
    FromText from(Purpose purpose) const;
    Body body(Purpose purpose);
    std::vector<Leaf> ofGroups(std::vector<Leaf> leaves) const;
    std::vector<Column> columns(const std::vector<Leaf>& rows, const std::vector<Leaf>& leaves);
    void addStar(const SelectItem& item, const std::vector<Leaf>& leaves, std::vector<Column>& result) const;
    Column computed(const SelectItem& item, const std::vector<Leaf>& rows, const std::vector<Leaf>& leaves);
    void nameColumns(std::vector<Column>& columns) const;
    void addWhere(Body& body);
    void addGroups(Body& body);
    void addOrder(Body& body);
    SelectParts parts(const Body& body, std::vector<SelectedColumn> columns) const;
    std::string ordered(const Body& body, std::vector<SelectedColumn> columns) const;
    static bool isBySet(const Body& body);  // by a set of keys of its only table, and in no other order
    static IdSetPtr keySetOf(const Body& body);
    std::string linked(const Body& body, const std::vector<SelectedColumn>& columns) const;
    static std::vector<SelectedColumn> listOf(const Body& body);
    std::vector<SelectedColumn> keysOf(const Body& body) const;
    Leaf merged(std::string name);
    Leaf nested(std::string name);
    void fillSources(WrittenSelect& result) const;
    std::string fetchText();
    std::string fetchListText();
    std::string fetchRangeText(const Body& whole) const;
    std::string firstKeysText(const Body& whole) const;
    std::string firstRowText(const Body& whole) const;

    const Statement& statement_;
    Context& context_;
    std::vector<Leaf> leaves_;
    JoinNodePtr join_;
    bool grouped_ = false;
    bool hasKeys_ = false;
    int unique_ = -1;
    const Expression* driver_ = nullptr;  // the condition that the only leaf's idSet stands for
};

// A leaf for a table or stored query, as FROM, UPDATE and DELETE name it.
Leaf bindName(const std::string& name, const std::string& visibleName, std::size_t position,
              Context& context);

}  // namespace sql::writing
