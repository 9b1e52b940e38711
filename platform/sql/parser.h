#pragma once

#include "platform/sql/types.h"

namespace sql {

// One statement of the engine's dialect, a closing semicolon allowed: SELECT, INSERT, UPDATE, DELETE.
// Throws SyntaxError for everything else; never guesses.
StatementPtr parse(std::string_view text);

// A criterion as FindFirst takes it: the condition that would stand behind WHERE, alone.
// An empty text, a lone name or a lone number is no criterion: SyntaxError.
ExpressionPtr parseCriterion(std::string_view text);

}  // namespace sql
