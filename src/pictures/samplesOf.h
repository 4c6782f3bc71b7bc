#pragma once

#include "pictures/ImageSamples.h"

#include <QImage>

#include <optional>

namespace folvane {

/// The samples of a picture in Format_RGB888, in one channel or three. Where that is not told: in one where there is no
/// colour, which is a third of the work for all that follows.
ImageSamples samplesOf(const QImage& image, std::optional<int> channels = std::nullopt);

/// The samples of a picture in any format of eight bits a sample.
SampleView viewOf(const QImage& image);

/// The way back, without a copy: Format_RGB888, Format_Grayscale8 for one channel, Format_RGBA8888_Premultiplied for four.
QImage imageOf(ImageSamples samples);

} // namespace folvane
