// A server whose disk is full.
#include <pwd.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "platform/dao/dao_shop.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/connection.h"
#include "platform/dao/postgres/signpost.h"
#include "support/server_cluster.h"

using namespace dao;
using daotest::errorOf;

namespace {

namespace fs = std::filesystem;

// A disk that has no room for a table: what the server writes into the table's file goes to the system's own
// device for that.
class DiskWithoutRoom {
 public:
    explicit DiskWithoutRoom(fs::path file) : file_(std::move(file)) {
        fs::rename(file_, kept());
        fs::create_symlink("/dev/full", file_);
    }
    ~DiskWithoutRoom() {
        fs::remove(file_);
        fs::rename(kept(), file_);
    }
    DiskWithoutRoom(const DiskWithoutRoom&) = delete;
    DiskWithoutRoom& operator=(const DiskWithoutRoom&) = delete;

 private:
    fs::path kept() const { return file_.string() + ".kept"; }

    fs::path file_;
};

class FullDisk : public testing::Test {
 protected:
    void SetUp() override {
        daotest::createShop(path);
        {
            Database db = daotest::openShop(path);
            daotest::fillShop(db, 3);
        }
        const postgres::Address place = cluster.place();
        moveToServer(path, daotest::kConnect,
                     "host='" + place.host + "' dbname='" + place.dbname + "' user='" + place.user + "'");
    }
    fs::path fileOf(const std::string& table) {
        postgres::Connection server(cluster.place());
        const std::string data(server.run("SHOW data_directory").text(0, 0));
        return data + '/' +
               std::string(server.run("SELECT pg_relation_filepath('shop.\"" + table + "\"')").text(0, 0));
    }
    static void addKind(Database& db) {
        Recordset kinds = db.OpenRecordset("ServiceTypes");
        kinds.AddNew();
        kinds.Fields("Service") = Value("Čišćenje");
        kinds.Update();
    }
    static std::string cityOfFirst(Database& db) { return db.OpenRecordset("Customers")["City"].asText(); }

    tests::OwnCluster cluster;
    daotest::TempFolder folder;
    std::string path = folder.file("Tarvello.mdb");
};

TEST_F(FullDisk, IsSaidAndNothingOfTheChangeIsWritten) {
    {
        const DiskWithoutRoom full(fileOf("ServiceTypes"));
        Database db = daotest::openShop(path);
        const std::string city = cityOfFirst(db);
        EXPECT_EQ(errorOf([&] { addKind(db); }), errNotEnoughSpace);
        EXPECT_EQ(DBEngine::Errors().front().Description, "Not enough space on disk.");
        DBEngine::BeginTrans();
        db.Execute("UPDATE Customers SET City = 'Niš'");
        EXPECT_EQ(errorOf([&] { addKind(db); }), errNotEnoughSpace);
        EXPECT_EQ(cityOfFirst(db), "Niš") << "what was written before is still there to be kept or undone";
        DBEngine::Rollback();
        EXPECT_EQ(cityOfFirst(db), city);
        EXPECT_EQ(db.OpenRecordset("ServiceTypes").RecordCount(), 0);
    }
    Database db = daotest::openShop(path);
    addKind(db);
    EXPECT_EQ(db.OpenRecordset("ServiceTypes").RecordCount(), 1) << "with room again the work goes on";
}

// A disk that belongs to the server. Only this process sees it, and those that it begins from here on.
class SmallDisk {
 public:
    SmallDisk() {
        fs::create_directory(place());
        fs::permissions(folder_.path(), fs::perms::owner_all | fs::perms::others_exec);
        const passwd* const server = getpwnam("nobody");
        const std::string options =
            "size=64m,mode=0700,uid=" + std::to_string(server != nullptr ? server->pw_uid : 0);
        mounted_ = unshare(CLONE_NEWNS) == 0 &&
                   mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                   mount("tmpfs", place().c_str(), "tmpfs", 0, options.c_str()) == 0;
    }
    ~SmallDisk() {
        if (mounted_) {
            umount2(place().c_str(), MNT_DETACH);
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isMounted() const { return mounted_; }
    std::string place() const { return folder_.file("disk"); }
    // Somebody else's data: all of the disk but that many bytes.
    void fillBut(std::uintmax_t room) {
        std::ofstream(others(), std::ios::binary);
        const std::uintmax_t taken = fs::space(place()).available - room;
        std::ofstream(others(), std::ios::binary) << std::string(taken, 'x');
    }
    void makeRoom() { fs::remove(others()); }

 private:
    std::string others() const { return place() + "/others"; }

    daotest::TempFolder folder_;
    bool mounted_ = false;
};

// A note that no compression makes much smaller.
std::string longNote(std::size_t letters) {
    std::minstd_rand random(7);
    std::string note;
    for (std::size_t i = 0; i < letters; ++i) {
        note += static_cast<char>('!' + random() % 90);
    }
    return note;
}

TEST(FullDiskOfTheServer, AMoveThereChangesNothingAndSucceedsOnceThereIsRoom) {
    SmallDisk disk;
    if (!disk.isMounted()) {
        GTEST_SKIP() << "needs the right to mount a disk";
    }
    constexpr std::size_t kNote = 4'000'000;
    const tests::OwnCluster cluster;
    postgres::Address place = cluster.place();
    {
        postgres::Connection keeper(place);
        keeper.execute("CREATE TABLESPACE small LOCATION '" + disk.place() + "'");
        keeper.execute("CREATE DATABASE shop TEMPLATE template0 TABLESPACE small");
    }
    place.dbname = "shop";
    const daotest::TempFolder folder;
    const std::string path = folder.file("Tarvello.mdb");
    const std::string kept = folder.file("Tarvello.before-server.mdb");
    daotest::createShop(path);
    {
        Database db = daotest::openShop(path);
        daotest::fillShop(db, 3);
        Recordset clients = db.OpenRecordset("Customers");
        clients.Edit();
        clients.Fields("Comments") = Value(longNote(kNote));
        clients.Update();
    }
    const std::vector<char> before = daotest::readFile(path);

    disk.fillBut(kNote / 2);
    EXPECT_EQ(errorOf([&] { moveToServer(path, daotest::kConnect, tests::placeWords(place)); }),
              errNotEnoughSpace);
    EXPECT_EQ(DBEngine::Errors().front().Description, "Not enough space on disk.");
    EXPECT_EQ(daotest::readFile(path), before) << "the file still is the shop";
    EXPECT_FALSE(fs::exists(kept));
    const std::string signpost = folder.file("Early.mdb");
    postgres::writeSignpost(signpost, place);
    EXPECT_EQ(errorOf([&] { daotest::openShop(signpost); }), errUnrecognisedFormat)
        << "nobody works on half a shop";

    disk.makeRoom();
    moveToServer(path, daotest::kConnect, tests::placeWords(place));
    EXPECT_TRUE(postgres::isSignpost(path));
    EXPECT_EQ(daotest::readFile(kept), before);
    Database db = daotest::openShop(path);
    EXPECT_EQ(db.OpenRecordset("Customers")["Comments"].asText(), longNote(kNote));
}

}  // namespace
