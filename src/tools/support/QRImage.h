#pragma once

#include <QImage>
#include <QString>

/// Pictures of QR codes.
namespace folvane::QRImage {

/// The code of the text in UTF-8, at correction level M, black on white, for a white ground; `side` pixels wide and high. Its
/// modules are whole pixels, so white may be left around it. Null when the text does not fit into a code, or the
/// code not into the picture.
QImage image(const QString& text, int side);

} // namespace folvane::QRImage
