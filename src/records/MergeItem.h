#pragma once

#include "records/PageItem.h"

#include <QString>

namespace folvane {

/// One row of the list to merge.
struct MergeItem {
    QUuid id = QUuid::createUuid(); ///< fresh for each addition, so that the same file may be there twice
    QString name;                   ///< of the first row: also names the merged file
    std::vector<PageItem> pages;    ///< what the row contributes, in order
    QUrl url;                       ///< where the pages came from

    bool operator==(const MergeItem&) const = default;
};

} // namespace folvane
