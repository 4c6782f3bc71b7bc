#include "pdf/structure/PageGeometry.h"

namespace folvane::pdf {

int normalisedAngle(int degrees)
{
    const int remainder = degrees % 360;
    return remainder < 0 ? remainder + 360 : remainder;
}

QSizeF PageGeometry::displaySize(int turn) const
{
    const bool sideways = normalisedAngle(rotation + turn) % 180 != 0;
    return sideways ? cropBox.size().transposed() : cropBox.size();
}

} // namespace folvane::pdf
