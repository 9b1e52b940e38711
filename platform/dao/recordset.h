#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/recordset_kinds.h"
#include "platform/dao/value.h"

namespace dao {

class RecordsetImpl;
class Recordset;

// One field of a record set's current row. Light: copy it, keep it as long as the record set is open.
class Field {
 public:
    const std::string& Name() const;
    dao::Type Type() const;
    int Size() const;  // characters a Text may hold; 0: no limit
    // Of the current row, or of the row being added or edited. Throws 3021 where there is none, 3167 where
    // somebody has deleted it. The reference lives until the record set moves or changes.
    const dao::Value& Value() const;
    // The text alone, without a value made of it: empty where the field is Null or holds no text. Throws as
    // Value does; lives until anything else is asked of the record set.
    std::string_view Text() const;
    // Only between AddNew or Edit and Update: 3020 otherwise; 3163 for a text too long; 3421 for one that is
    // not valid UTF-8 or holds a zero character; 13 for a value that does not convert to the field's type.
    // After an error the field is what it was.
    void setValue(dao::Value value);
    Field& operator=(dao::Value value) {
        setValue(std::move(value));
        return *this;
    }
    Field(const Field&) = default;
    Field& operator=(const Field&) = delete;

 private:
    friend class Recordset;
    friend class RecordsetImpl;
    Field(RecordsetImpl* set, int index) : set_(set), index_(index) {}
    RecordsetImpl* set_;
    int index_;
};

// Rows of a table, a query or a statement, one of them current. Shared: a copy is the same record set.
// A default-made one is closed; every operation on a closed one throws 3420.
class Recordset {
 public:
    Recordset() = default;
    explicit Recordset(std::shared_ptr<RecordsetImpl> impl) : impl_(std::move(impl)) {}
    explicit operator bool() const { return impl_ != nullptr; }

    // Opened on the first row, or with both true where there are no rows.
    bool BOF() const;
    bool EOF() const;
    // Moving drops a pending AddNew or Edit. MoveFirst and MoveLast throw 3021 on an empty set; MoveNext at
    // EOF and MovePrevious at BOF too. Move goes `rows` on (negative: back), stopping at EOF or BOF.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(std::int64_t rows);
    std::int64_t RecordCount() const;       // all rows of the set, our own added and without our own deleted
    std::int64_t AbsolutePosition() const;  // from 0; -1: no current row

    // Makes the row at that place (from 0) current; 3021 where the set has none there.
    void setAbsolutePosition(std::int64_t position);
    // The same rows with a current row of its own: a list on the screen reads rows through it as they come
    // into view, while the record set stands where it stood. Opened on the first row. Costs no reading of
    // keys.
    Recordset Clone() const;

    // The first row, from the top, that meets the criterion becomes current and NoMatch is false; otherwise
    // the current row stays as it was and NoMatch is true. Asks the file as it is now; looks only among the
    // set's rows.
    void FindFirst(std::string_view criterion);
    bool NoMatch() const;

    // Edit takes the write lock (bounded wait, then 3260) and reads the row afresh (3167 if it is gone).
    // Update writes and lets go. CancelUpdate, moving, closing let go. AddNew gives the counter its number at
    // once and takes no lock; the new row belongs to the set after Update, the current row stays what it was.
    // 3027 on a read-only database, 3326 on a set that cannot be changed, 3020 for Update without either.
    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate();
    void Delete();  // the current row; after it there is no current row (3167 when read) until a move
    using EditModeKind = dao::EditModeKind;
    EditModeKind EditMode() const;

    dao::Bookmark Bookmark() const;  // 3021 where there is no current row
    // 3167 if that row is gone. On a server the row of an Update that nothing was asked for since is there:
    // whoever looks at it hears of the rest.
    void setBookmark(const dao::Bookmark& place);
    dao::Bookmark LastModified() const;  // the row that the last Update wrote

    int FieldCount() const;
    Field Fields(std::string_view name) const;  // 3265 where there is none
    Field Fields(int index) const;
    // Shorthand for Fields(name).Value().
    const dao::Value& operator[](std::string_view name) const;

    bool Updatable() const;
    RecordsetType Type() const;
    void Requery();  // runs the statement again
    void Close();    // never throws; a pending edit is dropped

 private:
    std::shared_ptr<RecordsetImpl> impl_;
};

}  // namespace dao
