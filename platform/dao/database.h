#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/definitions.h"
#include "platform/dao/recordset_kinds.h"

namespace dao {

class DatabaseImpl;
class Recordset;

enum ExecuteOption { dbFailOnError = 128 };

// A stored query: lives in the file, is seen by every process that has it open.
class QueryDef {
 public:
    QueryDef(std::shared_ptr<DatabaseImpl> db, std::string name)
        : db_(std::move(db)), name_(std::move(name)) {}
    const std::string& Name() const { return name_; }
    std::string SQL() const;  // 3265 if it has been dropped meanwhile
    // 3075 if it does not parse, and then the old text stays. Names are looked up when the query is run.
    void setSQL(const std::string& text);

 private:
    std::shared_ptr<DatabaseImpl> db_;
    std::string name_;
};

class QueryDefsCollection {
 public:
    explicit QueryDefsCollection(std::shared_ptr<DatabaseImpl> db) : db_(std::move(db)) {}
    int Count() const;
    QueryDef operator[](int index) const;              // in order of name
    QueryDef operator[](std::string_view name) const;  // 3265 where there is none; without regard to case
    void Delete(std::string_view name);                // 3265 where there is none

 private:
    std::shared_ptr<DatabaseImpl> db_;
};

class TableDefsCollection {
 public:
    explicit TableDefsCollection(std::shared_ptr<DatabaseImpl> db) : db_(std::move(db)) {}
    int Count() const;
    TableDef operator[](int index) const;
    TableDef operator[](std::string_view name) const;  // 3265
    void Append(const TableDef& table);                // 3012 if the name is taken
    void Delete(std::string_view name);                // 3265

 private:
    std::shared_ptr<DatabaseImpl> db_;
};

// An open file. Shared: a copy is the same. A default-made one is closed: 3420.
// All openings of one file by one process share one connection, and do not lock each other out.
class Database {
 public:
    Database() = default;
    explicit Database(std::shared_ptr<DatabaseImpl> impl) : impl_(std::move(impl)) {}
    explicit operator bool() const { return impl_ != nullptr; }  // false after Close, too

    const std::string& Name() const;  // the path it was opened by
    // `source`: a table's or stored query's name, or a SELECT. dbOpenTable takes a table's name only and
    // gives its rows in the table's own order.
    Recordset OpenRecordset(std::string_view source, RecordsetType type = dbOpenDynaset);
    // INSERT, UPDATE, DELETE. All of it happens or, on an error, nothing, whatever `options` says. 3421 for a
    // statement that is not valid UTF-8 or holds a zero character.
    void Execute(std::string_view statement, int options = dbFailOnError);
    std::int64_t RecordsAffected() const;  // by the last Execute

    QueryDefsCollection QueryDefs() const;
    QueryDef CreateQueryDef(std::string_view name, const std::string& text);  // 3012 if the name is taken
    TableDefsCollection TableDefs() const;
    TableDef CreateTableDef(std::string name) const { return TableDef(std::move(name)); }
    // Only while the foreign table is empty. The store keeps the rule from then on, also for other programs.
    void CreateRelation(const Relation& relation);
    std::vector<Relation> Relations() const;
    // Makes searches and joins by this field quick. 3265 for an unknown table or field, 3022 if `unique` and
    // the table holds a value twice.
    void CreateIndex(std::string_view table, std::string_view field, bool unique = false);

    // A number that the program gives the form of its tables, so that it can bring an older file up to date
    // and leave a newer one alone. 0 in a new file. Kept by compaction and by copies; a repair that cannot
    // read it starts again at 0. Part of a transaction like any other change.
    int Form() const;
    void setForm(int form);

    void Close();  // its record sets close with it; closing a closed one does nothing
    const std::shared_ptr<DatabaseImpl>& impl() const { return impl_; }

 private:
    std::shared_ptr<DatabaseImpl> impl_;
};

}  // namespace dao
