#include "pictures/upright.h"

#include <QTransform>

namespace folvane {

// 5 to 8 stand on their side; the even ones of the first four and the odd ones after them are mirrored.
QImage upright(const QImage& image, int orientation)
{
    switch (orientation) {
    case 2: return image.mirrored(true, false);
    case 3: return image.mirrored(true, true);
    case 4: return image.mirrored(false, true);
    case 5: return image.transformed(QTransform().rotate(90)).mirrored(true, false);
    case 6: return image.transformed(QTransform().rotate(90));
    case 7: return image.transformed(QTransform().rotate(-90)).mirrored(true, false);
    case 8: return image.transformed(QTransform().rotate(-90));
    default: return image;
    }
}

} // namespace folvane
