#include "data/demo_shop.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <sstream>

#include "support/fixture.h"
#include "support/looks.h"

namespace {

class DemoShop : public DeliveredFixture {
 protected:
    // Every row of a table as one text, in the table's order.
    std::string dump(const std::string& table) {
        std::ostringstream out;
        dao::Recordset rows = openDatabase().OpenRecordset(table, dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            for (int i = 0; i < rows.FieldCount(); ++i) {
                out << rows.Fields(i).Value().asText() << '\x1f';
            }
            out << '\n';
        }
        rows.Close();
        return out.str();
    }
    std::string dumpShop() {
        return dump("Customers") + dump("Computers") + dump("Services") + dump("InvoiceData");
    }

    // Services of each computer, those without any left out.
    std::map<int, int> servicesPerComputer() {
        std::map<int, int> counts;
        dao::Recordset rows =
            openDatabase().OpenRecordset("SELECT MachineID FROM Services", dao::dbOpenSnapshot);
        for (; !rows.EOF(); rows.MoveNext()) {
            ++counts[rows["MachineID"].asLong()];
        }
        rows.Close();
        return counts;
    }
};

const char* const kGross = "(1-Discount/100)*Price*(1+GST/100)-Paid";

TEST_F(DemoShop, ComesWithSixtyClientsNinetyComputersThreeHundredServices) {
    useDemo();
    EXPECT_EQ(countRows("Customers"), 60);
    EXPECT_EQ(countRows("Computers"), 90);
    EXPECT_EQ(countRows("Services"), 300);
    EXPECT_GT(countRows("InvoiceData"), 50);
    EXPECT_GT(countRows("SELECT * FROM Customers WHERE FirmName<>''"), 10);
    EXPECT_GT(countRows("SELECT * FROM Customers WHERE FirmName=''"), 20);
}

TEST_F(DemoShop, HasServicesInAllFourStates) {
    useDemo();
    int all = 0;
    for (const char* finished : {">=", "<"}) {
        for (const char* paid : {"<", ">="}) {
            const int count = countRows(std::string("SELECT * FROM Services WHERE ServiceFinished") +
                                        finished + "#1/1/1900# AND Price>0 AND " + kGross + paid + "0.1");
            EXPECT_GE(count, 5) << finished << paid;
            all += count;
        }
    }
    EXPECT_EQ(all, 300);
}

TEST_F(DemoShop, GivesEveryClientTheFieldsThatSavingAsksFor) {
    useDemo();
    for (const char* field : {"Surname", "GivenName", "Street", "City", "ZIP", "Country"}) {
        EXPECT_EQ(
            countRows(std::string("SELECT * FROM Customers WHERE ") + field + "='' OR " + field + " IS NULL"),
            0)
            << field;
    }
    EXPECT_EQ(countRows("SELECT * FROM Computers WHERE MachineName=''"), 0);
}

TEST_F(DemoShop, NamesNobodyWhoCouldBeReached) {
    useDemo();
    dao::Recordset rows = openDatabase().OpenRecordset("Customers", dao::dbOpenSnapshot);
    for (; !rows.EOF(); rows.MoveNext()) {
        EXPECT_THAT(rows["EMail"].asText(), testing::EndsWith(".example"));
        EXPECT_THAT(rows["Web"].asText(), testing::AnyOf("", testing::EndsWith(".example")));
        for (const char* number : {"Phone", "Cellular", "FAX"}) {
            EXPECT_THAT(rows[number].asText(), testing::AnyOf("", testing::HasSubstr("/555-")));
        }
    }
    rows.Close();
}

TEST_F(DemoShop, TellsAYearThatEndsOnTheBaseDate) {
    useDemo();
    EXPECT_EQ(
        countRows("SELECT * FROM Services WHERE ServiceStarted<#6/30/2025# OR ServiceStarted>#6/30/2026#"),
        0);
    EXPECT_EQ(countRows("SELECT * FROM Services WHERE ServiceFinished>#6/30/2026#"), 0);
    EXPECT_EQ(
        countRows(
            "SELECT * FROM Services WHERE ServiceFinished>#1/1/1900# AND ServiceFinished<ServiceStarted"),
        0);
}

TEST_F(DemoShop, NamesOnlyKindsOfWorkThatExist) {
    useDemo();
    const int kinds = countRows("ServiceTypes");
    dao::Recordset rows =
        openDatabase().OpenRecordset("SELECT ServiceTypes FROM Services", dao::dbOpenSnapshot);
    for (; !rows.EOF(); rows.MoveNext()) {
        const QStringList numbers = QString::fromStdString(rows["ServiceTypes"].asText()).split('|');
        for (const QString& number : numbers) {
            ASSERT_GE(number.toInt(), numbers.size() > 1 ? 2 : 1);
            ASSERT_LE(number.toInt(), kinds);
        }
    }
    rows.Close();
}

TEST_F(DemoShop, PricesARequisitionedServiceByItsParts) {
    useDemo();
    std::map<int, double> totals;
    std::set<std::pair<int, int>> seen;
    dao::Recordset rows = openDatabase().OpenRecordset("InvoiceData", dao::dbOpenSnapshot);
    for (; !rows.EOF(); rows.MoveNext()) {
        const int service = rows["ServiceID"].asLong();
        totals[service] += rows["Stanje"].asDouble() * rows["Cena"].asDouble();
        EXPECT_TRUE(seen.insert({service, rows["OpremaID"].asLong()}).second) << "a product twice";
        EXPECT_EQ(valueOf("Oprema", "ID", rows["OpremaID"].asLong(), "Naziv"), rows["Naziv"]);
    }
    rows.Close();
    ASSERT_FALSE(totals.empty());
    for (const auto& [service, total] : totals) {
        EXPECT_NEAR(valueOf("Services", "ID", service, "Price").asDouble(), total, 0.001);
    }
}

TEST_F(DemoShop, IsTheSameEachTime) {
    data::fillDemoShop(openDatabase(), {});
    const std::string first = dumpShop();
    closeDatabases();
    useDemo();
    EXPECT_EQ(dumpShop(), first);
}

// The shop that newcomers and the pictures of the help show, row by row as it was looked at.
TEST_F(DemoShop, IsTheOneThatNewcomersKnow) {
    useDemo();
    expectText(QString::fromStdString(dumpShop()).replace(QChar(0x1f), QLatin1Char('|')),
               QStringLiteral("demo_shop"));
}

TEST_F(DemoShop, IsAnotherWithAnotherSeed) {
    data::DemoPlan plan;
    plan.seed = 18;
    data::fillDemoShop(openDatabase(), plan);
    const std::string first = dumpShop();
    closeDatabases();
    useDemo();
    EXPECT_NE(dumpShop(), first);
}

TEST_F(DemoShop, GrowsToAnySizeWithOneComputerThatOwnsAThousandServices) {
    data::DemoPlan plan;
    plan.clients = 400;
    plan.computers = 601;
    plan.services = 2800;
    plan.busiest = 1000;
    data::fillDemoShop(openDatabase(), plan);
    EXPECT_EQ(countRows("Customers"), 400);
    EXPECT_EQ(countRows("Computers"), 601);
    EXPECT_EQ(countRows("Services"), 2800);
    int busiest = 0;
    const auto counts = servicesPerComputer();
    EXPECT_EQ(counts.size(), 601U);
    for (const auto& [machine, count] : counts) {
        if (count == 1000) {
            ++busiest;
        } else {
            EXPECT_EQ(count, 3) << machine;
        }
    }
    EXPECT_EQ(busiest, 1);
}

TEST_F(DemoShop, RefusesAPlanThatCannotBeAndLeavesNothing) {
    data::DemoPlan noClients;
    noClients.clients = 0;
    data::DemoPlan noComputers;
    noComputers.computers = 0;
    data::DemoPlan tooBusy;
    tooBusy.busiest = 301;
    data::DemoPlan negative;
    negative.services = -1;
    for (const data::DemoPlan& plan : {noClients, noComputers, tooBusy, negative}) {
        EXPECT_THROW(data::fillDemoShop(openDatabase(), plan), std::invalid_argument);
    }
    EXPECT_EQ(countRows("Customers"), 0);
}

}  // namespace
