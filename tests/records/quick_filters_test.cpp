// What the quick filters ask the database, letter by letter, and how they count the answer.
#include "records/quick_filters.h"

#include "support/fixture.h"

namespace {

using quick_filters::IdList;

TEST(QuickFilters, FinishedAndNotPaidAsksThis) {
    EXPECT_EQ(
        quick_filters::statement(0, 5),
        "SELECT Customers.CustID, Computers.MachineID, Services.ID FROM Customers LEFT JOIN (Computers LEFT "
        "JOIN Services ON Computers.MachineID = Services.MachineID) ON Customers.CustID = Computers.CustID "
        "WHERE (((Services.ServiceFinished)>=#1/1/1900#) AND "
        "((((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100))))-[Services]![Paid])>"
        "0.1);");
}

TEST(QuickFilters, NotFinishedAndNotPaidAsksThis) {
    EXPECT_EQ(
        quick_filters::statement(1, 5),
        "SELECT Customers.CustID, Computers.MachineID, Services.ID FROM Customers LEFT JOIN (Computers LEFT "
        "JOIN Services ON Computers.MachineID = Services.MachineID) ON Customers.CustID = Computers.CustID "
        "WHERE (((Services.ServiceFinished)<#1/1/1900#) AND "
        "((((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100))))-[Services]![Paid])>"
        "0.1);");
}

TEST(QuickFilters, NotFinishedAndPaidAsksThisWithAFourthColumn) {
    EXPECT_EQ(
        quick_filters::statement(2, 5),
        "SELECT Customers.CustID, Computers.MachineID, Services.ID, "
        "((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100)))-[Services]![Paid] AS "
        "Expr1 FROM Customers LEFT JOIN (Computers LEFT JOIN Services ON Computers.MachineID = "
        "Services.MachineID) ON Customers.CustID = Computers.CustID WHERE "
        "(((((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100))))-[Services]![Paid])"
        "<=0.1) AND ((Services.ServiceFinished)<#1/1/1900#) AND ((Services.Price)>0);");
}

TEST(QuickFilters, NotFinishedAndNotPaidWithDueDateAsksThis) {
    EXPECT_EQ(
        quick_filters::statement(3, 12),
        "SELECT Customers.CustID, Computers.MachineID, Services.ID FROM Customers LEFT JOIN (Computers LEFT "
        "JOIN Services ON Computers.MachineID = Services.MachineID) ON Customers.CustID = Computers.CustID "
        "WHERE (((Services.ServiceToBeFinished)>=#1/1/1900#) AND "
        "((DateDiff(\"d\",Now(),[Services]![ServiceToBeFinished]))<=12) AND "
        "((Services.ServiceFinished)<#1/1/1900#) AND "
        "((((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/100))))-[Services]![Paid])>"
        "0.1);");
}

TEST(QuickFilters, NotFinishedAndPaidWithDueDateAsksThisWithItsFourthArgument) {
    EXPECT_EQ(
        quick_filters::statement(4, 0),
        "SELECT Customers.CustID, Computers.MachineID, Services.ID FROM Customers LEFT JOIN (Computers LEFT "
        "JOIN Services ON Computers.MachineID = Services.MachineID) ON Customers.CustID = Computers.CustID "
        "WHERE (((Services.ServiceToBeFinished)>=#1/1/1900#) AND "
        "((DateDiff(\"d\",Now(),[Services]![ServiceToBeFinished],2))<=0) AND "
        "((Services.ServiceFinished)<#1/1/1900#) AND "
        "((((1-[Services]![Discount]/100)*[Services]![Price]*(1+([Services]![GST]/"
        "100))))-[Services]![Paid])<="
        "0.1) AND ((Services.Price)>0);");
}

TEST(QuickFilters, OtherNumbersAreNoFilters) {
    for (const int number : {-1, 5, 100}) {
        EXPECT_FALSE(quick_filters::isFilter(number));
        EXPECT_EQ(quick_filters::statement(number, 5), "");
        EXPECT_EQ(quick_filters::caption(number), "");
    }
}

TEST(QuickFilters, NumberGoesInOnceARun) {
    IdList ids("MachineID");
    for (const int id : {7, 7, 7, 12, 7}) {
        ids.add(id);
    }
    EXPECT_EQ(ids.selection("Computers"),
              "SELECT * FROM Computers WHERE MachineID=7 OR MachineID=12 OR MachineID=7;");
    EXPECT_EQ(ids.count(), 3) << "only the row before is looked at";
}

TEST(QuickFilters, OneNumberStandsAlone) {
    IdList ids("ID");
    ids.add(3);
    EXPECT_EQ(ids.selection("Services"), "SELECT * FROM Services WHERE ID=3;");
}

TEST(QuickFilters, StatisticsTellTheThreeCounts) {
    quick_filters::Found found;
    EXPECT_TRUE(found.isEmpty());
    found.clients.add(1);
    found.computers.add(1);
    found.computers.add(2);
    for (const int id : {4, 5, 6}) {
        found.services.add(id);
    }
    EXPECT_FALSE(found.isEmpty());
    EXPECT_EQ(quick_filters::statistics(found),
              "Filtering the database suceeded. Returned:\n\nClient(s): 1\nComputer(s): 2\nSevice(s): 3");
}

}  // namespace
