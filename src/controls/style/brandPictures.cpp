#include "controls/style/brandPictures.h"

#include <algorithm>
#include <array>

namespace folvane {

namespace {

// The sizes that are embedded in the program.
constexpr std::array logoSizes{64, 128, 256};
constexpr std::array iconSizes{16, 32, 48, 64, 128};

} // namespace

QImage brandLogo(int pixels)
{
    // Halved at least, or more: a picture that is made a little smaller blurs.
    const auto enough = std::find_if(logoSizes.begin(), logoSizes.end(),
                                     [pixels](int size) { return size == pixels || size >= 2 * pixels; });
    const int size = enough == logoSizes.end() ? logoSizes.back() : *enough;
    const QImage logo(QStringLiteral(":/brand/BrandLogo-%1.png").arg(size));
    return logo.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QIcon brandIcon()
{
    QIcon icon;
    for (const int size : iconSizes) // with the size told, no file is read before it is shown
        icon.addFile(QStringLiteral(":/brand/AppIcon-%1.png").arg(size), QSize(size, size));
    return icon;
}

} // namespace folvane
