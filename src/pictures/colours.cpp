#include "pictures/colours.h"

#include "pictures/formats/lcmsOwners.h"
#include "pictures/inkMixing.h"

#include <QColorSpace>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace folvane {

namespace {

using lcms::Curve, lcms::Profile, lcms::Transform;

// Profiles of presses take a few megabytes at most.
constexpr qsizetype maxProfileBytes = 32 << 20;
constexpr cmsUInt32Number intent = INTENT_PERCEPTUAL;

/// How lcms sees the pixels of a QImage format that toSrgb() works on.
struct PixelLayout {
    cmsUInt32Number source;
    cmsUInt32Number target;
    QImage::Format targetFormat;
};

PixelLayout layoutOf(QImage::Format format)
{
    switch (format) {
    case QImage::Format_Grayscale8: return {TYPE_GRAY_8, TYPE_GRAY_8, QImage::Format_Grayscale8};
    case QImage::Format_Grayscale16: return {TYPE_GRAY_16, TYPE_GRAY_8, QImage::Format_Grayscale8};
    case QImage::Format_RGBX64: return {TYPE_RGBA_16, TYPE_RGBA_8, QImage::Format_RGBX8888};
    case QImage::Format_RGBA64: return {TYPE_RGBA_16, TYPE_RGBA_8, QImage::Format_RGBA8888};
    case QImage::Format_RGBA8888: return {TYPE_RGBA_8, TYPE_RGBA_8, QImage::Format_RGBA8888};
    default: return {TYPE_RGB_8, TYPE_RGB_8, QImage::Format_RGB888};
    }
}

bool isGreyFormat(const QImage& image)
{
    return image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16;
}

/// The one of those that layoutOf() knows in which a picture keeps its depth.
QImage::Format workingFormat(const QImage& image, bool grey)
{
    if (grey)
        return isDeep(image.format()) ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8;
    if (isDeep(image.format()))
        return image.hasAlphaChannel() ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
    return image.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGB888;
}

/// In its own memory, where nobody else holds the picture.
QImage inEightBits(QImage image)
{
    if (isGreyFormat(image))
        return std::move(image).convertToFormat(QImage::Format_Grayscale8);
    const bool hasAlpha = image.hasAlphaChannel();
    return std::move(image).convertToFormat(hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
}

Profile openProfile(const QByteArray& bytes)
{
    if (bytes.isEmpty() || bytes.size() > maxProfileBytes)
        return nullptr;
    return Profile(cmsOpenProfileFromMem(bytes.constData(), cmsUInt32Number(bytes.size())));
}

/// sRGB, or grey of the same tones.
Profile targetProfile(bool grey)
{
    if (!grey)
        return Profile(cmsCreate_sRGBProfile());
    const Curve curve = lcms::srgbCurve();
    return Profile(cmsCreateGrayProfile(cmsD50_xyY(), curve.get()));
}

bool isSrgb(const QByteArray& iccProfile)
{
    return QColorSpace::fromIccProfile(iccProfile) == QColorSpace(QColorSpace::SRgb);
}

Transform makeTransform(const Profile& from, cmsUInt32Number source, const Profile& to,
                        cmsUInt32Number target)
{
    constexpr cmsUInt32Number flags = cmsFLAGS_BLACKPOINTCOMPENSATION | cmsFLAGS_COPY_ALPHA;
    return Transform(cmsCreateTransform(from.get(), source, to.get(), target, intent, flags));
}

/// Row by row in the picture's own memory, where its new pixels are as large as the old ones.
QImage transformed(QImage image, const Transform& transform, QImage::Format format,
                   const std::stop_token& stop)
{
    const auto width = cmsUInt32Number(image.width());
    QImage result = image.format() == format ? std::move(image) : QImage(image.size(), format);
    const bool inPlace = image.isNull();
    std::vector<uchar> row(inPlace ? size_t(result.bytesPerLine()) : 0);
    for (int y = 0; y < result.height() && !stop.stop_requested(); ++y) {
        uchar* to = result.scanLine(y);
        std::copy_n(to, row.size(), row.data());
        cmsDoTransform(transform.get(), inPlace ? row.data() : image.constScanLine(y), to, width);
    }
    return result;
}

/// The colour model that a profile is for, as its header names it: "RGB ", "GRAY", "CMYK" … (ICC.1, 7.2.8.
/// lcms gives it as an enumeration, whose values a broken profile leaves.)
QByteArray colourModel(const QByteArray& iccProfile)
{
    return iccProfile.mid(16, 4);
}

/// Whether the pixels must be grey for the profile; nothing when the picture cannot have its colour model.
std::optional<bool> greyFor(const QByteArray& iccProfile, const QImage& image)
{
    const QByteArray model = colourModel(iccProfile);
    if (model == "RGB ")
        return false;
    if (model == "GRAY" && !image.hasAlphaChannel() && (isGreyFormat(image) || image.allGray()))
        return true;
    return std::nullopt;
}

/// Three colours a pixel come to lie where four inks were: each row ends before the inks of the next one.
QImage inMemoryOfInks(InkSamples inks, const std::function<void(const uchar* inks, uchar* rgb)>& convert,
                      const std::stop_token& stop)
{
    const qsizetype from = qsizetype(4) * inks.width, to = (qsizetype(3) * inks.width + 3) / 4 * 4;
    auto owner = std::make_unique<QByteArray>(std::move(inks.samples));
    auto* bits = reinterpret_cast<uchar*>(owner->data());
    std::vector<uchar> row(static_cast<size_t>(from));
    for (int y = 0; y < inks.height && !stop.stop_requested(); ++y) {
        std::copy_n(bits + from * y, from, row.data());
        convert(row.data(), bits + to * y);
    }
    const auto letGo = [](void* bytes) { delete static_cast<QByteArray*>(bytes); };
    return QImage(bits, inks.width, inks.height, to, QImage::Format_RGB888, letGo, owner.release());
}

} // namespace

bool isDeep(QImage::Format format)
{
    return QImage::toPixelFormat(format).redSize() > 8 || format == QImage::Format_Grayscale16;
}

QImage toSrgb(QImage image, const QByteArray& iccProfile, const std::stop_token& stop)
{
    const Profile from = openProfile(iccProfile);
    const std::optional<bool> grey = from && !isSrgb(iccProfile) ? greyFor(iccProfile, image) : std::nullopt;
    if (!grey)
        return inEightBits(std::move(image));
    const QImage::Format working = workingFormat(image, *grey);
    const PixelLayout layout = layoutOf(working);
    const Transform transform = makeTransform(from, layout.source, targetProfile(*grey), layout.target);
    if (!transform)
        return inEightBits(std::move(image));
    return inEightBits(
        transformed(std::move(image).convertToFormat(working), transform, layout.targetFormat, stop));
}

QImage toSrgb(InkSamples cmyk, const QByteArray& iccProfile, const std::stop_token& stop)
{
    const qsizetype width = cmyk.width;
    const bool isInverted = cmyk.isInverted;
    const Profile from = openProfile(iccProfile);
    const bool fits = from && colourModel(iccProfile) == "CMYK";
    const cmsUInt32Number source = isInverted ? TYPE_CMYK_8_REV : TYPE_CMYK_8;
    const Transform transform =
        fits ? makeTransform(from, source, targetProfile(false), TYPE_RGB_8) : nullptr;
    const auto mix = [=](const uchar* inks, uchar* rgb) { mixInks(inks, rgb, width, isInverted); };
    const auto transformRow = [&](const uchar* inks, uchar* rgb) {
        cmsDoTransform(transform.get(), inks, rgb, cmsUInt32Number(width));
    };
    return transform ? inMemoryOfInks(std::move(cmyk), transformRow, stop)
                     : inMemoryOfInks(std::move(cmyk), mix, stop);
}

} // namespace folvane
