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
    if (comma) {
        for (QChar& letter : text) {
            letter = letter == ',' ? QChar('.') : letter == '.' ? QChar(',') : letter;
        }
    }
    return text;
}

const char* localeName(bool comma) {
    return comma ? "sr_Latn_RS" : "en_US";
}

// On paper
// ---------------------------------------------------------------------------------------------------------

struct Paper {
    std::array<const char*, 3> rows;  // price, tax, price with tax, amount; empty: there is no such row
    std::array<const char*, 7> sums;
    const char* words;
};

struct Drawn {
    const char* name;
    float quantity, price;
};

// The percents are 10 of discount and 5 of other costs on both.
struct Bill {
    const char* tax;
    float rate;
    std::array<Drawn, 3> drawn;
    Paper papers[2][3];  // in euro and in dinars; with no, one and two decimals
};

// 3 at 10.25 and 1.5 at 4.25 euro, which a computer holds to the last bit.
const Bill kExact = {
    "20",
    117.5F,
    {{{"Adapter", 3, 10.25F}, {"Modul", 1.5F, 4.25F}, {nullptr, 0, 0}}},
    {{{{"10 2 12 37", "4 1 5 8"}, {"37", "4", "33", "2", "35", "7", "=42"}, "cetrdesetdvaeur. i 0/100"},
      {{"10.3 2.1 12.3 36.9", "4.3 0.9 5.1 7.7"},
       {"37.1", "3.7", "33.4", "1.7", "35.1", "7.4", "=42.5"},
       "cetrdesetdvaeur. i 50/100"},
      {{"10.25 2.05 12.30 36.90", "4.25 0.85 5.10 7.65"},
       {"37.13", "3.71", "33.42", "1.67", "35.09", "7.43", "=42.52"},
       "cetrdesetdvaeur. i 52/100"}},
     {{{"1,204 241 1,445 4,336", "499 100 599 899"},
       {"4,362", "436", "3,926", "196", "4,122", "872", "=4,994"},
       "cetirihiljadedevetstotinadevedesetcetiridin. i 0/100"},
      {{"1,204.4 240.9 1,445.3 4,335.8", "499.4 99.9 599.3 898.9"},
       {"4,362.2", "436.2", "3,926.0", "196.3", "4,122.3", "872.4", "=4,994.7"},
       "cetirihiljadedevetstotinadevedesetcetiridin. i 70/100"},
      {{"1,204.38 240.88 1,445.25 4,335.75", "499.38 99.88 599.25 898.88"},
       {"4,362.19", "436.22", "3,925.97", "196.30", "4,122.27", "872.44", "=4,994.71"},
       "cetirihiljadedevetstotinadevedesetcetiridin. i 71/100"}}}};

// 3 at 19.99, 7 at 0.10 and 2 at 33.335 euro, none of which a computer holds but nearly, at 117.37 dinars.
// The file holds the last price as 33.33499908, and the document's statement counts on with that.
const Bill kEveryday = {
    "18",
    117.37F,
    {{{"Adapter", 3, 19.99F}, {"Kabl", 7, 0.1F}, {"Modul", 2, 33.335F}}},
    {{{{"20 4 24 71", "0 0 0 1", "33 6 39 79"},
       {"127", "13", "114", "6", "120", "23", "=143"},
       "stotinucetrdesettrieur. i 0/100"},
      {{"20.0 3.6 23.6 70.8", "0.1 0.0 0.1 0.8", "33.3 6.0 39.3 78.7"},
       {"127.3", "12.7", "114.6", "5.7", "120.3", "22.9", "=143.2"},
       "stotinucetrdesettrieur. i 20/100"},
      {{"19.99 3.60 23.59 70.76", "0.10 0.02 0.12 0.83", "33.33 6.00 39.34 78.67"},
       {"127.34", "12.73", "114.61", "5.73", "120.34", "22.92", "=143.26"},
       "stotinucetrdesettrieur. i 26/100"}},
     {{{"2,346 422 2,769 8,306", "12 2 14 97", "3,913 704 4,617 9,234"},
       {"14,946", "1,495", "13,451", "673", "14,124", "2,690", "=16,814"},
       "šestnaesthiljadaosamstotinacetrnaestdin. i 0/100"},
      {{"2,346.2 422.3 2,768.5 8,305.6", "11.7 2.1 13.8 96.9", "3,912.5 704.3 4,616.8 9,233.6"},
       {"14,945.9", "1,494.6", "13,451.3", "672.6", "14,123.9", "2,690.3", "=16,814.2"},
       "šestnaesthiljadaosamstotinacetrnaestdin. i 20/100"},
      {{"2,346.23 422.32 2,768.55 8,305.64", "11.74 2.11 13.85 96.95", "3,912.53 704.26 4,616.78 9,233.57"},
       {"14,945.90", "1,494.59", "13,451.31", "672.57", "14,123.88", "2,690.26", "=16,814.14"},
       "šestnaesthiljadaosamstotinacetrnaestdin. i 14/100"}}}};

class DocumentAmounts : public DocumentWindow,
                        public ::testing::WithParamInterface<std::tuple<bool, bool, bool, int>> {
 protected:
    QStringList linesOf(const Bill& bill, const Paper& paper, bool comma) {
        const char* const labels[] = {"Ukupno bez PDV-a:",
                                      "Ukupan rabat (10%):",
                                      "Ukupno sa rabatom:",
                                      "Ukupni ostali troskovi (5%):",
                                      "Ukupno sa ostalim troskovima:",
                                      "Ukupan PDV:",
                                      "TOTAL za uplatu:"};
        QStringList lines{QString("Slovima: ") + paper.words};
        for (size_t i = 0; i < paper.sums.size(); ++i) {
            lines += QString(labels[i]) + ' ' + local(paper.sums[i], comma);
        }
        for (size_t i = 0; i < paper.rows.size(); ++i) {
            const Drawn& row = bill.drawn[i];
            if (row.name) {
                lines += QString("%1 Memorija, Kingston, %2 Kom. ").arg(i + 1).arg(row.name) +
                         local(row.quantity == 1.5F ? "1.5" : QString::number(int(row.quantity)), comma) +
                         ' ' + local(paper.rows[i], comma);
            }
        }
        return lines;
    }
};

TEST_P(DocumentAmounts, StandOnPaperAsCountedByHand) {
    const auto& [exact, comma, dinars, decimals] = GetParam();
    const LocaleScope locale(localeName(comma));
    const Bill& bill = exact ? kExact : kEveryday;
    CeneDinarske = dinars;
    KursKupovni = bill.rate;
    view.discount = "10";
    view.tax = bill.tax;
    for (const Drawn& row : bill.drawn) {
        if (row.name) {
            draw(row.name, row.quantity, row.price);
        }
    }
    proForma([&] {
        choose(2, decimals);
        check(0)->setChecked(true);
        text2(0)->setText("5");
        print();
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    const QStringList lines = documentText().split('\n');
    for (const QString& line : linesOf(bill, bill.papers[dinars ? 1 : 0][decimals], comma)) {
        EXPECT_TRUE(lines.contains(line)) << line.toStdString() << "\n" << documentText().toStdString();
    }
}

std::string paramName(const ::testing::TestParamInfo<std::tuple<bool, bool, bool, int>>& info) {
    const auto& [exact, comma, dinars, decimals] = info.param;
    return std::string(exact ? "Exact" : "Everyday") + (comma ? "Comma" : "Point") +
           (dinars ? "Dinars" : "Euro") + std::to_string(decimals);
}

INSTANTIATE_TEST_SUITE_P(Everywhere, DocumentAmounts,
                         ::testing::Combine(::testing::Bool(), ::testing::Bool(), ::testing::Bool(),
                                            ::testing::Range(0, 3)),
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
            EXPECT_EQ(problems->ListView1->columns().text(5), CeneDinarske ? "Cena [DIN]" : "Cena [EUR]");
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
