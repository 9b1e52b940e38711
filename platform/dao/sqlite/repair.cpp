#include "platform/dao/failure.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/sqlite/file_paths.h"
#include "platform/dao/sqlite/maintenance.h"
#include "platform/dao/sqlite/salvage.h"

namespace dao::maintenance {
namespace {

// What a crash left half written is put back from its journal before anybody calls it damage. A file that
// only a newer program understands is none of our business.
void settle(const FilePlace& place, RepairReport& report) {
    const bool interrupted = hasJournal(place.path());
    try {
        place.open(true)->schemaVersion();
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

}  // namespace

RepairReport repair(const std::string& path, const std::string& connect) {
    const std::shared_ptr<const FilePlace> place = examine(path, connect, true);
    const auto opened = [&] { return OpenFiles::find(place->identity(), false); };
    if (const std::shared_ptr<OpenFile> open = opened(); open != nullptr && open->isBusy()) {
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
    if (driver::isWhole(broken)) {
        return report;
    }
    UnfinishedFile fresh(place->path());
    RepairReport found = driver::salvage(broken, {fresh.path(), broken.key, true, true});
    fresh.finish();
    found.notes.insert(found.notes.begin(), report.notes.begin(), report.notes.end());
    return found;
}

}  // namespace dao::maintenance
