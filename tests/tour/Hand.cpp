#include "tour/Hand.h"

#include "tour/TourFailed.h"
#include "tour/accessibleTree.h"
#include "tour/waiting.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <exception>
#include <utility>

namespace folvane {

namespace {

constexpr int carryInterval = 5; // ms
constexpr int dragSteps = 12;

/// Tells the window of something that is dragged over it, as the system would.
template <typename Event>
void tell(QWindow& window, const QMimeData& data, const QPoint& at)
{
    constexpr Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    Event event(window.mapFromGlobal(at), actions, &data, Qt::LeftButton, Qt::KeyboardModifiers());
    QCoreApplication::sendEvent(&window, &event);
}

} // namespace

/// Notices a drag that the program starts, while this lives: what it carries and what it looks like. Some platforms
/// end a drag the moment it starts; what it carried is kept.
class DragWatch : public QObject {
public:
    /// For drags that begin in this window.
    explicit DragWatch(const QWidget& window) : m_window(window) { qApp->installEventFilter(this); }

    /// Its place is told from the pointer.
    std::optional<PlacedPicture> picture() const
    {
        const auto* drag = m_window.findChild<QDrag*>();
        return drag ? PlacedPicture{drag->pixmap(), -drag->hotSpot()} : m_picture;
    }
    /// Null while no drag has come to its end.
    const QMimeData* carried() const { return m_picture ? &m_carried : nullptr; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* drag = event->type() == QEvent::DeferredDelete ? qobject_cast<QDrag*>(watched) : nullptr;
        if (drag) {
            for (const QString& format : drag->mimeData()->formats())
                m_carried.setData(format, drag->mimeData()->data(format));
            m_picture = PlacedPicture{drag->pixmap(), -drag->hotSpot()};
        }
        return false;
    }

private:
    const QWidget& m_window;
    QMimeData m_carried;
    std::optional<PlacedPicture> m_picture;
};

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

bool Hand::finds(const QString& name) const
{
    const QAccessibleInterface* control = findControl(top(), name);
    return control && !control->state().disabled;
}

// A person presses what stands still: layouts settle a turn of the event loop after what they show has changed.
QRect Hand::placeOf(const QString& name) const
{
    QRect before;
    QRect place;
    waitUntil(QStringLiteral("“%1” coming to rest").arg(name), [&] {
        if (!finds(name))
            throw TourFailed(QStringLiteral("“%1” cannot be pressed; there are: %2")
                                 .arg(name, controlNames(top()).join(" | ")));
        before = std::exchange(place, findControl(top(), name)->rect());
        return place == before;
    });
    return place;
}

void Hand::press(const QString& name)
{
    click(placeOf(name).center());
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
    waitUntil("The window's getting the keyboard", [&window] { return window.isActiveWindow(); });
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
    waitUntil("The end of a drag", [&ended] { return ended; });
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
        throw TourFailed("Pulling began no drag.");
    carry(*m_watch->carried(), from, to, over, end);
    QTest::mouseRelease(target(), Qt::LeftButton, {}, local(to));
}

void Hand::carry(const QMimeData& data, const QPoint& from, const QPoint& to,
                 const std::function<void()>& over, End end)
{
    QWindow& window = *target();
    const QPoint way = to - from;
    tell<QDragEnterEvent>(window, data, from + way / dragSteps);
    for (int step = 1; step <= dragSteps; ++step)
        tell<QDragMoveEvent>(window, data, from + way * step / dragSteps);
    m_at = to;
    over();
    if (end == End::Drop)
        return tell<QDropEvent>(window, data, to);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&window, &leave);
}

void Hand::dragFiles(const QList<QUrl>& files, const QPoint& to, const std::function<void()>& over, End end)
{
    QMimeData data;
    data.setUrls(files);
    carry(data, m_window.mapToGlobal(QPoint(1, 1)), to, over, end);
}

std::optional<PlacedPicture> Hand::dragged() const
{
    std::optional<PlacedPicture> picture = m_watch ? m_watch->picture() : std::nullopt;
    if (picture)
        picture->topLeft += m_at;
    return picture;
}

} // namespace folvane
