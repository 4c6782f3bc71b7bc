#pragma once

#include <QByteArray>

#include <optional>

namespace folvane {

/// The same drawing without anything that reaches outside the file: links to other files, style sheets, and
/// embedded pictures other than plain bitmaps. Nothing when it is no well-formed XML, or nested or expanded
/// beyond measure.
std::optional<QByteArray> selfContainedSvg(const QByteArray& svg);

} // namespace folvane
