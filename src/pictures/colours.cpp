#include "pictures/colours.h"

#include <QColorSpace>

#include <lcms2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace folvane {

namespace {

// Profiles of presses take a few megabytes at most.
constexpr qsizetype maxProfileBytes = 32 << 20;
constexpr cmsUInt32Number intent = INTENT_PERCEPTUAL;
constexpr cmsCIExyY whiteD65{0.3127, 0.3290, 1.0};

struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct DeleteTransform {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
struct FreeCurve {
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Profile = std::unique_ptr<void, CloseProfile>;
using Transform = std::unique_ptr<void, DeleteTransform>;
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;

/// How lcms sees the pixels of a QImage format that toSrgb() works on.
struct Layout {
    cmsUInt32Number source;
    cmsUInt32Number target;
    QImage::Format targetFormat;
};

Layout layoutOf(QImage::Format format)
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

bool isDeep(const QImage& image)
{
    return image.depth() > 32 || image.format() == QImage::Format_Grayscale16
           || image.pixelFormat().redSize() > 8;
}

bool isGreyFormat(const QImage& image)
{
    return image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16;
}

/// The one of those that layoutOf() knows in which a picture keeps its depth.
QImage::Format workingFormat(const QImage& image, bool grey)
{
    if (grey)
        return isDeep(image) ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8;
    if (isDeep(image))
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

Curve srgbCurve()
{
    const std::array parameters{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045}; // IEC 61966-2-1
    return Curve(cmsBuildParametricToneCurve(nullptr, 4, parameters.data()));
}

/// sRGB, or grey of the same tones.
Profile targetProfile(bool grey)
{
    if (!grey)
        return Profile(cmsCreate_sRGBProfile());
    const Curve curve = srgbCurve();
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

struct Ink {
    float red, green, blue;
};

// Colours of the process inks and their overprints on coated paper, without black. The bits of the place: 1
// cyan, 2 magenta, 4 yellow.
constexpr std::array overprints{Ink{255, 255, 255}, Ink{0, 174, 239}, Ink{236, 0, 140}, Ink{46, 49, 146},
                                Ink{255, 242, 0},   Ink{0, 166, 81},  Ink{237, 28, 36}, Ink{54, 54, 57}};
constexpr Ink blackInk{35, 31, 32};

Ink between(const Ink& without, const Ink& with, float share)
{
    return {without.red + share * (with.red - without.red),
            without.green + share * (with.green - without.green),
            without.blue + share * (with.blue - without.blue)};
}

/// What the eye sees where each ink covers its share of the paper, by chance over the others (Neugebauer's
/// equations). Black darkens whatever lies below it.
Ink mixed(float cyan, float magenta, float yellow, float black)
{
    std::array<Ink, 4> byCyan;
    for (size_t i = 0; i < byCyan.size(); ++i)
        byCyan[i] = between(overprints[2 * i], overprints[2 * i + 1], cyan);
    const Ink plain = between(byCyan[0], byCyan[1], magenta),
              yellowed = between(byCyan[2], byCyan[3], magenta);
    const Ink colour = between(plain, yellowed, yellow);
    const Ink covered{colour.red * blackInk.red / 255, colour.green * blackInk.green / 255,
                      colour.blue * blackInk.blue / 255};
    return between(colour, covered, black);
}

void mixRow(const uchar* inks, uchar* rgb, qsizetype width, uchar flip)
{
    for (qsizetype x = 0; x < width; ++x, inks += 4, rgb += 3) {
        const auto share = [&](int i) { return float(inks[i] ^ flip) / 255; };
        const Ink ink = mixed(share(0), share(1), share(2), share(3));
        rgb[0] = uchar(ink.red + 0.5f);
        rgb[1] = uchar(ink.green + 0.5f);
        rgb[2] = uchar(ink.blue + 0.5f);
    }
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

std::optional<cmsCIExyYTRIPLE> primariesOf(int codePoint)
{
    switch (codePoint) {
    case 1: return cmsCIExyYTRIPLE{{0.640, 0.330, 1}, {0.300, 0.600, 1}, {0.150, 0.060, 1}}; // BT.709
    case 5:
        return cmsCIExyYTRIPLE{{0.640, 0.330, 1}, {0.290, 0.600, 1}, {0.150, 0.060, 1}}; // BT.601, 625 lines
    case 6:
    case 7:
        return cmsCIExyYTRIPLE{{0.630, 0.340, 1}, {0.310, 0.595, 1}, {0.155, 0.070, 1}}; // BT.601, 525 lines
    case 9: return cmsCIExyYTRIPLE{{0.708, 0.292, 1}, {0.170, 0.797, 1}, {0.131, 0.046, 1}};  // BT.2020
    case 12: return cmsCIExyYTRIPLE{{0.680, 0.320, 1}, {0.265, 0.690, 1}, {0.150, 0.060, 1}}; // Display P3
    default: return std::nullopt;
    }
}

/// BT.2100 PQ, with its diffuse white of 203 cd/m2 as white; what is brighter is cut.
double pqToLinear(double signal)
{
    constexpr double m1 = 0.1593017578125, m2 = 78.84375, c1 = 0.8359375, c2 = 18.8515625, c3 = 18.6875;
    const double power = std::pow(signal, 1 / m2);
    return std::min(1.0, std::pow(std::max(power - c1, 0.0) / (c2 - c3 * power), 1 / m1) * 10000 / 203);
}

/// BT.2100 HLG, with the signal of 75 % as white; what is brighter is cut.
double hlgToLinear(double signal)
{
    constexpr double a = 0.17883277, b = 0.28466892, c = 0.55991073, white = 0.26496256;
    const double scene = signal <= 0.5 ? signal * signal / 3 : (std::exp((signal - c) / a) + b) / 12;
    return std::min(1.0, scene / white);
}

Curve sampledCurve(double (*toLinear)(double))
{
    std::vector<cmsUInt16Number> table(4096);
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = cmsUInt16Number(std::lround(65535 * toLinear(double(i) / double(table.size() - 1))));
    return Curve(cmsBuildTabulatedToneCurve16(nullptr, cmsUInt32Number(table.size()), table.data()));
}

Curve curveOf(int transfer)
{
    switch (transfer) {
    case 4: return Curve(cmsBuildGamma(nullptr, 2.2));
    case 5: return Curve(cmsBuildGamma(nullptr, 2.8));
    case 8: return Curve(cmsBuildGamma(nullptr, 1.0));
    case 16: return sampledCurve(pqToLinear);
    case 18: return sampledCurve(hlgToLinear);
    default: return srgbCurve(); // also for the camera curves of BT.709 and BT.2020, which screens show so
    }
}

bool needsNoProfile(int primaries, int transfer)
{
    const bool plainCurve =
        transfer != 4 && transfer != 5 && transfer != 8 && transfer != 16 && transfer != 18;
    return primaries == 1 && plainCurve;
}

QByteArray savedProfile(const Profile& profile)
{
    cmsUInt32Number size = 0;
    if (!profile || !cmsSaveProfileToMem(profile.get(), nullptr, &size))
        return {};
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    return cmsSaveProfileToMem(profile.get(), bytes.data(), &size) ? bytes : QByteArray();
}

} // namespace

QImage toSrgb(QImage image, const QByteArray& iccProfile, const std::stop_token& stop)
{
    const Profile from = openProfile(iccProfile);
    const std::optional<bool> grey = from && !isSrgb(iccProfile) ? greyFor(iccProfile, image) : std::nullopt;
    if (!grey)
        return inEightBits(std::move(image));
    const QImage::Format working = workingFormat(image, *grey);
    const Layout layout = layoutOf(working);
    const Transform transform = makeTransform(from, layout.source, targetProfile(*grey), layout.target);
    if (!transform)
        return inEightBits(std::move(image));
    return inEightBits(
        transformed(std::move(image).convertToFormat(working), transform, layout.targetFormat, stop));
}

QImage toSrgb(InkSamples cmyk, const QByteArray& iccProfile, const std::stop_token& stop)
{
    const qsizetype width = cmyk.width;
    const uchar flip = cmyk.isInverted ? 255 : 0;
    const Profile from = openProfile(iccProfile);
    const bool fits = from && colourModel(iccProfile) == "CMYK";
    const cmsUInt32Number source = cmyk.isInverted ? TYPE_CMYK_8_REV : TYPE_CMYK_8;
    const Transform transform =
        fits ? makeTransform(from, source, targetProfile(false), TYPE_RGB_8) : nullptr;
    const auto mix = [=](const uchar* inks, uchar* rgb) { mixRow(inks, rgb, width, flip); };
    const auto transformRow = [&](const uchar* inks, uchar* rgb) {
        cmsDoTransform(transform.get(), inks, rgb, cmsUInt32Number(width));
    };
    return transform ? inMemoryOfInks(std::move(cmyk), transformRow, stop)
                     : inMemoryOfInks(std::move(cmyk), mix, stop);
}

QByteArray profileOfCodePoints(int primaries, int transfer)
{
    const std::optional<cmsCIExyYTRIPLE> colours = primariesOf(primaries == 2 ? 1 : primaries);
    if (!colours || needsNoProfile(primaries == 2 ? 1 : primaries, transfer))
        return {};
    const Curve curve = curveOf(transfer);
    const std::array curves{curve.get(), curve.get(), curve.get()};
    return savedProfile(Profile(cmsCreateRGBProfile(&whiteD65, &*colours, curves.data())));
}

} // namespace folvane
