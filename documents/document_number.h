#pragma once

#include <QString>
#include <QtGlobal>

class QWidget;

// The running numbers of documents: the last one printed of each kind, in the one row of the table DocNumber.
// Each call opens and closes the database, so that numbers are taken between whole openings.
namespace document_number {

enum class Kind { ProForma = 0, Invoice = 1 };

// The last number printed; makes the table and its row where they are missing. Throws dao::Error.
qint32 last(Kind kind, bool write = false);

enum class Refusal { None, InUse, NoTable, NoRow };
struct Change {
    qint32 number = -1;  // the new last number; -1: refused
    Refusal refusal = Refusal::None;
};
// -1: takes the next number. The read, the edit and the update are one turn at the lock, so that two
// workstations never get the same one. Otherwise writes the number given, which needs the file exclusively.
// Throws dao::Error for what is no refusal.
Change change(Kind kind, qint32 newNumber = -1);

}  // namespace document_number
