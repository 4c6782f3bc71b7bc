#pragma once

#include <QString>

namespace folvane {

class OpenFile;

// Names that the save panel starts with, without ending. A name that would be longer than a file's name can be is cut.

/// For Save As: "report (edited)" or "report (signed)"; pictures have no PDF namesake, so their name alone.
QString suggestedName(const OpenFile& file);
/// "name (words)".
QString suggestedName(const QString& name, const QString& words);
/// For Extract, with the positions of the selected pages: "report (pages 1-3, 5)". A list that would make the
/// name longer than a file's name can be is cut: "report (pages 1, 3, 5, …)".
QString suggestedExtractName(const OpenFile& file);

} // namespace folvane
