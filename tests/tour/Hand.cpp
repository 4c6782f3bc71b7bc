#include "tour/Hand.h"

#include "tour/Drag.h"
#include "tour/TourFailed.h"
#include "tour/waiting.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <exception>

namespace folvane {

namespace {

constexpr int carryInterval = 5; // ms
constexpr int dragSteps = 12;

} // namespace

Hand::Hand(QWidget& window) : m_window(window) {}

Hand::~Hand() = default;

QWidget& Hand::top() const
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return *popup;
    if (QWidget* dialog = QApplication::activeModalWidget())
        return *dialog;
    return m_window;
}

QWindow* Hand::target() const
{
    return top().window()->windowHandle();
}

QPoint Hand::local(const QPoint& at) const
{
    return target()->mapFromGlobal(at);
}

void Hand::click(const QPoint& at, Qt::KeyboardModifiers modifiers, Qt::MouseButton button)
{
    hover(at);
    QTest::mouseClick(target(), button, modifiers, local(at));
}

void Hand::hover(const QPoint& at)
{
    m_at = at;
    QTest::mouseMove(target(), local(at));
}

// There may be no window manager here that gives the keyboard back when a dialog closes.
void Hand::takeKeyboard()
{
    QWidget& window = *top().window();
    if (QApplication::activePopupWidget() || window.isActiveWindow())
        return;
    window.activateWindow();
    waitUntil(QStringLiteral("The window's getting the keyboard"),
              [&window] { return window.isActiveWindow(); });
}

void Hand::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    takeKeyboard();
    QTest::keyClick(target(), key, modifiers);
}

void Hand::type(const QString& text)
{
    takeKeyboard();
    for (const QChar letter : text)
        QTest::keyClick(target(), letter.toLatin1());
}

void Hand::drag(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end)
{
    m_watch = std::make_unique<DragWatch>(m_window);
    const auto forget = qScopeGuard([this] { m_watch.reset(); });
    QTest::mousePress(target(), Qt::LeftButton, {}, local(from));
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        carryWithoutSystem(from, to, over, end);
    else
        carryWithSystem(from, to, over, end);
}

// The system moves what is dragged, and runs an event loop meanwhile: a timer carries it.
void Hand::carryWithSystem(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end)
{
    QWindow* window = target();
    std::exception_ptr failure;
    bool ended = false;
    int step = 0;
    QTimer timer;
    timer.callOnTimeout([&] {
        if (++step <= dragSteps)
            return hover(from + (to - from) * step / dragSteps);
        timer.stop();
        try {
            over();
        } catch (...) {
            failure = std::current_exception(); // an exception must not fly through an event loop
        }
        if (end == End::Cancel)
            QTest::keyClick(window, Qt::Key_Escape);
        QTest::mouseRelease(window, Qt::LeftButton, {}, window->mapFromGlobal(to));
        ended = true;
    });
    timer.start(carryInterval);
    hover(from + (to - from) / dragSteps); // what begins the drag may return only at its end
    waitUntil(QStringLiteral("The end of a drag"), [&ended] { return ended; });
    if (failure)
        std::rethrow_exception(failure);
}

// Without a display a drag is over as soon as it has begun: what it carries is taken from it and moved by hand.
void Hand::carryWithoutSystem(const QPoint& from, const QPoint& to, const std::function<void()>& over,
                              End end)
{
    for (int step = 1; step <= dragSteps && !m_watch->carried(); ++step) {
        hover(from + (to - from) * step / dragSteps);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    if (!m_watch->carried())
        throw TourFailed(QStringLiteral("Pulling began no drag."));
    carry(*m_watch->carried(), from, to, over, end);
    QTest::mouseRelease(target(), Qt::LeftButton, {}, local(to));
}

void Hand::carry(const QMimeData& data, const QPoint& from, const QPoint& to,
                 const std::function<void()>& over, End end)
{
    DragOver drag(*target(), data);
    for (int step = 1; step <= dragSteps; ++step)
        drag.moveTo(from + (to - from) * step / dragSteps);
    m_at = to;
    over();
    if (end == End::Cancel)
        drag.leave();
    else
        drag.drop(to);
}

void Hand::dragFiles(const QList<QUrl>& files, const QPoint& to, const std::function<void()>& over, End end)
{
    QMimeData data;
    data.setUrls(files);
    carry(data, m_window.mapToGlobal(QPoint(1, 1)), to, over, end);
}

std::optional<PlacedPicture> Hand::dragged() const
{
    const std::optional<DragPicture> picture = m_watch ? m_watch->picture() : std::nullopt;
    if (!picture)
        return std::nullopt;
    return PlacedPicture{picture->picture, m_at - picture->hotSpot};
}

} // namespace folvane
