#pragma once

#include "platform/files/OwnedDescriptor.h"

#include <QImage>

namespace folvane {

/// The picture in 8-bit grey, what is transparent on white, brought down to maxCodePicturePixels. Null when memory does not
/// suffice.
QImage greyPixels(const QImage& image);

/// A copy of the picture's rows in shared memory that nobody can change or cut any more. None when memory does not suffice.
OwnedDescriptor sharedPixels(const QImage& grey);

} // namespace folvane
