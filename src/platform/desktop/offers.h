#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

class QMimeData;

namespace folvane {

// What another program offers in a drag or on the clipboard. Where there are files, a picture beside them is only their icon.

/// The local files among it.
QList<QUrl> offeredFiles(const QMimeData& data);
/// The bytes of a picture in the best of the formats that can be decoded: one that loses nothing first. Empty when there is none.
QByteArray offeredPicture(const QMimeData& data);
/// Whether there are pixels, told without fetching them.
bool offersPicture(const QMimeData& data);

} // namespace folvane
