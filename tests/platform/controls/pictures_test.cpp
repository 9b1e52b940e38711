#include "platform/controls/pictures.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QSet>

#include "support/dark_desktop.h"

namespace {

// How much of the drawing differs from bare ground, in percent.
int inkOf(const QImage& image) {
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ink += qAlpha(image.pixel(x, y)) > 40 ? 1 : 0;
        }
    }
    return ink * 100 / (image.width() * image.height());
}

QImage drawn(const char* name, int size) {
    return platform::icon(name).pixmap(size, size).toImage();
}

// Parts of the drawing in the given hue, in pixels: blue 180..250 degrees, red 0..20.
int pixelsOfHue(const QImage& image, int from, int to) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            found += colour.alpha() > 200 && colour.hsvSaturation() > 130 && colour.hsvHue() >= from &&
                             colour.hsvHue() <= to
                         ? 1
                         : 0;
        }
    }
    return found;
}

TEST(Pictures, EveryDrawingThatTheWindowsNameIsThere) {
    const QStringList names = {"NewRecord",
                               "EditRecord",
                               "DeleteRecord",
                               "SaveRecord",
                               "ApplyFilter",
                               "RemoveFilter",
                               "Refresh",
                               "ViewReport",
                               "PriceList",
                               "Invoice",
                               "Quotation",
                               "Help",
                               "Clients",
                               "Computers",
                               "Services",
                               "ClientsX",
                               "ComputersX",
                               "ServicesX",
                               "FinishedPayed",
                               "NotFinishedNotPayed",
                               "NotFinishedPayed",
                               "FinishedNotPayed",
                               "SortUp",
                               "SortDown",
                               "DateEmpty",
                               "DateOpen",
                               "DateFilled",
                               "Mail",
                               "Web",
                               "Find",
                               "Tarvello",
                               "Warning"};
    for (const QString& name : names) {
        for (const int size : {16, 24, 48}) {
            const QImage image = platform::icon(name).pixmap(size, size).toImage();
            ASSERT_FALSE(image.isNull()) << name.toStdString();
            EXPECT_GT(inkOf(image), 3) << name.toStdString() << " at " << size;
        }
    }
}

TEST(Pictures, TheDummyIsABlankPicture) {
    ASSERT_FALSE(platform::icon("Dummy").isNull());
    EXPECT_EQ(inkOf(drawn("Dummy", 16)), 0);
}

TEST(Pictures, AnUnknownNameGivesNone) {
    EXPECT_TRUE(platform::icon("NoSuchThing").isNull());
    EXPECT_TRUE(platform::icon("").isNull());
    EXPECT_TRUE(platform::picture("NoSuchThing", 100).isNull());
}

TEST(Pictures, NoTwoDrawingsLookAlike) {
    QList<QImage> seen;
    for (const QString& file : QDir(":/icons").entryList()) {
        const QImage image = drawn(file.chopped(4).toLatin1().constData(), 24);
        EXPECT_FALSE(seen.contains(image)) << file.toStdString();
        seen.append(image);
    }
    EXPECT_GE(seen.size(), 33);
}

TEST(Pictures, OnlyTheFinishedAndUnpaidJobIsRed) {
    for (const char* name : {"FinishedPayed", "NotFinishedNotPayed", "NotFinishedPayed"}) {
        EXPECT_GT(pixelsOfHue(drawn(name, 48), 180, 250), 50) << name;
        EXPECT_EQ(pixelsOfHue(drawn(name, 48), 0, 20), 0) << name;
    }
    EXPECT_GT(pixelsOfHue(drawn("FinishedNotPayed", 48), 0, 20), 50);
}

TEST(Pictures, ADrawingIsSharpAtAnyScale) {
    const QImage large = drawn("Tarvello", 256);
    EXPECT_EQ(large.width(), 256);
    const QImage enlarged =
        drawn("Tarvello", 32).scaled(256, 256, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_NE(large, enlarged);
}

// Dots of a drawing that stand out from the ground, in percent of the whole.
int seenOn(const QImage& image, const QColor& ground) {
    int seen = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor dot = image.pixelColor(x, y);
            seen += dot.alpha() > 128 && qAbs(qGray(dot.rgb()) - qGray(ground.rgb())) > 60 ? 1 : 0;
        }
    }
    return seen * 100 / (image.width() * image.height());
}

TEST(Pictures, EveryDrawingIsSeenOnADarkDesktop) {
    const DarkDesktop dark;
    for (const QString& file : QDir(":/icons").entryList()) {
        if (file != "Dummy.svg") {
            EXPECT_GE(seenOn(drawn(file.chopped(4).toLatin1().constData(), 32), QColor(42, 46, 50)), 4)
                << file.toStdString();
        }
    }
    EXPECT_GE(seenOn(platform::picture("101", 64).toImage(), QColor(42, 46, 50)), 10);
}

TEST(Pictures, AnIconThatIsThereAlreadyFollowsTheDesktop) {
    const QIcon icon = platform::icon("Clients");
    const QImage light = icon.pixmap(32).toImage();
    {
        const DarkDesktop dark;
        EXPECT_NE(icon.pixmap(32).toImage(), light);
    }
    EXPECT_EQ(icon.pixmap(32).toImage(), light);
}

TEST(Pictures, APictureWithAGroundOfItsOwnStaysAsItIs) {
    const QImage light = platform::picture("301", 480).toImage();
    const DarkDesktop dark;
    EXPECT_EQ(platform::picture("301", 480).toImage(), light);
}

TEST(Pictures, TheSplashPictureKeepsItsShape) {
    for (const int width : {480, 720}) {
        const QPixmap picture = platform::picture("301", width);
        EXPECT_EQ(picture.deviceIndependentSize().toSize(), QSize(width, width * 300 / 480));
        EXPECT_EQ(inkOf(picture.toImage()), 100) << "no holes at the edges";
    }
    EXPECT_TRUE(platform::picture("301", 0).isNull());
}

}  // namespace
