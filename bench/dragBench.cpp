// Measures how long the window takes for each step of a drag of a stamp over the first page of FILE, from the mouse's move until all is
// painted, and tells it as one JSON object in milliseconds:
//     folvane-drag-bench FILE

#include "frameTimes.h"
#include "tellMeasured.h"

#include "platform/tasks/spawn.h"
#include "stamps/ReadyStampRenderer.h"
#include "tools/sign/PageArea.h"
#include "tools/sign/SignView.h"
#include "tour/Stage.h"
#include "tour/waiting.h"

#include <QTest>

#include <cmath>

namespace {

using namespace folvane;

constexpr int moves = 1000;

void sign(Stage& stage, const QUrl& file)
{
    const StampRecord stamp = *stage.model.stamps.add(
        *ReadyStampRenderer::render("RECEIVED WITH THANKS", {}, StampInk::Blue), "Stamp");
    spawn(stage.model.open({file}, Tool::Sign));
    waitUntil(QStringLiteral("The opening"), [&stage] { return stage.model.files.value().size() == 1; });
    const OpenFilePtr opened = stage.model.files.value().first();
    stage.model.place(stamp, opened, opened->pages.value().front().id);
    waitUntil(QStringLiteral("The large page"),
              [&stage] { return !stage.window.signView().pageArea().pageRect().isEmpty(); });
    waitUntilStill();
}

/// Round the middle of the page, which leads over all of the stamp's neighbourhood.
QPoint onTheWay(const PageArea& area, int move)
{
    const QRectF page = area.pageRect();
    const double angle = 0.05 * move;
    return area
        .mapTo(area.window(),
               page.center()
                   + QPointF(page.width() * 0.3 * std::sin(angle), page.height() * 0.3 * std::cos(angle)))
        .toPoint();
}

QJsonObject dragged(Stage& stage)
{
    QWindow* window = stage.window.windowHandle();
    const PageArea& area = stage.window.signView().pageArea();
    const QRectF page = area.pageRect();
    const QPointF stamp(page.left() + 0.5 * page.width(), page.top() + 0.62 * page.height());
    QTest::mousePress(window, Qt::LeftButton, {}, area.mapTo(&stage.window, stamp).toPoint());
    const auto move = [&](int number) { QTest::mouseMove(window, onTheWay(area, number)); };
    const QJsonObject times = frameTimes(moves, move);
    QTest::mouseRelease(window, Qt::LeftButton);
    return times;
}

QJsonObject measure(const QStringList& words)
{
    const QUrl file = QUrl::fromLocalFile(words[1]);
    Stage stage;
    sign(stage, file);
    const QJsonObject times = dragged(stage);
    const StampPlacement stamp = stage.model.files.value().first()->pages.value().front().stamps.front();
    if (QLineF(stamp.center, {0.5, 0.5}).length() < 0.2)
        throw TourFailed("The stamp did not come along.");
    return times;
}

} // namespace

int main(int argc, char** argv)
{
    const auto fit = [](const QStringList& words) { return words.size() == 2; };
    return tellMeasured(argc, argv, "folvane-drag-bench FILE", fit, measure);
}
