#pragma once

#include "pdf/Document.h"

#include <QSize>

#include <stop_token>

namespace folvane::pdf {

/// A picture file as a document of one page with a long side of 842 points, whatever its resolution. A JPEG in RGB or
/// grey keeps its own bytes (and colour profile), turned by the page's content where its orientation asks; other
/// pictures become JPEG at quality 0.9 in sRGB, transparency a soft mask. Null when the picture cannot be read, and soon after a stop.
std::unique_ptr<Document> pictureDocument(std::shared_ptr<const SourceFile> file, const QString& extension,
                                          const std::stop_token& stop = {});

/// Size in points of the page for a picture of that many pixels.
QSize picturePageSize(QSize pixels);

} // namespace folvane::pdf
