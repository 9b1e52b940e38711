// A product dragged out of the catalogue: where it may go, and what the pointer tells of it.
#include <QDrag>
#include <QPointer>

#include "catalogue/catalogue_draw.h"

namespace {

class Dragging : public CatalogueDraw {
 protected:
    template <typename Event>
    bool send(QWidget& target, const QPoint& at, const char* format = kProductDragFormat) {
        QMimeData data;
        data.setData(QLatin1String(format), keyOf(m17).toUtf8());
        Event event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &event);
        return event.isAccepted();
    }
    static void leave(QWidget& target) {
        QDragLeaveEvent event;
        QApplication::sendEvent(&target, &event);
    }
    QPoint inParentsList() { return parent().requisitionList().geometry().center(); }
    QPoint besideIt() { return {2, 2}; }
    QPoint overCatalogue(QWidget& widget) { return widget.mapTo(&window(), widget.rect().center()); }

    // The hand: presses on a row and goes sideways by that many pixels. Gives the drag that begins.
    QPointer<QDrag> pullRow(int row, int pixels) {
        struct : QObject {
            QObject* born = nullptr;
            bool eventFilter(QObject*, QEvent* event) override {
                if (event->type() == QEvent::ChildAdded) {
                    born = static_cast<QChildEvent*>(event)->child();
                }
                return false;
            }
        } watch;
        products().installEventFilter(&watch);
        const QPoint from = productAt(row), to = from + QPoint(pixels, 0);
        QTest::mousePress(products().viewport(), Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), QPointF(products().viewport()->mapToGlobal(to)),
                         Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(products().viewport(), &move);
        QTest::mouseRelease(products().viewport(), Qt::LeftButton, {}, to);
        return qobject_cast<QDrag*>(watch.born);
    }
};

TEST_F(Dragging, PullingAProductBeginsADrag) {
    fillShop();
    withMonitors([&] {
        const QPointer<QDrag> drag = pullRow(1, 60);
        ASSERT_NE(drag, nullptr);
        EXPECT_EQ(QString::fromUtf8(drag->mimeData()->data(QLatin1String(kProductDragFormat))), keyOf(m17));
        EXPECT_FALSE(drag->pixmap().isNull()) << "the row itself";
        EXPECT_EQ(window().dragIcon(), "");
        expectNothingDrawn();
    });
}

TEST_F(Dragging, AProductWithoutStockCannotBePulled) {
    fillShop();
    withMonitors([&] {
        EXPECT_EQ(pullRow(2, 60), nullptr);
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m19)) << "the press has chosen it";
    });
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.lastText().toStdString();
}

TEST_F(Dragging, NegativeStockCanBePulled) {
    fillShop();
    show([&] {
        clickRow(groups(), "Procesori");
        clickRow(manufacturers(), "Celta");
        EXPECT_NE(pullRow(1, 60), nullptr);
    });
}

TEST_F(Dragging, AShakyHandPullsNothing) {
    fillShop();
    withMonitors([&] { EXPECT_EQ(pullRow(1, 2), nullptr); });
}

TEST_F(Dragging, AnEmptyListGivesNothingToPull) {
    fillShop();
    withMonitors([&] {
        const QPoint row = productAt(1);
        clickRow(groups(), "Prazna");
        QTest::mousePress(products().viewport(), Qt::LeftButton, {}, row);
        EXPECT_EQ(pullRow(1, 60), nullptr);
    });
}

TEST_F(Dragging, PullingOverOtherRowsKeepsTheChosenOne) {
    fillShop();
    withMonitors([&] {
        const QPoint below = productAt(2) - productAt(1);
        QTest::mousePress(products().viewport(), Qt::LeftButton, {}, productAt(2));
        QMouseEvent move(QEvent::MouseMove, QPointF(productAt(2) - below),
                         QPointF(products().viewport()->mapToGlobal(productAt(2) - below)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(products().viewport(), &move);
        EXPECT_EQ(products().selectedItem()->Key, keyOf(m19));
        QTest::mouseRelease(products().viewport(), Qt::LeftButton, {}, productAt(1));
    });
}

TEST_F(Dragging, ADropOnTheParentDraws) {
    fillShop();
    withMonitors([&] {
        EXPECT_TRUE(send<QDragEnterEvent>(parent(), inParentsList()));
        atQuantity({entering("2")}, [&] {
            EXPECT_TRUE(send<QDropEvent>(parent(), inParentsList()));
            EXPECT_TRUE(QTest::qWaitFor([&] { return parent().refreshes == 1; }));
        });
        EXPECT_EQ(stockOf(m17), 3.0F);
        EXPECT_EQ(quantityOf(m17), 2.0F);
    });
}

// The drop comes while the drag's own loop runs, in which no window can open: the quantity is asked for
// afterwards. The row's picture is taken in that time, which tells when it is.
TEST_F(Dragging, ADropThatEndsADragDrawsWhenTheDragIsOver) {
    fillShop();
    withMonitors([&] {
        AtEvent during(QEvent::Paint, [&] {
            return products().findChild<QDrag*>() != nullptr &&
                   send<QDragEnterEvent>(parent(), inParentsList()) &&
                   send<QDropEvent>(parent(), inParentsList());
        });
        products().viewport()->installEventFilter(&during);
        atQuantity({entering("2")}, [&] {
            pullRow(1, 60);
            ASSERT_TRUE(during.done);
            EXPECT_TRUE(QTest::qWaitFor([&] { return parent().refreshes == 1; }));
        });
        products().viewport()->removeEventFilter(&during);
        EXPECT_EQ(stockOf(m17), 3.0F);
        EXPECT_EQ(quantityOf(m17), 2.0F);
    });
}

TEST_F(Dragging, ADropBesideTheListDrawsAllTheSame) {
    fillShop();
    withMonitors([&] {
        send<QDragEnterEvent>(parent(), besideIt());
        EXPECT_EQ(window().dragIcon(), "nodrop");
        atQuantity({entering("1")}, [&] {
            EXPECT_TRUE(send<QDropEvent>(parent(), besideIt()));
            EXPECT_TRUE(QTest::qWaitFor([&] { return parent().refreshes == 1; }));
        });
        EXPECT_EQ(stockOf(m17), 4.0F);
    });
}

TEST_F(Dragging, OverTheParentTheIconTellsWhereTheListIs) {
    fillShop();
    withMonitors([&] {
        send<QDragEnterEvent>(parent(), besideIt());
        EXPECT_EQ(window().dragIcon(), "nodrop");
        send<QDragMoveEvent>(parent(), inParentsList());
        EXPECT_EQ(window().dragIcon(), "drag");
        const QRect list = parent().requisitionList().geometry();
        send<QDragMoveEvent>(parent(), list.topLeft());
        EXPECT_EQ(window().dragIcon(), "nodrop") << "its edge is not inside";
        send<QDragMoveEvent>(parent(), list.topLeft() + QPoint(1, 1));
        EXPECT_EQ(window().dragIcon(), "drag");
        leave(parent());
        EXPECT_EQ(window().dragIcon(), "");
        send<QDragEnterEvent>(parent(), inParentsList());
        EXPECT_EQ(window().dragIcon(), "drag") << "coming straight into the list";
    });
}

TEST_F(Dragging, TheCatalogueItselfTakesNoDrop) {
    fillShop();
    withMonitors([&] {
        for (QWidget* each :
             {static_cast<QWidget*>(&groups()), static_cast<QWidget*>(search(1)),
              static_cast<QWidget*>(window().Text1_2), static_cast<QWidget*>(window().StatusBar1)}) {
            send<QDragEnterEvent>(window(), overCatalogue(*each));
            EXPECT_EQ(window().dragIcon(), "nodrop") << each->objectName().toStdString();
        }
        send<QDragMoveEvent>(window(), overCatalogue(products()));
        EXPECT_EQ(window().dragIcon(), "drag") << "the list that the product comes from";
        leave(window());
        EXPECT_EQ(window().dragIcon(), "");
        send<QDragEnterEvent>(window(), overCatalogue(groups()));
        atQuantity({}, [&] {
            send<QDropEvent>(window(), overCatalogue(groups()));
            QTest::qWait(20);
        });
        EXPECT_EQ(window().dragIcon(), "");
        expectNothingDrawn();
    });
}

TEST_F(Dragging, SomethingElseThanAProductIsNotTaken) {
    fillShop();
    withMonitors([&] {
        EXPECT_FALSE(send<QDragEnterEvent>(parent(), inParentsList(), "text/plain"));
        EXPECT_FALSE(send<QDragEnterEvent>(window(), overCatalogue(groups()), "text/plain"));
        EXPECT_EQ(window().dragIcon(), "");
    });
}

TEST_F(Dragging, TheParentListensOnlyWhileTheCatalogueIsOpen) {
    fillShop();
    EXPECT_EQ(parent().dragEvents, nullptr);
    withMonitors([&] { EXPECT_NE(parent().dragEvents, nullptr); });
    EXPECT_EQ(parent().dragEvents, nullptr);
}

}  // namespace
