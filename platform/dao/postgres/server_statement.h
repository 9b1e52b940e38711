#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/dao/driver.h"
#include "platform/dao/postgres/parameters.h"
#include "platform/dao/postgres/statement_runner.h"

namespace dao::postgres {

class ServerStatement final : public driver::Statement {
 public:
    // The store outlives its statements' use, not them: one that is gone fails with errObjectClosed.
    ServerStatement(std::shared_ptr<StatementRunner*> store, std::string text);
    ~ServerStatement() override { dropAhead(); }

    void bind(int index, const Value& value) override;
    void bindInteger(int index, std::int64_t value) override;
    void bindRowKey(int index, std::int64_t key) override;
    void bindNumbers(int index, sql::IdSetPtr numbers) override;
    std::int64_t run() override;
    void readKeys(std::vector<std::int64_t>& out, int columns) override;
    std::size_t readRows(RowBlock& block, int skip, std::vector<std::int64_t>* keys, std::size_t limit,
                         const std::vector<int>* places) override;
    void askAhead() override;
    void takeIn() override;
    void readBlocks(RowBlock& block, const std::function<void()>& take) override;

 private:
    using Bound = std::variant<std::monostate, Value, std::int64_t, sql::IdSetPtr>;
    Bound& at(int index);
    StatementRunner& store() const;
    Parameters parameters() const;
    Result ask(const std::string& text);
    Result takeAnswer();
    void dropAhead() noexcept;

    std::shared_ptr<StatementRunner*> store_;
    std::string text_;
    std::vector<Bound> bound_;
    std::optional<AskedAhead> ahead_;
};

// A value as a column of that type keeps it.
void bindValue(Parameters& parameters, const Value& value, dao::Type type);

}  // namespace dao::postgres
