#pragma once

#include <QString>
#include <cstdint>
#include <functional>

namespace platform {

// Bytes that have been copied, and of how many.
using FileWatch = std::function<void(std::int64_t done, std::int64_t all)>;

// The same as copyFile of two paths, for whoever shows how far it is: `watch` is told after each piece.
void copyFile(const QString& from, const QString& to, const FileWatch& watch);

}  // namespace platform
