#pragma once

#include <QByteArray>
#include <QImage>

namespace folvane {

/// A PNG file in sRGB with an alpha channel; empty when there is no memory for it.
QByteArray pngOf(const QImage& image);

} // namespace folvane
