#include "platform/dao/opening.h"

#include "platform/dao/failure.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/workspace_state.h"

namespace dao {

std::shared_ptr<OpenFile> openPlace(const PlacePtr& place, bool writable,
                                    std::shared_ptr<Presence> presence) {
    if (std::shared_ptr<OpenFile> open = OpenFiles::find(place->identity(), writable)) {
        return open;
    }
    if (presence != nullptr && presence->enterExclusive()) {
        place->sweep();
        presence->leaveExclusive();
    }
    try {
        auto file = std::make_shared<OpenFile>(place, std::move(presence), place->open());
        file->store().storedQueries().queries();
        place->prove(file->store());
        OpenFiles::add(place->identity(), file->store().writable(), file);
        workspace::join(file);
        return file;
    } catch (const Error& error) {
        // A schema that makes no sense is damage, whatever the store calls it.
        if (error.Number() == errSyntax || error.Number() == errInvalidOperation) {
            fail(errCannotOpen);
        }
        throw;
    }
}

}  // namespace dao
