#include "shell/frmHelp.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include "common/help.h"
#include "platform/controls/boxes.h"
#include "support/modal.h"
#include "support/places.h"

namespace {

const QString kHelp = QLatin1String(tests::kDeliveredFolder) + QStringLiteral("/Tarvello.hlp");

class HelpWindow : public testing::Test {
 protected:
    void SetUp() override {
        QString errorText;
        ASSERT_TRUE(window_.open(kHelp, errorText)) << errorText.toStdString();
        window_.show();
    }
    template <typename Widget>
    Widget* child(const char* name) const {
        Widget* found = window_.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QString shownText() const { return child<QTextBrowser>("Text")->toPlainText(); }
    QString status() const { return child<QLabel>("Status")->text(); }
    QString tab() const {
        const auto* tabs = child<QTabWidget>("Tabs");
        return tabs->tabText(tabs->currentIndex());
    }

    frmHelp window_;
};

// The window that WinHelp opens.
QPointer<frmHelp> openWindow() {
    for (QWidget* widget : QApplication::allWidgets()) {
        if (auto* help = qobject_cast<frmHelp*>(widget)) {
            return help;
        }
    }
    return nullptr;
}

class HelpViewing : public testing::Test {
 protected:
    void SetUp() override { installHelpViewer(); }
    void TearDown() override {
        WinHelp({}, HELP_QUIT);
        setHelpViewer(nullptr);
    }
    platform::BoxScript boxes_;
};

}  // namespace

TEST_F(HelpWindow, ATopicOpensItsPageAtItsPlace) {
    window_.showContext(309);
    EXPECT_EQ(window_.currentPage(), "service-editor");
    EXPECT_EQ(window_.currentAnchor(), "gst");
    EXPECT_TRUE(shownText().startsWith("The service editor"));
    EXPECT_GT(child<QTextBrowser>("Text")->verticalScrollBar()->value(), 0);
    EXPECT_EQ(child<QTreeWidget>("Contents")->currentItem()->text(0), "The service editor");
    window_.showContext(7002);
    EXPECT_EQ(window_.currentAnchor(), "");
    EXPECT_EQ(child<QTextBrowser>("Text")->verticalScrollBar()->value(), 0);
}

TEST_F(HelpWindow, TheTitleNamesThePage) {
    window_.showContext(309);
    EXPECT_EQ(window_.windowTitle(), "Tarvello - The service editor");
    window_.showContents();
    EXPECT_EQ(window_.windowTitle(), "Tarvello - Tarvello help");
}

TEST_F(HelpWindow, ThePlaceIsMarkedUntilAnotherOneIsShown) {
    const auto* text = child<QTextBrowser>("Text");
    window_.showContext(309);
    ASSERT_EQ(text->extraSelections().size(), 1);
    EXPECT_EQ(text->extraSelections().constFirst().cursor.block().text(), "GST");
    window_.showContext(7002);
    EXPECT_TRUE(text->extraSelections().isEmpty());
}

TEST_F(HelpWindow, AFileOpenedAgainStandsInTheContentsOnce) {
    const auto* contents = child<QTreeWidget>("Contents");
    const int pages = contents->topLevelItemCount();
    QString errorText;
    ASSERT_TRUE(window_.open(kHelp, errorText));
    EXPECT_EQ(contents->topLevelItemCount(), pages);
}

TEST_F(HelpWindow, TheNamesOfAnchorsAreNotShown) {
    window_.showContext(7002);
    EXPECT_FALSE(shownText().contains("{#"));
}

TEST_F(HelpWindow, AnUnknownTopicOpensTheContentsAndSaysSo) {
    window_.showContext(9999);
    EXPECT_EQ(window_.currentPage(), "overview");
    EXPECT_EQ(status(), "There is no page for topic 9999 yet. Here are the contents.");
    window_.showContext(501);
    EXPECT_EQ(status(), "Esc closes the help.");
}

TEST_F(HelpWindow, TheContentsShowThePagesBelowTheirParents) {
    window_.showContents();
    EXPECT_EQ(tab(), "&Contents");
    const auto* contents = child<QTreeWidget>("Contents");
    EXPECT_EQ(contents->topLevelItem(0)->text(0), "Tarvello help");
    const QList<QTreeWidgetItem*> found = contents->findItems("The main window", Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0]->childCount(), 7);
    child<QTreeWidget>("Contents")->setCurrentItem(found[0]->child(1));
    EXPECT_EQ(window_.currentPage(), "finding");
}

TEST_F(HelpWindow, TheIndexNarrowsWhileOneTypesAndEnterOpensThePlace) {
    window_.showIndex();
    EXPECT_EQ(tab(), "&Index");
    auto* field = child<QLineEdit>("IndexField");
    QTest::keyClicks(field, "BACKUP");
    const auto* index = child<QListWidget>("Index");
    int shown = 0;
    for (int row = 0; row < index->count(); ++row) {
        shown += index->item(row)->isHidden() ? 0 : 1;
    }
    EXPECT_EQ(shown, 1);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(window_.currentPage(), "database");
    EXPECT_EQ(window_.currentAnchor(), "backup");
}

TEST_F(HelpWindow, TheIndexIsSortedWithoutRegardToCase) {
    const auto* index = child<QListWidget>("Index");
    ASSERT_GT(index->count(), 20);
    for (int row = 1; row < index->count(); ++row) {
        EXPECT_LE(index->item(row - 1)->text().compare(index->item(row)->text(), Qt::CaseInsensitive), 0);
    }
}

TEST_F(HelpWindow, ASearchListsThePlacesThatHoldAllWords) {
    auto* field = child<QLineEdit>("SearchField");
    QTest::keyClicks(field, "copy backup");
    EXPECT_EQ(tab(), "&Found");
    const auto* hits = child<QListWidget>("Hits");
    ASSERT_GE(hits->count(), 2);
    QStringList texts;
    for (int row = 0; row < hits->count(); ++row) {
        texts += hits->item(row)->text();
    }
    EXPECT_TRUE(texts.contains("The database: The backup copy"));
    EXPECT_EQ(status(), QStringLiteral("Places found: %1").arg(hits->count()));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(window_.currentPage(), "main-window");
    EXPECT_EQ(window_.currentAnchor(), "closing");
    field->setText("backup xyzzy");
    EXPECT_EQ(hits->count(), 0);
    EXPECT_EQ(status(), "Nothing found for: backup xyzzy");
}

TEST_F(HelpWindow, ControlFLeadsToTheSearch) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    window_.showContents();
    QTest::keyClick(window_.windowHandle(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(child<QLineEdit>("SearchField")->hasFocus());
}

TEST_F(HelpWindow, LinksLeadOnAndBackAndForwardLeadBackAndForward) {
    auto* back = window_.findChild<QAction*>("Back");
    auto* forward = window_.findChild<QAction*>("Forward");
    window_.showContents();
    EXPECT_FALSE(back->isEnabled());
    emit child<QTextBrowser>("Text")->anchorClicked(QUrl("database#backup"));
    EXPECT_EQ(window_.currentPage(), "database");
    EXPECT_EQ(window_.currentAnchor(), "backup");
    EXPECT_TRUE(window_.showPage("#trouble"));
    back->trigger();
    EXPECT_EQ(window_.currentAnchor(), "backup");
    back->trigger();
    EXPECT_EQ(window_.currentPage(), "overview");
    EXPECT_FALSE(back->isEnabled());
    forward->trigger();
    EXPECT_EQ(window_.currentPage(), "database");
    EXPECT_TRUE(forward->isEnabled());
    EXPECT_TRUE(window_.showPage("typing"));  // a new way from here
    EXPECT_FALSE(forward->isEnabled());
    back->trigger();
    EXPECT_EQ(window_.currentAnchor(), "backup");
}

TEST_F(HelpWindow, ALinkToNowhereIsSaidAndLeavesThePage) {
    window_.showContents();
    EXPECT_FALSE(window_.showPage("nobody"));
    EXPECT_FALSE(window_.showPage("database#nowhere"));
    EXPECT_EQ(window_.currentPage(), "overview");
    EXPECT_EQ(status(), "There is no such page: database#nowhere");
}

TEST_F(HelpWindow, TheFourIconsOfTheServiceListAreShown) {
    window_.showPage("services");
    const auto* text = child<QTextBrowser>("Text");
    for (const char* name :
         {"FinishedPayed.svg", "FinishedNotPayed.svg", "NotFinishedPayed.svg", "NotFinishedNotPayed.svg"}) {
        const QVariant picture = text->document()->resource(QTextDocument::ImageResource, QUrl(name));
        EXPECT_FALSE(picture.value<QImage>().isNull()) << name;
    }
}

TEST_F(HelpWindow, PicturesOfWindowsStandBesideTheContents) {
    auto* text = child<QTextBrowser>("Text");
    for (const char* page :
         {"catalogue", "requisition", "documents", "preview", "price-list", "report", "options"}) {
        ASSERT_TRUE(window_.showPage(page)) << page;
        int pictures = 0;
        for (QTextBlock block = text->document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
                if (!format.isValid()) {
                    continue;
                }
                const QImage image = text->document()
                                         ->resource(QTextDocument::ImageResource, QUrl(format.name()))
                                         .value<QImage>();
                EXPECT_GE(image.width(), 300) << page;
                ++pictures;
            }
        }
        EXPECT_EQ(pictures, 1) << page;
        EXPECT_FALSE(text->horizontalScrollBar()->isVisible()) << page;
    }
}

TEST_F(HelpWindow, EscapeClosesItFromEveryPlace) {
    for (const char* name : {"Text", "Contents", "SearchField", "IndexField"}) {
        window_.show();
        auto* widget = window_.findChild<QWidget*>(QString::fromLatin1(name));
        QTest::keyClick(widget, Qt::Key_Escape);
        EXPECT_FALSE(window_.isVisible()) << name;
    }
}

TEST_F(HelpWindow, AFileThatCannotBeReadLeavesWhatWasThere) {
    QString errorText;
    EXPECT_FALSE(window_.open(QStringLiteral("/nonexistent/Tarvello.hlp"), errorText));
    EXPECT_TRUE(errorText.startsWith("The help file cannot be opened: ")) << errorText.toStdString();
    window_.showContext(501);
    EXPECT_EQ(window_.currentPage(), "finding");
}

TEST_F(HelpViewing, EachCommandOpensItsSide) {
    EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 702));
    const QPointer<frmHelp> window = openWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->currentAnchor(), "description");
    EXPECT_TRUE(WinHelp(kHelp, HELP_FINDER));
    EXPECT_EQ(window->currentPage(), "overview");
    EXPECT_TRUE(WinHelp(kHelp, HELP_KEY));
    EXPECT_EQ(window->findChild<QTabWidget*>("Tabs")->currentIndex(), 1);
    EXPECT_EQ(openWindow(), window);  // one window for all of them
}

TEST_F(HelpViewing, TheWayBackOutlivesTheNextTopic) {
    EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 501));
    EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 7002));
    openWindow()->findChild<QAction*>("Back")->trigger();
    EXPECT_EQ(openWindow()->currentPage(), "finding");
}

TEST_F(HelpViewing, AskedForAgainItComesToTheFront) {
    EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 501));
    QWidget work;
    work.show();
    work.activateWindow();
    ASSERT_TRUE(waitUntilActive(work));
    EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 502));
    EXPECT_TRUE(waitUntilActive(*openWindow()));
}

TEST_F(HelpViewing, QuitTakesTheWindowAwayAndMayComeTwice) {
    EXPECT_TRUE(WinHelp(kHelp, HELP_FINDER));
    EXPECT_TRUE(WinHelp(kHelp, HELP_QUIT));
    EXPECT_EQ(openWindow(), nullptr);
    EXPECT_TRUE(WinHelp({}, HELP_QUIT));
}

TEST_F(HelpViewing, AModalWindowDoesNotLockTheHelpAskedFromIt) {
    EXPECT_TRUE(WinHelp(kHelp, HELP_FINDER));
    QDialog editor;
    editor.setModal(true);
    editor.show();
    EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 7002));
    const QPointer<frmHelp> window = openWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->parentWidget(), &editor);
    EXPECT_TRUE(window->isVisible());
    editor.hide();
    EXPECT_TRUE(WinHelp(kHelp, HELP_FINDER));
    EXPECT_EQ(window->parentWidget(), nullptr);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(HelpViewing, TheHelpGoesWithTheModalWindowItLiesAbove) {
    {
        QDialog editor;
        editor.setModal(true);
        editor.show();
        EXPECT_TRUE(WinHelp(kHelp, HELP_CONTEXT, 7002));
    }
    EXPECT_EQ(openWindow(), nullptr);
    EXPECT_TRUE(WinHelp(kHelp, HELP_FINDER));
}

TEST_F(HelpViewing, ADamagedFileIsReportedInABox) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("Tarvello.hlp");
    ASSERT_TRUE(QFile::copy(kHelp, path));
    QFile file(path);
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(200));
    ASSERT_EQ(file.write("rubbish"), 7);
    file.close();
    EXPECT_FALSE(WinHelp(path, HELP_CONTEXT, 501));
    ASSERT_EQ(boxes_.asked.size(), 1);
    EXPECT_EQ(boxes_.asked[0].text, "The help file is damaged.\n" + path);
    EXPECT_EQ(boxes_.asked[0].title, "Tarvello");
    EXPECT_EQ(openWindow(), nullptr);
}

TEST_F(HelpViewing, AFileThatIsNoHelpIsReportedInABox) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("Tarvello.hlp"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Something else");
    file.close();
    EXPECT_FALSE(WinHelp(file.fileName(), HELP_FINDER));
    EXPECT_EQ(boxes_.lastText(), "This is not a help file of this program.\n" + file.fileName());
}

TEST_F(HelpViewing, ANewerHelpFileIsReadAgain) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("Tarvello.hlp");
    HelpBook book;
    HelpPage page;
    page.id = "old";
    page.title = "Old";
    book.add(page);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(book.toFile());
    file.close();
    EXPECT_TRUE(WinHelp(path, HELP_FINDER));
    EXPECT_EQ(openWindow()->currentPage(), "old");
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::copy(kHelp, path));
    EXPECT_TRUE(WinHelp(path, HELP_CONTEXT, 501));
    EXPECT_EQ(openWindow()->currentPage(), "finding");
}
