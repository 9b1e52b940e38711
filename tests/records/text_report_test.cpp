#include "records/text_report.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QDate>

#include "data/demo_shop.h"
#include "platform/system/dates.h"
#include "platform/system/trap.h"
#include "records/text_report_shop.h"

namespace {

using Result = TextReport::Result;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

dao::Date day(int year, int month, int dayOfMonth) {
    return platform::fromQDate(QDate(year, month, dayOfMonth));
}

dao::Currency euro(double amount) {
    return dao::Currency::fromDouble(amount);
}

std::string blanks(size_t count) {
    return std::string(count, ' ');
}

class TextReportTest : public ReportShop {
 protected:
    // A client of a person who filled in everything.
    int addFullClient() {
        return addClient("Peric", "Pera",
                         {{"NickName", "Pericle"},
                          {"BirthDate", day(1970, 7, 5)},
                          {"BirthPlace", "Nis"},
                          {"PIDNo", "123456"},
                          {"IssueDate", day(1999, 12, 31)},
                          {"IssuePlace", "Beograd"},
                          {"ValidUntil", day(2029, 12, 31)},
                          {"FirmName", "Pera i sin"},
                          {"FirmAddress", true},
                          {"State", "Vojvodina"},
                          {"Phone", "011/555-1"},
                          {"Cellular", "063/555-2"},
                          {"FAX", "011/555-3"},
                          {"EMail", "pera@pera.example"},
                          {"Web", "www.pera.example"},
                          {"ICQ", "5551234"},
                          {"Comments", "Pays late."}});
    }
    int addFullComputer(int client) {
        return addComputer(client, "Office PC",
                           {{"Processor", "P4"},
                            {"MotherBoard", "MB"},
                            {"CacheMem", "512K"},
                            {"RAMMem", "1G"},
                            {"HD", "80G"},
                            {"Floppy", "1.44"},
                            {"CD", "52x"},
                            {"CDWriter", "48x"},
                            {"VideoCard", "Video"},
                            {"SoundCard", "Sound"},
                            {"Modem", "56K"},
                            {"PowerSupply", "350W"},
                            {"Monitor", "17"},
                            {"Printer", "Laser"},
                            {"Scanner", "A4"},
                            {"Network", "100M"},
                            {"InternetEquipment", "ADSL"},
                            {"OS", "XP"},
                            {"Comments", "Loud."}});
    }
    // Selected, with everything under it.
    void oneOfEach(const FieldValues& client = {}, const FieldValues& computer = {},
                   const FieldValues& service = {}) {
        selection.client = addClient("Peric", "Pera", client);
        selection.computer = addComputer(selection.client, "PC", computer);
        selection.service = addService(selection.computer, service);
    }
    std::string line(const std::string& part) {
        const std::string all = written();
        const size_t at = all.find(part);
        if (at == std::string::npos) {
            return "(no line with " + part + ")";
        }
        const size_t start = all.rfind('\n', at) + 1;
        return all.substr(start, all.find('\n', at) - start);
    }
    // The first service's own line.
    std::string serviceLine() {
        const std::string rule = blanks(9) + std::string(115, '-') + "\n";
        const std::string all = written();
        const size_t start = all.find(rule, all.find(rule) + 1) + rule.size();
        return all.substr(start, all.find('\n', start) - start);
    }
};

TEST_F(TextReportTest, PrintsAllOfOneClientOneComputerOneService) {
    selection.client = addFullClient();
    selection.computer = addFullComputer(selection.client);
    selection.service = addService(selection.computer, {{"ServiceToBeFinished", day(2026, 3, 10)},
                                                        {"ServiceFinished", day(2026, 3, 12)},
                                                        {"ServiceTypes", "2|4"},
                                                        {"Comments", "New fan."},
                                                        {"Price", euro(100)},
                                                        {"Discount", 10.0F},
                                                        {"GST", 20.0F},
                                                        {"Paid", euro(50.5)}});
    const std::string expected =
        "Peric, Pera - Pericle, born on 7/5/1970 in Nis\n"
        "------------------------------------------------------------\n"
        "\n"
        "PID card number:   123456\n"
        "Date of issue:     12/31/1999\n"
        "Place of issue:    Beograd\n"
        "Valid until:       12/31/2029\n"
        "\n"
        "Firm's name:       Pera i sin\n"
        "Street address:    Lipova 1\n"
        "City/town:         Beograd\n"
        "ZIP (area) code:   11000\n"
        "State:             Vojvodina\n"
        "Country:           Srbija\n"
        "                   (this is the firm's address)\n"
        "\n"
        "Phone number:      011/555-1\n"
        "Cellular phone:    063/555-2\n"
        "Fax number:        011/555-3\n"
        "E-mail address:    pera@pera.example\n"
        "Web site:          www.pera.example\n"
        "ICQ number:        5551234\n"
        "\n"
        "Comments: Pays late.\n"
        "\n"
        "    Computer name: Office PC\n"
        "    --------------------------------------------------\n"
        "\n"
        "    Processor:          P4\n"
        "    Mother board:       MB\n"
        "    Cache memory:       512K\n"
        "    RAM memory:         1G\n"
        "\n"
        "    Hard disc drive:    80G\n"
        "    Floppy disc drive:  1.44\n"
        "    CD/DVD drive:       52x\n"
        "    CD writer:          48x\n"
        "\n"
        "    Video card:         Video\n"
        "    Sound card:         Sound\n"
        "    Modem:              56K\n"
        "    Power supply:       350W\n"
        "    Monitor:            17\n"
        "    Printer:            Laser\n"
        "    Scanner:            A4\n"
        "    Network:            100M\n"
        "    Internet equip.:    ADSL\n"
        "\n"
        "    Operating system:   XP\n"
        "\n"
        "    Comments:           Loud.\n"
        "\n"
        "         Service(s):\n"
        "         "
        "--------------------------------------------------------------------------------------------"
        "-----------------------\n"
        "         Started          Due date         Finished         Price            Discount       GST    "
        "Paid           Total\n"
        "         "
        "--------------------------------------------------------------------------------------------"
        "-----------------------\n"
        "         3/3/2026         3/10/2026        3/12/2026        $100.00          $10.00         20%    "
        "$50.50         $57.50\n"
        "         Service(s): Cleaning, Upgrade\n"
        "         Comments: New fan.\n"
        "\n";
    EXPECT_EQ(text(), expected);
}

TEST_F(TextReportTest, PutsStandInsForWhatIsEmpty) {
    oneOfEach({{"Comments", " "}, {"Street", ""}}, {}, {{"ServiceTypes", ""}, {"Comments", dao::Value()}});
    const std::string all = text();
    EXPECT_THAT(all, StartsWith("Peric, Pera\n----"));
    for (const char* label :
         {"Firm's name:       ", "State:             ", "Phone number:      ", "Cellular phone:    ",
          "Fax number:        ", "E-mail address:    ", "Web site:          ", "ICQ number:        ",
          "    Processor:          ", "    RAM memory:         ", "    CD writer:          ",
          "    Internet equip.:    ", "    Operating system:   "}) {
        EXPECT_THAT(all, HasSubstr(std::string("\n") + label + "N/A\n"));
    }
    EXPECT_THAT(all, HasSubstr("\nStreet address:    \n"));
    EXPECT_THAT(all, HasSubstr("\nComments: None\n"));
    EXPECT_THAT(all, HasSubstr("\n    Comments:           None\n"));
    EXPECT_THAT(all, HasSubstr("\n         Service(s): N/A\n         Comments: None\n\n"));
}

TEST_F(TextReportTest, LeavesTheCardOutWhereItHasNoNumberAndKeepsTheEmptyLine) {
    oneOfEach({{"IssuePlace", "Beograd"}});
    EXPECT_THAT(text(), Not(HasSubstr("Place of issue")));
    EXPECT_THAT(written(), HasSubstr("---\n\n\nFirm's name:"));
}

TEST_F(TextReportTest, PrintsACardWithoutDates) {
    oneOfEach({{"PIDNo", "7"}});
    EXPECT_THAT(text(), HasSubstr("\n\nPID card number:   7\nDate of issue:     N/A\nPlace of issue:    "
                                  "N/A\nValid until:       N/A\n\n"));
}

TEST_F(TextReportTest, TellsTheFirmsAddressOnlyWhereItIs) {
    oneOfEach();
    EXPECT_THAT(text(), Not(HasSubstr("firm's address")));
}

TEST_F(TextReportTest, ABirthDateLeftEmptyAddsNothingToTheHeadLine) {
    oneOfEach({{"BirthDate", kEmptyDate}});
    EXPECT_THAT(text(), StartsWith("Peric, Pera\n"));
}

TEST_F(TextReportTest, ABirthPlaceStandsAloneWithoutADate) {
    oneOfEach({{"BirthPlace", "Nis"}});
    EXPECT_THAT(text(), StartsWith("Peric, Pera, born in Nis\n"));
    choices.PrintBirthDetails = false;
    EXPECT_THAT(text(), StartsWith("Peric, Pera\n"));
}

TEST_F(TextReportTest, ADateIsPrintedFromTheSecondOfJanuary1900On) {
    oneOfEach({{"BirthDate", dao::Date{2.75}}});
    EXPECT_THAT(text(), StartsWith("Peric, Pera\n"));
    dao::Recordset rows = openDatabase().OpenRecordset("Customers");
    rows.Edit();
    rows.Fields("BirthDate") = dao::Date{3.0};
    rows.Update();
    EXPECT_THAT(text(), StartsWith("Peric, Pera, born on 1/2/1900\n"));
    rows.Edit();
    rows.Fields("BirthDate") = dao::Value();
    rows.Update();
    rows.Close();
    EXPECT_THAT(text(), StartsWith("Peric, Pera\n"));
}

TEST_F(TextReportTest, ADueDateLeftEmptyIsAnEmptyCell) {
    oneOfEach({}, {}, {{"ServiceFinished", day(2026, 3, 12)}});
    text();
    EXPECT_THAT(serviceLine(), StartsWith("         3/3/2026" + blanks(26) + "3/12/2026"));
}

TEST_F(TextReportTest, TheDayOfTheStartIsPrintedAsItIs) {
    oneOfEach({}, {}, {{"ServiceStarted", kEmptyDate}});
    text();
    EXPECT_THAT(serviceLine(), StartsWith("         12/31/1899 "));
    dao::Recordset rows = openDatabase().OpenRecordset("Services");
    rows.Edit();
    rows.Fields("ServiceStarted") = dao::Value();
    rows.Update();
    rows.Close();
    text();
    EXPECT_THAT(serviceLine(), StartsWith(blanks(60) + "$100.00"));
}

TEST_F(TextReportTest, TheDiscountIsTakenOffAsAnAmount) {
    oneOfEach({}, {}, {{"Price", euro(100)}, {"Discount", 10.0F}, {"GST", 10.0F}});
    text();
    EXPECT_THAT(serviceLine(), EndsWith("$99.00"));  // 90 and a tenth, nothing paid
    dao::Recordset rows = openDatabase().OpenRecordset("Services");
    rows.Edit();
    rows.Fields("Price") = euro(200);
    rows.Update();
    rows.Close();
    text();
    EXPECT_THAT(serviceLine(), EndsWith("$209.00"));  // where the list would say 198
}

TEST_F(TextReportTest, KnowsNeitherRateNorTolerance) {
    KursKupovni = 117.5F;
    CeneDinarske = true;
    oneOfEach({}, {}, {{"Price", euro(100)}, {"Paid", euro(99.95)}});
    text();
    EXPECT_THAT(serviceLine(), EndsWith("$100.00          $0.00          0%     $99.95         $0.05"));
}

TEST_F(TextReportTest, WhatIsNoNumberCountsAsNothing) {
    oneOfEach(
        {}, {},
        {{"Price", dao::Value()}, {"Discount", dao::Value()}, {"GST", dao::Value()}, {"Paid", dao::Value()}});
    text();
    EXPECT_THAT(serviceLine(), EndsWith("$0.00            $0.00          0%     $0.00          $0.00"));
}

TEST_F(TextReportTest, SpeaksTheLocaleOfTheUser) {
    QLocale::setDefault(QLocale("de_DE"));
    oneOfEach({{"BirthDate", day(1970, 7, 5)}}, {},
              {{"Price", euro(1234.5)}, {"GST", 17.5F}, {"Paid", euro(2000)}});
    EXPECT_THAT(text(), StartsWith("Peric, Pera, born on 05.07.1970\n"));
    const QString euroSign = QStringLiteral("\u00a0\u20ac");
    EXPECT_EQ(serviceLine(), (blanks(9) + "03.03.2026" + blanks(41) + "1.234,50" + euroSign.toStdString() +
                              blanks(7) + "0,00" + euroSign.toStdString() + blanks(9) + "17,5%  2.000,00" +
                              euroSign.toStdString() + blanks(5) + "-549,46" + euroSign.toStdString()));
}

TEST_F(TextReportTest, ColumnsCountCharacters) {
    ReportFile out;
    out.open(file());
    for (const char* word : {"abcd", "\u0160ari", "\u20ac\u20ac\u20ac\u20ac", "\U0001F600bcd"}) {
        out.print(word);
        out.tab(8);
        out.print("|");
        out.endLine();
    }
    out.close();
    EXPECT_EQ(written(), "abcd   |\n\u0160ari   |\n\u20ac\u20ac\u20ac\u20ac   |\n\U0001F600bcd   |\n");
}

TEST_F(TextReportTest, AValueThatFillsItsColumnSendsTheNextToTheNextLine) {
    ReportFile out;
    out.open(file());
    out.tab(3);
    out.print("1234");
    out.tab(7);
    out.print("exact");
    out.tab(10);
    out.print("late");
    out.endLine();
    out.close();
    EXPECT_EQ(written(), "  1234exact\n         late\n");
}

TEST_F(TextReportTest, LineBreaksInATextBecomeThePlatforms) {
    oneOfEach({{"Comments", "one\r\ntwo\nthree\rfour"}});
    EXPECT_THAT(text(), HasSubstr("\nComments: one\ntwo\nthree\nfour\n\n"));
}

TEST_F(TextReportTest, AClientLeftOutIsAHeadLine) {
    oneOfEach({{"NickName", "Pericle"}, {"BirthPlace", "Nis"}, {"Phone", "5"}});
    choices.IncludeClients = false;
    EXPECT_THAT(text(),
                StartsWith("Peric, Pera - Pericle\n" + std::string(60, '-') + "\n\n    Computer name: PC\n"));
}

TEST_F(TextReportTest, ComputersLeftOutGiveAClientListThatCountsAsFailed) {
    wholeShop();
    oneOfEach();
    addClient("Anic", "Ana");
    choices = {false, false};
    choices.IncludeClients = choices.IncludeComputers = false;
    EXPECT_EQ(write(), Result::Failed);
    const std::string rule = "\n" + std::string(60, '-') + "\n\n";
    EXPECT_EQ(written(), "Anic, Ana" + rule + "Peric, Pera" + rule);
}

TEST_F(TextReportTest, ServicesLeftOutChangeNothing) {
    oneOfEach();
    const std::string with = text();
    choices.IncludeServices = false;
    EXPECT_EQ(text(), with);
}

TEST_F(TextReportTest, EachGroupCanBeLeftOut) {
    const struct {
        bool ReportChoices::*choice;
        const char* first;
        const char* next;
    } groups[] = {
        {&ReportChoices::PrintPIDCardDetails, "\nPID card number: ", "\nFirm's name: "},
        {&ReportChoices::PrintAddressDetails, "\nFirm's name: ", "\nPhone number: "},
        {&ReportChoices::PrintContactDetails, "\nPhone number: ", "\nComments: "},
        {&ReportChoices::PrintClientComments, "\nComments: ", "\n    Computer name: "},
        {&ReportChoices::PrintMemoryDetails, "\n    Processor: ", "\n    Hard disc drive: "},
        {&ReportChoices::PrintStorageDetails, "\n    Hard disc drive: ", "\n    Video card: "},
        {&ReportChoices::PrintPheriperalDetails, "\n    Video card: ", "\n    Operating system: "},
        {&ReportChoices::PrintOSDetails, "\n    Operating system: ", "\n    Comments: "},
        {&ReportChoices::PrintComputerComments, "\n    Comments: ", "\n         Service(s):"},
    };
    selection.client = addFullClient();
    selection.computer = addFullComputer(selection.client);
    selection.service = addService(selection.computer);
    const std::string whole = text();
    for (const auto& group : groups) {
        choices.*group.choice = false;
        std::string expected = whole;
        const size_t from = expected.find(group.first);
        const size_t to = expected.find(group.next);
        ASSERT_LT(from, to) << group.first;
        ASSERT_NE(to, std::string::npos) << group.next;
        expected.erase(from, to - from);
        EXPECT_EQ(text(), expected) << group.first;
        choices.*group.choice = true;
    }
}

TEST_F(TextReportTest, ClientsAndComputersGoByNameServicesByTheirStart) {
    wholeShop();
    headsOnly();
    const int second = addClient("Zoric", "Zora");
    const int first = addClient("anic", "Ana");
    addComputer(first, "Zebra");
    const int computer = addComputer(first, "apple");
    addService(computer, {{"ServiceStarted", day(2026, 5, 2)}});
    addService(computer, {{"ServiceStarted", day(2026, 5, 1)}});
    addComputer(second, "Pear");
    const std::string all = text();
    size_t at = 0;
    for (const char* next : {"anic, Ana\n", "Computer name: apple\n", " 5/1/2026 ", " 5/2/2026 ",
                             "Computer name: Zebra\n", "No services at this time.\n", "Zoric, Zora\n",
                             "Computer name: Pear\n", "No services at this time.\n"}) {
        const size_t found = all.find(next, at);
        ASSERT_NE(found, std::string::npos) << next << all;
        at = found + 1;
    }
}

TEST_F(TextReportTest, NoComputersAndNoServicesAreSaid) {
    headsOnly();
    choices.ShowOnlySelectedClient = false;
    const int client = addClient("Anic", "Ana");
    addComputer(client, "PC");
    addClient("Peric", "Pera");
    EXPECT_EQ(text(), "Anic, Ana\n" + std::string(60, '-') + "\n\n    Computer name: PC\n    " +
                          std::string(50, '-') + "\n\n" + blanks(9) +
                          "Service(s): No services at this time.\n\nPeric, Pera\n" + std::string(60, '-') +
                          "\n\n    Computer name: There are no computers at the moment\n    " +
                          std::string(50, '-') + "\n\n");
}

TEST_F(TextReportTest, OnlyTheSelectedComputerAndServiceAreShown) {
    selection.client = addClient();
    addComputer(selection.client, "Other");
    selection.computer = addComputer(selection.client, "Mine");
    addService(selection.computer, {{"Comments", "not this"}});
    selection.service = addService(selection.computer, {{"Comments", "this one"}});
    EXPECT_THAT(text(), Not(HasSubstr("Computer name: Other")));
    EXPECT_THAT(written(), HasSubstr("this one"));
    EXPECT_THAT(written(), Not(HasSubstr("not this")));

    choices.ShowOnlySelectedService = false;
    EXPECT_THAT(text(), HasSubstr("not this"));

    choices.ShowOnlySelectedComputer = false;
    EXPECT_THAT(text(), HasSubstr("Computer name: Other"));
}

TEST_F(TextReportTest, ASelectionThatIsNotAmongThemShowsNone) {
    oneOfEach();
    selection.service = -1;
    EXPECT_THAT(text(), HasSubstr("Service(s): No services at this time.\n"));
    selection.computer += 1000;
    EXPECT_THAT(text(), HasSubstr("Computer name: There are no computers at the moment\n"));
}

TEST_F(TextReportTest, TheSelectionCountsOnlyUnderASelectedClient) {
    oneOfEach();
    selection.computer = selection.service = -1;
    choices.ShowOnlySelectedClient = false;
    EXPECT_THAT(text(), HasSubstr("Computer name: PC\n"));
    EXPECT_THAT(written(), HasSubstr("$100.00"));
}

TEST_F(TextReportTest, ANarrowedViewNarrowsTheReport) {
    wholeShop();
    headsOnly();
    const int shown = addClient("Anic", "Ana");
    const int machine = addComputer(shown, "Shown");
    addComputer(shown, "Hidden");
    const int service = addService(machine, {{"Comments", "shown"}});
    addService(machine, {{"Comments", "hidden"}});
    addClient("Peric", "Pera");
    const auto narrow = [&](const char* name, const std::string& text) {
        openDatabase().QueryDefs()[query(name)].setSQL(text);
    };
    narrow("QDCustomers", "SELECT * FROM Customers WHERE CustID=" + std::to_string(shown));
    narrow("QDComputers", "SELECT * FROM Computers WHERE MachineID=" + std::to_string(machine));
    narrow("QDServices", "SELECT * FROM Services WHERE ID=" + std::to_string(service));
    for (const bool aside : {false, true}) {
        readAhead = aside ? 1000 : 0;
        shelf.fromClients = aside ? 1 : 5000;
        choices.PrintComputerComments = false;
        EXPECT_THAT(text(), StartsWith("Anic, Ana\n"));
        EXPECT_THAT(written(), HasSubstr("Computer name: Shown\n"));
        EXPECT_THAT(written(), Not(HasSubstr("Hidden")));
        EXPECT_THAT(written(), HasSubstr("Comments: shown\n"));
        EXPECT_THAT(written(), Not(HasSubstr("hidden")));
        EXPECT_THAT(written(), Not(HasSubstr("Peric")));
    }
}

TEST_F(TextReportTest, ReadingAheadChangesNothing) {
    useDemo();
    wholeShop();
    readAhead = 0;
    const std::string oneByOne = text();
    EXPECT_THAT(oneByOne, HasSubstr("Service(s):\n"));
    for (const size_t ahead : {1, 7, 59, 60, 1000}) {
        readAhead = ahead;
        EXPECT_EQ(text() == oneByOne, true) << ahead;
    }
}

TEST_F(TextReportTest, PuttingRowsAsideChangesNothing) {
    useDemo();
    wholeShop();
    readAhead = 0;
    const std::string oneByOne = text();
    readAhead = 1000;
    shelf.fromClients = 1;
    for (const size_t group : {1, 7, 59, 60, 1000}) {
        for (const size_t memory : {0, 3000, 8'000'000}) {
            shelf.group = group;
            shelf.memory = memory;
            EXPECT_EQ(text() == oneByOne, true) << group << " in " << memory;
        }
    }
    choices.IncludeComputers = false;
    EXPECT_EQ(write(), Result::Failed) << "as it counts without computers";
    EXPECT_THAT(written(), Not(HasSubstr("Computer name")));
}

TEST_F(TextReportTest, AnEmptyShopTouchesNoFile) {
    EXPECT_EQ(write(), Result::Empty);
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(TextReportTest, AClientWhoIsGoneTouchesNoFile) {
    addClient();
    selection.client = 77;
    EXPECT_EQ(write(), Result::ClientMissing);
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(TextReportTest, ClientsThatCannotBeReadTouchNoFile) {
    oneOfEach();
    EXPECT_EQ(report().write("SELECT * FROM Nobody", file()), Result::NotRead);
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(TextReportTest, AFileThatCannotBeOpenedFails) {
    oneOfEach();
    QDir().mkpath(file());
    EXPECT_EQ(write(), Result::Failed);
}

TEST_F(TextReportTest, AnOlderReportIsReplaced) {
    oneOfEach();
    const std::string once = text();
    QFile(file()).resize(100000);
    EXPECT_EQ(text(), once);
}

TEST_F(TextReportTest, TheReportIsForItsUserAlone) {
    oneOfEach();
    const mode_t before = umask(0);
    EXPECT_EQ(write(), Result::Written);
    umask(before);
    EXPECT_EQ(QFile::permissions(file()) & (QFileDevice::ReadGroup | QFileDevice::ReadOther),
              QFileDevice::Permissions());
}

TEST_F(TextReportTest, AFullDiskFails) {
    ReportFile out;
    out.open("/dev/full");
    for (int i = 0; i < 100000; ++i) {
        out.print("something");
        out.endLine();
    }
    EXPECT_FALSE(out.isGood());
    try {
        out.close();
        FAIL() << "nothing was said";
    } catch (const platform::RunError& error) {
        EXPECT_EQ(error.number(), 61);
    }
}

TEST_F(TextReportTest, ComputersThatCannotBeReadFailAndTheClientStays) {
    oneOfEach();
    openDatabase().QueryDefs()[query("QDComputers")].setSQL("SELECT * FROM Nowhere");
    EXPECT_EQ(write(), Result::Failed);
    EXPECT_THAT(written(), StartsWith("Peric, Pera\n"));
    wholeShop();
    for (const size_t from : {5000, 1}) {
        shelf.fromClients = from;
        EXPECT_EQ(write(), Result::Failed);
        EXPECT_THAT(written(), StartsWith("Peric, Pera\n"));
    }
}

// Computers that can be read of one client and not of the other, told by the last one's outcome.
TEST_F(TextReportTest, FailureOfAnEarlierClientIsForgottenWithTheLast) {
    wholeShop();
    addComputer(addClient("Anic", "Ana"), "First");
    addComputer(addClient("Peric", "Pera"), "Last");
    readAhead = 0;
    const auto readable = [this](bool can) {
        openDatabase().QueryDefs()[query("QDComputers")].setSQL(can ? "SELECT * FROM Computers"
                                                                    : "SELECT * FROM Nowhere");
    };
    readable(false);
    EXPECT_EQ(write([&](std::int64_t, std::int64_t) {
                  readable(true);
                  return true;
              }),
              Result::Written);
    EXPECT_THAT(written(), Not(HasSubstr("Computer name: First\n")));
    EXPECT_THAT(written(), HasSubstr("Computer name: Last\n"));
    EXPECT_EQ(write([&](std::int64_t, std::int64_t) {
                  readable(false);
                  return true;
              }),
              Result::Failed);
    EXPECT_THAT(written(), HasSubstr("Computer name: First\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Computer name: Last\n")));
}

TEST_F(TextReportTest, LastClientWithoutAFieldCountsAsFailedToo) {
    headsOnly();
    choices.PrintContactDetails = true;
    choices.ShowOnlySelectedClient = false;
    const int first = addClient("Anic", "Ana");
    addClient("Peric", "Pera");
    openDatabase().QueryDefs()[query("QDCustomers")].setSQL(
        "SELECT CustID, Surname, GivenName FROM Customers");
    EXPECT_EQ(write(), Result::Failed);
    EXPECT_THAT(written(), HasSubstr("Peric, Pera\n"));
    choices.ShowOnlySelectedClient = true;
    selection.client = first;
    EXPECT_EQ(write(), Result::Failed);
    EXPECT_THAT(written(), StartsWith("Anic, Ana\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Phone number")));
}

TEST_F(TextReportTest, ARowWithoutAFieldLosesThatLineOnly) {
    oneOfEach({{"City", "Beograd"}}, {{"HD", "80G"}});
    openDatabase().QueryDefs()[query("QDComputers")].setSQL(
        "SELECT CustID, MachineID, MachineName, HD FROM Computers");
    EXPECT_EQ(write(), Result::Failed);
    EXPECT_THAT(written(), HasSubstr("    Hard disc drive:    80G\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Processor")));
    EXPECT_THAT(written(), HasSubstr("Service(s):\n"));
}

TEST_F(TextReportTest, TellsHowFarItIsAndCanBeBrokenOff) {
    wholeShop();
    for (const char* name : {"A", "B", "C"}) {
        addClient(name);
    }
    std::vector<std::int64_t> told;
    EXPECT_EQ(write([&](std::int64_t done, std::int64_t total) {
                  EXPECT_EQ(total, 3);
                  told.push_back(done);
                  return done < 2;
              }),
              Result::BrokenOff);
    EXPECT_EQ(told, (std::vector<std::int64_t>{1, 2}));
    EXPECT_FALSE(QFile::exists(file())) << "half a report looks like a whole one";
}

// The clients are read a few at a time while others go on working.
TEST_F(TextReportTest, WhoIsInItIsOfTheMomentItBegan) {
    wholeShop();
    readAhead = 1;
    addClient("Anic", "Ana");
    const int gone = addClient("Markovic", "Mara");
    addClient("Peric", "Pera");
    std::vector<std::int64_t> told;
    EXPECT_EQ(write([&](std::int64_t done, std::int64_t total) {
                  EXPECT_EQ(total, 3);
                  told.push_back(done);
                  if (done == 1) {
                      openDatabase().Execute("DELETE * FROM Customers WHERE CustID=" + std::to_string(gone));
                      addClient("Nikolic", "Nada");
                  }
                  return true;
              }),
              Result::Written);
    EXPECT_THAT(written(), StartsWith("Anic, Ana\n"));
    EXPECT_THAT(written(), HasSubstr("\nPeric, Pera\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Markovic")));
    EXPECT_THAT(written(), Not(HasSubstr("Nikolic")));
    EXPECT_EQ(told, (std::vector<std::int64_t>{1, 2, 3}));
}

// In a large shop all of it is of the moment when it began.
TEST_F(TextReportTest, WhatWasPutAsideStaysInIt) {
    wholeShop();
    readAhead = 1;
    shelf.fromClients = 1;
    addClient("Anic", "Ana");
    addService(addComputer(addClient("Peric", "Pera"), "Pear"), {{"Comments", "as it began"}});
    EXPECT_EQ(write([&](std::int64_t done, std::int64_t) {
                  if (done == 1) {
                      openDatabase().Execute("DELETE * FROM Customers");
                  }
                  return true;
              }),
              Result::Written);
    EXPECT_THAT(written(), HasSubstr("\nPeric, Pera\n"));
    EXPECT_THAT(written(), HasSubstr("Computer name: Pear\n"));
    EXPECT_THAT(written(), HasSubstr("as it began"));
}

// The windows have their turns also before the first client is written.
TEST_F(TextReportTest, CanBeBrokenOffWhileItReads) {
    data::DemoPlan plan;
    plan.clients = plan.computers = plan.services = 200;
    data::fillDemoShop(openDatabase(), plan);
    wholeShop();
    shelf.fromClients = 1;
    for (const int turns : {1, 4, 8, 11}) {  // finding the clients; putting them, computers, services aside
        int left = turns;
        EXPECT_EQ(write([&](std::int64_t done, std::int64_t total) {
                      EXPECT_EQ(done, 0);
                      EXPECT_EQ(total, 200);
                      return --left > 0;
                  }),
                  Result::BrokenOff);
        EXPECT_EQ(left, 0);
        EXPECT_FALSE(QFile::exists(file()));
    }
}

TEST_F(TextReportTest, ClientsThatCannotBeReadAnyMoreEndItAsFailed) {
    wholeShop();
    readAhead = 1;
    addClient("Anic", "Ana");
    addClient("Peric", "Pera");
    EXPECT_EQ(write([&](std::int64_t, std::int64_t) {
                  openDatabase().QueryDefs()[query("QDCustomers")].setSQL("SELECT * FROM Nowhere");
                  return true;
              }),
              Result::Failed);
    EXPECT_THAT(written(), StartsWith("Anic, Ana\n"));
    EXPECT_THAT(written(), Not(HasSubstr("Peric")));
}

TEST_F(TextReportTest, KindsWithoutANameAreLeftOut) {
    oneOfEach({}, {}, {{"ServiceTypes", "2|99|x|3"}});
    EXPECT_THAT(text(), HasSubstr("         Service(s): Cleaning, Repair\n"));
}

}  // namespace
