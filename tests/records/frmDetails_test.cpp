#include "common/help.h"
#include "service_editor.h"

// --- Properties and filling.

TEST_F(ServiceEditor, PropertiesHaveTheirDefaultsAtCreation) {
    frmDetails fresh;
    EXPECT_EQ(fresh.ServiceStarted(), today());
    EXPECT_EQ(fresh.ServiceToBeFinished(), "");
    EXPECT_EQ(fresh.ServiceFinished(), "");
    EXPECT_EQ(fresh.ServiceTypes(), "1");
    EXPECT_EQ(fresh.Comments(), "");
    EXPECT_EQ(fresh.Price(), "0");
    EXPECT_EQ(fresh.Discount(), "0");
    EXPECT_EQ(fresh.Paid(), "0");
    EXPECT_EQ(fresh.GST(), "0");
    EXPECT_EQ(fresh.ServiceID(), -1);
    EXPECT_FALSE(fresh.Cancelled());
    EXPECT_EQ(fresh.windowTitle(), "Service");
}

TEST_F(ServiceEditor, AddBeginsWithTodayAndEmptyFields) {
    add([&] {
        EXPECT_TRUE(editor().isModal());
        EXPECT_EQ(text(0), today());
        for (int i : {1, 2, 5, 6, 7, 8}) {
            EXPECT_EQ(text(i), "") << i;
        }
        EXPECT_EQ(control<QPlainTextEdit>("Text1(4)")->toPlainText(), "");
        EXPECT_EQ(forPayment(), "0.00");
        EXPECT_EQ(selectedKinds(), "1000") << "the catch-all kind";
        EXPECT_EQ(picture(0), "DateFilled");
        EXPECT_EQ(picture(1), "DateEmpty");
        EXPECT_EQ(picture(2), "DateEmpty");
        EXPECT_TRUE(control<QPushButton>("Command1(0)")->isEnabled());
        cancel();
    });
}

TEST_F(ServiceEditor, DefaultGSTIsOfferedUnlessItIsNothing) {
    editor().setDefaultGST(0);
    add([&] {
        EXPECT_EQ(text(8), "");
        cancel();
    });
    editor().setDefaultGST(18);
    add([&] {
        EXPECT_EQ(text(8), "18");
        cancel();
    });
}

TEST_F(ServiceEditor, EditShowsTheProperties) {
    editor().setServiceStarted("3/3/2026");
    editor().setServiceToBeFinished("3/9/2026");
    editor().setServiceFinished("");
    editor().setServiceTypes("2|4");
    editor().setComments("one\ntwo");
    editor().setPrice("1,234.50");
    editor().setDiscount("12.5");
    editor().setPaid("1,000.00");
    editor().setGST("18");
    edit([&] {
        EXPECT_EQ(text(0), "3/3/2026");
        EXPECT_EQ(text(1), "3/9/2026");
        EXPECT_EQ(text(2), "");
        EXPECT_EQ(control<QPlainTextEdit>("Text1(4)")->toPlainText(), "one\ntwo");
        EXPECT_EQ(text(5), "1,234.50");
        EXPECT_EQ(text(6), "12.5");
        EXPECT_EQ(text(7), "1,000.00");
        EXPECT_EQ(text(8), "18");
        EXPECT_EQ(selectedKinds(), "0101");
        EXPECT_EQ(forPayment(), "274.62");  // 1234.5 * 0.875 * 1.18 - 1000
        EXPECT_EQ(picture(1), "DateFilled");
        ok();
    });
    EXPECT_FALSE(editor().Cancelled());
    EXPECT_EQ(editor().Price(), "1234.5");
    EXPECT_EQ(editor().Paid(), "1000");
    EXPECT_EQ(editor().Discount(), "12.5") << "a fraction that came from elsewhere stays";
    EXPECT_EQ(editor().GST(), "18");
    EXPECT_EQ(editor().ServiceTypes(), "2|4");
    EXPECT_EQ(editor().Comments(), "one\ntwo");
    EXPECT_EQ(editor().ServiceToBeFinished(), "3/9/2026");
}

TEST_F(ServiceEditor, WhatIsTypedComesBackWithOk) {
    editor().setComments("old");
    edit([&] {
        type(5, "250.5");
        type(6, "7");
        type(7, "3.25");
        type(8, "9");
        type(2, "3/12/2026");
        auto* description = control<QPlainTextEdit>("Text1(4)");
        description->setFocus();
        QTest::keyClick(description, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(description, "new fan");
        ok();
    });
    EXPECT_EQ(editor().Comments(), "new fan");
    EXPECT_EQ(editor().Price(), "250.5");
    EXPECT_EQ(editor().Discount(), "7");
    EXPECT_EQ(editor().Paid(), "3.25");
    EXPECT_EQ(editor().GST(), "9");
    EXPECT_EQ(editor().ServiceFinished(), "3/12/2026");
}

// The window serves the whole day; where somebody left off does not matter to the next service.
TEST_F(ServiceEditor, EachShowingBeginsWithTheWholeStartDateSelected) {
    add([&] {
        field(5)->setFocus();
        cancel();
    });
    editor().setServiceStarted("3/3/2026");
    edit([&] {
        EXPECT_EQ(focusName(), "Text1(0)");
        EXPECT_EQ(field(0)->selectedText(), "3/3/2026");
        cancel();
    });
}

TEST_F(ServiceEditor, NothingLiesOverAnythingAndEveryLabelStandsAtItsField) {
    add([&] {
        const auto parts = editor().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget* one : parts) {
            for (const QWidget* other : parts) {
                if (one != other && one->isVisible() && other->isVisible()) {
                    EXPECT_FALSE(one->geometry().intersects(other->geometry()))
                        << one->objectName().toStdString() << " " << other->objectName().toStdString();
                }
            }
        }
        const auto middle = [&](const QString& name) {
            return control<QWidget>(name)->geometry().center().y();
        };
        for (const int index : {0, 1, 2, 3, 5, 6, 7, 8}) {
            const QString name = QStringLiteral("Text1(%1)").arg(index);
            EXPECT_NEAR(middle(name), middle(QStringLiteral("Label1(%1)").arg(index)), 4) << index;
            if (index < 3) {
                EXPECT_NEAR(middle(name), middle(QStringLiteral("Image1(%1)").arg(index)), 4) << index;
            }
        }
        EXPECT_GT(middle("List1"), middle("Label1(9)"));
        EXPECT_GT(middle("Text1(4)"), middle("Label1(4)"));
        EXPECT_GT(middle("Command1(0)"), list()->geometry().bottom());
        cancel();
    });
}

TEST_F(ServiceEditor, TheFigureForPaymentCannotBeTypedOver) {
    add([&] {
        EXPECT_TRUE(field(3)->isReadOnly());
        EXPECT_EQ(field(3)->palette().color(QPalette::Base), editor().palette().color(QPalette::Window))
            << "and does not look as if it could";
        QTest::mouseClick(field(3), Qt::LeftButton);
        EXPECT_EQ(focusName(), "Text1(0)");
        cancel();
    });
}

TEST_F(ServiceEditor, LabelsAndButtonsSayWhatTheyAre) {
    add([&] {
        const QStringList labels{"Service &started on:",
                                 "Service &to be finished till:",
                                 "Service &finished on:",
                                 "<--- For payment",
                                 "Servi&ce description:",
                                 "&Price:",
                                 "&Discount:",
                                 "P&aid:",
                                 "&GST:",
                                 "Ser&vice type:"};
        for (int i = 0; i < labels.size(); ++i) {
            EXPECT_EQ(control<QLabel>(QStringLiteral("Label1(%1)").arg(i))->text(), labels[i]);
        }
        const QStringList buttons{"OK", "Cancel", "&Help"};
        for (int i = 0; i < buttons.size(); ++i) {
            EXPECT_EQ(control<QPushButton>(QStringLiteral("Command1(%1)").arg(i))->text(), buttons[i]);
        }
        EXPECT_EQ(control<QLabel>("Label2")->text(), "Deselect all items");
        EXPECT_EQ(control<QLabel>("Label3")->text(), "View price list");
        cancel();
    });
}

TEST_F(ServiceEditor, NothingOfTheUseBeforeIsLeft) {
    add([&] {
        type(5, "500");
        type(7, "20");
        control<QPlainTextEdit>("Text1(4)")->setPlainText("old");
        click("Image1(1)");
        clickKind(2);
        cancel();
    });
    add([&] {
        EXPECT_EQ(text(5), "");
        EXPECT_EQ(control<QPlainTextEdit>("Text1(4)")->toPlainText(), "");
        EXPECT_EQ(forPayment(), "0.00");
        EXPECT_FALSE(picker()->isVisible());
        EXPECT_TRUE(field(1)->isVisible());
        EXPECT_EQ(selectedKinds(), "1000");
        ok();
    });
}

TEST_F(ServiceEditor, CurrencyIsTheOneInForce) {
    add([&] {
        EXPECT_EQ(control<QLabel>("Label4")->text(), "DIN");
        cancel();
    });
    CeneDinarske = false;
    add([&] {
        EXPECT_EQ(control<QLabel>("Label4")->text(), "EUR");
        cancel();
    });
}

// --- Kinds of service.

TEST_F(ServiceEditor, FirstKindAloneIsKept) {
    add([&] { ok(); });
    EXPECT_EQ(editor().ServiceTypes(), "1");
}

TEST_F(ServiceEditor, FirstKindGivesWayToARealOne) {
    add([&] {
        clickKind(2);
        EXPECT_EQ(selectedKinds(), "1010");
        ok();
    });
    EXPECT_EQ(editor().ServiceTypes(), "3");
}

TEST_F(ServiceEditor, SeveralKindsAreJoined) {
    add([&] {
        clickKind(1);
        clickKind(3);
        ok();
    });
    EXPECT_EQ(editor().ServiceTypes(), "2|4");
}

TEST_F(ServiceEditor, NoKindIsTheFirstKind) {
    add([&] {
        clickKind(0);
        EXPECT_EQ(selectedKinds(), "0000");
        ok();
    });
    EXPECT_EQ(editor().ServiceTypes(), "1");
}

TEST_F(ServiceEditor, TenthKindIsNotTakenForTheFirst) {
    QStringList names{""};
    for (int i = 1; i <= 11; ++i) {
        names.append(QString::number(i));
    }
    editor().setAllServiceTypes(names);
    add([&] {
        clickKind(0);
        list()->item(9)->setSelected(true);
        list()->item(10)->setSelected(true);
        ok();
    });
    EXPECT_EQ(editor().ServiceTypes(), "10|11");
}

TEST_F(ServiceEditor, DeselectingLeavesTheFirstKind) {
    add([&] {
        clickKind(1);
        clickKind(3);
        click("Label2");
        EXPECT_EQ(selectedKinds(), "1000");
        cancel();
    });
}

TEST_F(ServiceEditor, WithoutATableThereIsOneUnnamedKind) {
    editor().setAllServiceTypes({});
    add([&] {
        ASSERT_EQ(list()->count(), 1);
        EXPECT_EQ(list()->item(0)->text(), "Other services");
        EXPECT_EQ(selectedKinds(), "0") << "without kinds nothing is selected by the program";
        ok();
    });
    EXPECT_EQ(editor().ServiceTypes(), "1");
}

TEST_F(ServiceEditor, ATableWithoutKindsIsAsGoodAsNone) {
    editor().setAllServiceTypes({""});
    add([&] {
        ASSERT_EQ(list()->count(), 1);
        EXPECT_EQ(list()->item(0)->text(), "Other services");
        cancel();
    });
}

TEST_F(ServiceEditor, ChoosingForThePersonBringsTheListBackToItsTop) {
    QStringList names{""};
    for (int i = 1; i <= 80; ++i) {
        names.append(QString("Kind %1").arg(i));
    }
    editor().setAllServiceTypes(names);
    const auto topRow = [&] { return list()->row(list()->itemAt(5, 5)); };
    add([&] {
        list()->setFocus();
        press(Qt::Key_End);
        EXPECT_GT(topRow(), 0);
        click("Label2");
        EXPECT_EQ(topRow(), 0);
        list()->setFocus();
        press(Qt::Key_End);
        cancel();
    });
    editor().setServiceTypes("70");
    edit([&] {
        EXPECT_EQ(topRow(), 0);
        EXPECT_TRUE(list()->item(69)->isSelected());
        cancel();
    });
}

TEST_F(ServiceEditor, KindThatIsGoneSelectsNothing) {
    editor().setServiceTypes("3|77|x");
    edit([&] {
        EXPECT_EQ(selectedKinds(), "0010");
        cancel();
    });
}

// --- Keys.

TEST_F(ServiceEditor, NumberFieldsTakeOnlyWhatBelongsInANumber) {
    add([&] {
        type(5, "1a2,b3.4-5n");
        EXPECT_EQ(text(5), "123.45");
        type(7, "x9.5");
        EXPECT_EQ(text(7), "9.5");
        type(6, "1.5,5%");
        EXPECT_EQ(text(6), "155") << "whole percentages";
        type(8, "1.8");
        EXPECT_EQ(text(8), "18");
        cancel();
    });
}

TEST_F(ServiceEditor, PointBecomesTheSeparatorOfTheLocale) {
    use("sr_Latn_RS");
    add([&] {
        type(5, "12.5");
        EXPECT_EQ(text(5), "12,5");
        field(7)->setFocus();
        QTest::keyClick(field(7), Qt::Key_7, Qt::KeypadModifier);
        QTest::keyClick(field(7), Qt::Key_Period, Qt::KeypadModifier);
        QTest::keyClick(field(7), Qt::Key_5, Qt::KeypadModifier);
        EXPECT_EQ(text(7), "7,5");
        type(8, "1.9");
        EXPECT_EQ(text(8), "19");
        cancel();
    });
}

TEST_F(ServiceEditor, PadCommaIsThePointOfAPointLocale) {
    add([&] {
        field(7)->setFocus();
        QTest::keyClick(field(7), Qt::Key_7, Qt::KeypadModifier);
        QTest::keyClick(field(7), Qt::Key_Comma, Qt::KeypadModifier);
        QTest::keyClick(field(7), Qt::Key_5, Qt::KeypadModifier);
        EXPECT_EQ(text(7), "7.5");
        cancel();
    });
}

// The pad's point has the code of the letter n on the keyboards that the window was made for; the letter
// itself is no part of an amount.
TEST_F(ServiceEditor, UnderACommaTheLetterNIsRefusedAndThePadsPointIsTheComma) {
    use("sr_Latn_RS");
    add([&] {
        for (const int index : {5, 7}) {
            field(index)->setFocus();
            press(Qt::Key_1, Qt::KeypadModifier);
            press(Qt::Key_N);
            press(Qt::Key_2, Qt::KeypadModifier);
            press(Qt::Key_Period, Qt::KeypadModifier);
            press(Qt::Key_5, Qt::KeypadModifier);
            EXPECT_EQ(text(index), "12,5");
        }
        type(5, "");
        press(Qt::Key_3);
        press(Qt::Key_Period);
        press(Qt::Key_7);
        EXPECT_EQ(text(5), "3,7");
        cancel();
    });
}

TEST_F(ServiceEditor, UnderAPointTheLetterNIsRefusedToo) {
    add([&] {
        field(5)->setFocus();
        press(Qt::Key_1);
        press(Qt::Key_N);
        press(Qt::Key_Period, Qt::KeypadModifier);
        press(Qt::Key_5);
        EXPECT_EQ(text(5), "1.5");
        for (const int index : {6, 8}) {
            type(index, "");
            press(Qt::Key_1);
            press(Qt::Key_N);
            press(Qt::Key_Period, Qt::KeypadModifier);
            press(Qt::Key_5);
            EXPECT_EQ(text(index), "15");
        }
        cancel();
    });
}

TEST_F(ServiceEditor, EditingKeysPassTheFilter) {
    add([&] {
        type(5, "123");
        QTest::keyClick(field(5), Qt::Key_Backspace);
        EXPECT_EQ(text(5), "12");
        QTest::keyClick(field(5), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field(5), Qt::Key_Delete);
        EXPECT_EQ(text(5), "");
        cancel();
    });
}

TEST_F(ServiceEditor, DateAndDescriptionTakeAnyText) {
    add([&] {
        type(1, "in May");
        EXPECT_EQ(text(1), "in May");
        auto* description = control<QPlainTextEdit>("Text1(4)");
        description->setFocus();
        QTest::keyClicks(description, "a-b");
        QTest::keyClick(description, Qt::Key_Return);
        QTest::keyClicks(description, "c");
        EXPECT_EQ(description->toPlainText(), "a-b\nc") << "Enter belongs to the text here";
        cancel();
    });
}

TEST_F(ServiceEditor, FieldIsSelectedWholeWhenItGetsTheFocus) {
    editor().setPrice("12.00");
    edit([&] {
        EXPECT_EQ(field(0)->selectedText(), text(0));
        QTest::mouseClick(field(5), Qt::LeftButton);
        QCoreApplication::processEvents();
        EXPECT_EQ(field(5)->selectedText(), "12.00");
        QTest::keyClicks(field(5), "7");
        EXPECT_EQ(text(5), "7");
        click("Label1(0)");
        EXPECT_EQ(field(0)->selectedText(), text(0));
        auto* description = control<QPlainTextEdit>("Text1(4)");
        description->setPlainText("one two");
        click("Label1(4)");
        EXPECT_EQ(description->textCursor().selectedText(), "one two");
        cancel();
    });
}

TEST_F(ServiceEditor, TabWalksInTheOrderOfAnEntry) {
    add([&] {
        QStringList walked{focusName()};
        for (int i = 0; i < 14; ++i) {
            press(Qt::Key_Tab);
            walked.append(focusName());
        }
        EXPECT_EQ(walked, QStringList({"Text1(0)", "Text1(1)", "Text1(2)", "Text1(5)", "Text1(7)", "Text1(6)",
                                       "Text1(8)", "List1", "Text1(4)", "Command1(0)", "Command1(1)",
                                       "Command1(2)", "Label2", "Label3", "Text1(0)"}));
        cancel();
    });
}

TEST_F(ServiceEditor, LabelLeadsToItsField) {
    add([&] {
        const QList<QPair<int, QString>> fields{{1, "Text1(1)"}, {2, "Text1(2)"}, {4, "Text1(4)"},
                                                {5, "Text1(5)"}, {6, "Text1(6)"}, {7, "Text1(7)"},
                                                {8, "Text1(8)"}, {9, "List1"},    {0, "Text1(0)"}};
        for (const auto& [label, name] : fields) {
            click(QStringLiteral("Label1(%1)").arg(label));
            EXPECT_EQ(focusName(), name) << label;
            EXPECT_NE(control<QLabel>(QStringLiteral("Label1(%1)").arg(label))->buddy(), nullptr);
        }
        cancel();
    });
}

// --- For payment.

TEST_F(ServiceEditor, ForPaymentFollowsTheFigures) {
    add([&] {
        type(8, "0");
        type(5, "1000");
        EXPECT_EQ(forPayment(), "1,000.00");
        type(6, "10");
        EXPECT_EQ(forPayment(), "900.00");
        type(7, "100");
        EXPECT_EQ(forPayment(), "800.00");
        type(8, "20");
        EXPECT_EQ(forPayment(), "980.00");
        type(7, "2000");
        EXPECT_EQ(forPayment(), "-920.00") << "an overpayment shows";
        cancel();
    });
}

TEST_F(ServiceEditor, EmptyGSTCountsEighteenButIsKeptAsNothing) {
    editor().setDefaultGST(5);
    add([&] {
        type(5, "100");
        EXPECT_EQ(forPayment(), "105.00");
        type(8, "");
        EXPECT_EQ(forPayment(), "118.00");
        ok();
    });
    EXPECT_EQ(editor().GST(), "0");
}

TEST_F(ServiceEditor, UnreadableFiguresCountAsNothing) {
    add([&] {
        type(8, "0");
        paste(5, "ten");
        EXPECT_EQ(forPayment(), "0.00");
        type(5, "10");
        paste(7, "?");
        EXPECT_EQ(forPayment(), "10.00");
        cancel();
    });
}

// --- OK.

TEST_F(ServiceEditor, OkNeedsAStartDate) {
    add([&] {
        type(0, "");
        EXPECT_FALSE(control<QPushButton>("Command1(0)")->isEnabled());
        type(0, "  ");
        EXPECT_FALSE(control<QPushButton>("Command1(0)")->isEnabled());
        type(0, "3");
        EXPECT_TRUE(control<QPushButton>("Command1(0)")->isEnabled());
        cancel();
    });
}

TEST_F(ServiceEditor, StartThatIsNoDateIsRefused) {
    add([&] {
        type(0, "yesterdayish");
        type(5, "1");
        ok();
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.asked[0].text,
                  "The date when the service has begun must be entered and must be presented with the "
                  "correct short "
                  "date format, e.g. " +
                      today());
        EXPECT_EQ(boxes.asked[0].icon, platform::BoxIcon::Exclamation);
        EXPECT_EQ(boxes.asked[0].title, "Tarvello");
        EXPECT_TRUE(editor().isVisible());
        EXPECT_EQ(focusName(), "Text1(0)");
        cancel();
    });
}

TEST_F(ServiceEditor, WhatIsRefusedIsTypedOverAtOnce) {
    add([&] {
        type(0, "yesterdayish");
        press(Qt::Key_Return);  // the field has the focus all the while
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_TRUE(field(0)->hasFocus());
        EXPECT_EQ(field(0)->selectedText(), "yesterdayish");
        for (const Qt::Key key : {Qt::Key_3, Qt::Key_Slash, Qt::Key_4, Qt::Key_Slash, Qt::Key_2, Qt::Key_6}) {
            press(key);
        }
        EXPECT_EQ(text(0), "3/4/26");
        type(5, "");
        paste(2, "soon");
        paste(5, "dear");
        ok();
        EXPECT_TRUE(field(2)->hasFocus());
        EXPECT_EQ(field(2)->selectedText(), "soon");
        cancel();
    });
}

// A box takes the front from the window, and the field gets the focus only when the window has it back.
TEST_F(ServiceEditor, WhatIsRefusedIsSelectedAlsoWhenTheWindowComesForwardAfterwards) {
    add([&] {
        QDialog inFront(&editor());
        boxes.onBox = [&](const platform::Box&) {
            inFront.show();
            ASSERT_TRUE(waitUntilActive(inFront));
        };
        paste(1, "soon");
        field(5)->setFocus();
        ok();
        EXPECT_FALSE(field(1)->hasFocus());
        inFront.hide();
        editor().activateWindow();
        ASSERT_TRUE(waitUntilActive(editor()));
        EXPECT_TRUE(field(1)->hasFocus());
        EXPECT_EQ(field(1)->selectedText(), "soon");
        cancel();
    });
}

TEST_F(ServiceEditor, EveryFailureIsSaidInOneBoxInTheOrderOfTheChecks) {
    add([&] {
        paste(0, "a");
        paste(1, "b");
        paste(2, "c");
        paste(5, "d");
        paste(7, "e");
        paste(6, "f");
        paste(8, "g");
        ok();
        const QString date = " must be presented with the correct short date format, e.g. " + today();
        ASSERT_EQ(boxes.asked.size(), 1);
        EXPECT_EQ(boxes.lastText(),
                  QStringList({"The date when the service has begun must be entered and" + date,
                               "The date when the service has to be finished" + date,
                               "The date when the service was finished" + date,
                               "A service price must be a valid nuber.",
                               "A paid amount of money must be a valid nuber.",
                               "Discount must be a valid nuber.", "GST must be a valid nuber."})
                      .join('\n'));
        EXPECT_EQ(focusName(), "Text1(0)");
        cancel();
    });
}

TEST_F(ServiceEditor, FocusGoesToTheFirstFailureOfTheChecksNotOfTheTabOrder) {
    add([&] {
        paste(6, "much");  // discount comes behind paid in the checks, and so does gst
        paste(8, "100");
        ok();
        EXPECT_EQ(boxes.lastText(),
                  "Discount must be a valid nuber.\nGST must not be a number greater then or equal to 100%.");
        EXPECT_EQ(focusName(), "Text1(6)");
        paste(6, "1");
        paste(7, "?");
        paste(8, "?");
        ok();
        EXPECT_EQ(boxes.lastText(),
                  "A paid amount of money must be a valid nuber.\nGST must be a valid nuber.");
        EXPECT_EQ(focusName(), "Text1(7)");
        cancel();
    });
}

TEST_F(ServiceEditor, GSTStaysBelowAHundred) {
    add([&] {
        type(8, "100");
        ok();
        EXPECT_EQ(boxes.lastText(), "GST must not be a number greater then or equal to 100%.");
        EXPECT_EQ(focusName(), "Text1(8)");
        type(8, "99");
        ok();
    });
    EXPECT_EQ(editor().GST(), "99");
}

TEST_F(ServiceEditor, DiscountHasNoLimit) {
    add([&] {
        type(5, "100");
        type(8, "0");
        type(6, "150");
        EXPECT_EQ(forPayment(), "-50.00");
        ok();
    });
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(editor().Discount(), "150");
}

TEST_F(ServiceEditor, EmptyFiguresAreNothing) {
    add([&] {
        paste(5, " ");
        ok();
    });
    EXPECT_EQ(editor().Price(), "0");
    EXPECT_EQ(editor().Paid(), "0");
    EXPECT_EQ(editor().Discount(), "0");
    EXPECT_EQ(editor().ServiceToBeFinished(), "");
    EXPECT_EQ(editor().ServiceFinished(), "");
}

TEST_F(ServiceEditor, FiguresThatWereTakenAwayAreNothingToo) {
    editor().setServiceStarted("3/3/2026");
    editor().setServiceToBeFinished("3/9/2026");
    editor().setPrice("500.00");
    editor().setPaid("100.00");
    editor().setDiscount("5");
    editor().setGST("18");
    edit([&] {
        for (const int index : {1, 5, 6, 7, 8}) {
            type(index, "");
        }
        ok();
    });
    EXPECT_EQ(editor().Price(), "0");
    EXPECT_EQ(editor().Paid(), "0");
    EXPECT_EQ(editor().Discount(), "0");
    EXPECT_EQ(editor().GST(), "0");
    EXPECT_EQ(editor().ServiceToBeFinished(), "");
}

TEST_F(ServiceEditor, DatesComeBackInTheProgramsForm) {
    add([&] {
        type(0, " 3/9/26 ");
        type(1, "2026-03-10");
        ok();
    });
    EXPECT_EQ(editor().ServiceStarted(), "3/9/2026");
    EXPECT_EQ(editor().ServiceToBeFinished(), "3/10/2026");
}

TEST_F(ServiceEditor, AmountsOfACommaLocaleAreRead) {
    use("sr_Latn_RS");
    editor().setServiceStarted(today());
    editor().setPrice("1.234,50");
    editor().setPaid("12.345,67");
    edit([&] { ok(); });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
    EXPECT_EQ(editor().Price(), "1234,5");
    EXPECT_EQ(editor().Paid(), "12345,67");
}

TEST_F(ServiceEditor, EnterIsOkAndEscapeIsCancel) {
    add([&] { QTest::keyClick(field(5), Qt::Key_Return); });
    EXPECT_FALSE(editor().Cancelled());
    add([&] { QTest::keyClick(field(5), Qt::Key_Escape); });
    EXPECT_TRUE(editor().Cancelled());
}

TEST_F(ServiceEditor, EnterOnAButtonPressesThatButton) {
    add([&] { enterOn("Command1(1)"); });
    EXPECT_TRUE(editor().Cancelled());
    provideHelp();
    helpCalls.clear();
    add([&] {
        enterOn("Command1(2)");
        ASSERT_EQ(helpCalls.size(), 1);
        EXPECT_EQ(helpCalls[0].command, HELP_CONTEXT);
        EXPECT_EQ(helpCalls[0].context, 7002);
        EXPECT_TRUE(editor().isVisible());
        enterOn("Command1(0)");
    });
    EXPECT_FALSE(editor().Cancelled());
}

TEST_F(ServiceEditor, EnterInTheListIsOk) {
    add([&] { enterOn("List1"); });
    EXPECT_FALSE(editor().Cancelled());
}

TEST_F(ServiceEditor, EnterOnALinkFollowsIt) {
    add([&] {
        clickKind(2);
        enterOn("Label2");
        EXPECT_EQ(selectedKinds(), "1000");
        EXPECT_TRUE(editor().isVisible());
        cancel();
    });
}

TEST_F(ServiceEditor, CancelKeepsTheProperties) {
    editor().setServiceStarted("3/3/2026");
    editor().setPrice("5");
    edit([&] {
        type(5, "77");
        cancel();
    });
    EXPECT_TRUE(editor().Cancelled());
    EXPECT_EQ(editor().Price(), "5");
    edit([&] { ok(); });
    EXPECT_FALSE(editor().Cancelled());
}

TEST_F(ServiceEditor, CloseBoxIsACancel) {
    add([&] { editor().close(); });
    EXPECT_TRUE(editor().Cancelled());
}
