#include "platform/controls/long_wait.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <atomic>
#include <chrono>
#include <thread>

#include "platform/controls/list_rows.h"
#include "platform/controls/wait_sign.h"
#include "platform/dao/breaking_off.h"
#include "platform/dao/error.h"

namespace {

using platform::LongWait;
using platform::WaitSign;

constexpr int kAnHour = 3'600'000;  // milliseconds

void nap() {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

// A window at its work. `look` is taken again and again in the turns of the windows.
class LongWaits : public ::testing::Test {
 protected:
    void SetUp() override {
        before_ = platform::waitTimes();
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void TearDown() override { platform::waitTimes() = before_; }

    static void setTimes(int untilTurning, int untilSign) {
        platform::waitTimes() = {untilTurning, untilSign, {}};
    }
    static WaitSign* sign() { return qobject_cast<WaitSign*>(QApplication::activeModalWidget()); }
    void atTurns(const std::function<void()>& look) {
        QObject::connect(&turns_, &QTimer::timeout, &turns_, look);
        turns_.start(1);
    }
    // What goes on until somebody has left it. The number of the error that it ended with.
    static int untilLeft() {
        try {
            LongWait::run([] {
                while (true) {
                    dao::needGoingOn();
                    nap();
                }
            });
            return 0;
        } catch (const dao::Error& error) {
            return error.Number();
        }
    }

    QLineEdit window;

 private:
    platform::WaitTimes before_;
    QTimer turns_;
};

TEST_F(LongWaits, WhereNobodyWaitsWorkIsDoneAtOnceAndHere) {
    std::thread::id where;
    LongWait::run([&] { where = std::this_thread::get_id(); });
    EXPECT_EQ(where, std::this_thread::get_id());
}

TEST_F(LongWaits, WindowsHaveTheirTurnsMeanwhile) {
    setTimes(0, kAnHour);
    std::atomic<bool> seen{false};
    const LongWait wait("Working");
    atTurns([&] { seen = true; });
    LongWait::run([&] {
        EXPECT_TRUE(LongWait::isAway());
        while (!seen) {
            nap();
        }
    });
    EXPECT_FALSE(LongWait::isAway());
    EXPECT_FALSE(wait.isLeft());
}

TEST_F(LongWaits, WhatIsSoonDoneTurnsNothing) {
    setTimes(kAnHour, kAnHour);
    bool turned = false;
    const LongWait wait("Working");
    QTimer::singleShot(0, &window, [&] { turned = true; });
    LongWait::run(nap);
    EXPECT_FALSE(turned);
}

TEST_F(LongWaits, ShortPiecesOneBehindTheOtherKeepNobodyWaiting) {
    setTimes(50, kAnHour);
    std::atomic<bool> seen{false};
    const LongWait wait("Working");
    atTurns([&] { seen = true; });
    for (int piece = 0; piece < 3000 && !seen; ++piece) {
        LongWait::run(nap);
    }
    EXPECT_TRUE(seen);
}

TEST_F(LongWaits, TheWorksFailureIsThrownOn) {
    const LongWait wait("Working");
    EXPECT_THROW(LongWait::run([] { throw dao::Error(dao::errLocked, "locked"); }), dao::Error);
}

TEST_F(LongWaits, EscAndTheButtonLeaveIt) {
    for (const bool byKey : {true, false}) {
        setTimes(0, 0);
        const LongWait wait("Working");
        QTimer once;
        QObject::connect(&once, &QTimer::timeout, &once, [&] {
            if (WaitSign* const shown = sign()) {
                once.stop();
                if (byKey) {
                    QTest::keyClick(shown, Qt::Key_Escape);
                } else {
                    shown->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
                }
                EXPECT_TRUE(shown->isVisible()) << "the work has not ended yet";
            }
        });
        once.start(1);
        EXPECT_EQ(untilLeft(), dao::errCancelled) << byKey;
        EXPECT_TRUE(wait.isLeft());
        int begun = 0;
        EXPECT_THROW(LongWait::run([&] { ++begun; }), dao::Error) << "nothing more of it is begun";
        LongWait::finish([&] {
            EXPECT_TRUE(dao::isGoingOn());
            ++begun;
        });
        EXPECT_EQ(begun, 1) << "but for what sets things right";
    }
    EXPECT_EQ(sign(), nullptr);
}

TEST_F(LongWaits, WhatHasToComeToItsEndCannotBeLeft) {
    setTimes(0, 0);
    const LongWait wait("Working");
    std::atomic<bool> refused{false};
    atTurns([&] {
        WaitSign* const shown = sign();
        if (shown != nullptr && !shown->findChild<QDialogButtonBox*>()->isEnabled()) {
            shown->reject();
            refused = shown->isVisible();
        }
    });
    LongWait::finish([&] {
        while (!refused) {
            nap();
        }
    });
    EXPECT_FALSE(wait.isLeft());
}

TEST_F(LongWaits, WhatComesStraightToAWindowIsRefused) {
    setTimes(0, kAnHour);
    std::atomic<int> turns{0};
    {
        const LongWait wait("Working");
        atTurns([&] {
            if (++turns == 1) {
                QTest::keyClick(&window, Qt::Key_A);
                window.close();
            }
        });
        LongWait::run([&] {
            while (turns < 5) {
                nap();
            }
        });
    }
    EXPECT_EQ(window.text(), "");
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(&window, Qt::Key_B);
    EXPECT_EQ(window.text(), "b");
}

// Whoever types on while a filter is at work has not typed for nothing.
TEST_F(LongWaits, WhatIsTypedBeforeTheSignIsThereComesAfterwards) {
    setTimes(0, 100);
    std::atomic<bool> typed{false};
    {
        const LongWait wait("Working");
        atTurns([&] {
            if (!typed.exchange(true)) {
                QTest::keyClicks(&window, "ab");
            } else if (sign() != nullptr) {
                QTest::keyClick(&window, Qt::Key_C);
                QTest::keyClick(sign(), Qt::Key_Escape);
            }
        });
        EXPECT_EQ(untilLeft(), dao::errCancelled);
    }
    EXPECT_EQ(window.text(), "");
    QCoreApplication::processEvents();
    EXPECT_EQ(window.text(), "ab");
}

TEST_F(LongWaits, TheSignKeepsOtherWindowsFromBeingClosed) {
    setTimes(0, 0);
    const LongWait wait("Working");
    std::atomic<bool> tried{false};
    atTurns([&] {
        if (sign() != nullptr && !tried) {
            window.windowHandle()->close();
            QTimer::singleShot(5, &window, [&] { tried = true; });
        }
    });
    LongWait::run([&] {
        while (!tried) {
            nap();
        }
    });
    EXPECT_TRUE(window.isVisible());
}

TEST_F(LongWaits, AWaitWithinAnotherIsAPartOfIt) {
    setTimes(0, 0);
    const LongWait whole("Working");
    {
        const LongWait part("A part");
        QTimer once;
        QObject::connect(&once, &QTimer::timeout, &once, [&] {
            if (WaitSign* const shown = sign()) {
                shown->reject();
            }
        });
        once.start(1);
        EXPECT_EQ(untilLeft(), dao::errCancelled);
        EXPECT_TRUE(part.isLeft());
    }
    EXPECT_TRUE(whole.isLeft());
    EXPECT_TRUE(LongWait::wasLeft());
}

// A list that is painted meanwhile must not read its rows.
TEST_F(LongWaits, RowsThatWereNotMadeWaitForTheEnd) {
    setTimes(0, kAnHour);
    platform::ListRows rows;
    int made = 0;
    rows.setLazy(2,
                 [&](int serial) {
                     ++made;
                     platform::ListItem item;
                     item.Key = QStringLiteral("K%1").arg(serial);
                     return item;
                 },
                 {});
    EXPECT_EQ(rows.item(0).Key, "K1");
    std::atomic<bool> looked{false};
    {
        const LongWait wait("Working");
        atTurns([&] {
            EXPECT_EQ(rows.item(0).Key, "K1");
            EXPECT_EQ(rows.item(1).Key, "");
            looked = true;
        });
        LongWait::run([&] {
            while (!looked) {
                nap();
            }
        });
    }
    EXPECT_EQ(made, 1);
    EXPECT_EQ(rows.item(1).Key, "K2");
}

}  // namespace
