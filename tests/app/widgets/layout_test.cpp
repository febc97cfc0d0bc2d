// The wrapping layout, the side split and the confetti burst.
#include "app/widgets/confetti.h"
#include "app/widgets/flowlayout.h"
#include "app/widgets/sidesplit.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBoxLayout>
#include <QPointer>
#include <QSpacerItem>

namespace {

TEST(FlowLayout, wrapsWhenTheNextItemWouldPassTheEdge) {
    struct Row {
        const char* name;
        std::vector<QSize> items;
        int height;
    };
    // 100 wide inside margins of 5 left and right, 7 above and 9 below; spacing 6 both ways.
    const Row rows[] = {
        {"empty is its margins", {}, 16},
        {"exactly fits", {{47, 20}, {47, 20}}, 36},
        {"one pixel too wide wraps", {{47, 20}, {48, 20}}, 62},
        {"line height is the tallest", {{40, 30}, {40, 10}, {40, 10}}, 62},
        {"too wide stands alone", {{30, 10}, {300, 20}, {30, 10}}, 68},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        app::FlowLayout flow(nullptr, 6, 6);
        flow.setContentsMargins(5, 7, 5, 9);
        for (QSize s : row.items)
            flow.addItem(new QSpacerItem(s.width(), s.height()));
        EXPECT_EQ(flow.heightForWidth(110), row.height);
        flow.setGeometry(QRect(0, 0, 110, 100));
        if (flow.count() == 0) continue;
        EXPECT_EQ(flow.itemAt(0)->geometry().topLeft(), QPoint(5, 7));
    }
}

TEST(SideSplit, stacksBelowTheThresholdAndBack) {
    QWidget host;
    auto* split = new app::SideSplit(500, &host);
    auto* side = new QWidget;
    side->setFixedSize(100, 50);
    split->setWidgets(new QWidget, side);
    auto* box = qobject_cast<QBoxLayout*>(split->layout());
    ASSERT_NE(box, nullptr);
    for (const auto& [width, stacked] : {std::pair{499, true}, std::pair{500, false}}) {
        SCOPED_TRACE(width);
        split->resize(width, 300);
        QApplication::sendPostedEvents();
        host.show();
        QApplication::processEvents();
        EXPECT_EQ(split->isStacked(), stacked);
        EXPECT_EQ(box->direction(), stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    }
    app::SideSplit alone(500);
    alone.setWidgets(new QWidget, nullptr);
    alone.resize(200, 100);
    alone.show();
    QApplication::processEvents();
    EXPECT_FALSE(alone.isStacked());
}

// Even a parent of no width gets a burst; it starts above and inside the
// parent, falls, fades after tick 120 and is gone after 170.
TEST(Confetti, burstFallsFromAboveFadesAndDeletesItself) {
    QWidget narrow;
    narrow.resize(0, 100);
    const app::ConfettiOverlay none(&narrow);
    for (const auto& p : none.particles())
        EXPECT_EQ(p.x, 0);

    QWidget parent;
    parent.resize(300, 200);
    QPointer<app::ConfettiOverlay> burst = new app::ConfettiOverlay(&parent);
    EXPECT_EQ(burst->geometry(), parent.rect());
    ASSERT_FALSE(burst->particles().empty());
    for (const auto& p : burst->particles()) {
        EXPECT_TRUE(p.x >= 0 && p.x < 300) << p.x;
        EXPECT_LT(p.y, 0);
        EXPECT_GT(p.vy, 0);
    }
    const double y0 = burst->particles()[0].y;
    burst->tick();
    EXPECT_GT(burst->particles()[0].y, y0) << "it falls";
    while (burst->tickCount() < 120)
        burst->tick();
    EXPECT_DOUBLE_EQ(burst->opacity(), 1.0);
    while (burst->tickCount() < 170)
        burst->tick();
    EXPECT_DOUBLE_EQ(burst->opacity(), 0.0);
    burst->tick();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(burst.isNull());
}

} // namespace
