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
    // The open file behind `path` by what it is, not by its name; nullptr if this process does not have it
    // open. With `writable` a connection that can write.
    static std::shared_ptr<OpenFile> find(const std::string& path, bool writable);
    // `writable`: whether its connection can write. 3024 where nothing stands at the path.
    static void add(const std::string& path, bool writable, const std::shared_ptr<OpenFile>& file);
    static void forget(const OpenFile* file);
};

}  // namespace dao
