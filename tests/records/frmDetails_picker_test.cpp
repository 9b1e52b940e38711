#include "common/help.h"
#include "service_editor.h"

// --- Date picker.

TEST_F(ServiceEditor, PickerLiesOverItsField) {
    add([&] {
        const QRect place = field(1)->geometry();
        click("Image1(1)");
        EXPECT_TRUE(picker()->isVisible());
        EXPECT_FALSE(field(1)->isVisible());
        EXPECT_EQ(picker()->geometry(), place);
        EXPECT_EQ(picture(1), "DateOpen");
        EXPECT_TRUE(picker()->edit()->hasFocus());
        EXPECT_FALSE(picker()->value().has_value()) << "an empty field opens unchecked";
        click("Image1(1)");
        EXPECT_TRUE(picker()->isVisible()) << "a second click changes nothing";
        cancel();
    });
}

TEST_F(ServiceEditor, PickerStaysOverItsFieldWhenTheWindowGrows) {
    for (const int index : {0, 1, 2}) {
        add([&] {
            click(QStringLiteral("Image1(%1)").arg(index));
            editor().resize(editor().size() + QSize(160, 80));
            QCoreApplication::processEvents();
            EXPECT_EQ(picker()->geometry(), field(index)->geometry()) << index;
            cancel();
        });
    }
}

TEST_F(ServiceEditor, PickerTakesTheDateOfTheField) {
    add([&] {
        type(1, "3/9/2026");
        click("Image1(1)");
        EXPECT_EQ(picker()->value(), QDate(2026, 3, 9));
        picker()->setValue(QDate(2026, 4, 1));
        field(5)->setFocus();
        EXPECT_FALSE(picker()->isVisible());
        EXPECT_TRUE(field(1)->isVisible());
        EXPECT_EQ(text(1), "4/1/2026");
        EXPECT_EQ(picture(1), "DateFilled");
        cancel();
    });
}

TEST_F(ServiceEditor, UncheckedPickerEmptiesTheField) {
    add([&] {
        click("Image1(0)");
        picker()->setValue(std::nullopt);
        field(5)->setFocus();
        EXPECT_EQ(text(0), "");
        EXPECT_EQ(picture(0), "DateEmpty");
        EXPECT_FALSE(control<QPushButton>("Command1(0)")->isEnabled());
        cancel();
    });
}

TEST_F(ServiceEditor, TextThatIsNoDateIsSaidAndDeleted) {
    add([&] {
        type(2, "soon");
        click("Image1(2)");
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.lastText(),
                  "The text entered as the date is invalid. Text \"soon\" will be deleted.");
        EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(text(2), "");
        EXPECT_FALSE(picker()->value().has_value());
        EXPECT_TRUE(picker()->isVisible());
        EXPECT_EQ(picture(2), "DateOpen");
        cancel();
    });
}

TEST_F(ServiceEditor, PickerMovesToAnotherFieldAfterTakingTheFirst) {
    add([&] {
        click("Image1(1)");
        picker()->setValue(QDate(2026, 5, 5));
        click("Image1(2)");
        EXPECT_EQ(text(1), "5/5/2026");
        EXPECT_TRUE(field(1)->isVisible());
        EXPECT_EQ(picture(1), "DateFilled");
        EXPECT_FALSE(field(2)->isVisible());
        EXPECT_EQ(picker()->geometry(), field(2)->geometry());
        cancel();
    });
}

TEST_F(ServiceEditor, ClickOnTheBackgroundTakesThePicker) {
    add([&] {
        click("Image1(1)");
        picker()->setValue(QDate(2026, 5, 5));
        QTest::mouseClick(&editor(), Qt::LeftButton, {}, QPoint(3, 3));
        EXPECT_FALSE(picker()->isVisible());
        EXPECT_EQ(text(1), "5/5/2026");
        cancel();
    });
}

TEST_F(ServiceEditor, OkTakesThePickerThatIsStillOpen) {
    add([&] {
        click("Image1(2)");
        picker()->setValue(QDate(2026, 5, 5));
        QTest::keyClick(picker()->edit(), Qt::Key_Return);
    });
    EXPECT_FALSE(editor().Cancelled());
    EXPECT_EQ(editor().ServiceFinished(), "5/5/2026");
}

TEST_F(ServiceEditor, KeyboardOpensThePickerAndGoesOn) {
    add([&] {
        field(1)->setFocus();
        QTest::keyClick(field(1), Qt::Key_Down, Qt::AltModifier);
        ASSERT_TRUE(picker()->isVisible());
        QTest::keyClick(picker()->edit(), Qt::Key_Space);  // checks it: today
        QTest::keyClick(picker()->edit(), Qt::Key_Tab);
        EXPECT_EQ(text(1), today());
        EXPECT_EQ(focusName(), "Text1(2)");
        cancel();
    });
}

// --- Links, help, place.

TEST_F(ServiceEditor, NewServiceHasNoPriceListYet) {
    add([&] {
        click("Label3");
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(
            boxes.asked[0].text,
            "This feature is available only on existing services. Add this service to the database and then "
            "open it for editing to view the Parts list.");
        EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Information);
        EXPECT_EQ(boxes.asked[0].title, "Tarvello");
        cancel();
    });
}

TEST_F(ServiceEditor, LinksShowThemselvesUnderTheMouse) {
    add([&] {
        auto* link = control<platform::LinkLabel>("Label2");
        EXPECT_FALSE(link->font().underline());
        EXPECT_EQ(link->cursor().shape(), Qt::PointingHandCursor);
        QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(link, &enter);
        EXPECT_TRUE(link->font().underline());
        EXPECT_EQ(link->palette().color(QPalette::WindowText), QColor(0, 0, 255));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(link, &leave);
        EXPECT_FALSE(link->font().underline());
        EXPECT_NE(link->palette().color(QPalette::WindowText), QColor(0, 0, 255));
        cancel();
    });
}

TEST_F(ServiceEditor, ALinkThatIsOffDoesNotOfferItself) {
    add([&] {
        auto* link = control<platform::LinkLabel>("Label2");
        link->setEnabled(false);
        EXPECT_NE(link->cursor().shape(), Qt::PointingHandCursor);
        QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(link, &enter);
        EXPECT_FALSE(link->font().underline());
        link->setEnabled(true);
        EXPECT_EQ(link->cursor().shape(), Qt::PointingHandCursor);
        EXPECT_FALSE(link->font().underline());
        cancel();
    });
}

TEST_F(ServiceEditor, LinksShowThemselvesToTheKeyboardToo) {
    add([&] {
        for (const char* name : {"Label2", "Label3"}) {
            auto* link = control<platform::LinkLabel>(name);
            link->setFocus(Qt::TabFocusReason);
            EXPECT_TRUE(link->font().underline()) << name;
            EXPECT_EQ(link->palette().color(QPalette::WindowText), QColor(0, 0, 255));
            field(5)->setFocus();
            EXPECT_FALSE(link->font().underline()) << name;
        }
        cancel();
    });
}

TEST_F(ServiceEditor, EveryControlHasANameToBeReadAloud) {
    const QStringList names{"Text1(0)",  "Text1(1)",    "Text1(2)",    "Text1(3)",   "Text1(4)",
                            "Text1(5)",  "Text1(6)",    "Text1(7)",    "Text1(8)",   "List1",
                            "DTPicker1", "Image1(0)",   "Image1(1)",   "Image1(2)",  "Label2",
                            "Label3",    "Command1(0)", "Command1(1)", "Command1(2)"};
    for (const QString& name : names) {
        const QString spoken = control<QWidget>(name)->accessibleName();
        EXPECT_FALSE(spoken.isEmpty() || spoken.contains('&')) << name.toStdString();
    }
}

TEST_F(ServiceEditor, HelpClosesWithTheWindow) {
    add([&] { ok(); });
    ASSERT_EQ(helpCalls.size(), 1);
    EXPECT_EQ(helpCalls[0].command, HELP_QUIT);
    add([&] { cancel(); });
    ASSERT_EQ(helpCalls.size(), 2);
    EXPECT_EQ(helpCalls[1].command, HELP_QUIT);
}

TEST_F(ServiceEditor, HelpOpensTheWindowsPageAndF1TheFields) {
    provideHelp();
    add([&] {
        click("Command1(2)");
        const QList<std::pair<QString, int>> topics{
            {"Text1(0)", 301}, {"Text1(4)", 305},    {"Text1(8)", 309},    {"List1", 310},
            {"Label3", 318},   {"Command1(0)", 311}, {"Command1(2)", 313}, {"Label2", 317}};
        for (const auto& [name, topic] : topics) {
            control<QWidget>(name)->setFocus(Qt::TabFocusReason);
            press(Qt::Key_F1);
            EXPECT_EQ(helpCalls.last().context, topic) << name.toStdString();
        }
        click("Image1(1)");
        press(Qt::Key_F1);
        EXPECT_EQ(helpCalls.last().context, 302) << "the picker stands for its field";
        EXPECT_EQ(helpCalls.first().context, 7002);
        EXPECT_EQ(helpCalls.first().command, HELP_CONTEXT);
        EXPECT_EQ(helpCalls.size(), topics.size() + 2);
        cancel();
    });
}

TEST_F(ServiceEditor, EveryControlHasATopicOfItsOwn) {
    QList<int> topics;
    for (const QWidget* widget : editor().findChildren<QWidget*>()) {
        if (const int topic = widget->property("HelpContextID").toInt()) {
            topics.append(topic);
        }
    }
    std::sort(topics.begin(), topics.end());
    QList<int> expected;
    for (int topic = 301; topic <= 318; ++topic) {
        expected.append(topic);
    }
    EXPECT_EQ(topics, expected);
}

TEST_F(ServiceEditor, PlaceIsKeptWhenTheWindowIsUnloaded) {
    settings::setText(settings::DetailsPosition, "1500;900");
    {
        frmDetails window;
        QTimer::singleShot(0, &window, [&] {
            EXPECT_EQ(window.pos(), QPoint(100, 60));
            window.move(40, 20);
            window.reject();
        });
        window.Display(frmDetails::AddMode);
        EXPECT_EQ(settings::text(settings::DetailsPosition), "1500;900") << "not before it is unloaded";
    }
    EXPECT_EQ(settings::text(settings::DetailsPosition), "600;300");
}

TEST_F(ServiceEditor, WindowThatWasNeverShownKeepsNoPlace) {
    { frmDetails window; }
    EXPECT_FALSE(QFile::exists(platform::settingsFile("Tarvello")));
}
