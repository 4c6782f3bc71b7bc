#include "support/printers.h"
#include "tools/drawing/DrawingCanvas.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace folvane {
namespace {

QImage output(const Stroke& stroke)
{
    return QImage::fromData(pngOf(InkDrawing{{512, 220}, StampInk::Blue, {stroke}}), "PNG");
}

TEST(Strokes, CurveThroughTheMiddlesBetweenTheirPlaces)
{
    QPainterPath corner({0, 0});
    corner.quadTo(0, 0, 5, 0);
    corner.quadTo(10, 0, 10, 5);
    corner.lineTo(10, 10);
    EXPECT_EQ(strokePath({{0, 0}, {10, 0}, {10, 10}}), corner);
    EXPECT_TRUE(strokePath({}).isEmpty());
    EXPECT_TRUE(strokePath({{3, 4}}).isEmpty());
}

TEST(Strokes, ComeOutAtFourTimesTheirSizeOnATransparentGround)
{
    const QImage line = output({{100, 60}, {200, 60}});
    EXPECT_EQ(line.size(), QSize(2048, 880));
    const auto alpha = [&line](int x, int y) { return line.pixelColor(x, y).alpha(); };
    EXPECT_EQ(alpha(600, 240), colorOf(StampInk::Blue).alpha());
    EXPECT_TRUE(alpha(600, 234) > 0 && alpha(600, 245) > 0) << "three wide";
    EXPECT_TRUE(alpha(600, 233) == 0 && alpha(600, 246) == 0) << "three wide";
    EXPECT_TRUE(alpha(396, 240) > 0 && alpha(394, 234) == 0) << "round at its end";
    EXPECT_EQ(output({{100, 60}}), output({})) << "a click leaves no mark";
}

TEST(Strokes, ArePaintedPieceByPieceAsInOne)
{
    Stroke scribble;
    for (int i = 0; i < 300; ++i)
        scribble.append({50 + 45 * std::cos(0.13 * i), 45 + 40 * std::sin(0.17 * i)});
    QImage whole(100, 90, QImage::Format_ARGB32_Premultiplied), pieces(whole.size(), whole.format());
    for (QImage* image : {&whole, &pieces}) {
        image->fill(Qt::white);
        QPainter painter(image);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const QRect& part : {QRect(0, 0, 33, 90), QRect(33, 0, 67, 40), QRect(33, 40, 67, 50)}) {
            painter.setClipRect(part);
            drawInk(painter, image == &whole ? strokePath(scribble) : strokePath(scribble, part),
                    StampInk::Red);
        }
    }
    EXPECT_EQ(pieces, whole);
}

class Drawing : public testing::Test {
protected:
    Drawing()
    {
        canvas.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&canvas));
    }

    void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::LeftButton,
               Qt::MouseEventSource source = Qt::MouseEventNotSynthesized)
    {
        const bool isMove = type == QEvent::MouseMove;
        const Qt::MouseButton down = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
        QMouseEvent event(type, at, at, canvas.mapToGlobal(at), isMove ? Qt::NoButton : button, down, {},
                          source);
        QApplication::sendEvent(&canvas, &event);
        EXPECT_TRUE(event.isAccepted()) << "else it would move the sheet";
    }
    void stroke(QPoint from, QPoint to, Qt::MouseButton button, Qt::MouseEventSource source)
    {
        mouse(QEvent::MouseButtonPress, from, button, source);
        mouse(QEvent::MouseMove, to, button, source);
        mouse(QEvent::MouseButtonRelease, to, button, source);
    }
    void pen(QEvent::Type type, QPoint at, Qt::MouseButton button)
    {
        QTabletEvent event(type, QPointingDevice::primaryPointingDevice(), at, canvas.mapToGlobal(at), 0.5, 0,
                           0, 0, 0, 0, {}, button, type == QEvent::TabletRelease ? Qt::NoButton : button);
        QApplication::sendEvent(&canvas, &event);
        EXPECT_TRUE(event.isAccepted()) << "else it would become a mouse";
    }
    const QList<Stroke>& strokes() const { return canvas.drawing().strokes; }

    DrawingCanvas canvas{{512, 220}};
};

TEST_F(Drawing, TakesMiceAndPensAndNothingTwice)
{
    stroke({9, 9}, {20, 30}, Qt::LeftButton, Qt::MouseEventNotSynthesized);
    stroke({9, 9}, {20, 30}, Qt::RightButton, Qt::MouseEventNotSynthesized);
    stroke({9, 9}, {20, 30}, Qt::LeftButton, Qt::MouseEventSynthesizedBySystem);
    EXPECT_EQ(strokes(), QList<Stroke>({{{9, 9}, {20, 30}}}));
    canvas.clear();
    mouse(QEvent::MouseButtonDblClick, {1, 2});
    mouse(QEvent::MouseButtonPress, {3, 4}, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, {3, 4}, Qt::RightButton);
    mouse(QEvent::MouseMove, {5, 6});
    mouse(QEvent::MouseButtonRelease, {5, 6});
    pen(QEvent::TabletMove, {7, 7}, Qt::NoButton);
    pen(QEvent::TabletPress, {8, 8}, Qt::LeftButton);
    pen(QEvent::TabletMove, {9, 8}, Qt::NoButton);
    pen(QEvent::TabletRelease, {9, 8}, Qt::LeftButton);
    EXPECT_EQ(strokes(), QList<Stroke>({{{1, 2}, {5, 6}}, {{8, 8}, {9, 8}}}));
}

TEST_F(Drawing, IsDoneByOneFinger)
{
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    QTest::touchEvent(&canvas, screen.get()).press(0, {10, 10});
    QTest::touchEvent(&canvas, screen.get()).stationary(0).press(1, {50, 50});
    mouse(QEvent::MouseButtonPress, {90, 90});
    mouse(QEvent::MouseButtonRelease, {90, 90});
    QTest::touchEvent(&canvas, screen.get()).stationary(0).move(1, {60, 50});
    QTest::touchEvent(&canvas, screen.get()).move(0, {20, 10}).release(1, {60, 50});
    QTest::touchEvent(&canvas, screen.get()).release(0, {20, 10});
    EXPECT_EQ(strokes(), QList<Stroke>({{{10, 10}, {20, 10}}}));
}

} // namespace
} // namespace folvane
