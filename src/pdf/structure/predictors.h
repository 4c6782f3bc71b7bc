#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <memory>

namespace folvane::pdf {

/// The parameters that Flate and LZW have in common (ISO 32000-2, table 8).
struct PredictorParameters {
    int predictor = 1;
    long long columns = 1;
    long long colours = 1;
    long long bits = 8; ///< of a colour

    bool isPng() const { return predictor >= 10 && predictor <= 15; }
    bool isTiff() const { return predictor == 2; }
    long long rowBytes() const { return (columns * colours * bits + 7) / 8; }
    /// Known, and with rows of at most 16 MB.
    bool isBounded() const;
};

/// Undoes the prediction of what flows through; the parameters are bounded ones. Null when there is none.
std::unique_ptr<Pipeline> undonePredictor(const PredictorParameters& parameters, Pipeline* next);

} // namespace folvane::pdf
