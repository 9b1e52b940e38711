#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

// A file layer between the engine and the operating system, for the two things that no test can wait for: a
// disk that fills up in the middle of a write, and a power failure after any write.
namespace daotest {

class FaultLayer {
 public:
    FaultLayer();   // files opened from here on go through it
    ~FaultLayer();  // and from here on no longer
    FaultLayer(const FaultLayer&) = delete;
    FaultLayer& operator=(const FaultLayer&) = delete;

    // By so many more bytes the files may grow; then the disk is full.
    static void setRoom(std::int64_t bytes);
    static constexpr std::int64_t kPlenty = std::numeric_limits<std::int64_t>::max();

    struct Event {
        enum class Kind { Write, Truncate, Sync, Delete } kind;
        std::string file;
        std::int64_t offset = 0;  // Truncate: the new size
        std::string bytes;
    };
    static void startRecording();
    static std::vector<Event> stopRecording();
};

}  // namespace daotest
