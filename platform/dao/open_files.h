#pragma once

#include <memory>
#include <string>
#include <vector>

namespace dao {

class OpenFile;

// The files this process has open.
class OpenFiles {
 public:
    static std::vector<std::shared_ptr<OpenFile>> all();
    // The one of that identity (Place::identity); nullptr if this process does not have it open. With
    // `writable` a connection that can write.
    static std::shared_ptr<OpenFile> find(const std::string& identity, bool writable);
    // `writable`: whether its connection can write. 3024 for an empty identity.
    static void add(const std::string& identity, bool writable, const std::shared_ptr<OpenFile>& file);
    static void forget(const OpenFile* file);
};

}  // namespace dao
