#include "exchange/take_over.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>

#include "exchange/old_format.h"
#include "exchange/old_rows.h"
#include "platform/dao/postgres/signpost.h"
#include "support/fixture.h"
#include "support/server_cluster.h"

namespace {

using exchange::OldFileError;
using exchange::TakenOver;
using testing::ElementsAre;
using testing::HasSubstr;

std::string bytesIn(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class TakeOverTest : public DeliveredFixture {
 protected:
    void SetUp() override {
        DeliveredFixture::SetUp();
        std::filesystem::create_directory(in(""));
        std::filesystem::copy_file(std::string(tests::kSourceFolder) + "/exchange/old-shop.mdb", old());
    }
    // In a folder that holds nothing else.
    std::string in(const std::string& name) const { return path("taken/").toStdString() + name; }
    std::string old() const { return in("Old.mdb"); }
    std::string target() const { return in("New.mdb"); }
    std::string list() const { return bytesIn(in("take-over.txt")); }
    std::set<std::string> names() const {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(in(""))) {
            all.insert(entry.path().filename());
        }
        return all;
    }
    std::string refusal() {
        try {
            exchange::takeOver(old(), target());
        } catch (const OldFileError& error) {
            return error.what();
        } catch (const dao::Error& error) {
            return error.what();
        }
        return {};
    }
    static dao::Database open(const std::string& file) {
        return dao::DBEngine::OpenDatabase(file, false, false, connectText().toStdString());
    }
    // The first field of the first row.
    static dao::Value ask(const std::string& file, const std::string& statement) {
        dao::Database shop = open(file);
        dao::Recordset rows = shop.OpenRecordset(statement, dao::dbOpenSnapshot);
        dao::Value value = rows.EOF() ? dao::Value("(no row)") : rows.Fields(0).Value();
        rows.Close();
        shop.Close();
        return value;
    }
    void change(std::size_t at, const std::string& bytes) const {
        std::fstream file(old(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(at));
        file << bytes;
    }
};

TEST_F(TakeOverTest, CarriesEveryRowWithItsNumbers) {
    const std::string before = bytesIn(old());
    const TakenOver taken = exchange::takeOver(old(), target());
    for (const exchange::TakenTable& table : taken.tables) {
        EXPECT_EQ(table.carried, table.found) << table.name;
        EXPECT_EQ(table.made + table.left, 0) << table.name;
    }
    EXPECT_THAT(taken.amounts, ElementsAre("Services.Paid: 89075.5900", "Services.Price: 228328.7300"));
    EXPECT_EQ(bytesIn(old()), before) << "the old file is only read";
    EXPECT_EQ(names(), (std::set<std::string>{"New.mdb", "Old.mdb", "take-over.txt"}));
    EXPECT_EQ(ask(target(), "SELECT Price FROM Services WHERE ID=1").asCurrency().scaled(), 4395100);
    EXPECT_EQ(ask(target(), "SELECT ServiceFinished FROM Services WHERE ID=1").asDate().days, 1.0);
    EXPECT_EQ(ask(target(), "SELECT Stanje FROM Oprema WHERE ID=1").asSingle(), 22.5F);
    EXPECT_EQ(ask(target(), "SELECT Naziv FROM Oprema WHERE ID=2").asText(), "Artikal 2 3.5\"");
    EXPECT_EQ(ask(target(), "SELECT Naziv FROM Oprema WHERE ID=3").asText(), "Artikal 3 čevlić");
    EXPECT_EQ(ask(target(), "SELECT Napomena FROM Oprema WHERE ID=1").asText(), "napomena, red 1\r\nred 2");
    EXPECT_TRUE(ask(target(), "SELECT Opis FROM Oprema WHERE ID=1").isNull());
    EXPECT_EQ(ask(target(), "SELECT SN FROM InvoiceData WHERE ServiceID=1").asText(), "SN10, SN10B");
    EXPECT_EQ(ask(target(), "SELECT PredracunBroj FROM DocNumber").asLong(), 41);
    EXPECT_THAT(list(), HasSubstr("Every row is as it was."));
    EXPECT_THAT(list(), HasSubstr("The rate and the firm's data stand in each user's settings"));
}

TEST_F(TakeOverTest, CountersGoOnBehindTheHighest) {
    exchange::takeOver(old(), target());
    dao::Database shop = open(target());
    dao::Recordset services = shop.OpenRecordset("Services");
    services.AddNew();
    EXPECT_EQ(services.Fields("ID").Value().asLong(), 901);
    services.Close();
    shop.Close();
}

TEST_F(TakeOverTest, TellsHowFarItIs) {
    std::set<std::string> doings;
    exchange::takeOver(old(), target(),
                       [&](const char* doing, const std::string&, std::int64_t done, std::int64_t all) {
                           doings.insert(doing);
                           EXPECT_LE(done, all);
                       });
    EXPECT_EQ(doings, (std::set<std::string>{"comparing", "reading", "writing"}));
}

TEST_F(TakeOverTest, TheListIsForItsUserAlone) {
    exchange::takeOver(old(), target());
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(in("take-over.txt")).permissions(),
              perms::owner_read | perms::owner_write);
}

TEST_F(TakeOverTest, KeepsTheListOfAnEarlierTime) {
    std::ofstream(in("take-over.txt")) << "of an earlier time";
    exchange::takeOver(old(), target());
    EXPECT_EQ(bytesIn(in("take-over-2.txt")), "of an earlier time");
    EXPECT_THAT(list(), HasSubstr("Every row is as it was."));
}

TEST_F(TakeOverTest, ReplacesNoFile) {
    std::ofstream(target()) << "a letter";
    EXPECT_EQ(refusal(), "'" + target() + "' is there already, and is not replaced.");
    EXPECT_EQ(bytesIn(target()), "a letter");
    EXPECT_EQ(names(), (std::set<std::string>{"New.mdb", "Old.mdb"}));
}

TEST_F(TakeOverTest, RefusesWhatEndsTooSoon) {
    std::filesystem::resize_file(old(), 100 * 4096);
    EXPECT_THAT(refusal(), HasSubstr("is damaged: it ends before its page"));
    std::filesystem::resize_file(old(), 100 * 4096 - 7);
    EXPECT_THAT(refusal(), HasSubstr("is damaged: it ends amid a page"));
    std::filesystem::resize_file(old(), 4096);
    EXPECT_THAT(refusal(), HasSubstr("is damaged"));
    EXPECT_EQ(names(), (std::set<std::string>{"Old.mdb"}));
}

TEST_F(TakeOverTest, RefusesWhereAPageOfATableIsGone) {
    change(79 * 4096, std::string(4096, '\0'));
    EXPECT_THAT(refusal(), HasSubstr("is damaged: the page 79 is not one of the table Customers"));
    EXPECT_EQ(names(), (std::set<std::string>{"Old.mdb"}));
}

TEST_F(TakeOverTest, RefusesWhatIsEncoded) {
    std::mt19937 dice(5);
    std::string noise(bytesIn(old()).size() - 4096, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(dice());
    }
    change(4096, noise);
    EXPECT_THAT(refusal(), HasSubstr("is encoded in a way that cannot be read"));
    EXPECT_EQ(names(), (std::set<std::string>{"Old.mdb"}));
}

// Whatever is wrong with a file: a sentence, or a shop of which everything that is not as it was is told.
// Never the end of the program, and never a hang.
TEST_F(TakeOverTest, OutlivesDamagedFilesOfAllKinds) {
    const std::string sound = bytesIn(old());
    std::mt19937 dice(20041);
    int refused = 0;
    const auto below = [&](std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(dice);
    };
    for (int round = 0; round < 500; ++round) {
        std::string hurt = sound;
        switch (round % 4) {
            case 0:
                hurt.resize(4096 * (1 + below(hurt.size() / 4096)));
                break;
            case 1:
                hurt.replace(4096 * below(hurt.size() / 4096), 4096, std::string(4096, '\0'));
                break;
            case 2:
                for (std::size_t flips = 1 + below(200); flips > 0; --flips) {
                    hurt[64 + below(hurt.size() - 64)] ^= static_cast<char>(1U << below(8));
                }
                break;
            default:
                // Where the tables are described, and where the pages tell of their rows.
                for (std::size_t flips = 1 + below(20); flips > 0; --flips) {
                    hurt[4096 * below(hurt.size() / 4096) + below(64) + 32] = static_cast<char>(dice());
                }
        }
        std::ofstream(old(), std::ios::binary | std::ios::trunc) << hurt;
        try {
            exchange::readOldShop(old(), {"Customers", "Computers", "Services", "Oprema", "InvoiceData"}, {},
                                  1);
        } catch (const OldFileError& error) {
            EXPECT_THAT(error.what(), testing::AnyOf(HasSubstr("damaged"), HasSubstr("encoded")));
            ++refused;
        }
    }
    EXPECT_GT(refused, 150) << "of 125 that were cut off and 125 with a page of zeros, most";
}

TEST_F(TakeOverTest, FillsTheEmptyDatabaseBehindASignpost) {
    const tests::ServerDatabase database;
    dao::postgres::writeSignpost(target(), database.place());
    const std::string signpost = bytesIn(target());
    exchange::takeOver(old(), target());
    EXPECT_EQ(bytesIn(target()), signpost);
    EXPECT_EQ(names(), (std::set<std::string>{"New.mdb", "Old.mdb", "take-over.txt"}));
    EXPECT_EQ(ask(target(), "SELECT Price FROM Services WHERE ID=1").asCurrency().scaled(), 4395100);
    EXPECT_THAT(refusal(), HasSubstr("already holds a shop"));
    EXPECT_EQ(names(), (std::set<std::string>{"New.mdb", "Old.mdb", "take-over.txt"}));
}

TEST_F(TakeOverTest, TheCommandTellsWhatItTook) {
    QProcess command;
    command.start(QStringLiteral(TARVELLO_DATA),
                  {"take-over", QString::fromStdString(old()), QString::fromStdString(target())});
    ASSERT_TRUE(command.waitForFinished(60000));
    EXPECT_EQ(command.exitCode(), 0);
    const std::string said = command.readAllStandardOutput().toStdString();
    EXPECT_THAT(said, HasSubstr("Services: 900 of 900 rows\n"));
    EXPECT_THAT(said, HasSubstr("Services.Price: 228328.7300\n"));
    EXPECT_THAT(said, HasSubstr("The rate and the firm's data stand in each user's settings"));
    EXPECT_EQ(command.readAllStandardError().toStdString(), "");
    command.start(QStringLiteral(TARVELLO_DATA),
                  {"take-over", QString::fromStdString(old()), QString::fromStdString(target())});
    ASSERT_TRUE(command.waitForFinished(60000));
    EXPECT_EQ(command.exitCode(), 1);
    EXPECT_EQ(command.readAllStandardError().toStdString(),
              "tarvello-data: '" + target() + "' is there already, and is not replaced.\n");
}

}  // namespace
