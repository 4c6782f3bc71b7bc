#include "pictures/orientation.h"

#include <QTransform>

namespace folvane {

QImage upright(const QImage& image, int orientation)
{
    const auto turned = [](const QImage& from, int degrees) {
        return from.transformed(QTransform().rotate(degrees));
    };
    switch (orientation) {
    case 2: return image.mirrored(true, false);
    case 3: return image.mirrored(true, true);
    case 4: return image.mirrored(false, true);
    case 5: return turned(image.mirrored(false, true), 90);
    case 6: return turned(image, 90);
    case 7: return turned(image.mirrored(true, false), 90);
    case 8: return turned(image, 270);
    default: return image;
    }
}

} // namespace folvane
