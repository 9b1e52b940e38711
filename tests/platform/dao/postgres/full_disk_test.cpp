// A server whose disk is full.
#include <unistd.h>

#include <filesystem>

#include "platform/dao/dao_shop.h"
#include "platform/dao/moving.h"
#include "platform/dao/postgres/connection.h"
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

}  // namespace
