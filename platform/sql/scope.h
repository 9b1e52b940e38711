#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/dialect.h"

// What the parts of a writer pass each other.
namespace sql::writing {

// A field that a statement can name.
struct ScopeField {
    std::string name;
    Sql sql;
    int size = 0;
    bool counter = false;
    int source = -1;    // in the leaf's own list; -1: computed
    std::string field;  // of that source's table
};

// One table or query of a FROM.
struct Leaf {
    std::string name;  // as the statement calls it
    std::string text;  // as it stands behind the store's FROM
    std::vector<ScopeField> fields;
    std::vector<ResultSource> sources;  // its base tables; empty: its rows have no keys
    std::vector<std::string> keys;      // their row keys
    int unique = -1;                    // the source that stands in one row at most
    const TableInfo* table = nullptr;   // where it is one table, even if through stored queries
    // What the stored queries it was merged from ask for.
    std::string condition;
    std::vector<OrderTerm> order;
    // A set of numbers that the rows are best looked up by.
    int idSet = -1;
    IdSetPtr ids;
    Sql idField;
    bool pinned =
        false;  // a field is asked to have one value: its rows are looked up by that, and be in the set
};

// Finds what a name in an expression means.
class NameResolver {
 public:
    virtual ~NameResolver() = default;
    virtual const ScopeField& resolve(const Expression& name) const = 0;
};

// The fields of a FROM.
class Scope : public NameResolver {
 public:
    explicit Scope(const std::vector<Leaf>& leaves) : leaves_(leaves) {}
    struct Place {
        int leaf = -1;
        int field = -1;
    };
    // Throws NameError where nothing has the name, SyntaxError where two have it.
    Place find(const Expression& name) const;
    const ScopeField& resolve(const Expression& name) const override;

 private:
    bool find(std::string_view qualifier, std::string_view field, const Expression& name, Place& place) const;
    const std::vector<Leaf>& leaves_;
};

// Whether an expression is the name of this field, in a FROM where that is clear.
bool isNameOf(const Expression& e, std::string_view leaf, std::string_view field);

// What lasts through the writing of one statement and of the stored queries in it.
struct Context {
    Context(const Dialect& d, const Catalog& c, int idSetBase) : dialect(d), catalog(c), numbers(idSetBase) {}
    const Dialect& dialect;
    const Catalog& catalog;
    Numbers numbers;
    int aliases = 0;
    bool plainAliases = false;             // UPDATE and DELETE know a table by its own name only
    std::vector<std::string> openQueries;  // stored queries being written, to notice a circle

    // Stored queries can repeat each other's expressions and tables until no memory holds the text: each
    // piece written and each table bound is counted. Throws SyntaxError when it is too much.
    void countText(std::size_t bytes, std::size_t position);
    void countSource(std::size_t position);
    std::size_t textWritten = 0;
    int sourcesBound = 0;

    std::string newAlias() { return "t" + std::to_string(aliases++); }
};

// Sets up to this size are written out; larger ones are bound as a whole.
inline constexpr std::size_t kInlineIds = 64;

// The conjuncts of a condition, those first that take little to ask for: a store asks in the order in which
// they are written, and most rows of a filter fall at the first. nullptr has none.
std::vector<const Expression*> conjuncts(const ExpressionPtr& condition);

}  // namespace sql::writing
