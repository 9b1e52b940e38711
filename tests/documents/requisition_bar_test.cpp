#include "documents/requisition_bar.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QKeyEvent>
#include <QToolBar>
#include <QWidget>

namespace {

constexpr RequisitionCommandRow kRows[] = {
    {RequisitionCommand::Refresh, false, "refresh", "Azuriraj", "Refresh", "Cita ponovo",
     Qt::NoModifier | Qt::Key_F5, nullptr, nullptr},
    {RequisitionCommand::Delete, true, "delete", "Izbrisi", "Delete", "Brise",
     Qt::NoModifier | Qt::Key_Delete, [](const RequisitionState& state) { return state.hasProducts; },
     nullptr},
    {RequisitionCommand::DeleteAll, false, "delall", "Izbrisi Sve", "DeleteAll", "Brise sve",
     Qt::ShiftModifier | Qt::Key_Delete, nullptr, nullptr},
    {RequisitionCommand::Help, false, "help", "Pomoc", "Help", "Pomaze", std::nullopt, nullptr, nullptr},
    {RequisitionCommand::Close, false, "", "", "", "", Qt::NoModifier | Qt::Key_Escape, nullptr, nullptr},
};

struct RequisitionBarTest : ::testing::Test {
    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return bar.runKey(QKeyEvent(QEvent::KeyPress, key, modifiers));
    }
    QWidget window;
    std::vector<RequisitionCommand> given;
    RequisitionBar bar{window, kRows,
                       [this](const RequisitionCommandRow& row) { given.push_back(row.name); }};
};

TEST_F(RequisitionBarTest, AKeyRunsItsOwnCommandAlsoFromTheKeypad) {
    EXPECT_TRUE(press(Qt::Key_Delete));
    EXPECT_TRUE(press(Qt::Key_Delete, Qt::KeypadModifier));
    EXPECT_TRUE(press(Qt::Key_Delete, Qt::ShiftModifier));
    EXPECT_TRUE(press(Qt::Key_Escape));
    EXPECT_EQ(given, (std::vector{RequisitionCommand::Delete, RequisitionCommand::Delete,
                                  RequisitionCommand::DeleteAll, RequisitionCommand::Close}));
}

TEST_F(RequisitionBarTest, NoOtherKeyRunsAnything) {
    EXPECT_FALSE(press(Qt::Key_F5, Qt::ControlModifier));
    EXPECT_FALSE(press(Qt::Key_F1));
    EXPECT_FALSE(press(Qt::Key_unknown)) << "a command without a key has none";
    EXPECT_TRUE(given.empty());
}

TEST_F(RequisitionBarTest, AButtonFollowsItsRuleAndWithoutOneItCanAlwaysBePressed) {
    bar.update({.hasProducts = false});
    EXPECT_FALSE(bar.action(RequisitionCommand::Delete)->isEnabled());
    EXPECT_TRUE(bar.action(RequisitionCommand::Refresh)->isEnabled());
    bar.update({.hasProducts = true});
    EXPECT_TRUE(bar.action(RequisitionCommand::Delete)->isEnabled());
    bar.action(RequisitionCommand::Delete)->trigger();
    EXPECT_EQ(given, std::vector{RequisitionCommand::Delete});
}

TEST_F(RequisitionBarTest, ButtonsStandInTheOrderOfTheTableWithAGapBeforeAGroup) {
    QStringList shown;
    for (const QAction* action : bar.toolbar()->actions()) {
        shown.append(action->isSeparator() ? QStringLiteral("|") : action->objectName());
    }
    EXPECT_EQ(shown.join(' '), "refresh | delete delall help");
    EXPECT_EQ(bar.button("delall"), bar.action(RequisitionCommand::DeleteAll));
    EXPECT_EQ(bar.button("close"), nullptr);
    EXPECT_EQ(bar.action(RequisitionCommand::Close), nullptr);
}

}  // namespace
