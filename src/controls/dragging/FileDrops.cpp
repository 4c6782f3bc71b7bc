#include "controls/dragging/FileDrops.h"

#include "controls/dragging/droppedFiles.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

namespace folvane {

FileDrops::FileDrops(QWidget& target) : QObject(&target)
{
    target.setAcceptDrops(true);
    target.installEventFilter(this);
}

bool FileDrops::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter: return enter(*static_cast<QDropEvent*>(event));
    case QEvent::DragLeave: setOver(false); return true;
    case QEvent::Drop: return drop(*static_cast<QDropEvent*>(event));
    default: return false;
    }
}

bool FileDrops::enter(QDropEvent& event)
{
    if (droppedFiles(event.mimeData()).isEmpty())
        return false;
    acceptCopy(event);
    setOver(true);
    return true;
}

bool FileDrops::drop(QDropEvent& event)
{
    setOver(false);
    acceptCopy(event);
    emit dropped(droppedFiles(event.mimeData()));
    return true;
}

void FileDrops::setOver(bool over)
{
    if (over == m_areOver)
        return;
    m_areOver = over;
    emit overChanged();
}

} // namespace folvane
