#pragma once

#include "platform/dao/failure.h"
#include "platform/sql/writer.h"

namespace dao {

[[noreturn]] void failSyntax(const sql::SyntaxError& error);
[[noreturn]] void failName(const sql::NameError& error);

// Runs `body` and turns what the statement parser and writer throw into the engine's errors.
template <typename Body>
auto translated(Body&& body) -> decltype(body()) {
    try {
        return body();
    } catch (const sql::SyntaxError& error) {
        failSyntax(error);
    } catch (const sql::NameError& error) {
        failName(error);
    } catch (const sql::SizeError&) {
        fail(errTooComplex);
    }
}

}  // namespace dao
