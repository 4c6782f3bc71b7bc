#pragma once

#include "records/BuildPlan.h"
#include "records/MergeItem.h"
#include "stamps/StampLibrary.h"

namespace folvane {

/// What the engine is told about a new PDF of these pages, whoever makes it. Compressing adds its quality.
BuildPlan buildPlan(const StampLibrary& stamps, std::vector<PageItem> pages,
                    std::optional<QString> password = std::nullopt);

/// All rows as one file without a password; each is a document of its own.
BuildPlan mergePlan(const StampLibrary& stamps, const std::vector<MergeItem>& rows);

} // namespace folvane
