#pragma once

namespace folvane {

/// Tells screen readers that the rows of FileList are items of a list. Call it before the first one is made.
void installFileListAccessibility();

} // namespace folvane
