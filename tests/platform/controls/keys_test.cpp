#include "platform/controls/keys.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/system/locale_scope.h"

namespace {

using platform::filterNumberKey;
using platform::NumberKeys;

QKeyEvent press(int key, const char* text, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return {QEvent::KeyPress, key, modifiers, QString::fromUtf8(text)};
}

// What a field holds after these characters were typed on the main keys.
QString typed(const char* text, NumberKeys rule = {}) {
    QLineEdit field;
    for (const QChar letter : QString::fromUtf8(text)) {
        const QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
        if (!filterNumberKey(field, key, rule)) {
            field.insert(QString(letter));
        }
    }
    return field.text();
}

TEST(NumberKeys, DigitsAndTheUsersSeparatorPass) {
    const LocaleScope point("en_US");
    EXPECT_EQ(typed("12.5"), "12.5");
    EXPECT_EQ(typed("1,2-3 4e5k"), "12345") << "everything else is dropped";
}

TEST(NumberKeys, UnderACommaThePointWritesTheComma) {
    const LocaleScope comma("de_DE");
    EXPECT_EQ(typed("12,5"), "12,5");
    EXPECT_EQ(typed("12.5"), "12,5");
}

TEST(NumberKeys, ThePadsPointIsTheSeparatorWhateverItIs) {
    for (const char* locale : {"en_US", "de_DE"}) {
        const LocaleScope scope(locale);
        const QString separator = QLocale().decimalPoint();
        for (const bool comma : {false, true}) {
            QLineEdit field;
            const QKeyEvent key =
                press(comma ? Qt::Key_Comma : Qt::Key_Period, comma ? "," : ".", Qt::KeypadModifier);
            const bool dealtWith = filterNumberKey(field, key);
            EXPECT_EQ(dealtWith ? field.text() : key.text(), separator) << locale << comma;
        }
    }
}

TEST(NumberKeys, TheLetterNWritesTheSeparatorOnlyUnderACommaAndOnlyWhereItCounts) {
    const NumberKeys rule{.letterNCounts = true};
    {
        const LocaleScope comma("de_DE");
        EXPECT_EQ(typed("1n5", rule), "1,5");
        EXPECT_EQ(typed("1n5"), "15");
        EXPECT_EQ(typed("1N5", rule), "15");
    }
    const LocaleScope point("en_US");
    EXPECT_EQ(typed("1n5", rule), "15");
}

TEST(NumberKeys, WholeNumbersTakeDigitsOnly) {
    for (const char* locale : {"en_US", "de_DE"}) {
        const LocaleScope scope(locale);
        EXPECT_EQ(typed("1.2,3n", {.decimals = false, .letterNCounts = true}), "123") << locale;
    }
}

TEST(NumberKeys, OtherPeoplesDigitsAreNone) {
    const LocaleScope point("en_US");
    EXPECT_EQ(typed("1\u0663\u00b2"), "1");
}

TEST(NumberKeys, CommandsAndEditingKeysPass) {
    QLineEdit field("7");
    for (const QKeyEvent& key :
         {press(Qt::Key_V, "\x16", Qt::ControlModifier), press(Qt::Key_V, "v", Qt::ControlModifier),
          press(Qt::Key_Backspace, "\b"), press(Qt::Key_Delete, "\x7f"), press(Qt::Key_Left, ""),
          press(Qt::Key_Tab, "\t"), press(Qt::Key_K, "k", Qt::AltModifier)}) {
        EXPECT_FALSE(filterNumberKey(field, key)) << key.key();
    }
    EXPECT_EQ(field.text(), "7");
}

TEST(NumberKeys, ASeparatorReplacesWhatIsSelected) {
    const LocaleScope comma("de_DE");
    QLineEdit field("12");
    field.setSelection(1, 1);
    EXPECT_TRUE(filterNumberKey(field, press(Qt::Key_Period, ".")));
    EXPECT_EQ(field.text(), "1,");
}

TEST(EnterKey, IsEitherOfTheTwoWithoutAnotherKeyHeld) {
    EXPECT_TRUE(platform::isEnter(press(Qt::Key_Return, "\r")));
    EXPECT_TRUE(platform::isEnter(press(Qt::Key_Enter, "\r", Qt::KeypadModifier)));
    for (const Qt::KeyboardModifier held : {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier}) {
        EXPECT_FALSE(platform::isEnter(press(Qt::Key_Return, "\r", held))) << held;
    }
    EXPECT_FALSE(platform::isEnter(press(Qt::Key_Space, " ")));
}

TEST(PressTab, GoesOnToTheNextControl) {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* first = new QLineEdit;
    auto* second = new QLineEdit;
    column->addWidget(first);
    column->addWidget(second);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    first->setFocus();
    platform::pressTab(first);
    EXPECT_TRUE(second->hasFocus());
    EXPECT_EQ(first->text(), "");
}

// A dialog with a field, a box, two buttons and a picture button; OK is the default where `hasDefault`.
class EnterInADialog : public ::testing::Test {
 protected:
    void open(bool hasDefault) {
        auto* column = new QVBoxLayout(&dialog);
        for (QWidget* widget : QList<QWidget*>{field, box, cancel, ok, picture}) {
            column->addWidget(widget);
        }
        picture->setFocusPolicy(Qt::StrongFocus);
        for (QPushButton* button : {cancel, ok}) {
            button->setAutoDefault(false);
            button->setDefault(hasDefault && button == ok);
        }
        platform::enterPressesButtons(&dialog);
        const QList<std::pair<QAbstractButton*, QString>> names{
            {cancel, "Cancel"}, {ok, "OK"}, {picture, "Picture"}};
        for (const auto& [button, name] : names) {
            QObject::connect(button, &QAbstractButton::clicked, &dialog,
                             [this, name = name] { pressed.append(name); });
        }
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    void enterOn(QWidget* widget, Qt::Key key = Qt::Key_Return, Qt::KeyboardModifiers held = {}) {
        widget->setFocus();
        QTest::keyClick(dialog.windowHandle(), key, held);
    }
    QStringList pressed;
    QDialog dialog;
    QLineEdit* field = new QLineEdit;
    QCheckBox* box = new QCheckBox("Box");
    QPushButton* cancel = new QPushButton("Cancel");
    QPushButton* ok = new QPushButton("OK");
    QToolButton* picture = new QToolButton;
};

TEST_F(EnterInADialog, PressesTheButtonThatHasTheFocus) {
    open(true);
    enterOn(cancel);
    EXPECT_EQ(pressed, QStringList({"Cancel"}));
    enterOn(picture, Qt::Key_Enter, Qt::KeypadModifier);
    enterOn(ok);
    EXPECT_EQ(pressed, QStringList({"Cancel", "Picture", "OK"}));
}

TEST_F(EnterInADialog, ElsewhereItIsTheDefaultButton) {
    open(true);
    enterOn(cancel, Qt::Key_Tab);
    enterOn(field);
    enterOn(box);
    EXPECT_EQ(pressed, QStringList({"OK", "OK"}));
    EXPECT_FALSE(box->isChecked());
}

TEST_F(EnterInADialog, TheButtonThatEnterWouldPressShowsIt) {
    open(true);
    cancel->setFocus();
    EXPECT_TRUE(cancel->isDefault());
    EXPECT_FALSE(ok->isDefault());
    field->setFocus();
    EXPECT_FALSE(cancel->isDefault());
    EXPECT_TRUE(ok->isDefault());
}

TEST_F(EnterInADialog, WithoutADefaultButtonEnterInAFieldPressesNone) {
    open(false);
    enterOn(field);
    EXPECT_EQ(pressed, QStringList());
    enterOn(cancel);
    enterOn(field);
    EXPECT_EQ(pressed, QStringList({"Cancel"}));
}

TEST_F(EnterInADialog, WithAnotherKeyHeldItIsNoEnter) {
    open(false);
    enterOn(cancel, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(pressed, QStringList());
}

// A window that goes on to the next field at each Enter still lets its buttons have theirs.
TEST_F(EnterInADialog, AWindowThatTakesEnterForItsFieldsDoesNotTakeItFromTheButtons) {
    struct NextField : QObject {
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() != QEvent::KeyPress || !platform::isEnter(static_cast<QKeyEvent&>(*event))) {
                return false;
            }
            platform::pressTab(static_cast<QWidget*>(watched));
            return true;
        }
    } nextField;
    field->installEventFilter(&nextField);
    cancel->installEventFilter(&nextField);
    open(true);
    enterOn(field);
    EXPECT_TRUE(box->hasFocus());
    enterOn(cancel);
    EXPECT_EQ(pressed, QStringList({"Cancel"}));
}

// --- Keys that press a button and turn pages.

struct WindowWithPages : QDialog {
    WindowWithPages() {
        auto* column = new QVBoxLayout(this);
        column->addWidget(field);
        column->addWidget(button);
        column->addWidget(pages);
        for (int i = 0; i < 2; ++i) {
            pages->addTab(new QLineEdit, QString::number(i));
        }
        platform::keyPressesButton(QKeySequence("Ctrl+S"), button);
        platform::keysTurnPages(pages);
        connect(button, &QPushButton::clicked, this, [this] { ++pressed; });
        show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
        field->setFocus();
    }
    void key(Qt::Key key) { QTest::keyClick(focusWidget(), key, Qt::ControlModifier); }

    QLineEdit* field = new QLineEdit(this);
    QPushButton* button = new QPushButton("OK", this);
    QTabWidget* pages = new QTabWidget(this);
    int pressed = 0;
};

TEST(KeyOfAButton, PressesItWhenTheFieldHasBeenLeft) {
    WindowWithPages window;
    int left = 0;
    QObject::connect(window.field, &QLineEdit::editingFinished, &window, [&] {
        ++left;
        EXPECT_EQ(window.pressed, 0) << "what is typed counts first";
    });
    QTest::keyClicks(window.field, "x");
    window.key(Qt::Key_S);
    EXPECT_EQ(window.pressed, 1);
    EXPECT_EQ(left, 1);
}

TEST(KeyOfAButton, LeavesOneAloneThatIsOffOrHidden) {
    WindowWithPages window;
    window.button->setEnabled(false);
    window.key(Qt::Key_S);
    window.button->setEnabled(true);
    window.button->hide();
    window.key(Qt::Key_S);
    EXPECT_EQ(window.pressed, 0);
    EXPECT_EQ(window.focusWidget(), window.field);
}

TEST(KeyOfAButton, PressesNothingWhileAFieldHoldsTheFocus) {
    WindowWithPages window;
    QObject::connect(window.field, &QLineEdit::editingFinished, window.field,
                     [&] { window.field->setFocus(); });
    QTest::keyClicks(window.field, "x");
    window.key(Qt::Key_S);
    EXPECT_EQ(window.pressed, 0);
    EXPECT_EQ(window.focusWidget(), window.field);
}

TEST(KeysOfPages, TurnThemAndStopAtTheEnds) {
    WindowWithPages window;
    window.key(Qt::Key_PageUp);
    EXPECT_EQ(window.pages->currentIndex(), 0);
    EXPECT_EQ(window.focusWidget(), window.field) << "nothing was turned";
    window.key(Qt::Key_PageDown);
    EXPECT_EQ(window.pages->currentIndex(), 1);
    window.key(Qt::Key_PageDown);
    EXPECT_EQ(window.pages->currentIndex(), 1);
    window.key(Qt::Key_PageUp);
    EXPECT_EQ(window.pages->currentIndex(), 0);
}

}  // namespace
