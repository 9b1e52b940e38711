#pragma once

#include <string>

#include "platform/dao/postgres/parameters.h"

namespace dao::postgres {

// A statement and the values for its $1, $2, ...
struct Step {
    std::string text;
    Parameters parameters;
    bool isPrepared = true;  // not worth it for what begins and ends transactions
};

}  // namespace dao::postgres
