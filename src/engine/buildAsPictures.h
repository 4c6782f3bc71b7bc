#pragma once

#include "documents/CompressionStep.h"

#include <QByteArray>
#include <QString>

#include <stop_token>

namespace folvane {

/// A new document with the pages of `flat` as JPEG pictures on white: the long side of each page has the step's pixels
/// (a small page is enlarged), its size in points is that of the page as shown, it has no rotation. A password that is not
/// empty protects it. `flat` must need no password. Throws EngineError, or Cancelled between pages.
QByteArray buildAsPictures(const QByteArray& flat, const CompressionStep& step, const QString& password,
                           std::stop_token stop);

} // namespace folvane
