#include "platform/controls/boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <stdexcept>

namespace {

using platform::Box;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::BoxScript;

Box question() {
    Box box;
    box.text = "Delete <b>it</b>?";
    box.title = "Tarvello";
    box.icon = BoxIcon::Exclamation;
    box.buttons = BoxButtons::YesNo;
    box.preselected = BoxAnswer::No;
    return box;
}

// Runs while the next real window is up. The window is closed afterwards, whatever happened, so that no test
// hangs.
template <typename Window>
void whileUp(std::function<void(Window&)> act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        act(*window);
        if (window->isVisible()) {
            window->reject();
        }
    });
}

TEST(BoxScript, TakesTheAnswersInOrder) {
    BoxScript boxes;
    boxes.answers = {BoxAnswer::Yes, BoxAnswer::No};
    EXPECT_EQ(platform::showBox(question()), BoxAnswer::Yes);
    EXPECT_EQ(platform::showBox(question()), BoxAnswer::No);
    EXPECT_TRUE(boxes.answers.isEmpty());
}

TEST(BoxScript, KeepsEveryBoxAsked) {
    BoxScript boxes;
    EXPECT_EQ(boxes.lastText(), QString());
    platform::showBox(question());
    Box notice;
    notice.text = "Done.";
    platform::showBox(notice);
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.asked[0].text, "Delete <b>it</b>?");
    EXPECT_EQ(boxes.asked[0].title, "Tarvello");
    EXPECT_EQ(boxes.asked[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(boxes.asked[0].preselected, BoxAnswer::No);
    EXPECT_EQ(boxes.lastText(), "Done.");
}

TEST(BoxScript, WithNoAnswerLeftThePreselectedButtonIsPressed) {
    BoxScript boxes;
    EXPECT_EQ(platform::showBox(question()), BoxAnswer::No);
    Box box = question();
    box.preselected = BoxAnswer::Yes;
    EXPECT_EQ(platform::showBox(box), BoxAnswer::Yes);
    box.buttons = BoxButtons::Ok;
    EXPECT_EQ(platform::showBox(box), BoxAnswer::Ok);
}

TEST(BoxScript, ATestCanActWhileTheBoxWouldBeUp) {
    BoxScript boxes;
    QString seen;
    boxes.onBox = [&](const Box& box) {
        seen = box.text;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "no real box under a test";
        boxes.answers.append(BoxAnswer::Yes);
    };
    EXPECT_EQ(platform::showBox(question()), BoxAnswer::Yes);
    EXPECT_EQ(seen, "Delete <b>it</b>?");
}

TEST(BoxScript, InputAndFileWithoutAnswerAreCancelled) {
    BoxScript boxes;
    boxes.inputs = {QString("5")};
    boxes.files = {QString("/x/y.mdb")};
    EXPECT_EQ(platform::inputBox("How many?", "Tarvello", "1"), QString("5"));
    EXPECT_EQ(platform::inputBox("How many?", "Tarvello", "1"), std::nullopt);
    EXPECT_EQ(platform::openFileDialog({"Find", "All|*.*", "/"}), QString("/x/y.mdb"));
    EXPECT_EQ(platform::openFileDialog({"Find it", "All|*.*", "/"}), std::nullopt);
    EXPECT_EQ(boxes.lastText(), "How many?");
    ASSERT_EQ(boxes.fileQuestions.size(), 2);
    EXPECT_EQ(boxes.fileQuestions[1].title, "Find it");
}

TEST(BoxScript, OnlyOneAtATime) {
    const BoxScript boxes;
    EXPECT_THROW(BoxScript(), std::logic_error);
    Box notice;
    EXPECT_EQ(platform::showBox(notice), BoxAnswer::Ok) << "the first one is still in charge";
    EXPECT_EQ(boxes.asked.size(), 1);
}

TEST(MessageBox, ShowsItsTextAsItStands) {
    whileUp<QMessageBox>([](QMessageBox& window) {
        EXPECT_EQ(window.text(), "Delete <b>it</b>?");
        EXPECT_EQ(window.textFormat(), Qt::PlainText);
        EXPECT_EQ(window.windowTitle(), "Tarvello");
        EXPECT_EQ(window.icon(), QMessageBox::Warning);
        EXPECT_EQ(window.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    });
    platform::showBox(question());
}

TEST(MessageBox, ShowsThePictureOfItsKind) {
    const QList<std::pair<BoxIcon, QMessageBox::Icon>> kinds = {
        {BoxIcon::None, QMessageBox::NoIcon},
        {BoxIcon::Information, QMessageBox::Information},
        {BoxIcon::Exclamation, QMessageBox::Warning},
        {BoxIcon::Critical, QMessageBox::Critical},
        {BoxIcon::Question, QMessageBox::Question}};
    for (const auto& [kind, picture] : kinds) {
        whileUp<QMessageBox>([wanted = picture](QMessageBox& window) { EXPECT_EQ(window.icon(), wanted); });
        Box box = question();
        box.icon = kind;
        platform::showBox(box);
    }
}

TEST(MessageBox, EnterPressesThePreselectedButton) {
    for (const BoxAnswer preselected : {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel}) {
        whileUp<QMessageBox>([](QMessageBox& window) { QTest::keyClick(&window, Qt::Key_Return); });
        Box box = question();
        box.buttons = preselected == BoxAnswer::Cancel ? BoxButtons::YesNoCancel : BoxButtons::YesNo;
        box.preselected = preselected;
        EXPECT_EQ(platform::showBox(box), preselected);
    }
}

TEST(MessageBox, GivesTheButtonPressed) {
    const QList<std::pair<QMessageBox::StandardButton, BoxAnswer>> buttons = {
        {QMessageBox::Yes, BoxAnswer::Yes},
        {QMessageBox::No, BoxAnswer::No},
        {QMessageBox::Cancel, BoxAnswer::Cancel}};
    for (const auto& [button, answer] : buttons) {
        whileUp<QMessageBox>([which = button](QMessageBox& window) {
            QTest::mouseClick(window.button(which), Qt::LeftButton);
        });
        Box box = question();
        box.buttons = BoxButtons::YesNoCancel;
        EXPECT_EQ(platform::showBox(box), answer);
    }
}

TEST(MessageBox, HelpIsShownBesideABoxThatStaysUp) {
    int helped = 0;
    whileUp<QMessageBox>([&](QMessageBox& window) {
        QAbstractButton* help = window.button(QMessageBox::Help);
        ASSERT_NE(help, nullptr);
        QTest::mouseClick(help, Qt::LeftButton);
        QTest::mouseClick(help, Qt::LeftButton);
        EXPECT_EQ(helped, 2);
        EXPECT_TRUE(window.isVisible());
        QTest::mouseClick(window.button(QMessageBox::Ok), Qt::LeftButton);
    });
    EXPECT_EQ(platform::showBox({.text = "Text", .title = "Title", .help = [&] { ++helped; }}),
              BoxAnswer::Ok);
    whileUp<QMessageBox>([](QMessageBox& window) {
        EXPECT_EQ(window.button(QMessageBox::Help), nullptr);
        window.accept();
    });
    platform::showBox({.text = "Text", .title = "Title"});
}

// What a person presses while the box is up, through the window system; the answer, none where the box
// stayed.
std::optional<BoxAnswer> answerTo(const Box& box, const std::function<void(QMessageBox&)>& act) {
    bool stayed = false;
    whileUp<QMessageBox>([&](QMessageBox& window) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        act(window);
        QTest::qWait(150);  // a button that a key has pressed comes up again after a moment
        stayed = window.isVisible();
    });
    const BoxAnswer answer = platform::showBox(box);
    return stayed ? std::nullopt : std::optional(answer);
}
std::optional<BoxAnswer> answerTo(const Box& box, Qt::Key key, Qt::KeyboardModifiers held = {}) {
    return answerTo(box, [=](QMessageBox& window) { QTest::keyClick(window.windowHandle(), key, held); });
}
std::optional<BoxAnswer> answerToTheCloseButton(const Box& box) {
    return answerTo(box, [](QMessageBox& window) {
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        qApp->notify(window.windowHandle(), &close);
    });
}
Box boxWith(BoxButtons buttons) {
    Box box = question();
    box.buttons = buttons;
    return box;
}

TEST(MessageBox, ABareLetterIsNoAnswer) {
    for (const BoxButtons buttons : {BoxButtons::YesNo, BoxButtons::YesNoCancel, BoxButtons::Ok}) {
        for (const Qt::Key key : {Qt::Key_Y, Qt::Key_N, Qt::Key_C, Qt::Key_O}) {
            EXPECT_EQ(answerTo(boxWith(buttons), key), std::nullopt) << key;
            EXPECT_EQ(answerTo(boxWith(buttons), key, Qt::ShiftModifier), std::nullopt) << key;
        }
    }
}

TEST(MessageBox, AltAndALetterIsAnAnswer) {
    EXPECT_EQ(answerTo(question(), Qt::Key_Y, Qt::AltModifier), BoxAnswer::Yes);
    EXPECT_EQ(answerTo(question(), Qt::Key_N, Qt::AltModifier), BoxAnswer::No);
}

TEST(MessageBox, SpaceAndEnterPressTheButtonWithTheFocus) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        EXPECT_EQ(answerTo(question(), key), BoxAnswer::No) << "the preselected one has it first";
        EXPECT_EQ(answerTo(question(),
                           [key](QMessageBox& window) {
                               QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
                               QTest::keyClick(window.windowHandle(), key);
                           }),
                  BoxAnswer::Yes);
    }
}

TEST(MessageBox, WhereBothAnswersMeanSomethingEscAndTheCloseButtonDoNothing) {
    for (const BoxAnswer preselected : {BoxAnswer::Yes, BoxAnswer::No}) {
        Box box = question();
        box.preselected = preselected;
        EXPECT_EQ(answerTo(box, Qt::Key_Escape), std::nullopt);
        EXPECT_EQ(answerToTheCloseButton(box), std::nullopt);
    }
}

TEST(MessageBox, EscAndTheCloseButtonMeanOkOrCancelWhereThereIsOne) {
    EXPECT_EQ(answerTo(boxWith(BoxButtons::Ok), Qt::Key_Escape), BoxAnswer::Ok);
    EXPECT_EQ(answerToTheCloseButton(boxWith(BoxButtons::Ok)), BoxAnswer::Ok);
    EXPECT_EQ(answerTo(boxWith(BoxButtons::YesNoCancel), Qt::Key_Escape), BoxAnswer::Cancel);
    EXPECT_EQ(answerToTheCloseButton(boxWith(BoxButtons::YesNoCancel)), BoxAnswer::Cancel);
    Box withHelp = boxWith(BoxButtons::Ok);
    withHelp.help = [] {};
    EXPECT_EQ(answerTo(withHelp, Qt::Key_Escape), BoxAnswer::Ok);
    EXPECT_EQ(answerToTheCloseButton(withHelp), BoxAnswer::Ok);
}

TEST(MessageBox, ThePointerIsOrdinaryWhileItIsUpAndComesBack) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QApplication::setOverrideCursor(Qt::BusyCursor);
    whileUp<QMessageBox>([](QMessageBox&) { EXPECT_EQ(QApplication::overrideCursor(), nullptr); });
    platform::showBox(question());
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BusyCursor);
    QApplication::restoreOverrideCursor();
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
}

TEST(MessageBox, BelongsToTheActiveWindow) {
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    whileUp<QMessageBox>([&](QMessageBox& box) { EXPECT_EQ(box.parentWidget(), &window); });
    platform::showBox(question());
}

TEST(InputBox, TakesTheTextOrNothing) {
    whileUp<QInputDialog>([](QInputDialog& window) {
        EXPECT_EQ(window.windowTitle(), "Tarvello");
        EXPECT_EQ(window.textValue(), "1");
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
        QLineEdit* line = window.findChild<QLineEdit*>();
        ASSERT_NE(line, nullptr);
        line->selectAll();
        QTest::keyClicks(line, "12");
        QTest::keyClick(line, Qt::Key_Return);
    });
    EXPECT_EQ(platform::inputBox("<i>How many?</i>", "Tarvello", "1"), QString("12"));
    whileUp<QInputDialog>([](QInputDialog& window) { window.reject(); });
    EXPECT_EQ(platform::inputBox("How many?", "Tarvello", "1"), std::nullopt);
}

TEST(FileDialog, TakesPairsOfNamesAndPatterns) {
    whileUp<QFileDialog>([](QFileDialog& window) {
        EXPECT_EQ(window.windowTitle(), "Where is it?");
        EXPECT_EQ(window.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(window.nameFilters(),
                  QStringList({"Databases (*.mdb *.bkp)", "Old (1999) files (*.old)", "All files (*)"}));
    });
    const QString filter = "Databases (*.mdb;*.bkp)|*.mdb;*.bkp|Old (1999) files|*.old|All files|*.*";
    EXPECT_EQ(platform::openFileDialog({"Where is it?", filter, QDir::tempPath()}), std::nullopt);
}

TEST(FileDialog, GivesAnExistingFileWithItsPath) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("Tarvello.mdb"));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.close();
    whileUp<QFileDialog>([&](QFileDialog& window) {
        window.selectFile(file.fileName());
        static_cast<QDialog&>(window).accept();
    });
    EXPECT_EQ(platform::openFileDialog({"", "All|*.*", folder.path()}),
              QDir::toNativeSeparators(file.fileName()));
}

// The path of a new list in a folder of its own, where "old.txt" lies already.
class SaveDialog : public ::testing::Test {
 protected:
    void SetUp() override {
        QFile old(folder.path() + "/old.txt");
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old");
        question.title = "Save";
        question.filter = "Text (*.txt)|*.txt";
        question.folder = folder.path();
        question.name = "list.txt";
        question.extension = ".txt";
        question.replaceText = "%1 is there. Replace it?";
    }
    QString path(const QString& name) const { return QDir::toNativeSeparators(folder.path() + '/' + name); }
    QTemporaryDir folder;
    platform::FileQuestion question;
};

TEST_F(SaveDialog, PutsTheExtensionBehindAndAsksNobodyAboutANewFile) {
    BoxScript boxes;
    boxes.files = {path("new"), path("new.TXT"), path("v1.2")};
    EXPECT_EQ(platform::saveFileDialog(question), path("new.txt"));
    EXPECT_EQ(platform::saveFileDialog(question), path("new.TXT"));
    EXPECT_EQ(platform::saveFileDialog(question), path("v1.2.txt"));
    EXPECT_TRUE(boxes.asked.isEmpty());
    EXPECT_EQ(boxes.fileQuestions.size(), 3);
}

TEST_F(SaveDialog, CancelledGivesNothing) {
    BoxScript boxes;
    boxes.files = {std::nullopt};
    EXPECT_FALSE(platform::saveFileDialog(question));
}

TEST_F(SaveDialog, AsksBeforeAFileThatIsThereAndAgainAfterANo) {
    BoxScript boxes;
    boxes.files = {path("old"), path("old.txt")};
    boxes.answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_EQ(platform::saveFileDialog(question), path("old.txt"));
    ASSERT_EQ(boxes.asked.size(), 2);
    EXPECT_EQ(boxes.asked[0].text, "old.txt is there. Replace it?");
    EXPECT_EQ(boxes.asked[0].title, "Save");
    EXPECT_EQ(boxes.asked[0].preselected, BoxAnswer::No);
    EXPECT_EQ(boxes.fileQuestions[1].name, "old.txt");
}

TEST_F(SaveDialog, WithoutAReplaceTextNobodyIsAsked) {
    BoxScript boxes;
    question.replaceText.clear();
    boxes.files = {path("old.txt")};
    EXPECT_EQ(platform::saveFileDialog(question), path("old.txt"));
    EXPECT_TRUE(boxes.asked.isEmpty());
}

TEST_F(SaveDialog, RealWindowProposesTheName) {
    whileUp<QFileDialog>([this](QFileDialog& window) {
        EXPECT_EQ(window.windowTitle(), "Save");
        EXPECT_EQ(window.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(window.selectedFiles().value(0), folder.path() + "/list.txt");
        static_cast<QDialog&>(window).accept();
    });
    EXPECT_EQ(platform::saveFileDialog(question), path("list.txt"));
}

}  // namespace
