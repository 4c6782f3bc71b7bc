#include "tour/Drag.h"

#include <QCoreApplication>
#include <QDrag>
#include <QDropEvent>
#include <QWidget>
#include <QWindow>

namespace folvane {

namespace {

constexpr Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

std::unique_ptr<QMimeData> copyOf(const QMimeData& data)
{
    auto copy = std::make_unique<QMimeData>();
    for (const QString& format : data.formats())
        copy->setData(format, data.data(format));
    return copy;
}

} // namespace

DragWatch::DragWatch(const QWidget& window) : m_window(window)
{
    qApp->installEventFilter(this);
}

bool DragWatch::eventFilter(QObject* watched, QEvent* event)
{
    const auto* drag = event->type() == QEvent::DeferredDelete ? qobject_cast<QDrag*>(watched) : nullptr;
    if (drag) {
        m_carried = copyOf(*drag->mimeData());
        m_picture = DragPicture{drag->pixmap(), drag->hotSpot()};
    }
    return false;
}

std::optional<DragPicture> DragWatch::picture() const
{
    if (const auto* drag = m_window.findChild<QDrag*>())
        return DragPicture{drag->pixmap(), drag->hotSpot()};
    return m_picture;
}

void DragOver::moveTo(const QPoint& at)
{
    const QPoint local = m_window.mapFromGlobal(at);
    if (!m_entered) {
        m_entered = true;
        QDragEnterEvent enter(local, actions, &m_data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&m_window, &enter);
    }
    QDragMoveEvent move(local, actions, &m_data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_window, &move);
}

void DragOver::drop(const QPoint& at)
{
    QDropEvent drop(m_window.mapFromGlobal(at), actions, &m_data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&m_window, &drop);
}

void DragOver::leave()
{
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&m_window, &leave);
}

} // namespace folvane
