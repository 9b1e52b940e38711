// One requisition, counted out by hand, through every window that shows its amounts: in euro and in dinars at
// a rate with a fraction, under a point and under a comma, and on paper with no, one and two decimals.
#include <gtest/gtest.h>

#include <array>

#include "documents/document_window.h"
#include "documents/frmTrebovanjeError.h"
#include "documents/requisition_window.h"
#include "platform/system/locale_scope.h"

namespace {

// The texts below are written as under a point.
QString local(QString text, bool comma) {
    if (comma)
        for (QChar& letter : text)
            letter = letter == ',' ? QChar('.') : letter == '.' ? QChar(',') : letter;
    return text;
}

const char* localeName(bool comma) {
    return comma ? "sr_Latn_RS" : "en_US";
}

// On paper
// ---------------------------------------------------------------------------------------------------------

struct Paper {
    const char *adapter, *modul;  // price, tax, price with tax, amount
    std::array<const char*, 7> sums;
    const char* words;
};

// 3 at 10.25 and 1.5 at 4.25 euro; 20 % tax, 10 % discount, 5 % other costs; 117.5 dinars to the euro.
constexpr Paper kPapers[2][3] = {
    {{"10 2 12 37", "4 1 5 8", {"37", "4", "33", "2", "35", "7", "=42"}, "cetrdesetdvaeur. i 0/100"},
     {"10.3 2.1 12.3 36.9",
      "4.3 0.9 5.1 7.7",
      {"37.1", "3.7", "33.4", "1.7", "35.1", "7.4", "=42.5"},
      "cetrdesetdvaeur. i 50/100"},
     {"10.25 2.05 12.30 36.90",
      "4.25 0.85 5.10 7.65",
      {"37.13", "3.71", "33.42", "1.67", "35.09", "7.43", "=42.52"},
      "cetrdesetdvaeur. i 52/100"}},
    {{"1,204 241 1,445 4,336",
      "499 100 599 899",
      {"4,362", "436", "3,926", "196", "4,122", "872", "=4,994"},
      "cetirihiljadedevetstotinadevedesetcetiridin. i 0/100"},
     {"1,204.4 240.9 1,445.3 4,335.8",
      "499.4 99.9 599.3 898.9",
      {"4,362.2", "436.2", "3,926.0", "196.3", "4,122.3", "872.4", "=4,994.7"},
      "cetirihiljadedevetstotinadevedesetcetiridin. i 70/100"},
     {"1,204.38 240.88 1,445.25 4,335.75",
      "499.38 99.88 599.25 898.88",
      {"4,362.19", "436.22", "3,925.97", "196.30", "4,122.27", "872.44", "=4,994.71"},
      "cetirihiljadedevetstotinadevedesetcetiridin. i 71/100"}}};

class DocumentAmounts : public DocumentWindow,
                        public ::testing::WithParamInterface<std::tuple<bool, bool, int>> {};

TEST_P(DocumentAmounts, StandOnPaperAsCountedByHand) {
    const auto& [comma, dinars, decimals] = GetParam();
    const LocaleScope locale(localeName(comma));
    const Paper& paper = kPapers[dinars ? 1 : 0][decimals];
    CeneDinarske = dinars;
    view.discount = "10";
    view.tax = "20";
    draw("Adapter", 3, 10.25F);
    draw("Modul", 1.5F, 4.25F);
    proForma([&] {
        combo(2)->setCurrentIndex(decimals);
        check(0)->setChecked(true);
        text2(0)->setText("5");
        print();
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    const QString text = documentText();
    const char* const labels[] = {"Ukupno bez PDV-a:",
                                  "Ukupan rabat (10%):",
                                  "Ukupno sa rabatom:",
                                  "Ukupni ostali troskovi (5%):",
                                  "Ukupno sa ostalim troskovima:",
                                  "Ukupan PDV:",
                                  "TOTAL za uplatu:"};
    QStringList wanted{"1 Memorija, Kingston, Adapter Kom. 3 " + local(paper.adapter, comma),
                       "2 Memorija, Kingston, Modul Kom. " + local("1.5 ", comma) + local(paper.modul, comma),
                       QString("Slovima: ") + paper.words};
    for (size_t i = 0; i < paper.sums.size(); ++i)
        wanted += QString(labels[i]) + ' ' + local(paper.sums[i], comma);
    const QStringList lines = text.split('\n');
    for (const QString& line : wanted)
        EXPECT_TRUE(lines.contains(line)) << line.toStdString() << "\n" << text.toStdString();
}

std::string paramName(const ::testing::TestParamInfo<std::tuple<bool, bool, int>>& info) {
    const auto& [comma, dinars, decimals] = info.param;
    return std::string(comma ? "Comma" : "Point") + (dinars ? "Dinars" : "Euro") + std::to_string(decimals);
}

INSTANTIATE_TEST_SUITE_P(Everywhere, DocumentAmounts,
                         ::testing::Combine(::testing::Bool(), ::testing::Bool(), ::testing::Range(0, 3)),
                         paramName);

// On the requisition and its lists
// ---------------------------------------------------------------------------------------------------------

class RequisitionAmounts : public RequisitionWindow,
                           public ::testing::WithParamInterface<std::tuple<bool, bool>> {
 protected:
    void SetUp() override {
        RequisitionWindow::SetUp();
        const auto& [isComma, isDinars] = GetParam();
        comma = isComma;
        locale_ = std::make_unique<LocaleScope>(localeName(comma));
        CeneDinarske = isDinars;
        KursKupovni = 117.5F;
        price = isDinars ? "1,204.38" : "10.25";
        amount = isDinars ? "3,613.13" : "30.75";
        cheap = isDinars ? "499.38" : "4.25";
        cheapAmount = isDinars ? "749.06" : "6.38";
        sum = isDinars ? "4,362.19" : "37.13";
        adapter = addProduct("Adapter", 5);
        modul = addProduct("Modul", 5);
        draw(adapter, "Asus", "Adapter", 10.25F, 3);
        draw(modul, "Kingston", "Modul", 4.25F, 1.5F);
    }
    void TearDown() override {
        unload();
        locale_.reset();
        RequisitionWindow::TearDown();
    }
    QString in(const QString& text) const { return local(text, comma); }

    bool comma = false;
    int adapter = 0, modul = 0;
    QString price, amount, cheap, cheapAmount, sum;

 private:
    std::unique_ptr<LocaleScope> locale_;
};

TEST_P(RequisitionAmounts, StandInTheListAndInItsTotal) {
    show([&] {
        EXPECT_EQ(list().item(key(adapter)).subItems.mid(4).join('|'), in(price) + "|3|" + in(amount));
        EXPECT_EQ(list().item(key(modul)).subItems.mid(4).join('|'),
                  in(cheap) + '|' + in("1.5") + '|' + in(cheapAmount));
        EXPECT_EQ(total(), in(sum));
    });
    EXPECT_EQ(win().TotalForPayment(), QString(sum).remove(',').toFloat());
    EXPECT_EQ(valueOf("InvoiceData", "OpremaID", adapter, "Cena").asSingle(), 10.25F)
        << "the file keeps euro";
}

TEST_P(RequisitionAmounts, StandInThePrintedList) {
    show([&] { tool("print"); });
    const QString text = fileText("PriceList.txt");
    EXPECT_TRUE(text.contains("\tAdapter\t\t3x\t" + in(price) + "\t")) << text.toStdString();
    EXPECT_TRUE(text.contains("\tModul\t\t" + in("1.5") + "x\t" + in(cheap) + "\t")) << text.toStdString();
    EXPECT_TRUE(text.contains(in(cheapAmount) + "\n")) << text.toStdString();
    EXPECT_TRUE(text.endsWith("Ukupno: " + in(sum) + "\n")) << text.toStdString();
}

TEST_P(RequisitionAmounts, GoBackToStockToTheLastPart) {
    show([&] { press(Qt::Key_Delete, Qt::ShiftModifier); });
    EXPECT_EQ(stockOf(adapter), 8.0F);
    EXPECT_EQ(stockOf(modul), 6.5F);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_P(RequisitionAmounts, StandOnTheListOfCriticalProducts) {
    auto other = otherWorkstation("DELETE * FROM Oprema WHERE Naziv='Modul'");
    show([&] {
        doIts(*other);
        QTimer::singleShot(50, &win(), [this] {
            auto* problems = qobject_cast<frmTrebovanjeError*>(QApplication::activeModalWidget());
            ASSERT_NE(problems, nullptr);
            EXPECT_EQ(problems->ListView1->columnText(5), CeneDinarske ? "Cena [DIN]" : "Cena [EUR]");
            EXPECT_EQ(problems->ListView1->item(1).subItems.mid(3).join('|'), in(cheap) + '|' + in("1.5"));
            QTest::mouseClick(problems->Command1[1], Qt::LeftButton);
            problems->reject();
        });
        press(Qt::Key_Delete, Qt::ShiftModifier);
    });
    EXPECT_TRUE(fileText("TError.txt")
                    .endsWith((CeneDinarske ? "Cena [DIN]: " : "Cena [EUR]: ") + in(cheap) + "  x  " +
                              in("1.5") + " kom.\n\n"))
        << fileText("TError.txt").toStdString();
}

std::string currencyName(const ::testing::TestParamInfo<std::tuple<bool, bool>>& info) {
    const auto& [comma, dinars] = info.param;
    return std::string(comma ? "Comma" : "Point") + (dinars ? "Dinars" : "Euro");
}

INSTANTIATE_TEST_SUITE_P(Everywhere, RequisitionAmounts,
                         ::testing::Combine(::testing::Bool(), ::testing::Bool()), currencyName);

}  // namespace
