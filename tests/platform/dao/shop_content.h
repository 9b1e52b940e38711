#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/dao/dao.h"

// All that a shop holds, so that two files can be compared row by row.
namespace daotest {

// Each table's rows as lines of text, in order.
using Content = std::map<std::string, std::multiset<std::string>>;

Content contentOf(dao::Database& db);
// As far as it can be read: what was read before an error stands in `found`.
void contentOf(dao::Database& db, Content& found);
std::size_t rowsIn(const Content& of);

}  // namespace daotest
