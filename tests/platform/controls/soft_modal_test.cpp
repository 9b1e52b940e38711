#include "platform/controls/soft_modal.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

namespace {

using platform::SoftModal;

// A window that takes drops, with a line and a button.
class Surface : public QWidget {
 public:
    Surface() {
        setAcceptDrops(true);
        auto* column = new QVBoxLayout(this);
        column->addWidget(line);
        column->addWidget(button);
        shortcut->setContext(Qt::ApplicationShortcut);
    }
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent*) override { ++drops; }

    QLineEdit* line = new QLineEdit;
    QPushButton* button = new QPushButton("OK");
    QShortcut* shortcut = new QShortcut(QKeySequence(Qt::Key_F12), this);
    int drops = 0;
};

class SoftModalTest : public ::testing::Test {
 protected:
    void SetUp() override {
        owner.show();
        other.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
        above = std::make_unique<QDialog>(&owner);
        line = new QLineEdit(above.get());
        above->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(above.get()));
    }
    Surface owner, other;
    std::unique_ptr<QDialog> above;
    QLineEdit* line = nullptr;
};

TEST_F(SoftModalTest, OtherWindowsTakeNothingFromMouseOrKeyboard) {
    QSignalSpy pressed(other.button, &QPushButton::clicked), ownPressed(owner.button, &QPushButton::clicked);
    {
        const SoftModal only(above.get());
        for (Surface* each : {&owner, &other}) {
            QTest::mouseClick(each->button, Qt::LeftButton);
            QTest::keyClicks(each->line, "abc");
            EXPECT_EQ(each->line->text(), "");
        }
        EXPECT_EQ(pressed.count() + ownPressed.count(), 0);
    }
    QTest::mouseClick(other.button, Qt::LeftButton);
    QTest::keyClicks(other.line, "abc");
    EXPECT_EQ(pressed.count(), 1) << "and afterwards they do again";
    EXPECT_EQ(other.line->text(), "abc");
}

TEST_F(SoftModalTest, TheWindowItselfWorks) {
    const SoftModal only(above.get());
    QTest::keyClicks(line, "abc");
    EXPECT_EQ(line->text(), "abc");
    EXPECT_TRUE(above->close());
}

TEST_F(SoftModalTest, OtherWindowsCannotBeClosed) {
    {
        const SoftModal only(above.get());
        EXPECT_FALSE(other.close());
        EXPECT_FALSE(owner.close());
        EXPECT_TRUE(other.isVisible());
    }
    EXPECT_TRUE(other.close());
}

TEST_F(SoftModalTest, ShortcutsOfOtherWindowsAreSilent) {
    QSignalSpy struck(other.shortcut, &QShortcut::activated);
    owner.shortcut->setEnabled(false);
    {
        const SoftModal only(above.get());
        QTest::keyClick(line, Qt::Key_F12);
        EXPECT_EQ(struck.count(), 0);
    }
    QTest::keyClick(line, Qt::Key_F12);
    EXPECT_EQ(struck.count(), 1);
}

TEST_F(SoftModalTest, AProductCanBeDroppedOnTheOwner) {
    const SoftModal only(above.get());
    QMimeData data;
    data.setText("x");
    QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&owner, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&owner, &drop);
    EXPECT_EQ(owner.drops, 1);
}

TEST_F(SoftModalTest, AClickOnAnotherWindowBringsThisOneForward) {
    const SoftModal only(above.get());
    other.activateWindow();
    QTest::mouseClick(other.button, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == above.get(); }));
}

TEST_F(SoftModalTest, WindowsOpenedLaterWork) {
    const SoftModal only(above.get());
    Surface later;
    later.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&later));
    QTest::keyClicks(later.line, "abc");
    EXPECT_EQ(later.line->text(), "abc");
    QDialog box(above.get());
    QLineEdit field(&box);
    box.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &box; }));
    other.activateWindow();
    QTest::mouseClick(other.button, Qt::LeftButton);
    QCoreApplication::processEvents();
    QTest::keyClicks(&field, "abc");
    EXPECT_EQ(field.text(), "abc") << "a box over the window keeps the front";
}

TEST_F(SoftModalTest, WindowsThatGoMeanwhileAreForgotten) {
    auto passing = std::make_unique<Surface>();
    QSignalSpy pressed(other.button, &QPushButton::clicked);
    const SoftModal only(above.get());
    passing.reset();
    above.reset();
    QTest::mouseClick(other.button, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(pressed.count(), 0);
}

}  // namespace
