#include "platform/dao/keyset.h"

#include "platform/dao/failure.h"
#include "platform/dao/keyset_keys.h"
#include "platform/dao/read_scope.h"
#include "platform/dao/row_editing.h"

namespace dao {

Keyset::Keyset(std::shared_ptr<DatabaseImpl> database, std::string statement)
    : database_(std::move(database)), statement_(std::move(statement)) {}

Keyset::Keyset(const Keyset& of)
    : RowSource(),
      database_(of.database_),
      statement_(of.statement_),
      compiled_(of.compiled_),
      keys_(of.keys_),
      isCounter_(of.isCounter_) {
    row_.ageWith(of.row_.age());
    setColumns(of.columns_.all());
    rows_.restart(of.rows_.small());
}

std::unique_ptr<RowSource> Keyset::copy() const {
    return std::unique_ptr<Keyset>(new Keyset(*this));
}

std::unique_ptr<RowEditing> Keyset::editing(FetchedRow& row) {
    return std::make_unique<RowEditing>(KeysetParts{view_, keys_, rows_}, row);
}

void Keyset::open() {
    OpenFile& in = database_->file();
    const ReadScope scope(in.store());
    CompiledPtr compiled = in.compile(statement_);
    if (compiled->select.sources.empty()) {
        fail(errCannotUpdate);
    }
    compiled_ = std::move(compiled);
    row_.ageWith(in.generation());
    const std::shared_ptr<const SmallSet> small = SmallSet::read(view_);
    keys_ = small != nullptr ? small->keys() : statementKeys(view_);
    setColumns(compiled_->select.columns);
    markCounters();
    rows_.restart(small);
}

void Keyset::release() noexcept {
    rows_.release();
    row_.ageNoMore();
    compiled_.reset();
    keys_ = {};
    database_.reset();
}

void Keyset::markCounters() {
    isCounter_.assign(columns_.all().size(), 0);
    for (std::size_t i = 0; i < isCounter_.size(); ++i) {
        isCounter_[i] = view_.isCounterOf(columns_.all()[i]) ? 1 : 0;
    }
}

}  // namespace dao
