#pragma once

#include "pdf/structure/filterChain.h"
#include "pictures/ImageSamples.h"

#include <QByteArray>

#include <memory>
#include <optional>

namespace folvane::pdf {

/// An image of a document, taken out of it: all that its decoding needs, as plain values for any thread.
struct StoredImage {
    enum class Road {
        Samples, ///< plain filters lead to the samples
        Jpeg,    ///< plain filters lead to a JPEG
        Drawn    ///< `document` is drawn
    };
    enum class Role { Picture, SoftMask };

    Role role = Role::Picture;
    Road road = Road::Samples;
    QSize size; ///< as the dictionary tells
    int bits = 8;
    int channels = 1;    ///< of a pixel as it is stored
    QByteArray bytes;    ///< as stored
    FilterChain filters; ///< the plain ones, outermost first
    std::optional<int> colourTransform;
    /// For numbers of colours: the colour of each possible sample, paletteChannels bytes each. Empty otherwise.
    QByteArray palette;
    int paletteChannels = 0;
    QByteArray document;       ///< for Road::Drawn: one page that the image fills
    qint64 drawingMemory = 0;  ///< what the renderer takes to decode it, in bytes
    int drawnChannels = 0;     ///< of what is drawn: 1, 3, or 0 for whichever it shows
    bool isPackedAnew = false; ///< the writer would deflate its samples
    /// What says which of its pixels are seen: a soft mask, or a stencil (0 where it is painted). May be null.
    std::shared_ptr<const StoredImage> opacity;
    bool opacityIsInverted = false;

    int decodedChannels() const { return palette.isEmpty() ? channels : paletteChannels; }
};

} // namespace folvane::pdf
