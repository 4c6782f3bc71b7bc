#include "tour/waiting.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace folvane {

namespace {

constexpr qint64 limit = 30'000;      // ms
constexpr qint64 stillness = 50;      // ms; longer than a frame of an animation
constexpr qint64 longStillness = 400; // ms; longer than a spinner takes for a step
constexpr int lookInterval = 5;       // ms

/// Sees every painting of a widget.
class Painting : public QObject {
public:
    Painting()
    {
        m_sinceLast.start();
        qApp->installEventFilter(this);
    }

    qint64 sinceLast() const { return m_sinceLast.elapsed(); }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            m_sinceLast.restart();
            ++m_count;
        }
        return false;
    }

private:
    QElapsedTimer m_sinceLast;
    int m_count = 0;
};

} // namespace

void waitUntil(const QString& what, const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    QEventLoop loop;
    QTimer look;
    look.setSingleShot(true);
    look.callOnTimeout(&loop, &QEventLoop::quit);
    while (!condition()) {
        if (time.elapsed() > limit)
            throw TourFailed(QStringLiteral("%1 did not happen.").arg(what));
        look.start(lookInterval);
        loop.exec();
    }
}

void waitUntilStill()
{
    const Painting painting;
    waitUntil("The end of painting", [&painting] { return painting.sinceLast() >= stillness; });
}

void waitForFrames(int frames)
{
    const Painting painting;
    waitUntil("Painting", [&painting, frames] {
        return painting.count() >= frames || painting.sinceLast() >= longStillness;
    });
}

} // namespace folvane
