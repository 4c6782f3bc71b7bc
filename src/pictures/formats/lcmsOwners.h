#pragma once

#include <lcms2.h>

#include <array>
#include <memory>

// Owners of what lcms makes, and the one curve that is needed everywhere.

namespace folvane::lcms {

struct FreeCurve {
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct DeleteTransform {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using Curve = std::unique_ptr<cmsToneCurve, FreeCurve>;
using Profile = std::unique_ptr<void, CloseProfile>;
using Transform = std::unique_ptr<void, DeleteTransform>;

inline Curve srgbCurve()
{
    const std::array parameters{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045}; // IEC 61966-2-1
    return Curve(cmsBuildParametricToneCurve(nullptr, 4, parameters.data()));
}

} // namespace folvane::lcms
