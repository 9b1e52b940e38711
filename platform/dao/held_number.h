#pragma once

#include <memory>

namespace dao {

class Database;
class Numbers;

// A number that this process has to itself among all that work on one database. It stays with the object, not
// with a connection, so that it outlives a closing and reopening of the database; and it ends with the
// process however that ends.
class HeldNumber {
 public:
    HeldNumber() = default;  // none
    // `wanted` or, while others hold it, the next above that nobody holds; from 0. 3050 where no lock file
    // can be made beside the database.
    HeldNumber(const Database& database, int wanted);
    HeldNumber(HeldNumber&& other) noexcept;
    HeldNumber& operator=(HeldNumber&& other) noexcept;
    ~HeldNumber() { leave(); }

    bool isOn(const Database& database) const;  // false where it is none
    // Whether another process has taken it while the connection to the server was away. Until it is let go
    // the database is neither read nor written by this process: 3260.
    bool isLost() const;
    int value() const { return value_; }  // -1 where it is none
    void leave() noexcept;

 private:
    std::shared_ptr<Numbers> numbers_;
    int value_ = -1;
};

}  // namespace dao
