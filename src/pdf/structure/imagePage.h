#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QByteArray>
#include <QSize>
#include <QSizeF>

namespace folvane::pdf {

/// An image object of that size without data, eight bits a sample.
QPDFObjectHandle newImage(QPDF& document, QSize pixels, QPDFObjectHandle colourSpace);
/// One of a JPEG in grey (one channel) or RGB, whose bytes are written from where they are.
QPDFObjectHandle newJpegImage(QPDF& document, const QByteArray& jpeg, QSize pixels, int channels);
/// Grey for one channel, else RGB.
QPDFObjectHandle deviceSpace(int channels);

/// Appends a page of that size that the image fills, shown as an EXIF orientation (1 to 8) wants it.
void addImagePage(QPDF& document, QPDFObjectHandle image, QSizeF points, int orientation = 1);

} // namespace folvane::pdf
