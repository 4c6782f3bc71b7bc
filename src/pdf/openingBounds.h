#pragma once

class QByteArray;

namespace folvane {
class SourceFile;
}

namespace folvane::pdf {

/// A cheap look at a file before a library reads it.
///
/// Whether something of a PDF stands in its first or last megabyte. What has nothing there is not searched. Of a file
/// above 256 MB, which could be searched for long, the end must not be empty.
bool canHoldPdf(const SourceFile& file);

/// Whether the cross-references that a reader follows from the file's end announce no more objects than a file of
/// this size can hold: each costs the library memory, whether it is there or not. True where there is no way to follow,
/// for then nothing is announced.
bool hasPlausibleReferences(const SourceFile& file);

} // namespace folvane::pdf
