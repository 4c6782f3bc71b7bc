#pragma once

#include <QByteArray>

namespace folvane {

/// Process inks as they stand in a file, four bytes a pixel without padding. Most programs write them into
/// JPEG files inverted, 255 meaning no ink, and set a marker by which isInverted is told.
struct InkSamples {
    int width = 0;
    int height = 0;
    bool isInverted = false;
    QByteArray samples; ///< cyan, magenta, yellow, black
};

} // namespace folvane
