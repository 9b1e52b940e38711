#pragma once

#include <string>
#include <utility>
#include <vector>

// What a file is made of, in the words in which it is asked for and told: fields, tables, relations.
namespace dao {

enum FieldType {
    dbBoolean = 1,
    dbLong = 4,
    dbCurrency = 5,
    dbSingle = 6,
    dbDate = 8,
    dbText = 10,
    dbMemo = 12
};

struct FieldDef {
    std::string Name;
    FieldType Type = dbText;
    int Size = 0;          // characters, dbText only; 0: no limit
    bool counter = false;  // dbLong only: the table's key, numbered by the engine
};

// A table's definition: a new one from Database::CreateTableDef, or one of the file's from TableDefs.
class TableDef {
 public:
    TableDef() = default;
    explicit TableDef(std::string name) : name_(std::move(name)) {}
    const std::string& Name() const { return name_; }
    const std::vector<FieldDef>& Fields() const { return fields_; }
    FieldDef CreateField(std::string name, FieldType type, int size = 0) const {
        return FieldDef{std::move(name), type, size, false};
    }
    void Append(FieldDef field) { fields_.push_back(std::move(field)); }  // Fields.Append

 private:
    std::string name_;
    std::vector<FieldDef> fields_;
};

// A row of one table goes with the row of another it belongs to.
struct Relation {
    std::string table, field;                // the one side: Customers, CustID
    std::string foreignTable, foreignField;  // the many side: Computers, CustID
    bool cascadeDelete = false;
};

}  // namespace dao
