#pragma once

#include <string>

namespace dao::driver {

// The way to the operating system on which a database file's page of zeroes is read as the damage it is
// (SQLITE_CORRUPT), where the cipher would take it for one that holds nothing.
// Over the layer of that name, "" the usual one. The name under which the library knows it.
const char* guardedLayer(const std::string& over);

}  // namespace dao::driver
