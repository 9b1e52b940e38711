// Keys of the windows of documents.

#include <gtest/gtest.h>

#include "common/window_help.h"
#include "documents/document_window.h"
#include "documents/frmTrebovanjeError.h"
#include "support/topics.h"

namespace {

struct DocumentKeys : DocumentWindow {
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier); }
};

TEST_F(DocumentKeys, CtrlPShowsTheDocument) {
    invoice([&] { press(Qt::Key_P); });
    EXPECT_EQ(documents.size(), 1U);
}

TEST_F(DocumentKeys, PageKeysTurnTheTabsAndStopAtTheEnds) {
    invoice([&] {
        press(Qt::Key_PageUp);
        EXPECT_EQ(tabs()->currentIndex(), 0);
        press(Qt::Key_PageDown);
        EXPECT_EQ(tabs()->currentIndex(), 1);
        press(Qt::Key_PageDown);
        EXPECT_EQ(tabs()->currentIndex(), 1);
        press(Qt::Key_PageUp);
        EXPECT_EQ(tabs()->currentIndex(), 0);
    });
}

TEST_F(DocumentKeys, F1OpensTheTopicOfEachWindow) {
    invoice([&] { EXPECT_EQ(topicsOfF1(window()), QList<int>({DocumentTopic})); });
    frmTrebovanjeError critical;
    QTimer::singleShot(0, &critical, [&] {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&critical));
        EXPECT_EQ(topicsOfF1(critical), QList<int>({CriticalTopic}));
        critical.reject();
    });
    critical.Display();
}

}  // namespace
