#pragma once

#include <array>
#include <functional>
#include <string>

#include "platform/dao/dao_shop.h"

// One day of a shop, always the same, in steps that each leave something of their own in the file: so what
// was reported and what is there can be compared one by one, whichever of them failed.
namespace daotest {

class ShopDay {
 public:
    enum Step {
        Open,
        Add,
        Edit,
        Remove,  // a client with his computer and its service
        Draw,
        GiveBack,
        Number,
        Filter,
        Backup,
        Repair,
        Compact,  // and exchange the file
        Later,    // a client who comes after that
        Close,
        kSteps
    };
    static const char* nameOf(int step);

    explicit ShopDay(const std::string& folder);

    // A shop, its backup, and beside it the journal of a change that a crash broke off.
    void prepare() const;

    // What each step ended in: 0 or the engine's number; `told` hears of it at once.
    using Told = std::function<void(int step, int number)>;
    void run(const Told& told);

    enum class Fact { MustNot, May, Must };
    using Facts = std::array<Fact, kSteps>;
    // That the file opens, holds what it must and nothing else, adds up, and can be worked on.
    void check(const Facts& facts) const;

    static constexpr int kOutOfMemory = -1;  // for a number, where the system had no memory to give

    const std::string& file() const { return path_; }
    const std::string& backup() const { return backup_; }

 private:
    void does(int step);
    void crash() const;
    void exchange() const;
    static void checkFacts(dao::Database& db, const Facts& facts);
    static void checkSums(dao::Database& db);

    std::string path_;
    std::string backup_;
    std::string temporary_;
    dao::Database db_;
};

}  // namespace daotest
