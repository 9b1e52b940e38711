#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "platform/dao/faults/faulty_disk.h"

namespace daotest::disk {

// What a disk has taken of a recording, event by event, and what it may hold when the power goes.
class KeptDisk {
 public:
    // As the folder stands.
    explicit KeptDisk(const std::string& folder);

    void happen(const Event& event);

    enum class Kept { All, OnlySynced, Some };
    // What is found as the power comes back, in a folder that is empty. Some: of what was not synced some
    // sectors of some writes, in no order, and names up to some point of theirs; `random` draws them.
    void restore(const std::string& folder, Kept kept, std::mt19937_64& random) const;

 private:
    struct File {
        std::string bytes;  // what is safe
        std::vector<Event> waiting;
    };
    using Names = std::map<std::string, int>;
    static void name(Names& names, const Event& event);
    static void put(std::string& bytes, const Event& event);
    static void putSome(std::string& bytes, const Event& event, std::mt19937_64& random);

    Names names_;  // what is safe
    std::vector<Event> waitingNames_;
    std::map<int, File> files_;
};

}  // namespace daotest::disk
