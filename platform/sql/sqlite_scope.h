#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sql/ast.h"
#include "platform/sql/writer.h"

// What the parts of the SQLite writer pass each other.
namespace sql::sqlite {

// How tightly the outermost operator of a piece of SQL binds. Parentheses are written only where they are
// needed: the store's own parser gives up on some thirty levels of them.
enum Precedence { kOr = 1, kAnd, kNot, kEquality, kSum, kProduct, kConcat, kCollate, kUnary, kAtom };

// An expression in the store's SQL. A value of type Currency is the stored count of ten-thousandths.
struct Sql {
    std::string text;
    Type type = Type::Null;
    Precedence precedence = kAtom;
    int nesting = 0;       // levels of parentheses inside
    bool truth = false;    // 0 or 1 as the store's own comparisons give it, not yet 0 or -1
    bool real = false;     // surely a floating number, so that a division by it is no division of integers
    bool notNull = false;  // surely not Null
};

// A field that a statement can name.
struct ScopeField {
    std::string name;
    Sql sql;
    int size = 0;
    bool counter = false;
    int source = -1;    // in the leaf's own list; -1: computed
    std::string field;  // of that source's table
};

struct OrderTerm {
    Sql sql;
    bool descending = false;
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
    std::string idField;
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

// What lasts through the writing of one statement and of the stored queries in it.
struct Context {
    explicit Context(const Catalog& c, int base) : catalog(c), idSetBase(base) {}
    const Catalog& catalog;
    int idSetBase;
    std::vector<IdSetPtr> idSets;
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
    int addIdSet(IdSetPtr ids);  // its number
};

// Sets up to this size are written out; larger ones become an idset.
inline constexpr std::size_t kInlineIds = 64;

std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);
// Terms joined by AND or OR. Long chains go into groups: the store limits the depth of one chain.
std::string chain(const std::vector<std::string>& terms, std::string_view joint);
// The conjuncts of a condition; nullptr has none.
std::vector<const Expression*> conjuncts(const ExpressionPtr& condition);

}  // namespace sql::sqlite
