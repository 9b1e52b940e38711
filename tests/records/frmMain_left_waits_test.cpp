// A filter, its removal and a refresh that the person who waits for them leaves: all stands as it stood.
#include "narrowed_window.h"
#include "support/left_wait.h"

namespace {

class LeftWaits : public PaidAndOwed {
 protected:
    // What a person sees of the stages.
    struct Seen {
        QStringList clients, computers, names, captions, typed;
        QList<int> listed;
        int selected = 0, filter = 0;
        QList<bool> tools;
        std::string queries;
    };
    Seen seen() {
        Seen all;
        all.clients = entries(0);
        all.computers = entries(1);
        all.names = {chosen(0), chosen(1)};
        all.captions = {caption(1), caption(2)};
        all.typed = {text(0), text(1), text(2)};
        all.listed = listed();
        all.selected = win().controls.ListView1->selectedIndex();
        all.filter = win().shop.filter.ActiveFilter;
        all.tools = {canUse("RemoveFilter"), canUse("Refresh"), canUse("EditRecord")};
        all.queries = queryText("QDCustomers0") + queryText("QDComputers0") + queryText("QDServices0");
        return all;
    }
    static void expectSame(const Seen& now, const Seen& before, int piece) {
        EXPECT_EQ(now.clients, before.clients) << piece;
        EXPECT_EQ(now.computers, before.computers) << piece;
        EXPECT_EQ(now.names, before.names) << piece;
        EXPECT_EQ(now.captions, before.captions) << piece;
        EXPECT_EQ(now.typed, before.typed) << piece;
        EXPECT_EQ(now.listed, before.listed) << piece;
        EXPECT_EQ(now.selected, before.selected) << piece;
        EXPECT_EQ(now.filter, before.filter) << piece;
        EXPECT_EQ(now.tools, before.tools) << piece;
        EXPECT_EQ(now.queries, before.queries) << piece;
    }
    // Leaves the deed at each of its pieces of work in turn, until there are no more.
    void expectLeft(const std::function<void()>& deed) {
        const Seen before = seen();
        int leavable = 0;
        for (int piece = 1; piece < 100; ++piece) {
            const LeftWait left(piece);
            deed();
            if (left.pieces < piece) {
                break;
            }
            expectSame(seen(), before, piece);
            EXPECT_TRUE(boxes.asked.isEmpty()) << piece;
            ++leavable;
        }
        EXPECT_GT(leavable, 3);
    }
};

TEST_F(LeftWaits, AFilterThatIsLeftLeavesTheWholeShop) {
    start();
    choose(0, "Babic, Bo");
    tab(3);
    win().controls.ListView1->select(2);
    expectLeft([this] { filter(Command::FilterNotFinishedNotPaid); });
}

TEST_F(LeftWaits, AFilterThatIsLeftLeavesTheFilterBefore) {
    start();
    filter(Command::FilterNotFinishedPaid);
    ASSERT_EQ(win().shop.filter.ActiveFilter, 2);
    boxes.asked.clear();
    expectLeft([this] { filter(Command::FilterNotFinishedNotPaid); });
}

TEST_F(LeftWaits, ARemovalThatIsLeftLeavesTheFilter) {
    start();
    filter(Command::FilterNotFinishedNotPaid);
    ASSERT_EQ(win().shop.filter.ActiveFilter, 1);
    boxes.asked.clear();
    expectLeft([this] { tool("RemoveFilter"); });
}

TEST_F(LeftWaits, ARefreshThatIsLeftKeepsWhatWasShownAndTyped) {
    start();
    choose(0, "Babic, Bo");
    tab(3);
    win().controls.ListView1->select(2);
    tab(1);
    type(0, "Babovic");
    expectLeft([this] {
        give(Command::Refresh);
        EXPECT_EQ(text(0), "Babovic");
        EXPECT_TRUE(win().controls.StageDirty[0]);
    });
}

}  // namespace
