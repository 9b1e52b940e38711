#include "platform/dao/open_file.h"

#include "platform/dao/dao_shop.h"
#include "platform/dao/database_impl.h"
#include "platform/dao/failure.h"
#include "platform/dao/open_files.h"
#include "platform/dao/store_kinds.h"

using namespace dao;
using daotest::errorOf;

namespace {

class OpenFileTest : public daotest::ShopTest {
 protected:
    void SetUp() override {
        ShopTest::SetUp();
        fill(3);
    }
    OpenFile& file() { return db.impl()->file(); }
};

// A file has one lock for all of it, and copies of it are files.
class FileOpenFileTest : public OpenFileTest {};

// What was read under the lock of an Edit may be old as soon as the lock is let go.
TEST_F(FileOpenFileTest, TheEpochOfTheLockEndsWithTheLastEdit) {
    file().transaction().lockForEdit({});
    file().transaction().lockForEdit({});
    const std::int64_t locked = file().transaction().lockEpoch();
    file().transaction().unlockEdit({});
    EXPECT_EQ(file().transaction().lockEpoch(), locked) << "another Edit still holds it";
    file().transaction().unlockEdit({});
    EXPECT_NE(file().transaction().lockEpoch(), locked);
}

TEST_F(FileOpenFileTest, AnEditInsideATransactionEndsWithoutLettingTheLockGo) {
    DBEngine::BeginTrans();
    file().transaction().lockForEdit({});
    const std::int64_t locked = file().transaction().lockEpoch();
    file().transaction().unlockEdit({});
    EXPECT_EQ(file().transaction().lockEpoch(), locked);
    DBEngine::Rollback();
    EXPECT_NE(file().transaction().lockEpoch(), locked);
}

// The lock is let go in between, and others may write.
TEST_F(OpenFileTest, AChangeThatFailsMakesRowsReadEarlierOld) {
    const std::int64_t read = file().generation();
    EXPECT_EQ(errorOf([&] { file().transaction().write([] { fail(errDiskIo); }); }), errDiskIo);
    EXPECT_NE(file().generation(), read);
}

// A copy of yesterday laid over the file knows nothing of the numbers that this window has shown today.
TEST_F(FileOpenFileTest, ANumberDoesNotComeBackWithAnOlderCopyOfTheFile) {
    const std::string yesterday = folder.file("Yesterday.mdb");
    DBEngine::CopyDatabase(path, yesterday);
    Recordset clients = db.OpenRecordset("Customers");
    const auto nextNumber = [&] {
        clients.AddNew();
        const int number = clients["CustID"].asLong();
        clients.CancelUpdate();
        return number;
    };
    ASSERT_EQ(nextNumber(), 4);
    ASSERT_EQ(nextNumber(), 5);
    DBEngine::CopyDatabase(yesterday, path);
    EXPECT_EQ(nextNumber(), 6);
}

// A folder that took no lock file at the opening may take one when the file is opened again.
TEST_F(OpenFileTest, AFileThatIsOpenedAgainSaysThatItIsIn) {
    const PlacePtr place = kindOf(path).examine(path, {}, true);
    db.Close();
    const auto unseen = std::make_shared<OpenFile>(place, nullptr, place->open());
    unseen->releaseStore();
    unseen->store();
    EXPECT_EQ(OpenFiles::find(place->identity(), true), unseen);
    EXPECT_EQ(unseen->presence(), place->enter(true));
}

}  // namespace
