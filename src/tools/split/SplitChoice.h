#pragma once

#include "documents/pages/PageRanges.h"

#include <QList>
#include <QString>

#include <optional>

namespace folvane {

/// How a person wants a document cut into several.
struct SplitChoice {
    enum class Mode { Ranges, Every, Each };

    Mode mode = Mode::Ranges;
    QString text;  ///< of Mode::Ranges, as typed
    int every = 2; ///< of Mode::Every: pages in each file; the last one takes what is left

    bool operator==(const SplitChoice&) const = default;

    /// The pages of each new file for a document of so many pages; nothing when the text is not valid.
    std::optional<QList<PageRange>> ranges(int count) const;
};

/// What the sheet says of a choice before it is carried out.
struct SplitSummary {
    enum class Kind { Nothing, Files, Invalid };

    Kind kind = Kind::Nothing;
    QString text; ///< empty when there is nothing to say

    bool operator==(const SplitSummary&) const = default;
};

SplitSummary summary(const SplitChoice& choice, int count);

} // namespace folvane
