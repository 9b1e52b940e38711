#pragma once

#include <memory>
#include <string>

#include "platform/dao/file_transaction.h"
#include "platform/dao/place.h"
#include "platform/dao/translator.h"

namespace dao {

class SmallSet;

// A shop's records that this process has open: one connection, whatever the number of Database objects on it.
class OpenFile final : public std::enable_shared_from_this<OpenFile>, private ConnectionInUse {
 public:
    // `presence`: nothing where this process leaves no sign of being in.
    OpenFile(PlacePtr place, std::shared_ptr<Presence> presence, std::unique_ptr<driver::Store> store);
    ~OpenFile();

    const Place& place() const { return *place_; }
    const std::shared_ptr<Presence>& presence() const { return presence_; }
    driver::Store& store() override {
        if (store_ == nullptr) {
            reopen();
        }
        return *store_;
    }
    driver::Store* storeInUse() {
        return store_.get();
    }  // nullptr: it was let go, and nobody has asked since
    // Closes the connection while the file is rebuilt or replaced; the next use opens what then stands at the
    // path. Must not be busy.
    void releaseStore();

    // Counts up with everything that makes rows read earlier old: own writes, a rollback, Idle.
    const std::int64_t& generation() const { return generation_; }
    void touch() override { ++generation_; }

    Translator& translator() {
        store();
        return translator_;
    }
    const FileCatalog& catalog() { return translator().catalog(); }
    const sql::TableInfo* table(std::string_view name) { return catalog().findTable(name); }
    CompiledPtr compile(std::string_view text) { return translator().compile(text); }
    std::int64_t execute(std::string_view statement);

    FileTransaction& transaction() { return transaction_; }

    // The small set that was read last, as long as a record set has it.
    std::shared_ptr<const SmallSet> smallSet() const { return smallSet_.lock(); }
    void noteSmallSet(const std::shared_ptr<const SmallSet>& set) { smallSet_ = set; }

 private:
    driver::Store* openStore() noexcept override { return store_.get(); }
    void keepWritten() override { translator_.keepWritten(); }
    void forgetUnwritten(bool all) noexcept override { translator_.forgetUnwritten(all); }
    void closeStore() noexcept;
    void reopen();

    PlacePtr place_;
    std::shared_ptr<Presence> presence_;
    std::unique_ptr<driver::Store> store_;
    Translator translator_;
    FileTransaction transaction_{*this};
    std::int64_t generation_ = 0;
    std::weak_ptr<const SmallSet> smallSet_;
};

}  // namespace dao
