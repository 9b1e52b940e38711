#include "platform/dao/limits.h"

#include <climits>

namespace dao::driver {
namespace {

struct Limits {
    int lockTimeout = 10000;
    int knownForm = INT_MAX;
    std::string notesFile;
};

Limits& limits() {
    static Limits all;
    return all;
}

}  // namespace

void setLockTimeout(int milliseconds) {
    limits().lockTimeout = milliseconds < 0 ? 0 : milliseconds;
}
int lockTimeout() {
    return limits().lockTimeout;
}
void setKnownForm(int form) {
    limits().knownForm = form;
}
int knownForm() {
    return limits().knownForm;
}

void setNotesFile(const std::string& path) {
    limits().notesFile = path;
}
const std::string& notesFile() {
    return limits().notesFile;
}

}  // namespace dao::driver
