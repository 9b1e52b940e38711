#pragma once

#include <string>

// One workstation of several that draw at once: draws for that many seconds, whichever products are its own,
// and prints how many it has drawn. Whoever has to wait too long for another one tries again, as a person
// would. Begins with a full second, so that all begin together.
int drawForSeconds(const std::string& shop, int seconds, int workstation);
