#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace dao {

// Told now and then while a file is copied and compared: how much of all there is to do has been done, in
// bytes. What it throws ends the copy, and the target stays as it was.
using CopyWatch = std::function<void(std::int64_t done, std::int64_t all)>;

// DBEngine::CopyDatabase, for whoever shows how far it is. Between two files of which this process knows the
// password; `watch` is not told of other copies.
void copyDatabase(const std::string& from, const std::string& to, const CopyWatch& watch);

}  // namespace dao
