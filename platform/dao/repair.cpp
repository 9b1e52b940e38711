#include "platform/dao/failure.h"
#include "platform/dao/file_paths.h"
#include "platform/dao/maintenance.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/opening.h"
#include "platform/dao/sqlite_salvage.h"

namespace dao::maintenance {
namespace {

RepairReport& report() {
    static RepairReport last;
    return last;
}

void note(const std::string& text) {
    report().notes.push_back(text);
}

// What a crash left half written is put back from its journal before anybody calls it damage. A file that
// only a newer program understands is none of our business.
void settle(const Opening& opening) {
    const bool interrupted = hasJournal(opening.path);
    try {
        openStoreFor(opening, true)->schemaVersion();
    } catch (const Error& error) {
        // Damage is what the repair is for; anything else stops it.
        if (error.Number() == errNewerForm || (interrupted && error.Number() != errCannotOpen)) {
            throw;
        }
        if (interrupted) {
            note("The journal of an interrupted change could not be used.");
        }
    }
}

}  // namespace

void repair(const std::string& path, const std::string& connect) {
    report() = {};
    const Opening opening = examine(path, connect, true);
    if (opening.openAlready != nullptr && opening.openAlready->isBusy()) {
        fail(errFileInUse);
    }
    const ExclusiveUse use(lockFor(opening.path, false));
    if (!mayWrite(opening.path)) {
        fail(errReadOnly);
    }
    while (const std::shared_ptr<OpenFile> open = OpenFiles::find(opening.path, false)) {
        open->releaseStore();
    }
    settle(opening);

    driver::OpenRequest broken{opening.path, rawKey(opening.password, opening.salt), true, false};
    if (driver::isWhole(broken)) {
        return;
    }
    UnfinishedFile fresh(opening.path);
    RepairReport found = driver::salvage(broken, {fresh.path(), broken.key, true, true});
    fresh.finish();
    found.notes.insert(found.notes.begin(), report().notes.begin(), report().notes.end());
    report() = std::move(found);
}

const RepairReport& lastRepair() {
    return report();
}

}  // namespace dao::maintenance
