#pragma once

#include <QList>
#include <QUrl>

class QMimeData;

namespace folvane {

/// The local files of a drag, in its order; anything else in it is left out.
QList<QUrl> droppedFiles(const QMimeData* data);

} // namespace folvane
