#pragma once

#include <QHash>
#include <QImage>
#include <QUuid>

#include <vector>

namespace folvane {

class StampLibrary;

/// The library's pictures at the sizes at which they are shown. A painter that makes a picture more than twice as small leaves out
/// pixels, so copies of half the size, a quarter and so on are made when they are first asked for, and kept.
class StampPictures {
public:
    explicit StampPictures(const StampLibrary& library) : m_library(library) {}

    /// The smallest copy that is at least `width` pixels wide, or else the picture itself. Null when there is none.
    QImage atLeast(const QUuid& stamp, double width);
    /// Of the picture itself; empty when there is none.
    QSize sizeOf(const QUuid& stamp) const;

private:
    const StampLibrary& m_library;
    QHash<QUuid, std::vector<QImage>>
        m_copies; ///< the picture itself, then each half as large as the one before it
};

} // namespace folvane
