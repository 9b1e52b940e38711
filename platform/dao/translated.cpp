#include "platform/dao/translated.h"

namespace dao {

void failSyntax(const sql::SyntaxError& error) {
    fail(errSyntax, "Syntax error in query expression: " + std::string(error.what()) + " (at character " +
                        std::to_string(error.position() + 1) + ").");
}

void failName(const sql::NameError& error) {
    if (error.kind() == sql::NameError::Kind::Table) {
        fail(errUnknownObject, "The engine can't find the input table or query '" + error.name() + "'.");
    }
    fail(errTooFewParameters, "Too few parameters. Expected 1. There is no field '" + error.name() + "'.");
}

}  // namespace dao
