#include "controls/dragging/DragScroller.h"
#include "controls/dragging/dragScrollSpeed.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

namespace folvane {
namespace {

TEST(DragScrollSpeed, GrowsTowardsTheEdgesAndWithTime)
{
    constexpr int height = 600;
    for (double seconds = 0; seconds < 2.5; seconds += 0.5) {
        double slower = 0;
        for (const int pointer : {560, 580, 599}) {
            const double speed = dragScrollSpeed(pointer, height, seconds);
            EXPECT_GT(speed, slower) << pointer << " after " << seconds;
            EXPECT_GE(dragScrollSpeed(pointer, height, seconds + 0.1), speed);
            EXPECT_EQ(dragScrollSpeed(height - 1 - pointer, height, seconds), -speed);
            slower = speed;
        }
        EXPECT_EQ(dragScrollSpeed(height + 500, height, seconds), slower) << "beyond the edge";
        EXPECT_EQ(dragScrollSpeed(height / 2, height, seconds), 0);
    }
}

/// As the system's drag keeps what the hand does to itself.
class Swallowing : public QObject {
    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::Wheel || event->type() == QEvent::KeyPress;
    }
};

TEST(DragScroller, HearsTheWheelAndTheKeysForPagesThatADragSwallows)
{
    QScrollArea area;
    area.setWidget(new QWidget);
    area.widget()->resize(100, 5000);
    area.show();
    const QScrollBar& bar = *area.verticalScrollBar();
    DragScroller scroller(area);
    scroller.begin();
    Swallowing drag;
    qApp->installEventFilter(&drag);
    QCoreApplication::processEvents();
    QWindow hanging; // at the pointer, where a drag's picture is
    QWheelEvent wheel({}, {}, {}, {0, -120}, Qt::LeftButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&hanging, &wheel);
    const int byWheel = bar.value();
    EXPECT_GT(byWheel, 0);
    QTest::keyClick(&area, Qt::Key_PageDown);
    const int byKey = bar.value();
    EXPECT_GT(byKey, byWheel);
    scroller.end();
    QTest::keyClick(&area, Qt::Key_PageDown);
    EXPECT_EQ(bar.value(), byKey) << "the drag is over";
}

} // namespace
} // namespace folvane
