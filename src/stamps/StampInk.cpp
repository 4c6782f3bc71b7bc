#include "stamps/StampInk.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

using Channels = std::array<double, 3>;
using Matrix = std::array<Channels, 3>;

struct InkEntry {
    const char* rawText;
    const char* label;
    Channels generic; ///< red, green, blue in generic RGB: a gamma of 1.8, the phosphors of an old screen
};

constexpr std::array inks{InkEntry{"red", QT_TRANSLATE_NOOP("StampInk", "Red"), {0.8, 0.07, 0.09}},
                          InkEntry{"blue", QT_TRANSLATE_NOOP("StampInk", "Blue"), {0.1, 0.23, 0.7}},
                          InkEntry{"black", QT_TRANSLATE_NOOP("StampInk", "Black"), {0.08, 0.08, 0.09}}};
constexpr double opacity = 0.92;

// Between linear light and CIE XYZ under D50, as the two profiles say; the second is the inverse of that of sRGB.
constexpr double genericGamma = 1.8;
constexpr Matrix xyzOfGeneric{
    {{0.45427, 0.35332, 0.15662}, {0.24263, 0.67441, 0.08336}, {0.01482, 0.09042, 0.71953}}};
constexpr Matrix srgbOfXyz{{{3.1338561, -1.6168667, -0.4906146},
                            {-0.9787684, 1.9161415, 0.0334540},
                            {0.0719453, -0.2289914, 1.4052427}}};

Channels product(const Matrix& matrix, const Channels& vector)
{
    Channels result{};
    for (size_t row = 0; row < result.size(); ++row)
        for (size_t column = 0; column < vector.size(); ++column)
            result[row] += matrix[row][column] * vector[column];
    return result;
}

/// IEC 61966-2-1, cut to what there is.
double encoded(double linear)
{
    const double light = std::clamp(linear, 0.0, 1.0);
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

QColor fromGenericRgb(const Channels& generic)
{
    Channels linear{};
    std::ranges::transform(generic, linear.begin(),
                           [](double value) { return std::pow(value, genericGamma); });
    const Channels srgb = product(srgbOfXyz, product(xyzOfGeneric, linear));
    return QColor::fromRgbF(float(encoded(srgb[0])), float(encoded(srgb[1])), float(encoded(srgb[2])),
                            float(opacity));
}

const InkEntry& entry(StampInk ink)
{
    return inks[static_cast<size_t>(ink)];
}

} // namespace

QString rawText(StampInk ink)
{
    return QString::fromLatin1(entry(ink).rawText);
}

StampInk stampInk(const QString& text)
{
    const auto* found = std::ranges::find_if(stampInks, [&](StampInk ink) { return rawText(ink) == text; });
    return found == stampInks.end() ? StampInk::Red : *found;
}

QString labelOf(StampInk ink)
{
    return QCoreApplication::translate("StampInk", entry(ink).label);
}

QColor colorOf(StampInk ink)
{
    return fromGenericRgb(entry(ink).generic);
}

} // namespace folvane
