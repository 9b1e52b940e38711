#include <filesystem>
#include <map>
#include <optional>

#include "platform/dao/dao_shop.h"
#include "platform/dao/fault_layer.h"

using namespace dao;
using daotest::errorOf;
using daotest::FaultLayer;
using daotest::openShop;
namespace fs = std::filesystem;

namespace {

// The files on a disk, by name; nothing where a file is not there.
using Disk = std::map<std::string, std::optional<std::string>>;

void put(std::optional<std::string>& file, std::int64_t offset, const std::string& bytes) {
    if (!file) {
        file.emplace();
    }
    const auto at = static_cast<std::size_t>(offset);
    if (file->size() < at + bytes.size()) {
        file->resize(at + bytes.size(), '\0');
    }
    file->replace(at, bytes.size(), bytes);
}

void happen(Disk& disk, const FaultLayer::Event& event) {
    std::optional<std::string>& file = disk[event.file];
    switch (event.kind) {
        case FaultLayer::Event::Kind::Write:
            put(file, event.offset, event.bytes);
            break;
        case FaultLayer::Event::Kind::Truncate:
            if (file) {
                file->resize(static_cast<std::size_t>(event.offset), '\0');
            }
            break;
        case FaultLayer::Event::Kind::Delete:
            file.reset();
            break;
        case FaultLayer::Event::Kind::Sync:
            break;
    }
}

class PowerTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(60);
        db.Close();
        before = daotest::readFile(path);
    }

    // A change over many pages of several tables.
    static void change(Database& in) {
        DBEngine::BeginTrans();
        in.Execute("UPDATE Oprema SET Stanje=1");
        Recordset set = in.OpenRecordset("Services");
        set.Edit();
        set.Fields("Comments") = Value(std::string(20000, 'n'));
        set.Update();
        in.Execute("DELETE * FROM Customers WHERE CustID>50");
        DBEngine::CommitTrans();
    }

    // The file as the power came back: old or new, never in between. True: new.
    bool isNewState(const Disk& disk, const std::string& where) {
        SCOPED_TRACE(where);
        const std::string target = folder.file("after.mdb");
        for (const char* suffix : {"", "-journal"}) {
            const auto found = disk.find(path + suffix);
            fs::remove(target + suffix);
            if (found != disk.end() && found->second) {
                daotest::writeFile(target + suffix, {found->second->begin(), found->second->end()});
            }
        }
        Database opened = openShop(target);
        Recordset products = opened.OpenRecordset("Oprema");
        const bool isNew = products["Stanje"].asSingle() == 1;
        for (; !products.EOF(); products.MoveNext()) {
            EXPECT_EQ(products["Stanje"].asSingle(), isNew ? 1 : 100);
        }
        EXPECT_EQ(opened.OpenRecordset("Services")["Comments"].asText().size(), isNew ? 20000U : 100U);
        EXPECT_EQ(opened.OpenRecordset("Customers").RecordCount(), isNew ? 50 : 60);
        EXPECT_EQ(opened.OpenRecordset("Services").RecordCount(), isNew ? 50 : 60);
        products.Close();
        opened.Close();
        return isNew;
    }

    std::vector<char> before;
};

TEST_F(PowerTest, APowerFailureAfterAnyWriteLeavesTheOldOrTheNewState) {
    std::vector<FaultLayer::Event> events;
    {
        const FaultLayer faults;
        db = openShop(path);
        FaultLayer::startRecording();
        change(db);
        events = FaultLayer::stopRecording();
        db.Close();
    }
    ASSERT_GT(events.size(), 30U);

    Disk written;  // a disk that has taken everything at once
    Disk synced;   // one that has taken only what it was made to take
    written[path] = synced[path] = std::string(before.begin(), before.end());
    std::map<std::string, std::vector<FaultLayer::Event>> waiting;
    bool wasNew = false;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const FaultLayer::Event& event = events[i];
        happen(written, event);
        waiting[event.file].push_back(event);
        const bool folderSynced = event.kind == FaultLayer::Event::Kind::Delete && event.offset != 0;
        if (event.kind == FaultLayer::Event::Kind::Sync || folderSynced) {
            for (const FaultLayer::Event& each : waiting[event.file]) {
                happen(synced, each);
            }
            waiting[event.file].clear();
        }
        const bool isNew = isNewState(written, "all of the first " + std::to_string(i + 1) + " writes");
        EXPECT_TRUE(isNew || !wasNew);
        wasNew = isNew;
        isNewState(synced, "what was synced of the first " + std::to_string(i + 1) + " writes");
        // A write that tears in the middle of a page.
        if (event.kind == FaultLayer::Event::Kind::Write && event.bytes.size() > 1000) {
            Disk torn = synced;
            for (const FaultLayer::Event& each : waiting[event.file]) {
                happen(torn, each);
            }
            FaultLayer::Event half = event;
            std::fill(half.bytes.begin() + 512, half.bytes.end(), '\0');
            happen(torn, half);
            isNewState(torn, "write " + std::to_string(i + 1) + " torn");
        }
        if (HasFailure()) {
            return;
        }
    }
    // What CommitTrans has reported is on disk, not merely on its way there.
    EXPECT_TRUE(isNewState(written, "all"));
    EXPECT_TRUE(isNewState(synced, "all that was synced"));
}

TEST_F(PowerTest, ADiskThatFillsUpAnywhereInAChangeLeavesTheOldState) {
    const FaultLayer faults;
    int failures = 0;
    for (std::int64_t room = 0; room < 400000; room += 7777) {
        daotest::writeFile(path, before);
        db = openShop(path);
        FaultLayer::setRoom(room);
        const int number = errorOf([&] { change(db); });
        if (number != 0) {
            EXPECT_EQ(number, errNotEnoughSpace) << room;
            ++failures;
            EXPECT_EQ(db.OpenRecordset("Customers").RecordCount(), 60);
            EXPECT_EQ(db.OpenRecordset("Oprema")["Stanje"].asSingle(), 100);
            errorOf([] { DBEngine::Rollback(); });
        }
        FaultLayer::setRoom(FaultLayer::kPlenty);
        db.Execute("UPDATE Oprema SET Cena=1");  // room again: work goes on
        db.Close();
        db = openShop(path);
        EXPECT_EQ(db.OpenRecordset("Customers").RecordCount(), number == 0 ? 50 : 60);
        EXPECT_EQ(db.OpenRecordset("Oprema")["Cena"].asSingle(), 1);
        db.Close();
        DBEngine::RepairDatabase(path);
        EXPECT_FALSE(DBEngine::LastRepair().damaged) << room;
    }
    EXPECT_GT(failures, 5);
}

TEST_F(PowerTest, AFullDiskInAnUpdateKeepsTheEditAndTheLock) {
    const FaultLayer faults;
    db = openShop(path);
    Recordset set = db.OpenRecordset("Services");
    set.Edit();
    set.Fields("Comments") = Value(std::string(50000, 'x'));
    FaultLayer::setRoom(5000);
    EXPECT_EQ(errorOf([&] { set.Update(); }), errNotEnoughSpace);
    EXPECT_EQ(set.EditMode(), Recordset::EditModeKind::InProgress);
    FaultLayer::setRoom(FaultLayer::kPlenty);
    set.Update();
    EXPECT_EQ(set["Comments"].asText().size(), 50000U);
}

TEST_F(PowerTest, ANumberRolledBackOnAFullDiskDoesNotComeBack) {
    const FaultLayer faults;
    db = openShop(path);
    Recordset set = db.OpenRecordset("Customers");
    DBEngine::BeginTrans();
    set.AddNew();
    const int given = set["CustID"].asLong();
    FaultLayer::setRoom(0);
    DBEngine::Rollback();
    FaultLayer::setRoom(FaultLayer::kPlenty);
    set.AddNew();
    EXPECT_GT(set["CustID"].asLong(), given);
}

TEST_F(PowerTest, AFullDiskStopsARepairWithoutHarm) {
    std::vector<char> broken = before;
    std::fill(broken.end() - 4096, broken.end(), 'x');
    daotest::writeFile(path, broken);
    {
        const FaultLayer faults;
        FaultLayer::setRoom(60000);
        EXPECT_EQ(errorOf([&] { DBEngine::RepairDatabase(path); }), errNotEnoughSpace);
    }
    EXPECT_EQ(daotest::readFile(path), broken);
    DBEngine::RepairDatabase(path);
    EXPECT_TRUE(DBEngine::LastRepair().damaged);
    EXPECT_EQ(errorOf([&] { openShop(path); }), 0);
}

}  // namespace
