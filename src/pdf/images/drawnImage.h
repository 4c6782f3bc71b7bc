#pragma once

#include "pdf/structure/qpdfInclude.h"
#include "pictures/ImageSamples.h"

#include <QByteArray>

#include <optional>
#include <stop_token>

namespace folvane::pdf {

/// A document of one page that the image fills, one point a pixel, without its masks. A `space` that is given replaces
/// the image's own, and then its Decode array is dropped: so the samples are drawn as they stand. Throws Cancelled, and
/// what the library throws.
QByteArray documentOfImage(QPDFObjectHandle stream, QSize size, const char* space, const QByteArray& bytes,
                           const std::stop_token& stop);

/// Draws such a document in exactly `size`: one channel, three, or (0) one where all is grey and three else. On any thread.
std::optional<ImageSamples> drawnImage(const QByteArray& document, QSize size, int channels,
                                       const std::stop_token& stop);

} // namespace folvane::pdf
