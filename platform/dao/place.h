#pragma once

#include <memory>
#include <string>

#include "platform/dao/driver.h"
#include "platform/dao/presence.h"

namespace dao {

class Place;
using PlacePtr = std::shared_ptr<const Place>;

// Where the records of one shop are kept, found and let into: the path that staff know it by is there, the
// password is right. Nothing of it is open yet.
class Place {
 public:
    Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    virtual ~Place() = default;

    virtual const std::string& path() const = 0;  // without links
    // The same for every path that leads to these records, and no others; empty where nothing stands any
    // more.
    virtual std::string identity() const = 0;
    // The same path as it is now, after what stood there was replaced: 3024, 3031.
    virtual PlacePtr again() const = 0;

    virtual void needWritable() const = 0;  // 3027 where this user may not write there
    // Comes in with the others. 3356 while another process has it to itself, 3050 where nothing can be left
    // to show that we are in; with `reading`, nothing then instead.
    virtual std::shared_ptr<Presence> enter(bool reading) const = 0;
    virtual std::shared_ptr<Numbers> numbers() const = 0;  // 3050

    // A connection of its own, writable where this user may write. 3049 for records that cannot be read,
    // 3811 for those that a newer program has written.
    virtual std::unique_ptr<driver::Store> open() const = 0;
    // What a glance tells about the whole of it: 3049 where something is missing.
    virtual void prove(driver::Store& store) const = 0;
    // Takes away what a crash left half done beside the records; whoever calls has them alone.
    virtual void sweep() const noexcept {}
    // The last of all processes has closed it.
    virtual void tidy() const noexcept = 0;
};

}  // namespace dao
