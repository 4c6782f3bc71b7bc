#pragma once

#include "records/StampPlacement.h"

#include <QUrl>
#include <QUuid>

#include <vector>

namespace folvane {

/// Where a page comes from: a page of a PDF, or a picture file (whose index is always 0).
struct PageSource {
    QUrl url;
    int index = 0; ///< zero-based page in that file

    bool operator==(const PageSource&) const = default;
};

inline size_t qHash(const PageSource& source, size_t seed = 0)
{
    return qHashMulti(seed, source.url, source.index);
}

/// One entry in an open document's page list. Views and the selection name pages by `id`, never by position.
struct PageItem {
    QUuid id = QUuid::createUuid();
    PageSource source;
    int turn = 0; ///< degrees clockwise on top of the source page's own rotation: 0, 90, 180 or 270
    std::vector<StampPlacement> stamps; ///< in drawing order: later ones lie on top

    bool operator==(const PageItem&) const = default;

    /// A copy that can stand beside this page: the page and each placement get a new id, all else is equal.
    PageItem duplicated() const
    {
        PageItem copy = *this;
        copy.id = QUuid::createUuid();
        for (StampPlacement& placement : copy.stamps)
            placement.id = QUuid::createUuid();
        return copy;
    }
};

} // namespace folvane
