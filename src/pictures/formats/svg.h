#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace folvane {

/// Draws an SVG file, compressed or not, on a transparent ground, its long side that many pixels. A small
/// program of ours does it, with a limit on its time and memory: a hostile drawing can keep a painter busy
/// for hours. Blocks; needs no application object. Nothing when it cannot be drawn.
std::optional<QImage> drawSvg(const QByteArray& svg, int longSide);

} // namespace folvane
