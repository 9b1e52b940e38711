#pragma once

#include <memory>
#include <string>

#include "platform/dao/driver.h"

namespace dao {

// A database in the making, which nobody else sees before it is whole: a file under a name for the time
// being, or the empty database of a server, taken by this process alone. Where the making is given up,
// nothing is left of it.
class Filling {
 public:
    // `target`: a path where the database is to stand in the end, enciphered with the password in `connect`;
    // or a signpost, which stays as it is. 3012 where the database behind the signpost holds a shop already,
    // 3045 while another process makes one there. A file at `target` is no error yet: see appear.
    Filling(const std::string& target, const std::string& connect);
    ~Filling();
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

    // Empty at first, and in the one transaction that is all of the making; after keep() in one that reads.
    driver::Store& store();
    // What was written is on its disk; from here on it is only read.
    void keep();
    // Under its name, for its user alone. Never over a file: 3012.
    void appear();
    // A file only. In the place of the one at `target`, for whoever could use that one, which stays beside it
    // as `kept`: 3012 where that name is taken by another file. The name of the target is never empty
    // meanwhile, where the disk knows of second names. Where it fails, the old file is in its place.
    void replace(const std::string& kept);

 private:
    class Making;
    class FileMaking;
    class ServerMaking;

    std::unique_ptr<Making> making_;
};

}  // namespace dao
