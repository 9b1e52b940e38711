#pragma once

#include <string>

#include "platform/dao/copy_watch.h"
#include "platform/dao/place.h"
#include "platform/dao/repair_report.h"

namespace dao {

// A kind of store, and what it does with a shop's records as a whole. The errors are those of DBEngine's
// functions of the same names.
class StoreKind {
 public:
    StoreKind() = default;
    StoreKind(const StoreKind&) = delete;
    StoreKind& operator=(const StoreKind&) = delete;
    virtual ~StoreKind() = default;

    // Whether what stands at the path, if anything does, is of this kind.
    virtual bool owns(const std::string& path) const = 0;
    // Finds the records and looks whether `connect` lets in. 3024, 3044, 3343, 3031. With `remembered` the
    // password of an earlier opening will do where `connect` has none.
    virtual PlacePtr examine(const std::string& path, const std::string& connect, bool remembered) const = 0;
    // Comes in at a path where nothing need stand yet, so as to keep others out of what will.
    virtual std::shared_ptr<Presence> enterAt(const std::string& path) const = 0;

    virtual void create(const std::string& path, const std::string& connect) const = 0;
    virtual RepairReport repair(const std::string& path, const std::string& connect,
                                const std::string& copy) const = 0;
    virtual void compact(const std::string& from, const std::string& to,
                         const std::string& connect) const = 0;
    virtual void copy(const std::string& from, const std::string& to, const CopyWatch& watch) const = 0;
    virtual void remove(const std::string& path) const = 0;
    virtual void rename(const std::string& from, const std::string& to) const = 0;
    // What is left of a copy that nobody needs, whatever comes of it.
    virtual void discard(const std::string& path) const noexcept = 0;
};

}  // namespace dao
