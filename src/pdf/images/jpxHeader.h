#pragma once

#include <QByteArray>
#include <QSize>

#include <optional>

namespace folvane::pdf {

/// What the code stream of a JPEG 2000 file says of itself (ISO 15444-1, A.5.1).
struct JpxHeader {
    QSize size;
    int components = 0;
    bool hasPalette = false; ///< the file, not the document, maps its samples to colours
};

/// Nothing when the bytes hold no JPEG 2000 code stream, or its size is none.
std::optional<JpxHeader> jpxHeader(const QByteArray& bytes);

} // namespace folvane::pdf
