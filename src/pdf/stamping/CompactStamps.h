#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QUrl>

#include <map>
#include <memory>
#include <tuple>

namespace folvane::pdf {

/// A stamp with no more pixels than it needs: its colours as a JPEG, its edges in a mask.
struct CompactStamp {
    QSize size;
    QByteArray
        jpeg; ///< RGB; where nothing is seen, the mean colour of the ink, so that no dark halo bleeds into its edges
    QByteArray alpha; ///< a byte a pixel, rows without padding
};

/// Stamps' pictures in every size that was asked for. A file's content never changes, so what is here stays true.
class CompactStamps {
public:
    /// The picture's own size in pixels; empty when it cannot be read.
    QSize pixels(const QUrl& file);
    /// Its long side `longSide` pixels, or its own where that is less; `quality` is 1 to 100. Null when it cannot be made.
    std::shared_ptr<const CompactStamp> compact(const QUrl& file, int longSide, int quality);

private:
    QImage picture(const QUrl& file);

    QHash<QUrl, QImage> m_pictures; ///< without those that could not be read: the next build tries again
    std::map<std::tuple<QUrl, int, int>, std::shared_ptr<const CompactStamp>> m_compact;
};

} // namespace folvane::pdf
