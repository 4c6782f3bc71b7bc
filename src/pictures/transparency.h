#pragma once

#include <QImage>

#include <stop_token>

namespace folvane {

/// The colours of a picture with transparency (Format_RGBA8888), opaque (Format_RGB888), to go with its mask. What is fully
/// transparent takes the colour of what is visible near it, so that lossy coding and scaling bring no dark edges in. A
/// picture that is handed over for good keeps its memory. Null after a stop.
QImage withoutTransparency(QImage picture, const std::stop_token& stop);

} // namespace folvane
