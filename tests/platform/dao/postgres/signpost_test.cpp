#include "platform/dao/postgres/signpost.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "failures.h"

using dao::postgres::Address;
using dao::postgres::isSignpost;
using dao::postgres::readSignpost;
using dao::postgres::writeSignpost;

namespace {

class Signpost : public ::testing::Test {
 protected:
    Signpost() {
        std::string folder = (std::filesystem::temp_directory_path() / "signpost-XXXXXX").string();
        folder_ = mkdtemp(folder.data());
        path_ = folder_ / "Tarvello.mdb";
    }
    ~Signpost() override { std::filesystem::remove_all(folder_); }

    void write(const std::string& text) const { std::ofstream(path_, std::ios::binary) << text; }
    std::string text() const {
        std::ostringstream out;
        out << std::ifstream(path_, std::ios::binary).rdbuf();
        return out.str();
    }
    Failure reading() const {
        return failureOf([&] { readSignpost(path_); });
    }

    std::filesystem::path folder_;
    std::string path_;
};

}  // namespace

TEST_F(Signpost, IsKnownByItsFirstBytes) {
    EXPECT_FALSE(isSignpost(path_));
    EXPECT_FALSE(isSignpost(folder_));
    write("");
    EXPECT_FALSE(isSignpost(path_));
    write("Tarvello serve");
    EXPECT_FALSE(isSignpost(path_));
    write(std::string(4096, '\x9C'));
    EXPECT_FALSE(isSignpost(path_));
    write("Tarvello server 1\ndbname = a\n");
    EXPECT_TRUE(isSignpost(path_));
    write("Tarvello server 2\n");  // not a database in any case
    EXPECT_TRUE(isSignpost(path_));
}

TEST_F(Signpost, IsReadAsPeopleWriteIt) {
    write(
        "Tarvello server 1\r\n"
        "# the server in the back room\r\n"
        "\r\n"
        "  host=shop \r\n"
        "port = 5433\r\n"
        "dbname =  a = b\r\n"
        "user = clerk");
    Address expected;
    expected.host = "shop";
    expected.port = "5433";
    expected.dbname = "a = b";
    expected.user = "clerk";
    EXPECT_EQ(readSignpost(path_), expected);
}

TEST_F(Signpost, SaysWhichLineIsWrong) {
    const std::string head = "Tarvello server 1\ndbname = a\n";
    write(head + "\npassword = secret\n");
    Failure failure = reading();
    EXPECT_EQ(failure.number, dao::errUnrecognisedFormat);
    EXPECT_EQ(
        failure.sentence,
        "Line 4 of " + path_ + ": a password does not belong here, but into the password file (.pgpass).");
    write(head + "color = red\n");
    EXPECT_EQ(reading().sentence, "Line 3 of " + path_ + ": 'color' is not a word for the place of a shop.");
    write(head + "shop\n");
    EXPECT_EQ(reading().sentence, "Line 3 of " + path_ + ": there is no '=' in it.");
    write(head + "dbname = b\n");
    EXPECT_EQ(reading().sentence, "Line 3 of " + path_ + ": 'dbname' stands there for the second time.");
    write("Tarvello server 1\nhost = shop\n");
    EXPECT_EQ(reading().sentence, path_ + ": dbname is missing.");
}

TEST_F(Signpost, OfAnotherKindOrTimeIsRefused) {
    EXPECT_EQ(reading().number, dao::errFileNotFound);
    write("SQLite format 3");
    EXPECT_EQ(reading().number, dao::errUnrecognisedFormat);
    write("Tarvello server 1\ndbname = a\n" + std::string(100'000, '\n'));
    EXPECT_EQ(reading().number, dao::errUnrecognisedFormat);
    for (const char* version : {"2", "12"}) {
        write(std::string("Tarvello server ") + version + "\ndbname = a\n");
        EXPECT_EQ(reading().number, dao::errNewerForm) << version;
    }
    EXPECT_EQ(failureOf([&] { readSignpost(folder_); }).number, dao::errDiskIo);
}

TEST_F(Signpost, IsReadBackAsItWasWritten) {
    Address place;
    place.host = "/run/postgresql";
    place.port = "5433";
    place.dbname = "Čačak = # shop";
    place.user = "clerk";
    place.sslmode = "verify-full";
    place.sslrootcert = "/etc/a folder/shop.crt";
    place.passfile = "/home/clerk/pass";
    writeSignpost(path_, place);
    EXPECT_TRUE(isSignpost(path_));
    EXPECT_EQ(readSignpost(path_), place);
    place.sslmode.clear();
    place.user.clear();
    writeSignpost(path_, place);
    EXPECT_EQ(readSignpost(path_), place);
    EXPECT_EQ(text(),
              "Tarvello server 1\nhost = /run/postgresql\nport = 5433\ndbname = Čačak = # shop\n"
              "sslrootcert = /etc/a folder/shop.crt\npassfile = /home/clerk/pass\n");
}

TEST_F(Signpost, ThatCouldNotBeReadBackIsNotWritten) {
    write("before");
    Address place;
    EXPECT_EQ(failureOf([&] { writeSignpost(path_, place); }).number, dao::errInvalidOperation);
    place.dbname = "a\npassword = b";
    EXPECT_EQ(failureOf([&] { writeSignpost(path_, place); }).number, dao::errInvalidOperation);
    place.dbname = " a";
    EXPECT_EQ(failureOf([&] { writeSignpost(path_, place); }).number, dao::errInvalidOperation);
    EXPECT_EQ(text(), "before");
}

TEST_F(Signpost, LeavesNothingBesideIt) {
    Address place;
    place.dbname = "a";
    writeSignpost(path_, place);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
    EXPECT_EQ(failureOf([&] { writeSignpost((folder_ / "none" / "a").string(), place); }).number,
              dao::errFileNotFound);
    // A folder in its place: what was written is taken away again.
    std::filesystem::create_directory(folder_ / "taken");
    EXPECT_NE(failureOf([&] { writeSignpost((folder_ / "taken").string(), place); }).number, 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 2);
}

TEST_F(Signpost, KeepsTheRightsOfTheOldOne) {
    Address place;
    place.dbname = "a";
    writeSignpost(path_, place);
    EXPECT_EQ(std::filesystem::status(path_).permissions(), static_cast<std::filesystem::perms>(0644));
    chmod(path_.c_str(), 0660);
    writeSignpost(path_, place);
    EXPECT_EQ(std::filesystem::status(path_).permissions(), static_cast<std::filesystem::perms>(0660));
}
