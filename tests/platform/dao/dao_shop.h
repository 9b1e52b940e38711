#pragma once

#include <gtest/gtest.h>

#include <concepts>
#include <optional>
#include <string>
#include <vector>

#include "platform/dao/dao.h"

// What the engine's tests share: a folder of their own, and a small shop in a file.
namespace daotest {

inline constexpr const char* kConnect = ";pwd=lozinka";

// A folder that goes with the test. On a memory file system where there is one: the tests write a lot.
class TempFolder {
 public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    std::string file(const std::string& name) const { return path_ + '/' + name; }
    const std::string& path() const { return path_; }

 private:
    std::string path_;
};

// Whether this run tests the engine on a server: TARVELLO_TEST_STORE is "server". Then what stands at a
// shop's path is a signpost to a database of its own.
bool onServer();
// A shop without tables at that path, in a file or on the server, as this run has it.
dao::Database createEmptyShop(const std::string& path);

// Clients, computers, services, products, their groups, a list without a key, a stored query.
void createTables(dao::Database& db);
void createShop(const std::string& path);
// Clients 1..n, each with one computer and one service priced at its number; products 1..n in groups 1 and 2.
void fillShop(dao::Database& db, int clients);

dao::Database openShop(const std::string& path, bool exclusive = false, bool readOnly = false);

class ShopTest : public ::testing::Test {
 protected:
    void SetUp() override;
    void TearDown() override;
    void fill(int clients) { fillShop(db, clients); }
    // The numbers in `field`, in the set's order.
    static std::vector<int> numbers(dao::Recordset set, const std::string& field);

    TempFolder folder;
    std::string path = folder.file("Shop.mdb");
    dao::Database db;
};

// A shop on the server, whatever store this run is about.
class ServerShopTest : public ShopTest {
 protected:
    ServerShopTest();
    ~ServerShopTest() override;

 private:
    std::optional<std::string> before_;  // what the environment said
};

// The number of the engine's error that `body` ends in; 0 where it ends well.
template <typename Body>
int errorOf(Body&& body) {
    try {
        body();
    } catch (const dao::Error& error) {
        EXPECT_FALSE(error.Description().empty());
        EXPECT_FALSE(dao::DBEngine::Errors().empty());
        if (!dao::DBEngine::Errors().empty()) {
            EXPECT_EQ(dao::DBEngine::Errors().front().Number, error.Number());
            EXPECT_EQ(dao::DBEngine::Errors().front().Description, error.Description());
        }
        return error.Number();
    }
    return 0;
}

// Runs `body` in a process of its own, which must not have a connection of ours: call it only while nothing
// is open here. What the body returns is the exit code; 99 stands for an exception.
class Child {
 public:
    template <typename Body>
    requires std::invocable<Body, Child&>
    explicit Child(Body body) : pid_(begin()) {
        if (pid_ == 0) {
            finish([&] { return body(*this); });
        }
        proceed();
    }
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // In the child: a line to the parent; waits for a line from the parent.
    void tell(const std::string& line) const;
    std::string hear() const;  // empty: the other side is gone
    void kill() const;         // SIGKILL
    int wait();                // the exit code; -signal where it was killed
    int readEnd() const { return in_; }
    int id() const { return pid_; }

 private:
    template <typename Body>
    [[noreturn]] void finish(Body&& body) {
        int code = 99;
        try {
            code = body();
        } catch (const std::exception& error) {
            complain(error.what());
        }
        leave(code);
    }
    int begin();
    void proceed();
    static void complain(const char* text);
    [[noreturn]] static void leave(int code);

    int toParent_[2] = {-1, -1};
    int toChild_[2] = {-1, -1};
    int in_ = -1;
    int out_ = -1;
    int pid_;
    bool waited_ = false;
};

// A number that the environment tells; nothing where it tells none.
std::optional<std::uint64_t> numberFrom(const char* variable);

std::vector<char> readFile(const std::string& path);
void writeFile(const std::string& path, const std::vector<char>& bytes);

}  // namespace daotest
