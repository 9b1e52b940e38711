#include "common/string_table.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "common/modMain.h"

// The list below was made apart from the table: for each number the count of characters of its text (a line
// break of two counts as two) and their sum. A letter lost or changed anywhere shows here.

namespace {

struct Expected {
    int id;
    int length;
    unsigned sum;
};

constexpr Expected kExpected[] = {
    {1, 8, 3889},        {101, 8, 3847},      {102, 10, 6000},     {103, 6, 2228},      {104, 8, 3847},
    {105, 10, 6000},     {106, 6, 2228},      {107, 112, 63302},   {108, 93, 22076},    {109, 100, 13158},
    {110, 39, 1527},     {111, 59, 3308},     {112, 41, 11728},    {113, 104, 55417},   {114, 32, 44948},
    {115, 32, 49660},    {116, 50, 47396},    {117, 49, 51204},    {118, 68, 15838},    {119, 25, 29849},
    {120, 28, 35383},    {121, 48, 34016},    {122, 42, 12347},    {123, 43, 13829},    {124, 40, 6772},
    {125, 31, 44961},    {126, 102, 50727},   {127, 55, 8995},     {128, 235, 30122},   {129, 50, 46873},
    {130, 79, 22788},    {131, 77, 5031},     {132, 92, 17853},    {133, 107, 8726},    {134, 74, 2448},
    {135, 74, 2660},     {136, 98, 2619},     {137, 92, 17171},    {138, 136, 37216},   {139, 68, 27779},
    {140, 114, 36189},   {141, 90, 63854},    {142, 74, 2448},     {143, 111, 5925},    {144, 95, 45406},
    {145, 74, 2660},     {146, 70, 43040},    {147, 74, 8122},     {148, 50, 48295},    {149, 78, 25819},
    {150, 78, 25765},    {151, 18, 16482},    {152, 16, 12760},    {153, 16, 13685},    {154, 5, 1524},
    {155, 8, 3974},      {156, 3, 489},       {157, 4, 989},       {158, 40, 4208},     {159, 54, 46285},
    {160, 93, 12189},    {161, 87, 26855},    {162, 58, 27459},    {163, 55, 7945},     {164, 60, 37736},
    {165, 72, 40103},    {166, 58, 26629},    {167, 92, 17081},    {169, 22, 22664},    {171, 68, 11530},
    {172, 55, 12865},    {173, 68, 27437},    {174, 62, 44783},    {175, 63, 60378},    {177, 67, 4526},
    {178, 80, 37769},    {201, 40, 4720},     {202, 46, 27938},    {203, 44, 19482},    {204, 42, 13425},
    {205, 60, 41977},    {206, 6, 2141},      {301, 117, 25451},   {302, 106, 44472},   {303, 100, 55847},
    {304, 38, 1357},     {305, 45, 28295},    {306, 31, 44885},    {307, 60, 22414},    {308, 26, 31265},
    {309, 55, 62030},    {310, 67, 61493},    {400, 14, 10881},    {401, 34, 56227},    {402, 35, 61030},
    {403, 20, 20572},    {404, 23, 25704},    {405, 22, 24974},    {406, 22, 24908},    {407, 15, 12038},
    {408, 36, 63456},    {409, 37, 4001},     {410, 35, 62255},    {411, 30, 45348},    {412, 33, 55335},
    {413, 31, 48973},    {414, 15, 12244},    {415, 35, 59159},    {416, 36, 64754},    {417, 2, 229},
    {418, 6, 2140},      {419, 5, 1477},      {450, 7, 3091},      {451, 2, 229},       {452, 6, 2140},
    {453, 5, 1477},      {454, 43, 24530},    {455, 33, 50354},    {456, 27, 34036},    {457, 26, 36468},
    {458, 21, 19424},    {500, 9, 4510},      {501, 15, 11101},    {502, 23, 23355},    {504, 22, 24480},
    {506, 20, 20315},    {508, 10, 3862},     {509, 13, 8574},     {511, 10, 5857},     {513, 5, 1505},
    {521, 7, 2911},      {523, 31, 48063},    {524, 35, 60784},    {525, 31, 47802},    {526, 49, 49103},
    {527, 45, 31180},    {548, 18, 13699},    {549, 20, 17940},    {551, 17, 14925},    {552, 17, 14776},
    {600, 5, 1524},      {601, 8, 3702},      {602, 10, 5824},     {604, 18, 14637},    {605, 7, 3004},
    {607, 14, 7755},     {609, 11, 5257},     {611, 8, 3619},      {700, 6, 2116},      {701, 11, 5104},
    {702, 10, 4108},     {704, 8, 3707},      {706, 14, 8525},     {800, 9, 4640},      {801, 6, 2141},
    {803, 4, 1048},      {804, 7, 2522},      {806, 6, 2184},      {808, 10, 5507},     {810, 17, 12540},
    {811, 19, 16534},    {813, 10, 5156},     {1001, 61, 36114},   {1002, 42, 21614},   {1003, 63, 61134},
    {1010, 40, 3825},    {1011, 19, 11861},   {1012, 43, 24127},   {1013, 11, 6082},    {1014, 30, 43117},
    {1015, 69, 24397},   {1016, 30, 42532},   {1017, 46, 36135},   {1020, 42, 11456},   {1025, 61, 36752},
    {1026, 63, 59979},   {1027, 57, 24846},   {1030, 45, 33955},   {1035, 36, 57462},   {1036, 98, 53980},
    {1037, 67, 20941},   {1040, 91, 10732},   {1041, 98, 10197},   {1042, 62, 56737},   {1043, 128, 12030},
    {1044, 125, 50043},  {1045, 135, 29685},  {1046, 36, 55416},   {1047, 57, 25217},   {1048, 73, 56802},
    {1049, 82, 55310},   {2101, 14, 9829},    {2102, 21, 22437},   {2103, 19, 18468},   {2104, 19, 18481},
    {2108, 15, 12121},   {2111, 12, 7795},    {2112, 13, 9030},    {2113, 25, 32012},   {2114, 27, 37950},
    {2115, 13, 9416},    {2116, 7, 2969},     {2117, 15, 11233},   {10001, 414, 42555}, {10101, 326, 53669},
    {10201, 102, 40289}, {10202, 94, 20630},  {10203, 17, 13061},  {10204, 17, 12342},  {10205, 2, 229},
    {10206, 12, 7518},   {10207, 14, 10058},  {10208, 32, 53357},  {10209, 39, 12790},  {10210, 115, 53400},
    {10211, 114, 40611}, {10212, 100, 31701}, {10213, 113, 37423}, {10501, 12, 8531},   {10502, 10, 3646},
    {10503, 16, 14063},  {10504, 42, 21101},  {10505, 35, 64339},  {10506, 40, 14537},  {10507, 40, 18395},
    {10508, 53, 58018},  {10509, 23, 24601},  {10510, 27, 32735},  {10511, 35, 59228},  {10512, 89, 44330},
    {10513, 81, 50319},  {10514, 57, 22389},  {10515, 87, 46599},  {10516, 51, 60064},  {10517, 92, 18901},
    {10518, 51, 64753},  {10519, 36, 62863},  {10520, 93, 14642},  {10521, 41, 16170},  {10522, 37, 744},
    {10523, 61, 49662},  {10524, 105, 16940}, {10525, 50, 44476},  {10526, 52, 53532},
};

unsigned sumOf(const QString& text) {
    unsigned sum = 0;
    unsigned place = 0;
    for (const QChar c : text) {
        sum = (sum + ++place * c.unicode()) % 65521U;
    }
    return sum;
}

}  // namespace

TEST(StringTableTest, HoldsEveryTextAndNoOther) {
    QList<int> ids = StringTable::ofProgram().ids();
    std::sort(ids.begin(), ids.end());
    QList<int> expected;
    for (const Expected& entry : kExpected) {
        expected += entry.id;
    }
    EXPECT_EQ(ids, expected);
    EXPECT_EQ(StringTable::ofProgram().damage().toStdString(), "");
}

TEST(StringTableTest, EveryTextIsWholeToTheLetter) {
    for (const Expected& entry : kExpected) {
        const QString text = LoadResString(entry.id);
        EXPECT_EQ(text.size(), entry.length) << entry.id << ' ' << text.toStdString();
        EXPECT_EQ(sumOf(text), entry.sum) << entry.id << ' ' << text.toStdString();
    }
}

TEST(StringTableTest, SpotTexts) {
    EXPECT_EQ(LoadResString(1), "Tarvello");
    EXPECT_EQ(LoadResString(110), "Find missing \"Tarvello.mdb\" database...");
    EXPECT_EQ(LoadResString(111), "Microsoft Access Database (*.mdb)|*.mdb|All Files (*.*)|*.*");
    EXPECT_EQ(LoadResString(126),
              "Error(s) was(were) encountered while trying to update the database:\n\n%1\n\nDo you want to "
              "fix it (them)?");
    EXPECT_EQ(LoadResString(133),
              QStringLiteral("The .exe file is invalid (non-Win32\u00AE .exe or error in .exe "
                             "image). Launching associated application failed."));
    EXPECT_EQ(LoadResString(310), "The text entered as the date is invalid. Text \"%1\" will be deleted.");
    EXPECT_EQ(LoadResString(524), "N&ot finished and not paid services");
    EXPECT_EQ(LoadResString(10201),
              "Da fajl \"|1\" nije pronadjen?\n\nZato nije moguce prikazati interesantne "
              "napomene vezane za rad programa.");
    EXPECT_EQ(LoadResString(10210),
              "Doslo je do neocekivane greske prilikom snimanja u Registry:\r\n[|1] |2\r\n"
              "frmTip -> chkLoadTipsAtStartup -> Linija: |3");
    EXPECT_EQ(LoadResString(10526), "Sortira sve stavke po opadajucem redosledu, tj. Z-A.");
}

TEST(StringTableTest, SeparatorsAndUnknownNumbersAreEmpty) {
    for (const int id : {503, 505, 507, 510, 512, 522, 550, 603, 606, 608, 610,
                         703, 705, 802, 805, 807, 809, 812, 0,   -1,  2,   99999}) {
        EXPECT_EQ(LoadResString(id), "") << id;
    }
}

TEST(StringTableTest, AGarbledLineIsNamedAndTheRestKept) {
    const StringTable table = StringTable::parse("1\tone\nno number\n2\ttwo\\nlines\n\n1\tagain\n3\n");
    EXPECT_EQ(table.count(), 2);
    EXPECT_EQ(table.text(1), "one");
    EXPECT_EQ(table.text(2), "two\nlines");
    EXPECT_EQ(table.damage(), "Line 2: no number\nLine 5: 1\tagain\nLine 6: 3");
}
