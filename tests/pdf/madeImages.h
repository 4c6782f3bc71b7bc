#pragma once

#include <QByteArray>
#include <QSize>

namespace folvane::pdf {

/// The samples of a picture with slopes, edges and noise, as photographs have them; its corners differ, so that no turned,
/// mirrored, inverted or recoloured copy looks like it. Rows are padded to whole bytes; one bit is dithered.
QByteArray madePhoto(QSize size, int channels, int bits = 8);
/// The same as JPEG; four channels are YCCK with Adobe's marker.
QByteArray madeJpeg(QSize size, int channels, int quality = 95);

QByteArray deflatedBytes(const QByteArray& bytes);

} // namespace folvane::pdf
