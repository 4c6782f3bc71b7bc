#pragma once

#include <QList>
#include <QUrl>

class QDropEvent;
class QMimeData;

namespace folvane {

/// The local files of a drag, in its order; anything else in it is left out.
QList<QUrl> droppedFiles(const QMimeData* data);
/// Takes what is dragged as a copy, whatever is proposed: whoever gives a file away by a move may delete it.
void acceptCopy(QDropEvent& event);

} // namespace folvane
