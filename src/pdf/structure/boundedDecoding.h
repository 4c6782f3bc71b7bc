#pragma once

namespace folvane::pdf {

/// Sees to it that nothing which qpdf unpacks, whatever for, fills the memory. The library's own decoders have no bounds:
/// a few hundred bytes can ask for rows of gigabytes, and an object stream of some kilobytes for gigabytes of objects.
/// Call before the first document is opened; further calls do nothing.
///
/// Rows of predictors have at most 16 MB. What the library gathers in memory by itself, cross-references and object
/// streams above all, has at most 8 MB, or 32 times its packed size where that is more, and never above 64 MB. What is
/// unpacked for us goes through, for we count ourselves. Data beyond counts as damaged.
void boundDecoding();

} // namespace folvane::pdf
