#pragma once

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/dao/database.h"

namespace data {

// A text of ours that cannot be read: "FILE:LINE: what is wrong there".
class TextError : public std::runtime_error {
 public:
    TextError(const std::string& file, int line, const std::string& message)
        : std::runtime_error(file + ":" + std::to_string(line) + ": " + message), line_(line) {}
    int line() const { return line_; }  // from 1

 private:
    int line_;
};

// The tables, relations and stored queries of a database file.
struct Schema {
    std::vector<dao::TableDef> tables;
    std::vector<dao::Relation> relations;
    std::vector<std::pair<std::string, std::string>> queries;  // name, statement
};

// Reads the form that data/schema.txt tells at its head. `name` stands in error texts. Throws TextError for a
// line it does not understand, a name twice, a relation to a field that no table has, an empty table or
// query.
Schema readSchema(std::istream& text, const std::string& name);

// That of data/schema.txt, which every program carries with it.
const Schema& shopSchema();
// The table of the documents' last numbers, which comes with the first document.
dao::TableDef documentNumbers();

// The form of the tables below. Raised with every change of data/schema.txt that an existing shop's file has
// to follow; raiseForm then knows the way from the form before.
inline constexpr int kShopForm = 1;

// Brings the file of an earlier version up to date, all of it or nothing. Every step can be run again on a
// file that has it already: a repair may have lost the number. Throws dao::Error.
void raiseForm(dao::Database& database);

// Everything of the schema into a file that holds nothing of it yet. Throws dao::Error.
void createSchema(dao::Database& database, const Schema& schema);

}  // namespace data
