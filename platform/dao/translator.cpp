#include "platform/dao/translator.h"

#include <algorithm>

#include "platform/dao/read_scope.h"
#include "platform/dao/translated.h"
#include "platform/sql/ast.h"
#include "platform/sql/parser.h"

namespace dao {
namespace {

constexpr std::size_t kCachedStatements = 48;
constexpr std::size_t kCachedTextLimit = 65536;

}  // namespace

Compiled::Compiled(const std::shared_ptr<IdSets>& sets, sql::StatementPtr statement,
                   sql::WrittenSelect written)
    : tree(std::move(statement)), select(std::move(written)), sets_(sets, select.idSets) {}

Translator::Translator(driver::Store& store)
    : store_(&store), catalog_(store), idSets_(std::make_shared<IdSets>(store)) {
    catalog_.refresh();
}

void Translator::setStore(driver::Store& store) {
    store_ = &store;
    catalog_.setStore(store);
    idSets_->setStore(store_);
}

void Translator::dropStore() noexcept {
    cache_.clear();
    idSets_->setStore(nullptr);
}

const FileCatalog& Translator::catalog() {
    catalog_.refresh();
    return catalog_;
}

CompiledPtr Translator::compile(std::string_view text) {
    const ReadScope scope(*store_);
    catalog_.refresh();
    if (CompiledPtr known = recall(text)) {
        return known;
    }
    CompiledPtr compiled = translated([&] { return parsed(text); });
    remember(text, compiled);
    return compiled;
}

CompiledPtr Translator::recall(std::string_view text) {
    const auto known = std::find_if(cache_.begin(), cache_.end(),
                                    [&](const CacheEntry& entry) { return entry.text == text; });
    if (known == cache_.end()) {
        return nullptr;
    }
    if (!holds(*known->compiled)) {
        cache_.erase(known);
        return nullptr;
    }
    cache_.splice(cache_.begin(), cache_, known);
    return cache_.front().compiled;
}

bool Translator::holds(const Compiled& compiled) const {
    return compiled.schemaVersion_ == catalog_.schemaVersion() && catalog_.stillHolds(compiled.queries_);
}

CompiledPtr Translator::parsed(std::string_view text) {
    sql::StatementPtr tree = sql::parse(text);
    if (tree->kind != sql::Statement::Kind::Select) {
        fail(errInvalidOperation, "Invalid operation: only a SELECT gives records.");
    }
    catalog_.startNoting();
    sql::WrittenSelect written = store_->writer().select(*tree, catalog_, idSets_->next());
    auto compiled = std::make_shared<Compiled>(idSets_, std::move(tree), std::move(written));
    compiled->schemaVersion_ = catalog_.schemaVersion();
    compiled->queries_ = catalog_.noted();
    return compiled;
}

void Translator::remember(std::string_view text, const CompiledPtr& compiled) {
    if (text.size() > kCachedTextLimit) {
        return;
    }
    cache_.push_front({std::string(text), compiled});
    if (cache_.size() > kCachedStatements) {
        cache_.pop_back();
    }
}

CompiledPtr Translator::compileTree(const sql::StatementPtr& tree) {
    const ReadScope scope(*store_);
    catalog_.refresh();
    return translated([&] {
        return std::make_shared<Compiled>(idSets_, tree,
                                          store_->writer().select(*tree, catalog_, idSets_->next()));
    });
}

CompiledPtr Translator::compileFind(const Compiled& in, const sql::Expression& criterion) {
    return translated([&] {
        return std::make_shared<Compiled>(
            idSets_, in.tree, store_->writer().find(*in.tree, criterion, catalog_, idSets_->next()));
    });
}

std::int64_t Translator::run(const sql::Statement& action) {
    catalog_.refresh();
    const sql::WrittenAction written =
        translated([&] { return store_->writer().action(action, catalog_, idSets_->next()); });
    const HeldIdSets sets(idSets_, written.idSets);
    const auto prepared = store_->prepare(written.text);
    driver::bindParameters(*prepared, written.parameters);
    return prepared->run();
}

void Translator::writeQuery(std::string_view name, const std::string& text, sql::StatementPtr tree) {
    queriesWritten_ = true;
    catalog_.keep(name, store_->storedQueries().writeQuery(name, text), std::move(tree));
}

// What was translated with a stored query's text that is now taken back must not pass for the text that next
// gets its version.
void Translator::forgetUnwritten(bool isAll) noexcept {
    if (queriesWritten_) {
        catalog_.forgetQueries();
        cache_.clear();
        queriesWritten_ = !isAll;  // what else was written may still be taken back, too
    }
}

}  // namespace dao
