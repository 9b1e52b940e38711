#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A disk that fails. It stands between the program and the operating system: every call for a file of the
// watched folder comes here first, those of the record store's library as well as the engine's own.
namespace daotest::disk {

enum class Fault {
    None,
    Full,       // from that call on nothing takes more room; what was being written fits by half
    FailsOnce,  // that call ends in an I/O error
    Dead,       // that call and all behind it do
    Forgets,    // takes what is written, and keeps something else
};

// Calls count from here on, and none fails.
void watch(const std::string& folder);
void unwatch();
// The n-th call from here on meets the fault, 1 the next. A full disk counts those that may want room, a
// forgetful one the writes to files in the making, every other one all.
void failAt(Fault fault, std::uint64_t n);
void heal();
std::uint64_t calls();  // since failAt
bool hasFailed();

struct Event {
    enum class Kind { Create, Write, Truncate, Sync, SyncFolder, Rename, Link, Remove, Told } kind;
    int file = 0;  // the same for a file whatever its name; Told: what was told
    std::string name;
    std::string other;        // Rename, Link: the new name
    std::int64_t offset = 0;  // Truncate: the new size
    std::string bytes;
};
// Names are those in the folder. The files that stand there are numbered from 1, in the order of their names.
void startRecording();
void tell(int what);  // an event of the recording
std::vector<Event> stopRecording();

}  // namespace daotest::disk
