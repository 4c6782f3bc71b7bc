#pragma once

#include "pdf/copying/SourcePart.h"

namespace folvane::pdf {

/// The layers that a source lists.
std::vector<QPDFObjectHandle> layersOf(DocumentData& source);

/// The optional content of all parts as one: the layers that the copied pages use (all of a complete source), hidden
/// where they were hidden. Parts of one source share them. Null when there are none. Call after all else of the parts
/// has been copied.
QPDFObjectHandle joinedLayers(std::list<SourcePart>& parts);

} // namespace folvane::pdf
