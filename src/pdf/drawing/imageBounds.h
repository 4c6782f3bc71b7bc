#pragma once

class GfxImageColorMap;
class GfxState;
class Stream;

namespace folvane::pdf {

/// False where the library would take too much memory for an image: it makes a bitmap of each as large as it would be if
/// all of it were on the page, holds whole rows of it, and decodes a JPEG in several scans as a whole. Inline images are
/// read only once, so that nothing is looked up in their data.
bool imageFits(const GfxState& state, Stream& stream, int width, GfxImageColorMap* colours, bool isInline);

} // namespace folvane::pdf
