#pragma once

#include <stdexcept>

#include "platform/sql/types.h"

namespace sql {

// A statement that is in order and more than the store takes.
class SizeError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// Numbers that a long chain of "field = number OR field = number ..." asked for: ascending, each once.
using IdSet = std::vector<std::int64_t>;
using IdSetPtr = std::shared_ptr<const IdSet>;

// What a store that binds values is to bind as $1, $2 ... before the row keys.
struct Parameter {
    enum class Kind : std::uint8_t { Ids, Now };
    Kind kind = Kind::Ids;
    IdSetPtr ids;  // with Ids: an array of its numbers
};

// A column of a result.
struct ResultColumn {
    std::string name;
    Type type = Type::Text;
    int size = 0;       // characters a Text may hold; 0: no limit or computed
    int source = -1;    // index into WrittenSelect::sources; -1: computed, cannot be written
    std::string field;  // the field of that source's table
};

// A base table that takes part in a result, through however many stored queries.
struct ResultSource {
    std::string table;
    bool nullable = false;  // the outer side of a join: its row key may be Null in a result row
};

// A SELECT in the store's own SQL. The store gives each row of a base table a hidden number that never
// changes while the row lives (the row key); record sets are lists of those.
struct WrittenSelect {
    std::string rows;   // every column of every row, in the statement's order: what a snapshot reads
    std::string keys;   // the row keys of every row, one column for each source, in the statement's order
    std::string fetch;  // the columns of one row; the first parameter behind `parameters` is the row key of
                        // sources[0], the next one of sources[1] ... (Null is met by Null, since an outer
                        // side may be absent)
    // The columns of many rows behind their places in the list, from 1: the parameters behind `parameters`
    // are lists of row keys, one for each source. Rows that are gone are left out. Empty where the store
    // fetches one by one.
    std::string fetchList;
    // One source only, else empty: row key first, then the columns, of all rows of that table with a row key
    // between the first and the second parameter behind `parameters`, ascending, whatever the statement's own
    // conditions say (the key list knows those).
    std::string fetchRange;
    // What a search through one table goes by, else empty: the row keys above the first parameter behind
    // `parameters`, ascending, no more of them than the second one says.
    std::string firstKeys;
    // The lowest row key of all, with the columns of its row behind it; no parameter of its own.
    std::string firstRow;
    // Where the statement gives every row of its one source whose row key is in a set, in the order of these,
    // and asks for nothing else; nullptr: it does not.
    IdSetPtr keySet;
    std::vector<ResultColumn> columns;
    std::vector<ResultSource> sources;  // empty: not updatable (DISTINCT, grouping, ...): read as a snapshot
    // The source whose row stands in one row of the result at most: the one that Delete removes from and
    // AddNew adds to (the many side of a join). -1 where there is none.
    int uniqueSource = -1;
    // Sets that the texts refer to as the table-valued "idset(N)", N counting from idSetBase; none where the
    // store binds them.
    std::vector<IdSetPtr> idSets;
    // The same in all texts of one statement; none where the store has functions for what they stand for.
    std::vector<Parameter> parameters;
    // A function of the store's own asks for the time: other rows may follow although nobody has written and
    // no parameter has changed.
    bool asksTheTime = false;
};

// An action statement in the store's own SQL.
struct WrittenAction {
    std::string text;
    std::vector<IdSetPtr> idSets;
    std::vector<Parameter> parameters;
};

// Turns a tree into one store's own SQL. One writer for each kind of store.
class Writer {
 public:
    virtual ~Writer() = default;

    // `idSetBase`: number of the first idset in the text, so that statements can live side by side.
    // Throws NameError for what the catalog does not have.
    virtual WrittenSelect select(const Statement& statement, const Catalog& catalog, int idSetBase) const = 0;

    // The same selection narrowed by a criterion over its result's fields: what FindFirst looks through.
    // Only `keys`, `firstKeys`, `firstRow`, `sources`, `idSets` and `parameters` are filled.
    virtual WrittenSelect find(const Statement& statement, const Expression& criterion,
                               const Catalog& catalog, int idSetBase) const = 0;

    // INSERT, UPDATE, DELETE.
    virtual WrittenAction action(const Statement& statement, const Catalog& catalog, int idSetBase) const = 0;
};

// The writer for the SQLite family. The store it writes for is to provide:
//   - the collation DAO_TEXT (text without regard to case) and the SQL functions dao_datediff(interval, from,
//   to
//     [, firstDay]) and dao_now(), dao_text(value) (a number as the engine writes it into a text, Null as
//     '');
//   - the SQL function dao_calculate(steps, operands...): a calculation of floating numbers, see Calculation;
//   - the table-valued function idset(N) with one column `value`, which gives its numbers ascending, and the
//     SQL function dao_in_idset(N, value): whether that is one of them;
//   - the SQL function dao_link(table, field, number): what the table's row of that counter holds in the
//     field where that is a whole number, or the counter where the field is ''; else Null;
//   - the aggregate functions dao_gather(...), which hands the rows of `fetchRange` to whoever reads them,
//   and
//     dao_sorted(keys, shown, table, ...), which does so in the order of the first `keys` columns behind
//     `table`, without the rows that have a Null among these: `shown` tells the places of the columns that
//     are given, from 0, each with a blank behind it. The statement goes through the rows of `table` whose
//     row keys are between ?1 and ?2;
//   - row keys as `rowid`; Currency columns as integers of ten-thousandths, Yes/No as 0 and -1, Date as REAL.
// A column of Currency in `rows` and `fetch` comes out as that integer; in expressions it counts in units.
const Writer& sqliteWriter();

// The writer for the server. The store it writes for is to provide:
//   - the shop's tables in the schema shop, under their own names, with columns of the domains of the schema
//   dao;
//   - the functions of that schema (dao.key, dao.digits, dao.datediff, dao.round);
//   - row keys in a table's counter, or where it has none in a hidden bigint column dao_row;
//   - statements taken as standard_conforming_strings has it, `parameters` as bigint[] and float8, row keys
//   as bigint.
// Columns come out as smallint (Yes/No), int or bigint (Long), real, double precision, bigint (Currency, the
// count of ten-thousandths) and text.
const Writer& postgresWriter();

// True where the statement is a plain "everything of one table or query", with the field's number compared to
// one number: "CustID=17". Lets FindFirst look into its key list instead of asking the store.
struct KeyCriterion {
    std::string field;
    std::int64_t number = 0;
};
bool isKeyCriterion(const Expression& criterion, KeyCriterion& out);

}  // namespace sql
