#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/keyset_search.h"
#include "platform/dao/row_source.h"

namespace dao {

// A dynaset or a table: the keys of its rows are read once, the rows themselves when they are looked at, a
// block ahead of whoever walks. What others change shows with the next fetch; what they add does not.
class Keyset final : public RowSource {
 public:
    Keyset(std::shared_ptr<DatabaseImpl> database, std::string statement);

    void open() override;
    void release() noexcept override;
    std::unique_ptr<RowSource> copy() const override;
    std::size_t count() const override { return keys_.size(); }
    std::optional<std::size_t> fetch(std::size_t row) override { return rows_.fetch(row); }
    void fetchUnread(std::size_t row) override { rows_.fetchAlone(row); }
    bool distrust() override { return rows_.distrust(); }
    bool surelyStands(std::size_t row) const override { return rows_.wasJustWritten(row); }
    std::optional<std::size_t> findRow(std::string_view criterion) override {
        return search_.find(criterion);
    }
    dao::Bookmark bookmarkOf(std::size_t row) const override { return keys_.at(row); }
    std::optional<std::size_t> rowOf(const dao::Bookmark& place) const override { return keys_.find(place); }
    std::unique_ptr<RowEditing> editing(FetchedRow& row) override;

 private:
    Keyset(const Keyset& of);
    void markCounters();

    std::shared_ptr<DatabaseImpl> database_;
    std::string statement_;
    CompiledPtr compiled_;
    KeyList keys_;
    std::vector<char> isCounter_;  // of each column

    const KeysetView view_{database_, compiled_, keys_, columns_.all(), isCounter_};
    KeyedBlock rows_{view_, row_.block(), row_.asked()};
    KeysetSearch search_{view_, rows_};
};

}  // namespace dao
