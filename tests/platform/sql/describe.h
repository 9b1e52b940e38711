#pragma once

#include <string>
#include <vector>

#include "platform/sql/types.h"

// Everything that parser and writer make of a statement, a line for each thing:
//   T the tree   C columns as name:type@source.field   U sources, the unique one with a star, a nullable one
//   with ? R rows   K keys   F fetch   A the text of an action   E an error's position and sentence   N an
//   unknown name
std::vector<std::string> describe(const std::string& statement, const sql::Catalog& catalog);
// The same of a criterion, and of the search for it in what a statement selects.
std::vector<std::string> describeCriterion(const std::string& criterion);
std::vector<std::string> describeFind(const std::string& statement, const std::string& criterion,
                                      const sql::Catalog& catalog);
