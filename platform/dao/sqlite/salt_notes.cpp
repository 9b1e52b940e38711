#include "platform/dao/sqlite/salt_notes.h"

#include <algorithm>
#include <fstream>
#include <new>
#include <utility>

#include "platform/dao/limits.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/hex.h"

#include <fcntl.h>
#include <unistd.h>

namespace dao {
namespace {

using Note = std::pair<std::string, std::string>;  // the salt, hexadecimal, and the path

// A workstation has one shop's file, and some copies of it.
constexpr std::size_t kNotes = 40;

bool saltFrom(const std::string& hex, Salt& salt) {
    if (hex.size() != 2 * salt.size() || hex.find_first_not_of("0123456789abcdef") != std::string::npos) {
        return false;
    }
    const std::string bytes = fromHex(hex);
    std::copy(bytes.begin(), bytes.end(), salt.begin());
    return true;
}

std::vector<Note> read() {
    std::vector<Note> notes;
    std::ifstream file(driver::notesFile());
    Note note;
    while (file >> note.first && file.get() == ' ' && std::getline(file, note.second)) {
        notes.push_back(note);
    }
    return notes;
}

// A file beside it that takes its place: a note that is cut off helps nobody.
void write(const std::vector<Note>& notes) {
    std::string text;
    for (const Note& note : notes) {
        text += note.first + ' ' + note.second + '\n';
    }
    const std::string fresh = unfinishedOf(driver::notesFile());
    const int file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) {
        return;
    }
    const bool written = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(file);
    followRights(fresh, driver::notesFile());
    if (!written || rename(fresh.c_str(), driver::notesFile().c_str()) != 0) {
        unlink(fresh.c_str());
    }
}

void addNote(const std::string& path, const Salt& salt) {
    std::vector<Note> notes = read();
    const Note note(toHex(std::string(salt.begin(), salt.end())), path);
    const auto known = std::find(notes.begin(), notes.end(), note);
    if (known != notes.end()) {
        return;
    }
    notes.insert(notes.begin(), note);
    notes.resize(std::min(notes.size(), kNotes));
    write(notes);
}

}  // namespace

void noteSalt(const std::string& path, const Salt& salt) noexcept {
    try {
        if (!driver::notesFile().empty() && path.find('\n') == std::string::npos) {
            addNote(path, salt);
        }
    } catch (const std::bad_alloc&) {
        // The next opening notes it; a day's work does not end for that.
    }
}

std::vector<Salt> notedSalts(const std::string& path) {
    std::vector<Salt> salts;
    if (driver::notesFile().empty()) {
        return salts;
    }
    for (const Note& note : read()) {
        Salt salt{};
        if (note.second == path && saltFrom(note.first, salt)) {
            salts.push_back(salt);
        }
    }
    return salts;
}

}  // namespace dao
