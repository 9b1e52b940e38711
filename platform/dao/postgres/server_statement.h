#pragma once

#include <string>
#include <variant>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/parameters.h"
#include "platform/dao/postgres/result.h"

namespace dao::postgres {

// Whom a statement asks: the store that it belongs to.
class Asked {
 public:
    Asked() = default;
    Asked(const Asked&) = delete;
    Asked& operator=(const Asked&) = delete;
    virtual ~Asked() = default;
    virtual Result run(const std::string& text, const Parameters& parameters) = 0;
    virtual void noteWritten() = 0;  // rows of the shop, in the transaction that is open
};

class ServerStatement final : public driver::Statement {
 public:
    // `store` holds nullptr once the store is gone: errObjectClosed then.
    ServerStatement(std::shared_ptr<Asked*> store, std::string text);

    void bind(int index, const Value& value) override;
    void bindInteger(int index, std::int64_t value) override;
    void bindRowKey(int index, std::int64_t key) override;
    void bindNumbers(int index, sql::IdSetPtr numbers) override;
    std::int64_t run() override;
    void readKeys(std::vector<std::int64_t>& out, int columns) override;
    std::size_t readRows(RowBlock& block, int skip, std::vector<std::int64_t>* keys, std::size_t limit,
                         const std::vector<int>* places) override;
    std::optional<Value> scalar(dao::Type type) override;

 private:
    using Bound = std::variant<std::monostate, Value, std::int64_t, sql::IdSetPtr>;
    Bound& at(int index);
    Result ask();

    std::shared_ptr<Asked*> store_;
    std::string text_;
    std::vector<Bound> bound_;
};

// A value as a column of that type keeps it.
void bindValue(Parameters& parameters, const Value& value, dao::Type type);

}  // namespace dao::postgres
