#include "documents/amount_in_words.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QStringList>

#include "common/modMain.h"
#include "platform/system/locale_scope.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"

namespace {

QString words(const QString& amount, bool dinars = true) {
    return AmountInWords(amount, dinars);
}

QString wordsOf(qint64 whole) {
    return words(QString::number(whole) + ".00");
}

// The words of one to nine, and how each stands before "naest", "deset" and "stotina", written out by hand:
// as a bookkeeper would look them up.
struct Words {
    QStringList one{"",          "jedan",    "dva",       "tri",        "cetiri",    "pet",       "šest",
                    "sedam",     "osam",     "devet",     "deset",      "jedanaest", "dvanaest",  "trinaest",
                    "cetrnaest", "petnaest", "šestnaest", "sedamnaest", "osamnaest", "devetnaest"};
    QStringList feminine{"", "jedna", "dve", "tri", "cetiri", "pet", "šest", "sedam", "osam", "devet"};
    QStringList tens{"",        "",         "dvadeset",   "trideset",  "cetrdeset",
                     "pedeset", "šezdeset", "sedamdeset", "osamdeset", "devedeset"};
    QStringList hundreds{"",           "stotinu",     "dvestotine",   "tristotine",  "cetiristotine",
                         "petstotina", "šeststotina", "sedamstotina", "osamstotina", "devetstotina"};

    QString upTo999(int number, bool asFeminine) const {
        const int rest = number % 100;
        QString text = hundreds[number / 100];
        if (rest < 20 && rest > 9) {
            return text + one[rest];
        }
        return text + tens[rest / 10] + (asFeminine ? feminine : one)[rest % 10];
    }
    QString upTo999999(int number) const {
        QString text;
        if (number >= 1000) {
            const int thousands = number / 1000;
            const bool few = QStringList{"2", "3", "4"}.contains(QString::number(thousands % 10)) &&
                             !(thousands % 100 >= 12 && thousands % 100 <= 14);
            text = upTo999(thousands, true) + (few ? "hiljade" : "hiljada");
        }
        return text + upTo999(number % 1000, false);
    }
};

}  // namespace

TEST(AmountInWordsTest, ZeroIsNulaWithoutACurrency) {
    EXPECT_EQ(words("0.00", true), "nula");
    EXPECT_EQ(words("0", false), "nula");
    EXPECT_EQ(words("", true), "nula");
}

TEST(AmountInWordsTest, AmountsOfEveryDay) {
    EXPECT_EQ(words("1.00"), "jedandin. i 0/100");
    EXPECT_EQ(words("1,234.50"), "jednahiljadadvestotinetridesetcetiridin. i 50/100");
    EXPECT_EQ(words("21,000.05", false), "dvadesetjednahiljadaeur. i 5/100");
    EXPECT_EQ(words("2,000,000.00"), "dvamilionadin. i 0/100");
    EXPECT_EQ(words("0.50"), "din. i 50/100");
    EXPECT_EQ(words("225"), "dvestotinedvadesetpetdin. i 0/100");
}

TEST(AmountInWordsTest, EveryAmountToTenThousandByTheBookkeepersTable) {
    const Words table;
    for (int number = 1; number <= 9999; ++number) {
        QString text = QString::number(number) + ".00";
        if (number > 999) {
            text.insert(1, ',');
        }
        ASSERT_EQ(words(text, number % 2 == 0),
                  table.upTo999999(number) + (number % 2 == 0 ? "din. i 0/100" : "eur. i 0/100"))
            << number;
    }
}

TEST(AmountInWordsTest, EveryThousandByTheBookkeepersTable) {
    const Words table;
    for (int thousands = 1; thousands <= 999; ++thousands) {
        ASSERT_EQ(wordsOf(thousands * 1000 + 7), table.upTo999999(thousands * 1000 + 7) + "din. i 0/100");
    }
}

TEST(AmountInWordsTest, EveryEndingOfTheThousands) {
    const QList<std::pair<int, QString>> rows = {{1, "jednahiljada"},
                                                 {2, "dvehiljade"},
                                                 {3, "trihiljade"},
                                                 {4, "cetirihiljade"},
                                                 {5, "pethiljada"},
                                                 {10, "desethiljada"},
                                                 {11, "jedanaesthiljada"},
                                                 {12, "dvanaesthiljada"},
                                                 {14, "cetrnaesthiljada"},
                                                 {16, "šestnaesthiljada"},
                                                 {18, "osamnaesthiljada"},
                                                 {19, "devetnaesthiljada"},
                                                 {20, "dvadesethiljada"},
                                                 {21, "dvadesetjednahiljada"},
                                                 {22, "dvadesetdvehiljade"},
                                                 {100, "stotinuhiljada"},
                                                 {101, "stotinujednahiljada"},
                                                 {112, "stotinudvanaesthiljada"},
                                                 {302, "tristotinedvehiljade"}};
    for (const auto& [count, text] : rows) {
        EXPECT_EQ(wordsOf(count * 1000LL), text + "din. i 0/100");
    }
}

TEST(AmountInWordsTest, EveryEndingOfTheMillions) {
    const QList<std::pair<int, QString>> rows = {{1, "jedanmilion"},
                                                 {2, "dvamiliona"},
                                                 {5, "petmiliona"},
                                                 {10, "desetmiliona"},
                                                 {11, "jedanaestmilion"},
                                                 {12, "dvanaestmiliona"},
                                                 {18, "osamnaestmiliona"},
                                                 {19, "devetnaestmiliona"},
                                                 {20, "dvadesetmiliona"},
                                                 {21, "dvadesetjedanmilion"},
                                                 {111, "stotinujedanaestmilion"},
                                                 {222, "dvestotinedvadesetdvamiliona"}};
    for (const auto& [count, text] : rows) {
        EXPECT_EQ(wordsOf(count * 1'000'000LL), text + "din. i 0/100");
    }
}

TEST(AmountInWordsTest, MilliardsUpToTheLargestAmount) {
    EXPECT_EQ(wordsOf(1'000'000'000), "jednamilijardadin. i 0/100");
    EXPECT_EQ(wordsOf(2'000'000'000), "dvemilijardedin. i 0/100");
    EXPECT_EQ(wordsOf(2'147'483'647),
              "dvemilijardestotinucetrdesetsedammilionacetiristotineosamdesettrihiljade"
              "šeststotinacetrdesetsedamdin. i 0/100");
    EXPECT_EQ(wordsOf(1'000'000'001), "jednamilijardajedandin. i 0/100");
}

TEST(AmountInWordsTest, PastTheLargestAmountItOverflows) {
    for (const char* amount : {"2,147,483,648.00", "99,000,000,000.00"}) {
        try {
            words(amount);
            ADD_FAILURE() << amount;
        } catch (const platform::RunError& error) {
            EXPECT_EQ(error.number(), 6);
        }
    }
}

TEST(AmountInWordsTest, ATextWithoutAWholePartIsRefused) {
    try {
        words(".50");
        ADD_FAILURE();
    } catch (const platform::RunError& error) {
        EXPECT_EQ(error.number(), 13);
    }
}

TEST(AmountInWordsTest, HundredthsAreDigits) {
    EXPECT_EQ(words("3.07"), "tridin. i 7/100");
    EXPECT_EQ(words("3.99"), "tridin. i 99/100");
    EXPECT_EQ(words("3.5"), "tridin. i 50/100");
    EXPECT_EQ(words("999,999.29"),
              "devetstotinadevedesetdevethiljadadevetstotinadevedesetdevetdin. i 29/100");
}

TEST(AmountInWordsTest, HalfAHundredthGoesToTheEvenNeighbour) {
    EXPECT_EQ(words("1.125"), "jedandin. i 12/100");
    EXPECT_EQ(words("1.375"), "jedandin. i 38/100");
    EXPECT_EQ(words("1.999"), "jedandin. i 0/100");
}

TEST(AmountInWordsTest, ANegativeAmountIsWordedAsIfItWereNone) {
    EXPECT_EQ(words("-5.00"), "petdin. i 0/100");
    EXPECT_EQ(words("-5.50"), "petdin. i-50/100");
}

TEST(AmountInWordsTest, TheUsersSeparatorsCount) {
    LocaleScope serbian("sr_Latn_RS");
    ASSERT_EQ(GetLocaleValue(14), ",");
    ASSERT_EQ(GetLocaleValue(15), ".");
    EXPECT_EQ(words("1.234,50"), "jednahiljadadvestotinetridesetcetiridin. i 50/100");
    EXPECT_EQ(words("21.000,05", false), "dvadesetjednahiljadaeur. i 5/100");
    EXPECT_EQ(words("2.000.000,00"), "dvamilionadin. i 0/100");
    EXPECT_EQ(words("0,00"), "nula");
    EXPECT_EQ(words("1.234.567,89"),
              "jedanmiliondvestotinetridesetcetirihiljadepetstotinašezdesetsedamdin. i 89/100");
    EXPECT_EQ(words("225"), "dvestotinedvadesetpetdin. i 0/100");
}

TEST(AmountInWordsTest, ABlankThatDoesNotBreakMaySeparateTheThousands) {
    LocaleScope french("fr_FR");
    ASSERT_EQ(GetLocaleValue(15), QString(QChar(0x202f)));
    EXPECT_EQ(words(QString("1 234 567,89").replace(' ', QChar(0x202f))),
              "jedanmiliondvestotinetridesetcetirihiljadepetstotinašezdesetsedamdin. i 89/100");
}

// Money below one, written with a comma, has always read as nothing: only what stands before the comma is
// asked for at the start.
TEST(AmountInWordsTest, LessThanOneUnderACommaIsNula) {
    LocaleScope serbian("sr_Latn_RS");
    EXPECT_EQ(words("0,50"), "nula");
}
