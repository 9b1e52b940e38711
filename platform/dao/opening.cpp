#include "platform/dao/opening.h"

#include "platform/dao/failure.h"
#include "platform/dao/file_paths.h"
#include "platform/dao/workspace_state.h"

namespace dao {

Opening examine(const std::string& path, const std::string& connect, bool remembered) {
    Opening opening;
    opening.path = existingFile(path);
    opening.openAlready = OpenFiles::find(opening.path, false);
    opening.salt = opening.openAlready ? opening.openAlready->salt() : readSalt(opening.path);
    if (passwordFrom(connect, opening.password)) {
        if (!isRightPassword(opening.password, opening.salt))
            fail(errInvalidPassword);
        return opening;
    }
    if (opening.openAlready) {
        opening.password = opening.openAlready->password();
        return opening;
    }
    if (remembered && rememberedPassword(opening.salt, opening.password))
        return opening;
    opening.password.clear();
    if (!isRightPassword(opening.password, opening.salt))
        fail(errInvalidPassword);
    return opening;
}

std::shared_ptr<LockFile> lockFor(const std::string& path, bool readOnly) {
    if (!folderMayWrite(path)) {
        if (readOnly)
            return nullptr;
        fail(errCannotLockFile);
    }
    return LockFile::of(path);
}

std::unique_ptr<driver::Store> openStoreFor(const Opening& opening, bool writable) {
    driver::OpenRequest request;
    request.path = opening.path;
    request.key = rawKey(opening.password, opening.salt);
    request.writable = writable;
    std::unique_ptr<driver::Store> store = driver::openStore(request);
    store->keepOrder();
    return store;
}

std::shared_ptr<OpenFile> openFile(const Opening& opening, bool writable, std::shared_ptr<LockFile> lock) {
    if (std::shared_ptr<OpenFile> open = OpenFiles::find(opening.path, writable))
        return open;
    const bool canWrite = mayWrite(opening.path) && folderMayWrite(opening.path);
    try {
        auto file = std::make_shared<OpenFile>(opening.path, opening.password, opening.salt, std::move(lock),
                                               openStoreFor(opening, canWrite));
        file->store().queries();
        if (fileSize(opening.path) < file->store().pageCount() * static_cast<std::int64_t>(kPageSize))
            fail(errCannotOpen);  // its last page is torn
        OpenFiles::add(opening.path, file);
        workspace::join(file);
        return file;
    } catch (const Error& error) {
        // A schema that makes no sense is damage, whatever the store calls it.
        if (error.Number() == errSyntax || error.Number() == errInvalidOperation)
            fail(errCannotOpen);
        throw;
    }
}

}  // namespace dao
