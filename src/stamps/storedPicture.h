#pragma once

#include <QImage>
#include <QString>

namespace folvane {

/// A stamp's picture, ready to be painted; null when the PNG cannot be decoded.
QImage storedPicture(const QByteArray& png);

/// As above; null also when the file has more than `mostPixels`.
QImage storedPicture(const QString& path, qint64 mostPixels);

} // namespace folvane
