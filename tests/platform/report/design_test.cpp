#include "platform/report/design.h"

#include <gtest/gtest.h>

#include "tests/platform/report/sample.h"

// Reports out of tables: what a row says stands in the section and the control that come of it, and a small
// report needs no class of its own.
namespace {

using report::Control;
using report::ControlDesign;
using report::Look;
using report::Section;
using report::SectionDesign;

constexpr Look kHeading{.points = 12, .align = report::Align::Center, .color = "#102030", .bold = true};
constexpr Look kSlanted{.italic = true};
constexpr Look kFrame{.color = "#112233", .lineWidth = 8, .fill = "#445566"};

constexpr SectionDesign kSections[] = {
    {Section::Kind::PageHeader, "Head", 400, "", true},
    {Section::Kind::GroupHeader, "Group", 300, "Prvo slovo", false, true},
    {Section::Kind::Detail, "Detail", 250},
    {Section::Kind::GroupFooter, "GroupEnd"},
};

constexpr ControlDesign kControls[] = {
    {"Head", Control::Kind::Label, "lblTitle", 10, 20, 3000, 300, kHeading, "Šifarnik"},
    {"Head", Control::Kind::Line, "Rule", 5, 390, 2000, 6, {.color = "#778899", .lineWidth = 30}},
    {"Head", Control::Kind::Shape, "Box", 1, 2, 30, 40, kFrame},
    {"Head", Control::Kind::Image, "Logo", 0, 0, 100, 100, {}, "DocumentHead1"},
    {"Head", Control::Kind::PageNumber, "Page", 4000, 20, 900, 300, {}, "%1 / %2"},
    {"Group", Control::Kind::Field, "txtLetter", 0, 0, 500, 300, kSlanted, "Prvo slovo"},
    {"Detail", Control::Kind::Field, "txtName", 0, 0, 3000, 250, {}, "Naziv", true},
    {"Detail", Control::Kind::Field, "txtNumber", 3000, 0, 1000, 250, {}, "Broj", false, "#,##0.00"},
};

struct DesignTable : ::testing::Test {
    void SetUp() override { report::design(made, kSections, kControls); }
    Control& control(const char* section, const char* name) { return made.Sections(section).Controls(name); }
    report::Report made;
};

TEST_F(DesignTable, ASectionIsWhatItsRowSays) {
    Section& head = made.Sections("Head");
    EXPECT_EQ(head.kind(), Section::Kind::PageHeader);
    EXPECT_EQ(head.Height, 400);
    EXPECT_TRUE(head.CanShrink);
    EXPECT_FALSE(head.RepeatOnPage);
    EXPECT_EQ(head.DataField, "");
    Section& group = made.Sections("Group");
    EXPECT_EQ(group.DataField, "Prvo slovo");
    EXPECT_FALSE(group.CanShrink);
    EXPECT_TRUE(group.RepeatOnPage);
    EXPECT_EQ(made.Sections("GroupEnd").Height, 0);
}

TEST_F(DesignTable, AControlStandsInItsPlaceInItsLetters) {
    const Control& title = control("Head", "lblTitle");
    EXPECT_EQ(title.kind, Control::Kind::Label);
    EXPECT_EQ(std::tuple(title.Left, title.Top, title.Width, title.Height), std::tuple(10, 20, 3000, 300));
    EXPECT_EQ(title.style, (report::TextStyle{.family = {},
                                              .points = 12,
                                              .bold = true,
                                              .color = QColor(0x10, 0x20, 0x30),
                                              .align = report::Align::Center}));
    EXPECT_EQ(title.Caption, QStringLiteral("Šifarnik"));
    EXPECT_TRUE(control("Group", "txtLetter").style.italic);
    EXPECT_FALSE(control("Group", "txtLetter").style.bold);
}

TEST_F(DesignTable, ItsTextIsWhatItsKindMakesOfIt) {
    EXPECT_EQ(control("Head", "Page").Caption, "%1 / %2");
    EXPECT_EQ(control("Head", "Logo").picture, "DocumentHead1");
    EXPECT_EQ(control("Head", "Logo").Caption, "");
    const Control& name = control("Detail", "txtName");
    EXPECT_EQ(name.DataField, "Naziv");
    EXPECT_EQ(name.Caption, "");
    EXPECT_TRUE(name.CanGrow);
    EXPECT_EQ(name.OutputFormat, "");
    EXPECT_FALSE(control("Detail", "txtNumber").CanGrow);
    EXPECT_EQ(control("Detail", "txtNumber").OutputFormat, "#,##0.00");
}

TEST_F(DesignTable, LinesAndFramesHaveTheirStrokeAndOnlyAFrameItsFill) {
    const Control& rule = control("Head", "Rule");
    EXPECT_EQ(std::tuple(rule.X1, rule.Y1, rule.X2, rule.Y2), std::tuple(5, 390, 2005, 396));
    EXPECT_EQ(rule.lineWidth, 30);
    EXPECT_EQ(rule.lineColor, QColor(0x77, 0x88, 0x99));
    EXPECT_FALSE(rule.fill.has_value());
    const Control& box = control("Head", "Box");
    EXPECT_EQ(box.lineWidth, 8);
    EXPECT_EQ(box.lineColor, QColor(0x11, 0x22, 0x33));
    EXPECT_EQ(box.fill, QColor(0x44, 0x55, 0x66));
}

TEST_F(DesignTable, ASectionKeepsTheOrderOfTheTable) {
    QStringList names;
    for (const auto& each : made.Sections("Head").all()) {
        names.append(each->name);
    }
    EXPECT_EQ(names.join(' '), "lblTitle Rule Box Logo Page");
}

TEST_F(DesignTable, ATableAndItsRowsAreAReport) {
    made.setRows(std::make_unique<sample::Rows>(
        std::vector<sample::Row>{{{"Prvo slovo", "A"}, {"Naziv", "Avala"}, {"Broj", 1200}},
                                 {{"Prvo slovo", "B"}, {"Naziv", "Bor"}, {"Broj", 3}}}));
    const QLocale before;
    QLocale::setDefault(QLocale("en_US"));
    EXPECT_EQ(sample::texts(made.run().value(), 1), "Šifarnik 1 / 1|A|Avala 1,200.00|B|Bor 3.00");
    QLocale::setDefault(before);
}

TEST(DesignTableFaults, ANameTwiceOrASectionThatIsNotThereIsTold) {
    const auto numberOf = [](std::span<const ControlDesign> controls) {
        report::Report made;
        platform::Trap step;
        step([&] { report::design(made, kSections, controls); });
        return step.number();
    };
    constexpr ControlDesign kTwice[] = {{"Detail", Control::Kind::Label, "A", 0, 0, 1, 1},
                                        {"Detail", Control::Kind::Label, "A", 0, 0, 1, 1}};
    constexpr ControlDesign kNowhere[] = {{"Foot", Control::Kind::Label, "A", 0, 0, 1, 1}};
    EXPECT_EQ(numberOf(kTwice), 457);
    EXPECT_EQ(numberOf(kNowhere), 35601);
    EXPECT_EQ(numberOf({kControls, 1}), 0);
}

}  // namespace
