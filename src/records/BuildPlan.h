#pragma once

#include "records/CompressionStep.h"
#include "records/PageItem.h"

#include <QHash>
#include <QString>

#include <optional>
#include <set>
#include <vector>

namespace folvane {

/// All that the engine is told about a new PDF.
struct BuildPlan {
    std::vector<PageItem> pages;            ///< the pages of the new file, in order
    QHash<QUuid, QUrl> stampFiles;          ///< for each stamp record the PNG that holds its picture
    std::optional<QString> password;        ///< none or empty: an unprotected file
    std::optional<CompressionStep> quality; ///< none keeps the page content as it is
    /// Positions in `pages` at which another merged document begins. Bookmarks, links and fields of a document stay
    /// among its own pages, also where it is merged with itself.
    std::set<size_t> documentStarts = {};

    bool operator==(const BuildPlan&) const = default;
};

} // namespace folvane
