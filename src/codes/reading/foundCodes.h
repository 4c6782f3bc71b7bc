#pragma once

#include "codes/reading/ReadCode.h"
#include "records/FoundCode.h"

#include <QList>

#include <vector>

namespace folvane {

/// What was read in one picture, with where it is from; each gets an id of its own.
QList<FoundCode> foundCodes(const std::vector<ReadCode>& codes, const QString& origin,
                            std::optional<int> page = std::nullopt);

} // namespace folvane
