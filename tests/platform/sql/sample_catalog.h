#pragma once

#include <map>
#include <string>

#include "platform/sql/types.h"

// The tables of the shop's file, as the writer's tests need to know them, and whatever stored queries a test
// adds.
class SampleCatalog : public sql::Catalog {
 public:
    SampleCatalog();

    const sql::TableInfo* findTable(std::string_view name) const override;
    sql::StatementPtr findQuery(std::string_view name) const override;
    void setQuery(const std::string& name, const std::string& text);
    // `columns`: names behind a letter and a point; k a counter, l Long, s Single, c Currency, d Date, y
    // Yes/No, t a text of 255 characters, m a text without limit.
    void addTable(const std::string& name, const std::string& columns);

 private:
    std::map<std::string, sql::TableInfo> tables_;
    std::map<std::string, sql::StatementPtr> queries_;
};
