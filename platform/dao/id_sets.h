#pragma once

#include <map>
#include <vector>

#include "platform/dao/driver.h"

namespace dao {

// The sets of numbers that translated statements look into, each known to the store by a number of its own.
class IdSets {
 public:
    explicit IdSets(driver::Store& store) : store_(&store) {}

    // Another connection, which is told all of them; nullptr: there is none for the time being.
    void setStore(driver::Store* store);
    int next() const { return next_; }                // the number of the set that is added next
    int add(const std::vector<sql::IdSetPtr>& sets);  // answers the first one's number; the others follow
    void drop(int first, std::size_t count) noexcept;

 private:
    driver::Store* store_;
    std::map<int, sql::IdSetPtr> sets_;
    int next_ = 0;
};

// Some of them, for as long as a statement needs them.
class HeldIdSets {
 public:
    HeldIdSets(const std::shared_ptr<IdSets>& all, const std::vector<sql::IdSetPtr>& sets)
        : all_(all), first_(all->add(sets)), count_(sets.size()) {}
    ~HeldIdSets();
    HeldIdSets(const HeldIdSets&) = delete;
    HeldIdSets& operator=(const HeldIdSets&) = delete;

 private:
    std::weak_ptr<IdSets> all_;  // they may be gone before a statement is
    int first_;
    std::size_t count_;
};

}  // namespace dao
