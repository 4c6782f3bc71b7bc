#include "pdf/structure/pageAttributes.h"

#include <cmath>
#include <optional>

namespace folvane::pdf {

namespace {

const QRectF usLetter(0, 0, 612, 792);
constexpr double longestSide = 1e9; // points; beyond is damage

std::optional<QRectF> rectangle(QPDFObjectHandle box)
{
    if (!box.isArray() || box.getArrayNItems() < 4)
        return std::nullopt;
    double corner[4];
    for (int i = 0; i < 4; ++i) {
        QPDFObjectHandle item = box.getArrayItem(i);
        if (!item.isNumber())
            return std::nullopt;
        corner[i] = item.getNumericValue();
        if (!(std::abs(corner[i]) < longestSide)) // also what is no number
            return std::nullopt;
    }
    return QRectF(QPointF(corner[0], corner[1]), QPointF(corner[2], corner[3])).normalized();
}

} // namespace

std::vector<QPDFObjectHandle> annotationsOf(QPDFObjectHandle page)
{
    std::vector<QPDFObjectHandle> annotations;
    QPDFObjectHandle list = page.getKey("/Annots");
    if (!list.isArray())
        return annotations;
    for (QPDFObjectHandle annotation : list.getArrayAsVector()) {
        if (annotation.isDictionary())
            annotations.push_back(annotation);
    }
    return annotations;
}

int pageRotation(QPDFObjectHandle page)
{
    QPDFObjectHandle rotate = page.getKey("/Rotate");
    if (!rotate.isNumber() || !(std::abs(rotate.getNumericValue()) < 1e6))
        return 0;
    const int degrees = static_cast<int>(rotate.getNumericValue()) % 360;
    return degrees % 90 == 0 ? normalisedAngle(degrees) : 0;
}

PageGeometry pageGeometry(QPDFObjectHandle page)
{
    std::optional<QRectF> media = rectangle(page.getKey("/MediaBox"));
    if (!media || media->isEmpty())
        media = usLetter;
    QRectF crop = rectangle(page.getKey("/CropBox")).value_or(*media).intersected(*media);
    if (crop.isEmpty())
        crop = *media;
    return {crop, pageRotation(page)};
}

} // namespace folvane::pdf
