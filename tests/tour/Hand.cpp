#include "tour/Hand.h"

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

#include <utility>

namespace folvane {

namespace {

constexpr int dragSteps = 12;

/// Tells the window of something that is dragged over it, as the system would.
template <typename Event>
void tell(QWindow& window, const QMimeData& data, const QPoint& at)
{
    constexpr Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    Event event(window.mapFromGlobal(at), actions, &data, Qt::LeftButton, Qt::KeyboardModifiers());
    QCoreApplication::sendEvent(&window, &event);
}

/// Keeps what a drag that the program starts carries, and what it looks like, until it is over.
class DragWatch : public QObject {
public:
    DragWatch() { qApp->installEventFilter(this); }

    QMimeData carried;
    std::optional<QPixmap> picture;
    QPoint grabbedAt;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* drag = event->type() == QEvent::DeferredDelete ? qobject_cast<QDrag*>(watched) : nullptr;
        if (drag) {
            for (const QString& format : drag->mimeData()->formats())
                carried.setData(format, drag->mimeData()->data(format));
            picture = drag->pixmap();
            grabbedAt = drag->hotSpot();
        }
        return false;
    }
};

} // namespace

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
            throw TourFailed(QStringLiteral("“%1” cannot be pressed.").arg(name));
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

void Hand::doubleClick(const QPoint& at)
{
    click(at);
    QTest::mouseDClick(target(), Qt::LeftButton, {}, local(at));
}

void Hand::hover(const QPoint& at)
{
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

void Hand::tabTo(const QString& name)
{
    waitUntil(QStringLiteral("The keyboard's coming to “%1”").arg(name), [&] {
        const QAccessibleInterface* control = findControl(top(), name);
        const bool isThere = control && control->state().focused;
        if (!isThere)
            key(Qt::Key_Tab);
        return isThere;
    });
}

// The system's own drag is ended where it begins, which a platform without a display does by itself: what it held is then
// carried by the same hand everywhere.
void Hand::drag(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end)
{
    const DragWatch watch;
    QTimer ending;
    ending.callOnTimeout(&QDrag::cancel);
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        ending.start();
    QTest::mousePress(target(), Qt::LeftButton, {}, local(from));
    for (int step = 1; step <= dragSteps && !watch.picture; ++step) {
        hover(from + (to - from) * step / dragSteps);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    if (!watch.picture)
        throw TourFailed("Pulling began no drag.");
    ending.stop();
    m_dragged = PlacedPicture{*watch.picture, to - watch.grabbedAt};
    const auto forget = qScopeGuard([this] { m_dragged.reset(); });
    carry(watch.carried, from, to, over, end);
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

void Hand::pull(const QPoint& from, const QPoint& to, const std::function<void()>& over)
{
    QTest::mousePress(target(), Qt::LeftButton, {}, local(from));
    for (int step = 1; step <= dragSteps; ++step)
        hover(from + (to - from) * step / dragSteps);
    over();
    QTest::mouseRelease(target(), Qt::LeftButton, {}, local(to));
}

void Hand::draw(const QList<QPoint>& places)
{
    QTest::mousePress(target(), Qt::LeftButton, {}, local(places.first()));
    for (const QPoint& place : places.sliced(1))
        hover(place);
    QTest::mouseRelease(target(), Qt::LeftButton, {}, local(places.last()));
}

} // namespace folvane
