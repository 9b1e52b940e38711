#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/dao/file_catalog.h"
#include "platform/dao/id_sets.h"

namespace dao {

// A statement translated for one file: good as long as the tables and stored queries it names are what they
// were.
class Compiled {
 public:
    Compiled(const std::shared_ptr<IdSets>& sets, sql::StatementPtr statement, sql::WrittenSelect written);

    const sql::StatementPtr tree;
    const sql::WrittenSelect select;

 private:
    friend class Translator;
    const HeldIdSets sets_;
    std::int64_t schemaVersion_ = 0;
    FileCatalog::Noted queries_;
};
using CompiledPtr = std::shared_ptr<const Compiled>;

// Turns texts and trees of the dialect into the statements of one file's store, and keeps those that are
// asked for again and again. Throws 3075, 3061, 3078 and 3360 for what the dialect or the file does not know.
class Translator {
 public:
    explicit Translator(driver::Store& store);

    // Another connection to the file, or to what stands in its place.
    void setStore(driver::Store& store);
    void dropStore() noexcept;  // until the next setStore nothing is asked

    const FileCatalog& catalog();                // compared with the file first
    CompiledPtr compile(std::string_view text);  // 3001 for what is no SELECT
    CompiledPtr compileTree(const sql::StatementPtr& tree);
    // By the tables as the catalog last read them; standsAsRead tells whether they still are.
    CompiledPtr compileFind(const Compiled& in, const sql::Expression& criterion);
    bool standsAsRead() const { return store_->definitions().schemaVersion() == catalog_.schemaVersion(); }

    // Within a transaction that writes. Answers how many rows were affected.
    std::int64_t run(const sql::Statement& action);
    // The same. A stored query's text with its tree, new or over the old one.
    void writeQuery(std::string_view name, const std::string& text, sql::StatementPtr tree);
    void keepWritten() { queriesWritten_ = false; }  // the transaction was committed
    // Some of the transaction was taken back, or all of it.
    void forgetUnwritten(bool isAll) noexcept;

 private:
    struct CacheEntry {
        std::string text;
        CompiledPtr compiled;
    };

    bool holds(const Compiled& compiled) const;
    CompiledPtr recall(std::string_view text);
    CompiledPtr parsed(std::string_view text);
    void remember(std::string_view text, const CompiledPtr& compiled);

    driver::Store* store_;
    FileCatalog catalog_;
    std::shared_ptr<IdSets> idSets_;
    std::list<CacheEntry> cache_;  // last used first
    bool queriesWritten_ = false;  // by the transaction that is open
};

}  // namespace dao
