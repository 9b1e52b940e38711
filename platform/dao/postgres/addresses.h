#pragma once

#include <string>
#include <vector>

#include "platform/dao/postgres/patience.h"

namespace dao::postgres {

struct Addresses {
    std::vector<std::string> numbers;  // "192.168.1.5", "fe80::1"
    std::string fault;                 // why there is none
};

// The addresses of a host. The system's own look-up waits for the name servers as long as it pleases; this
// one comes back at the given moment at the latest, with a fault.
Addresses addressesOf(const std::string& host, Clock::time_point until);

}  // namespace dao::postgres
