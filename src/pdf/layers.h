#pragma once

#include "pdf/SourcePart.h"

namespace folvane::pdf {

/// The optional content of all parts as one: the layers that the copied pages use (all of a complete source), hidden
/// where they were hidden. Null when there are none. Call after all else of the parts has been copied.
QPDFObjectHandle joinedLayers(std::list<SourcePart>& parts);

} // namespace folvane::pdf
