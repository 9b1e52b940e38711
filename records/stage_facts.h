#pragma once

#include <QString>
#include <functional>
#include <string>

class EntryFields;
struct EntryPane;
namespace dao {
class Recordset;
}

// Writes the name of a record set's current row behind a text, in UTF-8; throws dao::Error.
using NameWriter = std::function<void(std::string& name)>;

// What the shop's three kinds of record differ in: clients, computers, services. A stage reads a stored query
// and not its table, so that a filter reaches everything that is read later.
struct StageFacts {
    const char* table;         // of the database
    const char* query;         // the stored query; the number of this copy of the program stands behind it
    const char* key;           // the field with a record's number; records of the next stage have it, too
    const char* entryColumns;  // what the selector's entries are made of, the key first; nullptr: no selector
    int captionId;             // of the tab while nothing is chosen
    const EntryPane* pane;     // nullptr where nothing is typed
    QString (*nameOfFields)(const EntryFields& fields);  // as its entry and its tab show it
    // The same from the file; for as long as `rows` are open. Throws dao::Error.
    NameWriter (*namesOfRows)(const dao::Recordset& rows);
};

inline constexpr int kClients = 0, kComputers = 1, kServices = 2;
inline constexpr int kStageCount = 3;
inline constexpr int kSelectorCount = 2;  // the stages of clients and computers have one

const StageFacts& stageFacts(int stageIndex);
