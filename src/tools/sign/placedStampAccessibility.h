#pragma once

namespace folvane {

/// Tells screen readers that a PlacedStamp is a picture that can be chosen. Call it before the first one is made.
void installPlacedStampAccessibility();

} // namespace folvane
