#include "controls/dragging/droppedFiles.h"

#include <QDropEvent>
#include <QMimeData>

namespace folvane {

QList<QUrl> droppedFiles(const QMimeData* data)
{
    QList<QUrl> files;
    if (!data->hasUrls())
        return files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            files.append(url);
    }
    return files;
}

void acceptCopy(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace folvane
