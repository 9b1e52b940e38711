#include "platform/dao/postgres/place.h"

#include <gtest/gtest.h>

#include "failures.h"

using dao::postgres::Address;
using dao::postgres::placeFromText;
using dao::postgres::placeText;

TEST(Address, IsReadFromText) {
    const Address place = placeFromText(
        "host='my shop' port=5433 dbname=tarvello user=clerk sslmode=verify-full "
        "sslrootcert=/etc/shop.crt passfile='/home/o\\'neill/pass'");
    EXPECT_EQ(place.host, "my shop");
    EXPECT_EQ(place.port, "5433");
    EXPECT_EQ(place.dbname, "tarvello");
    EXPECT_EQ(place.user, "clerk");
    EXPECT_EQ(place.sslmode, "verify-full");
    EXPECT_EQ(place.sslrootcert, "/etc/shop.crt");
    EXPECT_EQ(place.passfile, "/home/o'neill/pass");
    EXPECT_EQ(placeFromText("dbname=a").host, "");
}

TEST(Address, OfATextThatIsNoneIsRefused) {
    const auto refused = [](const std::string& text) {
        const Failure failure = failureOf([&] { placeFromText(text); });
        EXPECT_EQ(failure.number, dao::errInvalidOperation) << text;
        return failure.sentence;
    };
    EXPECT_EQ(
        refused("host=shop dbname=a password=secret"),
        "The place of a server can't be read: a password does not belong here, but into the password file "
        "(.pgpass).");
    EXPECT_EQ(refused("host=shop"), "The place of a server can't be read: dbname is missing.");
    EXPECT_EQ(refused("dbname=a options=-cx=1"),
              "The place of a server can't be read: 'options' is not a word for the place of a shop.");
    EXPECT_EQ(refused("dbname=a host=one,two"),
              "The place of a server can't be read: host names more than one server.");
    EXPECT_NE(refused("dbname=a nonsense=1").find("nonsense"), std::string::npos);
    EXPECT_NE(refused("dbname").find("dbname"), std::string::npos);
    EXPECT_NE(refused("").find("dbname is missing"), std::string::npos);
}

TEST(Address, IsToldShortly) {
    EXPECT_EQ(placeText(placeFromText("host=localhost dbname=tarvello")), "localhost:5432/tarvello");
    EXPECT_EQ(placeText(placeFromText("host=/run/postgresql port=5433 dbname=a")), "/run/postgresql:5433/a");
    EXPECT_EQ(placeText(placeFromText("host=::1 dbname=a")), "[::1]:5432/a");
    EXPECT_EQ(placeText(placeFromText("dbname=a")), "this computer:5432/a");
}
