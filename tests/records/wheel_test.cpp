#include "support/wheel.h"

#include <gtest/gtest.h>

#include <QDateEdit>

#include "platform/controls/date_field.h"
#include "records/main_window.h"
#include "records/service_editor.h"

namespace {

// Somebody rolls down the pane, over fields that he has not gone to.
class WheelInTheMainWindow : public MainWindow {
 protected:
    void SetUp() override {
        MainWindow::SetUp();
        addComputer(addClient("Anic", "Vesna", {{"BirthDate", dao::Date{25000.0}}}), "Alfa");
        addComputer(addClient("Babic", "Mira"), "Beta");
        start();
        choose(0, "Anic, Vesna");
    }
};

TEST_F(WheelInTheMainWindow, DatesThatWereNotClickedStayAsTheyAre) {
    field(0)->setFocus();
    QList<std::optional<QDate>> dates;
    for (platform::DateField* date : win().controls.DTPicker1) {
        dates.append(date->value());
        rollOver(date->edit());
        rollOver(date->edit()->findChild<QLineEdit*>());
    }
    EXPECT_EQ(dates[0], QDate(1968, 6, 11));
    for (size_t i = 0; i < win().controls.DTPicker1.size(); ++i) {
        EXPECT_EQ(win().controls.DTPicker1[i]->value(), dates[static_cast<qsizetype>(i)]) << i;
    }
    EXPECT_TRUE(field(0)->hasFocus());
    EXPECT_FALSE(win().controls.StageDirty[0]);
}

TEST_F(WheelInTheMainWindow, SelectorsThatWereNotClickedStayAsTheyAre) {
    field(0)->setFocus();
    rollOver(win().controls.Combo1[0]);
    EXPECT_EQ(chosen(0), "Anic, Vesna");
    tab(2);
    choose(1, "Alfa");
    field(28)->setFocus();
    rollOver(win().controls.Combo1[1]);
    EXPECT_EQ(chosen(1), "Alfa");
}

TEST_F(ServiceEditor, WheelOverAPickerCountsOnlyWhileItHasTheFocus) {
    editor().setServiceStarted("3/3/2026");
    edit([&] {
        click("Image1(0)");
        ASSERT_TRUE(picker()->edit()->hasFocus());
        rollOver(picker()->edit(), 1);
        EXPECT_NE(picker()->value(), QDate(2026, 3, 3));
        cancel();
    });
    edit([&] {
        field(5)->setFocus();
        rollOver(field(0));
        EXPECT_EQ(text(0), "3/3/2026");
        EXPECT_EQ(focusName(), "Text1(5)");
        cancel();
    });
}

}  // namespace
