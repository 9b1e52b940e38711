#pragma once

#include <optional>

#include "platform/dao/added_row.h"
#include "platform/dao/edited_row.h"
#include "platform/dao/keyset_search.h"
#include "platform/dao/recordset_impl.h"

namespace dao {

// A dynaset or a table: the keys of its rows are read once, the rows themselves when they are looked at, a
// block ahead of whoever walks. What others change shows with the next fetch; what they add does not.
class Keyset final : public RecordsetImpl {
 public:
    Keyset(std::shared_ptr<DatabaseImpl> database, RecordsetType type, std::string statement);
    ~Keyset() override { Close(); }  // an Edit left behind must not keep the office waiting

    void AddNew() override;
    void Edit() override;
    void Update() override;
    void Delete() override;
    void setValue(int index, Value&& value) override;
    bool Updatable() const override;

 protected:
    void open() override;
    std::shared_ptr<RecordsetImpl> copy() const override;
    void release() noexcept override;
    std::size_t count() const override { return keys_.size(); }
    void fetch(std::size_t row) override;
    void fetchUnread() override;
    void distrust() override;
    bool surelyStands(std::size_t row) const override { return rows_.wasJustWritten(row); }
    std::optional<std::size_t> findRow(std::string_view criterion) override {
        return search_.find(criterion);
    }
    dao::Bookmark bookmarkOf(std::size_t row) const override { return keys_.at(row); }
    std::optional<std::size_t> rowOf(const dao::Bookmark& place) const override { return keys_.find(place); }
    void dropPending() noexcept override;

 private:
    Keyset(const Keyset& of);

    OpenFile& file() const { return database_->file(); }
    OpenFile& writableFile() const;
    const sql::WrittenSelect& select() const { return compiled_->select; }
    int unique() const { return select().uniqueSource; }
    KeyList allKeys() const;
    void readKeys(const sql::WrittenSelect& from, std::vector<std::int64_t>& keys) const;
    // The table that the statement gives every row of, as they stand; nullptr where it does anything more.
    const sql::TableInfo* wholeTable(const sql::Statement& tree, int depth) const;
    void markCounters();

    void updateEdited();
    void updateAdded();
    void followJoin(std::size_t row);
    // The keys of the row that this one stands in now; none: it stands in no row of the set.
    std::vector<std::int64_t> joinedAnew(std::int64_t key) const;

    std::string statement_;
    CompiledPtr compiled_;
    KeyList keys_;
    std::vector<char> isCounter_;  // of each column

    const KeysetView view_{database_, compiled_, keys_, columns_, isCounter_};
    KeyedBlock rows_{view_, row_.block(), row_.asked()};
    KeysetSearch search_{view_, rows_};
    EditedRow edited_{view_, rows_, pending_};
    AddedRow added_{view_, pending_};
};

}  // namespace dao
