#pragma once

#include <chrono>
#include <string>

// A network between a workstation and a server of this computer: whatever is written at the one end comes out
// at the other only after `each`. Stands for the server in the folder `here`, for the one in `server`; goes
// on until the process is ended.
[[noreturn]] void delayBetween(const std::string& here, const std::string& server,
                               std::chrono::microseconds each);
