#include "platform/dao/opening.h"

#include "platform/dao/failure.h"
#include "platform/dao/file_paths.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"
#include "platform/dao/workspace_state.h"

namespace dao {

Opening examine(const std::string& path, const std::string& connect, bool remembered) {
    Opening opening;
    opening.path = existingFile(path);
    opening.openAlready = OpenFiles::find(opening.path, false);
    opening.salt = saltOf(opening.path);
    if (passwordFrom(connect, opening.password)) {
        if (!isRightPassword(opening.password, opening.salt)) {
            fail(errInvalidPassword);
        }
        return opening;
    }
    if (opening.openAlready) {
        opening.password = opening.openAlready->key().password;
        return opening;
    }
    if (remembered && rememberedPassword(opening.salt, opening.password)) {
        return opening;
    }
    opening.password.clear();
    if (!isRightPassword(opening.password, opening.salt)) {
        fail(errInvalidPassword);
    }
    return opening;
}

std::shared_ptr<OpenFile> openFile(const Opening& opening, bool writable, std::shared_ptr<LockFile> lock) {
    if (std::shared_ptr<OpenFile> open = OpenFiles::find(opening.path, writable)) {
        return open;
    }
    try {
        auto file = std::make_shared<OpenFile>(opening, std::move(lock), openStoreFor(opening));
        file->store().queries();
        if (fileSize(opening.path) < file->store().pageCount() * static_cast<std::int64_t>(kPageSize)) {
            fail(errCannotOpen);  // its last page is torn
        }
        OpenFiles::add(opening.path, file->store().writable(), file);
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
