#pragma once

#include "engine/DrawnPages.h"
#include "records/CompressionStep.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <stop_token>

namespace folvane {

/// A new document of JPEG pictures of the pages: the long side of each has the step's pixels (a small page is enlarged),
/// its size in points is that of the page as shown, it has no rotation. A password that is not empty protects it. Throws
/// EngineError, or Cancelled between pages.
QByteArray buildAsPictures(const std::shared_ptr<DrawnPages>& pages, const CompressionStep& step,
                           const QString& password, std::stop_token stop);

} // namespace folvane
