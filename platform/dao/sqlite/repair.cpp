#include <optional>

#include "platform/dao/failure.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/sqlite/companion_files.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/maintenance.h"
#include "platform/dao/sqlite/salt_notes.h"
#include "platform/dao/sqlite/salvage.h"

namespace dao::maintenance {
namespace {

// What a crash left half written is put back from its journal before anybody calls it damage. A file that
// only a newer program understands is none of our business.
void settle(const FilePlace& place, RepairReport& report) {
    const bool interrupted = hasJournal(place.path());
    try {
        place.open(true)->definitions().schemaVersion();
    } catch (const Error& error) {
        // Damage is what the repair is for; anything else stops it.
        if (error.Number() == errNewerForm || (interrupted && error.Number() != errCannotOpen)) {
            throw;
        }
        if (interrupted) {
            report.notes.emplace_back("The journal of an interrupted change could not be used.");
        }
    }
}

struct Patient {
    std::shared_ptr<const FilePlace> place;
    bool hasItsSalt = true;
};

// Nothing where the file does not begin as one of ours.
std::optional<Salt> ownSalt(const std::string& path) {
    int number = 0;
    std::string sentence;
    {
        const QuietErrors quiet;
        try {
            return saltOf(path);
        } catch (const Error& error) {
            number = error.Number();
            sentence = error.Description();
        }
    }
    if (number != errUnrecognisedFormat) {
        fail(number, sentence);
    }
    return std::nullopt;
}

// The salts that a file whose own is gone may have had.
std::vector<Salt> likelySalts(const std::string& path, const std::string& copy) {
    std::vector<Salt> salts = notedSalts(path);
    if (!copy.empty() && fileExists(copy)) {
        if (const std::optional<Salt> salt = ownSalt(existingFile(copy))) {
            salts.push_back(*salt);
        }
    }
    return salts;
}

std::shared_ptr<const FilePlace> placeWithSalt(const std::string& path, const std::string& connect,
                                               const Salt& salt) {
    std::string password;
    if ((!passwordFrom(connect, password) && !rememberedPassword(salt, password)) ||
        !isRightPassword(password, salt) || !driver::isKeyOf(path, rawKey(password, salt))) {
        return nullptr;
    }
    return std::make_shared<FilePlace>(path, password, salt);
}

std::shared_ptr<const FilePlace> placeWithLikelySalt(const std::string& path, const std::string& connect,
                                                     const std::string& copy) {
    for (const Salt& salt : likelySalts(path, copy)) {
        if (auto place = placeWithSalt(path, connect, salt)) {
            return place;
        }
    }
    return nullptr;
}

// A file without its first bytes opens to nobody, but the key is still known where its salt is.
Patient admit(const std::string& path, const std::string& connect, const std::string& copy) {
    const std::string real = existingFile(path);
    if (!ownSalt(real)) {
        if (auto place = placeWithLikelySalt(real, connect, copy)) {
            return {place, false};
        }
    }
    return {examine(path, connect, true)};
}

}  // namespace

RepairReport repair(const std::string& path, const std::string& connect, const std::string& copy) {
    const Patient patient = admit(path, connect, copy);
    const std::shared_ptr<const FilePlace>& place = patient.place;
    const auto opened = [&] { return OpenFiles::find(place->identity(), false); };
    if (const std::shared_ptr<OpenFile> open = opened(); open != nullptr && open->transaction().isBusy()) {
        fail(errFileInUse);
    }
    const ExclusiveUse use(place->enter(false));
    place->needWritable();
    while (const std::shared_ptr<OpenFile> open = opened()) {
        open->releaseStore();
    }
    RepairReport report;
    settle(*place, report);
    const driver::OpenRequest broken = place->request(true);
    if (patient.hasItsSalt && driver::isWhole(broken)) {
        return report;
    }
    UnfinishedFile fresh(place->path());
    fresh.make();
    RepairReport found = driver::salvage(broken, {fresh.path(), broken.key, true, true});
    keepUnder(place->path(), damagedOf(place->path()));  // a better tool may try again
    fresh.finish();
    found.notes.insert(found.notes.begin(), report.notes.begin(), report.notes.end());
    return found;
}

}  // namespace dao::maintenance
