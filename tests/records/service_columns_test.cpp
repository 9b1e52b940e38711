#include "records/service_columns.h"

#include <gtest/gtest.h>

#include <QLocale>

#include "common/settings.h"
#include "platform/system/dates.h"
#include "support/letters.h"

using dao::Currency;
using dao::Date;

namespace {

Date day(int year, int month, int dayOfMonth) {
    return platform::fromQDate(QDate(year, month, dayOfMonth));
}

Currency money(double amount) {
    return Currency::fromDouble(amount);
}

StoredService job(double price, double paid, float discount = 0, float gst = 0) {
    StoredService service{.id = 7};
    service.values[ServiceColumn::Price] = money(price);
    service.values[ServiceColumn::Paid] = money(paid);
    service.values[ServiceColumn::Discount] = discount;
    service.values[ServiceColumn::Tax] = gst;
    return service;
}

// Begun on 3 March 2026, due six days later, done on the day given.
StoredService march(StoredService service, Date finished) {
    service.values[ServiceColumn::Started] = day(2026, 3, 3);
    service.values[ServiceColumn::ToBeFinished] = day(2026, 3, 9);
    service.values[ServiceColumn::Finished] = finished;
    service.values[ServiceColumn::Types] = "2|5";
    service.values[ServiceColumn::Comments] = "Fan ## noise";
    return service;
}

ServiceTexts typed(const char* finished, const char* price, const char* paid, const char* discount) {
    ServiceTexts texts;
    texts[ServiceColumn::Started] = "3/3/2026";
    texts[ServiceColumn::ToBeFinished] = "3/9/2026";
    texts[ServiceColumn::Finished] = finished;
    texts[ServiceColumn::Price] = price;
    texts[ServiceColumn::Paid] = paid;
    texts[ServiceColumn::Discount] = discount;
    texts[ServiceColumn::Tax] = "18";
    texts[ServiceColumn::Types] = "2|5";
    texts[ServiceColumn::Comments] = "Fan";
    return texts;
}

struct ServiceColumns : ::testing::Test {
    void SetUp() override { use("en_US"); }
    void TearDown() override { QLocale::setDefault(before_); }
    static void use(const char* locale) { QLocale::setDefault(QLocale(QLatin1String(locale))); }

 private:
    QLocale before_;
};

TEST_F(ServiceColumns, EachNameGivesTheFieldOfItsColumn) {
    const struct {
        ServiceColumn column;
        const char* field;
        bool isMoney;
    } rows[] = {
        {ServiceColumn::Started, "ServiceStarted", false},
        {ServiceColumn::ToBeFinished, "ServiceToBeFinished", false},
        {ServiceColumn::Finished, "ServiceFinished", false},
        {ServiceColumn::Price, "Price", true},
        {ServiceColumn::Discount, "Discount", false},
        {ServiceColumn::Tax, "GST", false},
        {ServiceColumn::Paid, "Paid", true},
    };
    EXPECT_EQ(serviceColumns().size(), std::size(rows));
    for (const auto& row : rows) {
        EXPECT_EQ(fieldOf(row.column), row.field);
        EXPECT_EQ(serviceColumns()[static_cast<size_t>(row.column)].isMoney, row.isMoney) << row.field;
    }
}

TEST_F(ServiceColumns, SettingsStartWithEqualWidthsInTheOrderOfTheTable) {
    EXPECT_EQ(settings::text(settings::LVWColumnWidths, defaultWidths(serviceColumns())),
              "1440;1440;1440;1440;1440;1440;1440");
    EXPECT_EQ(settings::text(settings::LVWColumnPositions, defaultPositions(serviceColumns())),
              "1;2;3;4;5;6;7");
}

TEST_F(ServiceColumns, DatesAndHeadersFitAtEverySizeOfLettersAndInEveryLanguage) {
    expectNothingCut(serviceColumns(),
                     [] { return itemOf(march(job(123456.78, 123456.78), day(2026, 12, 30))); });
}

TEST_F(ServiceColumns, RowOfTheFileIsReadByTheNamesOfItsColumns) {
    const platform::ListItem item = itemOf(march(job(1000, 40, 12.5F, 18), day(2026, 3, 7)));
    const ServiceCells cells(item);
    EXPECT_EQ(cells.serviceId(), 7);
    EXPECT_EQ(cells.text(ServiceColumn::Started), "3/3/2026");
    EXPECT_EQ(cells.text(ServiceColumn::ToBeFinished), "3/9/2026");
    EXPECT_EQ(cells.text(ServiceColumn::Finished), "3/7/2026");
    EXPECT_EQ(cells.text(ServiceColumn::Price), "1,000.00");
    EXPECT_EQ(cells.text(ServiceColumn::Discount), "12.5");
    EXPECT_EQ(cells.text(ServiceColumn::Tax), "18");
    EXPECT_EQ(cells.text(ServiceColumn::Paid), "40.00");
    EXPECT_EQ(cells.text(ServiceColumn::Types), "2|5");
    EXPECT_EQ(cells.text(ServiceColumn::Comments), "Fan ## noise");
}

TEST_F(ServiceColumns, RowOfTheEditorIsReadByTheSameNames) {
    platform::ListItem item;
    item.Key = "K7";
    showTyped(item, typed("", "1000", "40", "12.5"));
    const ServiceCells cells(item);
    EXPECT_EQ(cells.text(ServiceColumn::Started), "3/3/2026");
    EXPECT_EQ(cells.text(ServiceColumn::ToBeFinished), "3/9/2026");
    EXPECT_EQ(cells.text(ServiceColumn::Finished), "");
    EXPECT_EQ(cells.text(ServiceColumn::Price), "1,000.00");
    EXPECT_EQ(cells.text(ServiceColumn::Discount), "12.5");
    EXPECT_EQ(cells.text(ServiceColumn::Tax), "18");
    EXPECT_EQ(cells.text(ServiceColumn::Paid), "40.00");
    EXPECT_EQ(item.Key, "K7");
    EXPECT_EQ(item.SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(item.Tag, "2|5##Fan");
}

TEST_F(ServiceColumns, TypedJobIsDoneFromItsDateAndPaidFromItsAmounts) {
    platform::ListItem item;
    showTyped(item, typed("3/9/2026", "100", "106.15", "10"));
    EXPECT_EQ(item.SmallIcon, "FinishedPayed");
    showTyped(item, typed("3/9/2026", "100", "106", "10"));
    EXPECT_EQ(item.SmallIcon, "FinishedNotPayed");
    showTyped(item, typed("", "100", "106.15", "10"));
    EXPECT_EQ(item.SmallIcon, "NotFinishedPayed");
}

TEST_F(ServiceColumns, ARowThatIsGoneHasEmptyCells) {
    const platform::ListItem gone;
    EXPECT_EQ(cellOf(gone, ServiceColumn::Started), "");
    EXPECT_EQ(cellOf(gone, ServiceColumn::Paid), "");
}

TEST_F(ServiceColumns, RowShowsTextsInTheUsersForm) {
    const StoredService service = march(job(1234567.891, 1000, 12.5F, 18), service_row::kEmptyDate);
    const auto item = itemOf(service);
    EXPECT_EQ(item.Key, "K7");
    EXPECT_EQ(item.Text, "3/3/2026");
    EXPECT_EQ(item.SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(cellOf(item, ServiceColumn::ToBeFinished), "3/9/2026");
    EXPECT_EQ(cellOf(item, ServiceColumn::Finished), "");
    EXPECT_EQ(cellOf(item, ServiceColumn::Price), "1,234,567.89");
    EXPECT_EQ(cellOf(item, ServiceColumn::Discount), "12.5");
    EXPECT_EQ(cellOf(item, ServiceColumn::Tax), "18");
    EXPECT_EQ(cellOf(item, ServiceColumn::Paid), "1,000.00");
    EXPECT_EQ(item.Tag, "2|5##Fan ## noise");

    use("sr_Latn_RS");
    const auto serbian = itemOf(service);
    EXPECT_EQ(cellOf(serbian, ServiceColumn::Price), "1.234.567,89");
    EXPECT_EQ(cellOf(serbian, ServiceColumn::Discount), "12,5");
}

TEST_F(ServiceColumns, DateBefore1990IsAnEmptyCell) {
    StoredService service = job(10, 10);
    service.values[ServiceColumn::ToBeFinished] = day(1950, 5, 5);
    service.values[ServiceColumn::Finished] = day(1989, 12, 31);
    const auto item = itemOf(service);
    EXPECT_EQ(item.Text, "");
    EXPECT_EQ(cellOf(item, ServiceColumn::ToBeFinished), "");
    EXPECT_EQ(cellOf(item, ServiceColumn::Finished), "");
    EXPECT_EQ(item.SmallIcon, "NotFinishedPayed");
}

TEST_F(ServiceColumns, AmountTooLargeToCountIsADebt) {
    StoredService service = job(0, 0, 0, 99);
    service.values[ServiceColumn::Price] = Currency::fromScaled(9'000'000'000'000'000'000);
    EXPECT_EQ(itemOf(service).SmallIcon, "NotFinishedNotPayed");
}

TEST_F(ServiceColumns, AServiceWithoutAnyReadableValueIsAnUnpaidJobOfNothing) {
    const auto item = itemOf({.id = 1});
    EXPECT_EQ(item.Text, "");
    EXPECT_EQ(item.subItems, QStringList({"", "", "0.00", "0", "0", "0.00"}));
    EXPECT_EQ(item.SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(item.Tag, "##");
}

}  // namespace
