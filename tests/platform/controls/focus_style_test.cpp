#include "platform/controls/focus_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QVBoxLayout>

#include "platform/controls/list_view.h"
#include "platform/controls/shades.h"

namespace {

// Controls in a window; the first one, a field, takes the focus away from the others.
class FocusStyleTest : public ::testing::Test {
 protected:
    template <typename Control>
    Control* add(Control* control) {
        layout_->addWidget(control);
        return control;
    }
    void show() {
        window_.resize(400, 500);
        window_.show();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        leave();
    }
    void leave() { other_->setFocus(Qt::MouseFocusReason); }
    static QImage imageOf(QWidget* control) { return control->grab().toImage(); }
    QImage focused(QWidget* control) {
        control->setFocus(Qt::MouseFocusReason);
        return imageOf(control);
    }
    QColor mark() const { return window_.palette().color(QPalette::Active, QPalette::Highlight); }
    // How many of the control's four edges have a line of the mark's colour, in the pixels of the screen:
    // where a desktop draws everything a quarter larger, a line may lie beside the outermost pixel.
    int markedEdges(const QImage& image) const {
        const QPoint middle = image.rect().center();
        const auto isMarked = [&](QPoint at, QPoint inwards) {
            for (int depth = 0; depth < 3; ++depth, at += inwards) {
                if (image.pixelColor(at) == mark()) {
                    return true;
                }
            }
            return false;
        };
        return isMarked({middle.x(), 0}, {0, 1}) + isMarked({middle.x(), image.height() - 1}, {0, -1}) +
               isMarked({0, middle.y()}, {1, 0}) + isMarked({image.width() - 1, middle.y()}, {-1, 0});
    }

 private:
    QWidget window_;
    QVBoxLayout* layout_ = new QVBoxLayout(&window_);
    QLineEdit* other_ = add(new QLineEdit);
};

TEST_F(FocusStyleTest, BoxesOfTextAndRowsHaveARing) {
    auto* text = add(new QPlainTextEdit);
    auto* still = add(new QPlainTextEdit);
    still->setReadOnly(true);
    auto* list = add(new platform::ListView);
    auto* choices = add(new QListWidget);
    show();
    for (QWidget* control : {static_cast<QWidget*>(text), static_cast<QWidget*>(still),
                             static_cast<QWidget*>(list), static_cast<QWidget*>(choices)}) {
        const char* const name = control->metaObject()->className();
        EXPECT_EQ(markedEdges(imageOf(control)), 0) << name;
        EXPECT_EQ(markedEdges(focused(control)), 4) << name;
        leave();
        EXPECT_EQ(markedEdges(imageOf(control)), 0) << name;
    }
}

TEST_F(FocusStyleTest, AFocusThatCameByTheMouseShowsToo) {
    auto* tabs = add(new QTabBar);
    tabs->addTab("Clients");
    tabs->addTab("Services");
    auto* check = add(new QCheckBox("Firm"));
    auto* button = add(new QPushButton("OK"));
    auto* combo = add(new QComboBox);
    combo->addItem("Beograd");
    show();
    for (QWidget* control : {static_cast<QWidget*>(tabs), static_cast<QWidget*>(check),
                             static_cast<QWidget*>(button), static_cast<QWidget*>(combo)}) {
        leave();
        const QImage without = imageOf(control);
        EXPECT_NE(focused(control), without) << control->metaObject()->className();
    }
}

TEST(FocusStyle, HintsInEmptyFieldsAreReadOnADarkDesktop) {
    platform::FocusStyle style;
    QPalette palette(QColor(49, 54, 59), QColor(42, 46, 50));
    palette.setColor(QPalette::WindowText, QColor(252, 252, 252));
    palette.setColor(QPalette::Text, QColor(252, 252, 252));
    palette.setColor(QPalette::Base, QColor(27, 30, 32));
    palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    style.polish(palette);
    EXPECT_GT(palette.color(QPalette::PlaceholderText).lightness(), 120);
}

class SelectionStyleTest : public FocusStyleTest {
 protected:
    void SetUp() override {
        list = add(new platform::ListView);
        list->columns().add("Name", "Name", platform::HeaderAlignment::Left);
        for (const char* name : {"one", "two"}) {
            platform::ListItem item;
            item.Key = item.Text = name;
            list->addItem(item);
        }
        choices = add(new QListWidget);
        choices->addItems({"one", "two"});
        show();
        list->select(1);
        choices->setCurrentRow(0);
    }
    // As near as the light that the style puts on a row that is pointed at lets it be.
    static bool isLike(const QColor& one, const QColor& other) {
        return qAbs(one.red() - other.red()) + qAbs(one.green() - other.green()) +
                   qAbs(one.blue() - other.blue()) <
               20;
    }
    QColor ground(QAbstractItemView* view) {
        const QRect row = view->visualRect(view->model()->index(0, 0));
        return view->viewport()->grab().toImage().pixelColor(row.right() - 5, row.top() + 3);
    }
    platform::ListView* list = nullptr;
    QListWidget* choices = nullptr;
};

TEST_F(SelectionStyleTest, IsGreyInAListWithoutTheFocus) {
    const QColor grey =
        platform::mixed(list->palette().color(QPalette::Base), list->palette().color(QPalette::Text), 0.2);
    EXPECT_TRUE(isLike(ground(list), grey));
    EXPECT_TRUE(isLike(ground(choices), grey));
    list->setFocus();
    EXPECT_TRUE(isLike(ground(list), mark()));
    EXPECT_TRUE(isLike(ground(choices), grey));
    choices->setFocus();
    EXPECT_TRUE(isLike(ground(list), grey));
    EXPECT_TRUE(isLike(ground(choices), mark()));
}

}  // namespace
