#include "pictures/formats/codePointProfile.h"

#include "pictures/formats/lcmsOwners.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace folvane {

namespace {

using lcms::Curve, lcms::Profile;

constexpr cmsCIExyY whiteD65{0.3127, 0.3290, 1.0};

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
    default:
        return lcms::srgbCurve(); // also for the camera curves of BT.709 and BT.2020, which screens show so
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
