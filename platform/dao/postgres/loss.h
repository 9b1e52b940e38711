#pragma once

#include <exception>
#include <optional>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/server_error.h"

namespace dao::postgres {

// Runs `body`. False where the connection was lost in it, which nobody is told then; any other failure of it
// is thrown on.
template <typename Body>
bool withoutLoss(Body&& body) {
    std::optional<QuietErrors> quiet(std::in_place);
    try {
        body();
        return true;
    } catch (const ConnectionLost&) {
        return false;
    } catch (const Error& error) {
        quiet.reset();
        fail(error.Number(), error.Description());
    }
}

}  // namespace dao::postgres
