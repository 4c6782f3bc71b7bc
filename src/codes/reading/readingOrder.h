#pragma once

#include "codes/reading/CodeObservation.h"
#include "codes/reading/ReadCode.h"

#include <vector>

namespace folvane {

/// As a person reads them: rows from top to bottom, each from left to right. Codes whose middles differ by at most 2 % of
/// the picture's height stand in one row.
std::vector<CodeObservation> inReadingOrder(const std::vector<CodeObservation>& seen);

/// The first of each payload, whatever its symbology; those without one are passed over.
std::vector<ReadCode> withoutRepetitions(const std::vector<CodeObservation>& ordered);

} // namespace folvane
