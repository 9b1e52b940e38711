#include "platform/controls/date_field.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QLocale>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include "platform/system/dates.h"
#include "support/wheel.h"

namespace {

using platform::DateField;

const QDate kDay(2005, 7, 5);

class DateFieldTest : public ::testing::Test {
 protected:
    void SetUp() override { start(); }
    void start() {
        auto* layout = new QVBoxLayout(&window);
        before = new QLineEdit;
        field = new DateField(true);
        fixed = new DateField(false);
        after = new QLineEdit;
        for (QWidget* widget : {static_cast<QWidget*>(before), static_cast<QWidget*>(field),
                                static_cast<QWidget*>(fixed), static_cast<QWidget*>(after)}) {
            layout->addWidget(widget);
        }
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    static QString textOf(const DateField* of) { return of->edit()->text().trimmed(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(field->edit(), key, modifiers);
    }
    void type(const char* text) { QTest::keyClicks(field->edit(), text); }

    QWidget window;
    QLineEdit* before = nullptr;
    QLineEdit* after = nullptr;
    DateField* field = nullptr;
    DateField* fixed = nullptr;
};

TEST_F(DateFieldTest, StartsEmptyWhereItMayBeAndTodayWhereItMayNot) {
    EXPECT_EQ(field->value(), std::nullopt);
    EXPECT_EQ(textOf(field), "");
    EXPECT_FALSE(field->checkBox()->isChecked());
    EXPECT_EQ(fixed->value(), QDate::currentDate());
    EXPECT_EQ(fixed->checkBox(), nullptr);
}

TEST_F(DateFieldTest, ShowsTheShortDateWithFourDigitsOfTheYear) {
    field->setValue(kDay);
    EXPECT_EQ(textOf(field), platform::formatShortDate(kDay));
    EXPECT_TRUE(textOf(field).contains("2005"));
    EXPECT_TRUE(field->checkBox()->isChecked());
    EXPECT_EQ(field->value(), kDay);
}

TEST_F(DateFieldTest, ShowsTheOrderOfTheUsersCountry) {
    const QLocale usual;
    QLocale::setDefault(QLocale("sr_Latn_RS"));
    DateField serbian(true);
    serbian.setValue(kDay);
    EXPECT_EQ(textOf(&serbian), platform::formatShortDate(kDay));
    EXPECT_TRUE(textOf(&serbian).startsWith('5')) << textOf(&serbian).toStdString();
    QLocale::setDefault(usual);
}

TEST_F(DateFieldTest, NullShowsNothingAndComesBackWithACheckMark) {
    field->setValue(kDay);
    QSignalSpy changed(field, &DateField::valueChanged);
    QTest::mouseClick(field->checkBox(), Qt::LeftButton, {}, QPoint(8, field->checkBox()->height() / 2));
    EXPECT_EQ(field->value(), std::nullopt);
    EXPECT_EQ(textOf(field), "");
    EXPECT_EQ(changed.count(), 1);
    QTest::mouseClick(field->checkBox(), Qt::LeftButton, {}, QPoint(8, field->checkBox()->height() / 2));
    EXPECT_EQ(field->value(), kDay) << "the date that was there before";
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(QApplication::focusWidget(), field->edit());
}

TEST_F(DateFieldTest, DeleteAndBackspaceOnTheWholeDateMakeItNull) {
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        field->setValue(kDay);
        after->setFocus();
        field->setFocus();
        press(key);
        EXPECT_EQ(field->value(), std::nullopt);
        EXPECT_FALSE(field->checkBox()->isChecked());
    }
    fixed->setValue(kDay);
    fixed->setFocus();
    QTest::keyClick(fixed->edit(), Qt::Key_Delete);
    EXPECT_EQ(fixed->value(), kDay) << "where there must be a date it comes back";
}

TEST_F(DateFieldTest, BackspaceTakesOneDigitOfADateBeingTyped) {
    field->setFocus();
    type("7/5/20056");
    press(Qt::Key_Backspace);
    EXPECT_EQ(field->value(), kDay);
}

TEST_F(DateFieldTest, WhatIsNoDateIsRedAndGivesWayToTheDateThatWasThere) {
    field->setValue(kDay);
    field->setFocus();
    const auto ink = [&] { return field->edit()->findChild<QLineEdit*>()->palette().color(QPalette::Text); };
    const QColor usual = ink();
    QSignalSpy changed(field, &DateField::valueChanged);
    type("7/5/2006x");
    EXPECT_NE(ink(), usual);
    after->setFocus();
    EXPECT_EQ(ink(), usual);
    EXPECT_EQ(textOf(field), platform::formatShortDate(kDay));
    EXPECT_EQ(field->value(), kDay);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(DateFieldTest, ADateTypedIsNormalisedWhenTheFieldIsLeft) {
    field->setFocus();
    QSignalSpy changed(field, &DateField::valueChanged);
    type("7-5-05");
    after->setFocus();
    EXPECT_EQ(textOf(field), platform::formatShortDate(kDay));
    EXPECT_EQ(changed.count(), 1);
}

// Each over each: what stood there before must not bend what is typed.
TEST_F(DateFieldTest, AnyDateCanBeTypedOverAnyOtherUnderAnyLocale) {
    struct Case {
        const char* locale;
        const char* typed;
        QDate date;
    };
    const QList<Case> cases = {
        {"sr_Latn_RS", "31.3.2005", {2005, 3, 31}}, {"sr_Latn_RS", "29.02.2004.", {2004, 2, 29}},
        {"sr_Latn_RS", "1.1.26", {2026, 1, 1}},     {"sr_Latn_RS", "31.12.99", {1999, 12, 31}},
        {"de_DE", "31.3.2005", {2005, 3, 31}},      {"de_DE", "5/7/1805", {1805, 7, 5}},
        {"en_US", "2/29/2004", {2004, 2, 29}},      {"en_US", "12/31/99", {1999, 12, 31}},
        {"sv_SE", "2004-2-29", {2004, 2, 29}},      {"en_GB", "31/3/2005", {2005, 3, 31}}};
    const QLocale usual;
    for (const Case& each : cases) {
        QLocale::setDefault(QLocale(each.locale));
        for (const QDate& earlier : {QDate(1999, 2, 28), QDate(2000, 12, 31), QDate()}) {
            DateField date(true);
            date.setValue(earlier);
            date.show();
            date.setFocus();
            date.edit()->selectAll();
            QTest::keyClicks(date.edit(), each.typed);
            EXPECT_EQ(date.value(), each.date) << each.locale << " " << each.typed;
        }
    }
    QLocale::setDefault(usual);
}

TEST_F(DateFieldTest, UpAndDownCountThePartTheCaretStandsIn) {
    field->setValue(QDate(2005, 1, 31));
    field->setFocus();
    auto* line = field->edit()->findChild<QLineEdit*>();
    line->setCursorPosition(0);
    press(Qt::Key_Up);
    EXPECT_EQ(field->value(), QDate(2005, 2, 28)) << "months of their own length";
    EXPECT_EQ(line->selectedText(), "2");
    line->setCursorPosition(3);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(field->value(), QDate(2005, 2, 26));
    line->setCursorPosition(static_cast<int>(line->text().size()));
    press(Qt::Key_Up);
    EXPECT_EQ(field->value(), QDate(2006, 2, 26));
}

TEST_F(DateFieldTest, SpaceChecksAndUnchecks) {
    field->setValue(kDay);
    field->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(field->value(), std::nullopt);
    press(Qt::Key_Space);
    EXPECT_EQ(field->value(), kDay);
}

TEST_F(DateFieldTest, AnEmptyDateCanBeTyped) {
    field->setFocus();
    type("7/5/2005");
    EXPECT_EQ(field->value(), kDay);
    EXPECT_TRUE(field->checkBox()->isChecked());
}

TEST_F(DateFieldTest, ADateCanBeTypedOverAnother) {
    field->setValue(QDate(1999, 12, 31));
    field->setFocus();
    field->edit()->selectAll();
    type("7/5/2005");
    EXPECT_EQ(field->value(), kDay);
}

TEST_F(DateFieldTest, ArrowsCountFromTodayInAnEmptyDate) {
    field->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(field->value(), QDate::currentDate());
    press(Qt::Key_Up);
    EXPECT_NE(field->value(), QDate::currentDate());
}

TEST_F(DateFieldTest, YearsGoFromOneHundredToNineThousandNineHundredNinetyNine) {
    for (const QDate& date : {QDate(100, 1, 1), QDate(9999, 12, 31), QDate(1899, 12, 31)}) {
        field->setValue(date);
        EXPECT_EQ(field->value(), date);
        EXPECT_NE(textOf(field), "");
    }
    field->setValue(QDate(99, 12, 31));
    EXPECT_EQ(field->value(), QDate(100, 1, 1));
    field->setValue(QDate(10000, 1, 1));
    EXPECT_EQ(field->value(), QDate(9999, 12, 31));
    field->setValue(QDate());
    EXPECT_EQ(field->value(), std::nullopt);
}

TEST_F(DateFieldTest, SaysWhenItsValueChangesAndOnlyThen) {
    QSignalSpy changed(field, &DateField::valueChanged);
    field->setValue(kDay);
    EXPECT_EQ(changed.count(), 1);
    field->setValue(kDay);
    EXPECT_EQ(changed.count(), 1);
    field->setValue(std::nullopt);
    EXPECT_EQ(changed.count(), 2);
    field->setValue(std::nullopt);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(DateFieldTest, EnterIsLeftToTheWindow) {
    field->setValue(kDay);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent enter(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(field->edit(), &enter);
        EXPECT_FALSE(enter.isAccepted());
    }
}

TEST_F(DateFieldTest, TheTabKeyStopsOnce) {
    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), field->edit());
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), fixed->edit());
    QTest::keyClick(fixed->edit(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), after);
    QTest::keyClick(after, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), fixed->edit());
}

TEST_F(DateFieldTest, TellsWhenTheFocusLeaves) {
    field->setFocus();
    QSignalSpy left(field, &DateField::focusLeft);
    QTest::mouseClick(field->checkBox(), Qt::LeftButton, {}, QPoint(8, field->checkBox()->height() / 2));
    EXPECT_EQ(left.count(), 0) << "the check mark is part of it";
    after->setFocus();
    EXPECT_EQ(left.count(), 1);
}

TEST_F(DateFieldTest, TheCalendarOpensByKeyOnTodayAndChoosesNothingByItself) {
    field->setFocus();
    QSignalSpy left(field, &DateField::focusLeft);
    press(Qt::Key_Down, Qt::AltModifier);
    QCalendarWidget* calendar = field->edit()->calendarWidget();
    ASSERT_TRUE(calendar->isVisible());
    EXPECT_EQ(calendar->selectedDate(), QDate::currentDate());
    EXPECT_EQ(calendar->yearShown(), QDate::currentDate().year());
    QTest::keyClick(calendar->window(), Qt::Key_Escape);
    EXPECT_FALSE(calendar->isVisible());
    EXPECT_EQ(field->value(), std::nullopt);
    EXPECT_EQ(left.count(), 0);
}

TEST_F(DateFieldTest, ADateCanBePickedFromTheCalendar) {
    field->setValue(kDay);
    field->setFocus();
    press(Qt::Key_F4);
    QCalendarWidget* calendar = field->edit()->calendarWidget();
    ASSERT_TRUE(calendar->isVisible());
    EXPECT_EQ(calendar->selectedDate(), kDay);
    emit calendar->activated(kDay.addDays(3));
    EXPECT_EQ(field->value(), kDay.addDays(3));
}

TEST_F(DateFieldTest, PickingTodayInAnEmptyDateTakesToday) {
    field->setFocus();
    press(Qt::Key_F4);
    QCalendarWidget* calendar = field->edit()->calendarWidget();
    ASSERT_TRUE(calendar->isVisible());
    QWidget* days = calendar->findChild<QWidget*>("qt_calendar_calendarview");
    ASSERT_NE(days, nullptr);
    QTest::keyClick(days, Qt::Key_Return);
    EXPECT_FALSE(calendar->isVisible());
    EXPECT_EQ(field->value(), QDate::currentDate());
}

TEST_F(DateFieldTest, TheWheelChangesNothingUnlessItHasTheFocus) {
    field->setValue(kDay);
    after->setFocus();
    rollOver(field->edit());
    rollOver(field->edit()->findChild<QLineEdit*>());
    rollOver(field->checkBox());
    EXPECT_EQ(field->value(), kDay);
    EXPECT_TRUE(after->hasFocus()) << "rolling over it is not going to it";
    QTest::mouseClick(field->edit()->findChild<QLineEdit*>(), Qt::LeftButton);
    rollOver(field->edit(), 1);
    EXPECT_NE(field->value(), kDay);
}

TEST_F(DateFieldTest, TheWheelOverAnEmptyDateLeavesItEmpty) {
    after->setFocus();
    rollOver(field->edit());
    EXPECT_EQ(field->value(), std::nullopt);
}

TEST_F(DateFieldTest, TheWheelOverADateRollsThePaneItStandsIn) {
    QScrollArea area;
    auto* pane = new QWidget;
    auto* column = new QVBoxLayout(pane);
    auto* name = new QLineEdit;
    auto* date = new DateField(true);
    date->setValue(kDay);
    column->addWidget(name);
    column->addWidget(date);
    column->addSpacing(2000);
    area.setWidget(pane);
    area.resize(300, 200);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
    name->setFocus();
    rollOver(date->edit());
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
    EXPECT_EQ(date->value(), kDay);
}

TEST_F(DateFieldTest, TwoDigitsOfTheYearAreAYearOfOurs) {
    field->setValue(QDate(1999, 12, 31));
    field->setFocus();
    field->edit()->selectAll();
    type("7/5/85");
    EXPECT_EQ(field->value(), QDate(1985, 7, 5));
    field->edit()->selectAll();
    type("8/6/05");
    after->setFocus();
    EXPECT_EQ(textOf(field), platform::formatShortDate(QDate(2005, 8, 6)));
}

}  // namespace
