#pragma once

#include <QByteArray>
#include <QImage>

namespace folvane {

/// A picture as its file has it: upright, its colours not yet sRGB.
struct TaggedImage {
    QImage image;
    QByteArray iccProfile;
};

} // namespace folvane
