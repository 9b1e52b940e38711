#include "platform/dao/file_key.h"

#include "platform/dao/failure.h"
#include "platform/dao/file_paths.h"

namespace dao {

std::unique_ptr<driver::Store> openStoreFor(const FileKey& key, bool writable) {
    driver::OpenRequest request;
    request.path = key.path;
    request.key = rawKey(key.password, key.salt);
    request.writable = writable;
    std::unique_ptr<driver::Store> store = driver::openStore(request);
    store->keepOrder();
    return store;
}

std::unique_ptr<driver::Store> openStoreFor(const FileKey& key) {
    return openStoreFor(key, mayWrite(key.path) && folderMayWrite(key.path));
}

std::shared_ptr<LockFile> lockFor(const std::string& path, bool readOnly) {
    if (!folderMayWrite(path)) {
        if (readOnly) {
            return nullptr;
        }
        fail(errCannotLockFile);
    }
    return LockFile::of(path);
}

}  // namespace dao
