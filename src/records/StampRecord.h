#pragma once

#include <QString>
#include <QUuid>

#include <algorithm>

namespace folvane {

/// One entry of the stamp library.
struct StampRecord {
    QUuid id; ///< also names the file with the picture
    QString name;
    double createdAt = 0; ///< seconds since 2001-01-01 00:00:00 UTC
    qint64 pixelWidth = 0;
    qint64 pixelHeight = 0;

    bool operator==(const StampRecord&) const = default;
};

/// Wide pictures are taken for signatures, others for stamps. In pixels.
inline bool isSignature(qint64 width, qint64 height)
{
    return double(width) / double(std::max<qint64>(height, 1)) >= 1.6;
}

} // namespace folvane
