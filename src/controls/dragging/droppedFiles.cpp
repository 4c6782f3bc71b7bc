#include "controls/dragging/droppedFiles.h"

#include "platform/desktop/offers.h"

#include <QDropEvent>

namespace folvane {

QList<QUrl> droppedFiles(const QMimeData* data)
{
    return offeredFiles(*data);
}

void acceptCopy(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace folvane
