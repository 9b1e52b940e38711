#include "records/service_columns.h"

#include <gtest/gtest.h>

#include <QLocale>

#include "common/settings.h"
#include "platform/system/dates.h"

using dao::Currency;
using dao::Date;
using service_row::Figures;

namespace {

Date day(int year, int month, int dayOfMonth) {
    return platform::fromQDate(QDate(year, month, dayOfMonth));
}

Figures job(double price, double paid, float discount = 0, float gst = 0) {
    Figures figures;
    figures.price = Currency::fromDouble(price);
    figures.paid = Currency::fromDouble(paid);
    figures.discount = discount;
    figures.gst = gst;
    return figures;
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

TEST_F(ServiceColumns, RowOfTheFileIsReadByTheNamesOfItsColumns) {
    Figures figures = job(1000, 40, 12.5F, 18);
    figures.toBeFinished = day(2026, 3, 9);
    figures.finished = day(2026, 3, 7);
    const platform::ListItem item = itemOf({7, day(2026, 3, 3), figures, "2|5", "Fan"});
    const ServiceCells cells(item);
    EXPECT_EQ(cells.serviceId(), 7);
    EXPECT_EQ(cells.started(), "3/3/2026");
    EXPECT_EQ(cells.toBeFinished(), "3/9/2026");
    EXPECT_EQ(cells.finished(), "3/7/2026");
    EXPECT_EQ(cells.price(), "1,000.00");
    EXPECT_EQ(cells.discount(), "12.5");
    EXPECT_EQ(cells.tax(), "18");
    EXPECT_EQ(cells.paid(), "40.00");
    EXPECT_EQ(cells.types(), "2|5");
}

TEST_F(ServiceColumns, RowOfTheEditorIsReadByTheSameNames) {
    platform::ListItem item;
    item.Key = "K7";
    showTyped(item, {"3/3/2026", "3/9/2026", "", 1000, 12.5F, 18, 40, "2|5", "Fan"});
    const ServiceCells cells(item);
    EXPECT_EQ(cells.started(), "3/3/2026");
    EXPECT_EQ(cells.toBeFinished(), "3/9/2026");
    EXPECT_EQ(cells.finished(), "");
    EXPECT_EQ(cells.price(), "1,000.00");
    EXPECT_EQ(cells.discount(), "12.5");
    EXPECT_EQ(cells.tax(), "18");
    EXPECT_EQ(cells.paid(), "40.00");
    EXPECT_EQ(item.Key, "K7");
    EXPECT_EQ(item.SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(item.Tag, "2|5##Fan");
}

TEST_F(ServiceColumns, TypedJobIsDoneFromItsDateAndPaidFromItsAmounts) {
    platform::ListItem item;
    showTyped(item, {"3/3/2026", "", "3/9/2026", 100, 10, 18, 106.15F, "1", ""});
    EXPECT_EQ(item.SmallIcon, "FinishedPayed");
    showTyped(item, {"3/3/2026", "", "3/9/2026", 100, 10, 18, 106, "1", ""});
    EXPECT_EQ(item.SmallIcon, "FinishedNotPayed");
    showTyped(item, {"3/3/2026", "", "", 100, 10, 18, 106.15F, "1", ""});
    EXPECT_EQ(item.SmallIcon, "NotFinishedPayed");
}

TEST_F(ServiceColumns, ARowThatIsGoneHasEmptyCells) {
    const platform::ListItem gone;
    EXPECT_EQ(cellOf(gone, ServiceColumn::Started), "");
    EXPECT_EQ(cellOf(gone, ServiceColumn::Paid), "");
}

TEST_F(ServiceColumns, RowShowsTextsInTheUsersForm) {
    Figures figures = job(1234567.891, 1000, 12.5F, 18);
    figures.toBeFinished = day(2026, 3, 9);
    figures.finished = service_row::kEmptyDate;
    const auto item = itemOf({7, day(2026, 3, 3), figures, "2|5", "Fan ## noise"});
    EXPECT_EQ(item.Key, "K7");
    EXPECT_EQ(item.Text, "3/3/2026");
    EXPECT_EQ(item.SmallIcon, "NotFinishedNotPayed");
    EXPECT_EQ(item.SubItems(1), "3/9/2026");
    EXPECT_EQ(item.SubItems(2), "");
    EXPECT_EQ(item.SubItems(3), "1,234,567.89");
    EXPECT_EQ(item.SubItems(4), "12.5");
    EXPECT_EQ(item.SubItems(5), "18");
    EXPECT_EQ(item.SubItems(6), "1,000.00");
    EXPECT_EQ(item.Tag, "2|5##Fan ## noise");

    use("sr_Latn_RS");
    const auto serbian = itemOf({7, day(2026, 3, 3), figures, "1", ""});
    EXPECT_EQ(serbian.SubItems(3), "1.234.567,89");
    EXPECT_EQ(serbian.SubItems(4), "12,5");
}

TEST_F(ServiceColumns, DateBefore1990IsAnEmptyCell) {
    Figures figures = job(10, 10);
    figures.toBeFinished = day(1950, 5, 5);
    figures.finished = day(1989, 12, 31);
    const auto item = itemOf({1, std::nullopt, figures, "", ""});
    EXPECT_EQ(item.Text, "");
    EXPECT_EQ(item.SubItems(1), "");
    EXPECT_EQ(item.SubItems(2), "");
    EXPECT_EQ(item.SmallIcon, "NotFinishedPayed");
}

TEST_F(ServiceColumns, AmountTooLargeToCountIsADebt) {
    Figures figures = job(0, 0, 0, 99);
    figures.price = Currency::fromScaled(9'000'000'000'000'000'000);
    EXPECT_EQ(itemOf({1, std::nullopt, figures, "", ""}).SmallIcon, "NotFinishedNotPayed");
}

}  // namespace
