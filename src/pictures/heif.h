#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace folvane {

/// A picture as its file has it: upright, its colours not yet sRGB.
struct TaggedImage {
    QImage image;
    QByteArray iccProfile;
};

/// The primary picture of a HEIC or AVIF file, or nothing.
std::optional<TaggedImage> decodeHeif(const QByteArray& bytes);

} // namespace folvane
