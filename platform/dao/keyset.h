#pragma once

#include <optional>

#include "platform/dao/block_ahead.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/key_list.h"
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
    std::optional<std::size_t> findRow(std::string_view criterion) override;
    dao::Bookmark bookmarkOf(std::size_t row) const override;
    std::optional<std::size_t> rowOf(const dao::Bookmark& place) const override { return keys_.find(place); }
    void dropPending() noexcept override;

 private:
    // The statement cut down to the fields that have been looked at, for a long walk.
    struct Projection {
        std::vector<char> asked;
        CompiledPtr compiled;
        std::vector<int> places;  // as readRows takes them
    };

    // What meets a criterion: the keys of its rows, and the only one of them where it came with its key.
    struct Met {
        std::vector<std::int64_t> keys;
        RowBlock row;
    };

    static constexpr std::size_t kMissing = static_cast<std::size_t>(-1);

    Keyset(const Keyset& of);

    OpenFile& file() const { return database_->file(); }
    OpenFile& writableFile() const;
    const sql::WrittenSelect& select() const { return compiled_->select; }
    int unique() const { return select().uniqueSource; }
    KeyList allKeys() const;
    void readKeys(const sql::WrittenSelect& from, std::vector<std::int64_t>& keys) const;
    // The table that the statement gives every row of, as they stand; nullptr where it does anything more.
    const sql::TableInfo* wholeTable(const sql::Statement& tree, int depth) const;

    void dropBlock();
    bool inBlock(std::size_t row) const { return row - blockStart_ < blockRows_.size(); }
    std::size_t nextBlock() const;
    void loadBlock(std::size_t first, std::size_t rows);
    void loadRows(std::size_t first, std::size_t rows);
    void loadRange(std::size_t first, std::size_t rows);
    bool isDense(std::size_t first, std::size_t rows) const;
    std::shared_ptr<driver::Statement> rangeStatement(std::size_t first, std::size_t rows);
    BlockAhead::Rows rowsToRead(std::size_t first, std::size_t rows) const;
    void askAhead(std::size_t first);
    void loadList(std::size_t first, std::size_t rows);
    const Projection& projection();
    void loadSingly(std::size_t first, std::size_t rows);
    std::optional<std::size_t> findByKey(const sql::Expression& criterion, bool& isKey);
    std::optional<std::size_t> findByStatement(const sql::Expression& criterion);
    // Nothing: the tables have changed, or it failed.
    std::optional<Met> metAsTablesStood(const sql::Expression& criterion);
    Met rowsThatMeet(const sql::Expression& criterion);
    bool readFirst(const sql::WrittenSelect& find, Met& met) const;
    std::optional<std::size_t> loadFirstOf(Met&& met);
    void keepRow(std::size_t row, RowBlock&& read);

    const sql::ColumnInfo* counterOf(int source) const;
    void markCounters();
    bool changeAtOnce(OpenFile& to);
    std::vector<driver::FieldValue> changedFields(int source) const;
    static Value converted(const sql::ResultColumn& column, Value&& value);
    EditedRows rowsOf(std::size_t row, bool written) const;
    bool isChanged(int source) const;
    void updateEdited();
    void updateAdded();
    void writeChanged(std::size_t row);
    void checkUnchanged();
    void followJoin(std::size_t row);
    void joinAdded(std::int64_t key);

    std::string statement_;
    CompiledPtr compiled_;
    KeyList keys_;

    std::size_t blockStart_ = 0;
    std::vector<std::size_t> blockRows_;  // where in block_ a row lies; kMissing: deleted
    std::int64_t blockGeneration_ = -1;
    std::optional<std::int64_t> blockVersion_;  // nothing: nobody has asked
    std::size_t lastFetched_ = kMissing;

    BlockAhead ahead_;
    std::int64_t askedUpTo_ = -1;  // how often the store had been asked when the block was there

    Projection projection_;
    std::vector<char> isCounter_;  // of each column

    std::size_t editedRow_ = 0;
    EditedRows editedRows_;  // that are locked for it
    std::int64_t editEpoch_ = 0;
    std::int64_t addedNumber_ = 0;
    std::vector<Value> original_;  // the row as Edit read it
};

}  // namespace dao
