#include "platform/dao/keyset_search.h"

#include "platform/dao/failure.h"
#include "platform/dao/names.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/translated.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

constexpr std::size_t kMoreMatches = 64;  // as many times more when a search has to go on
constexpr std::int64_t kBelowKeys = driver::kNoRow + 1;

// A set that stands in the order of its keys: the first match that belongs to it is the one. Others that come
// before it were added since, or deleted from the set; the more of them there are, the more are read at once.
std::vector<std::int64_t> firstAmong(const KeyList& rows, const sql::WrittenSelect& find,
                                     driver::Store& store) {
    const auto statement = store.prepare(find.firstKeys);
    const int firstKey = driver::bindParameters(*statement, find.parameters);
    std::int64_t behind = kBelowKeys;
    for (std::size_t wanted = 1;; wanted *= kMoreMatches) {
        statement->bindInteger(firstKey, behind);
        statement->bindInteger(firstKey + 1, static_cast<std::int64_t>(wanted));
        std::vector<std::int64_t> keys;
        statement->readKeys(keys, 1);
        for (const std::int64_t key : keys) {
            if (rows.find({&key, 1})) {
                return {key};
            }
        }
        if (keys.size() < wanted) {
            return {};
        }
        behind = keys.back();
    }
}

}  // namespace

std::optional<std::size_t> KeysetSearch::find(std::string_view criterion) {
    const sql::ExpressionPtr tree = translated([&] { return sql::parseCriterion(criterion); });
    const std::optional<Key> key = keyIn(*tree);
    return key ? findByKey(*key) : findByStatement(*tree);
}

std::optional<KeysetSearch::Key> KeysetSearch::keyIn(const sql::Expression& criterion) const {
    sql::KeyCriterion wanted;
    if (!sql::isKeyCriterion(criterion, wanted)) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < set_.columns.size(); ++i) {
        const sql::ResultColumn& column = set_.columns[i];
        if (sameName(column.name, wanted.field)) {
            return set_.isCounter[i] == 0 ? std::nullopt : std::optional(Key{wanted.number, column.source});
        }
    }
    return std::nullopt;
}

// Searches for one row's own number are what the windows do all day: the list knows where it is, and one look
// into the file tells whether it is still there.
std::optional<std::size_t> KeysetSearch::findByKey(const Key& key) {
    const std::optional<std::size_t> row = set_.keys.findKey(key.number, key.source);
    return row && rows_.fetchAlone(*row) ? row : std::nullopt;
}

// Where asking takes its time the tables are taken to be as they were when they were last looked at: whether
// they are comes with the answer. Where they are not, or anything fails, it is done again after a look at
// them.
std::optional<std::size_t> KeysetSearch::findByStatement(const sql::Expression& criterion) {
    driver::Store& store = set_.file().store();
    if (store.isFar() && !store.transaction().isOpen()) {
        const ReadScope scope(store);
        if (std::optional<Met> met = metAsTablesStood(criterion)) {
            return fetchFirstOf(std::move(*met));
        }
    }
    const ReadScope scope(store);
    set_.file().catalog();
    return fetchFirstOf(rowsThatMeet(criterion));
}

std::optional<KeysetSearch::Met> KeysetSearch::metAsTablesStood(const sql::Expression& criterion) const {
    std::optional<Error> waited;
    {
        const QuietErrors quiet;
        try {
            Met met = rowsThatMeet(criterion);
            return set_.file().translator().standsAsRead() ? std::optional(std::move(met)) : std::nullopt;
        } catch (const Error& error) {
            if (error.Number() != errLocked) {
                return std::nullopt;  // told by the second try
            }
            waited = error;
        }
    }
    fail(waited->Number(), waited->Description());  // nobody waits for it twice
}

// All of them, or as many as it takes to know the first in the order of the set.
KeysetSearch::Met KeysetSearch::rowsThatMeet(const sql::Expression& criterion) const {
    driver::Store& store = set_.file().store();
    const CompiledPtr find = set_.file().translator().compileFind(*set_.compiled, criterion);
    Met met;
    if (set_.keys.isAscending() && !find->select.firstKeys.empty()) {
        if (!store.isFar() || !readFirst(find->select, met)) {
            met.keys = firstAmong(set_.keys, find->select, store);
        }
        return met;
    }
    const auto statement = store.prepare(find->select.keys);
    driver::bindParameters(*statement, find->select.parameters);
    statement->readKeys(met.keys, set_.keys.stride());
    return met;
}

// Whether that tells it: the first row that meets the criterion, with its key, is one of the set, or there is
// none.
bool KeysetSearch::readFirst(const sql::WrittenSelect& find, Met& met) const {
    const auto statement = set_.file().store().prepare(find.firstRow);
    driver::bindParameters(*statement, find.parameters);
    met.row.reset(typesOf(set_.columns));
    statement->readRows(met.row, 1, &met.keys, 1);
    if (met.keys.empty() || set_.keys.find(met.keys)) {
        return true;
    }
    met = {};
    return false;
}

std::optional<std::size_t> KeysetSearch::fetchFirstOf(Met&& met) {
    std::optional<std::size_t> first;
    const auto stride = static_cast<std::size_t>(set_.keys.stride());
    for (std::size_t at = 0; at + stride <= met.keys.size(); at += stride) {
        const std::optional<std::size_t> row = set_.keys.find({met.keys.data() + at, stride});
        if (row && (!first || *row < *first)) {
            first = row;
        }
    }
    if (first && met.row.rows() == 1) {
        rows_.keep(*first, std::move(met.row));
    } else if (first) {
        rows_.fetchAlone(*first);
    }
    return first;
}

}  // namespace dao
