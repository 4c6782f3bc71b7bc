#include "controls/dragging/DragScroller.h"

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

namespace folvane {
namespace {

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
    area.resize(200, 200);
    area.show();
    DragScroller scroller(area);
    scroller.begin();
    Swallowing drag;
    qApp->installEventFilter(&drag);
    QCoreApplication::processEvents();
    QWindow hanging; // at the pointer, where a drag's picture is
    QWheelEvent wheel({}, {}, {}, {0, -120}, Qt::LeftButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&hanging, &wheel);
    const int byWheel = area.verticalScrollBar()->value();
    EXPECT_GT(byWheel, 0);
    QTest::keyClick(&area, Qt::Key_PageDown);
    const int byKey = area.verticalScrollBar()->value();
    EXPECT_GT(byKey, byWheel);
    scroller.end();
    QTest::keyClick(&area, Qt::Key_PageDown);
    EXPECT_EQ(area.verticalScrollBar()->value(), byKey) << "the drag is over";
}

} // namespace
} // namespace folvane
