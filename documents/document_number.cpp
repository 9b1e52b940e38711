#include "documents/document_number.h"

#include <limits>

#include "data/session.h"
#include "platform/dao/dao.h"

namespace document_number {
namespace {

constexpr char kTable[] = "DocNumber";
constexpr char kProForma[] = "PredracunBroj";
constexpr char kInvoice[] = "RacunBroj";

const char* fieldOf(Kind kind) {
    return kind == Kind::Invoice ? kInvoice : kProForma;
}

dao::Database open(bool exclusive = false) {
    return dao::DBEngine::OpenDatabase(databasePath().toStdString(), exclusive, false,
                                       connectText().toStdString());
}

bool hasTable(const dao::Database& database) {
    const dao::TableDefsCollection tables = database.TableDefs();
    const QString wanted = QString::fromLatin1(kTable);
    for (int i = 0; i < tables.Count(); ++i) {
        if (wanted.compare(QString::fromStdString(tables[i].Name()), Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

void makeTable(const dao::Database& database) {
    dao::TableDef table = database.CreateTableDef(kTable);
    table.Append(table.CreateField(kProForma, dao::dbLong));
    table.Append(table.CreateField(kInvoice, dao::dbLong));
    try {
        database.TableDefs().Append(table);
    } catch (const dao::Error& error) {
        // Another workstation was a moment quicker with its first document.
        if (error.Number() != dao::errObjectExists) {
            throw;
        }
    }
}

void makeRow(dao::Recordset& rows) {
    rows.AddNew();
    rows.Fields(kProForma) = 0;
    rows.Fields(kInvoice) = 0;
    rows.Update();
    rows.setBookmark(rows.LastModified());
}

// A number that somebody emptied counts as none taken yet.
qint32 numberOf(const dao::Recordset& rows, Kind kind) {
    const dao::Value& value = rows[fieldOf(kind)];
    return value.isNull() ? 0 : value.asLong();
}

qint32 write(dao::Recordset& rows, Kind kind, qint32 newNumber) {
    rows.Edit();
    if (newNumber == -1) {
        // Only now is the row ours: whatever was read before may have been taken by another workstation.
        const qint32 taken = numberOf(rows, kind);
        if (taken == std::numeric_limits<qint32>::max()) {
            throw dao::Error(dao::errOverflow, "Overflow");
        }
        newNumber = taken + 1;
    }
    rows.Fields(fieldOf(kind)) = newNumber;
    rows.Update();
    rows.setBookmark(rows.LastModified());
    return newNumber;
}

}  // namespace

qint32 last(Kind kind, bool writeBack) {
    dao::Database database = open();
    if (!hasTable(database)) {
        makeTable(database);
    }
    dao::Recordset rows = database.OpenRecordset(kTable);
    if (rows.EOF()) {
        makeRow(rows);
    }
    qint32 number = numberOf(rows, kind);
    if (writeBack) {
        rows.Edit();
        number = numberOf(rows, kind);
        rows.Fields(fieldOf(kind)) = number;
        rows.Update();
    }
    rows.Close();
    database.Close();
    return number;
}

Change change(Kind kind, qint32 newNumber) {
    dao::Database database;
    if (newNumber == -1) {
        database = open();
    } else {
        try {
            database = open(true);
        } catch (const dao::Error&) {
            // Whatever keeps us from having the file to ourselves, it is not ours now.
            return {-1, Refusal::InUse};
        }
    }
    Change result;
    if (!hasTable(database)) {
        result.refusal = Refusal::NoTable;
    } else {
        dao::Recordset rows = database.OpenRecordset(kTable);
        if (rows.EOF()) {
            result.refusal = Refusal::NoRow;
        } else {
            result.number = write(rows, kind, newNumber);
        }
        rows.Close();
    }
    database.Close();
    return result;
}

}  // namespace document_number
