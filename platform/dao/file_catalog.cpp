#include "platform/dao/file_catalog.h"

#include <algorithm>

#include "platform/dao/names.h"
#include "platform/sql/parser.h"
#include "platform/text/ascii.h"

namespace dao {
namespace {

constexpr std::size_t kKeptQueries = 64;

std::string folded(std::string_view name) {
    std::string text(name);
    std::transform(text.begin(), text.end(), text.begin(), &alphabet::lowerAscii);
    return text;
}

}  // namespace

void FileCatalog::setStore(driver::Store& store) {
    store_ = &store;
    schemaVersion_ = -1;
    queries_.clear();
}

void FileCatalog::refresh() {
    const std::int64_t version = store_->definitions().schemaVersion();
    if (version == schemaVersion_) {
        return;
    }
    tables_ = store_->definitions().tables();
    tableByName_.clear();
    for (std::size_t i = 0; i < tables_.size(); ++i) {
        tableByName_.emplace(folded(tables_[i].name), i);
    }
    schemaVersion_ = version;
}

const sql::TableInfo* FileCatalog::findTable(std::string_view name) const {
    const auto found = tableByName_.find(folded(name));
    return found == tableByName_.end() ? nullptr : &tables_[found->second];
}

sql::StatementPtr FileCatalog::findQuery(std::string_view name) const {
    const std::int64_t version = store_->storedQueries().queryVersion(name);
    noted_.emplace_back(std::string(name), version);
    if (version == 0) {
        return nullptr;
    }
    const auto known = queries_.find(folded(name));
    if (known != queries_.end() && known->second.version == version) {
        return known->second.tree;
    }
    const std::optional<std::string> text = store_->storedQueries().queryText(name);
    if (!text) {
        return nullptr;
    }
    sql::StatementPtr tree = sql::parse(*text);
    if (queries_.size() >= kKeptQueries) {
        queries_.clear();
    }
    queries_[folded(name)] = {version, tree};
    return tree;
}

void FileCatalog::keep(std::string_view name, std::int64_t version, sql::StatementPtr tree) {
    queries_[folded(name)] = {version, std::move(tree)};
}

bool FileCatalog::stillHolds(const Noted& noted) const {
    return std::all_of(noted.begin(), noted.end(), [this](const auto& entry) {
        return store_->storedQueries().queryVersion(entry.first) == entry.second;
    });
}

}  // namespace dao
