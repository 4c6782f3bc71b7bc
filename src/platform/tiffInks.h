#pragma once

#include "platform/jpeg.h"

#include <QByteArray>

#include <optional>

namespace folvane {

/// The first picture of a TIFF file whose samples are process inks, which Qt's reader does not take. Its ICC
/// profile is tiffProfile(), its turn tiffOrientation(). Nothing for other TIFF files, and when it cannot be
/// decoded.
std::optional<InkSamples> decodeTiffInks(const QByteArray& bytes);

} // namespace folvane
