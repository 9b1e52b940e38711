#include "tools/verbs/new_place.h"

#include <filesystem>
#include <stdexcept>

void needNothingAt(const std::string& path) {
    std::error_code failed;
    const std::filesystem::file_status found = std::filesystem::symlink_status(path, failed);
    if (found.type() != std::filesystem::file_type::not_found) {
        throw std::runtime_error("'" + path + "' is there already; nothing is written over it.");
    }
}
