#pragma once

#include "records/CodeSymbology.h"

namespace folvane {

/// Kinds of codes that are looked for together; sets of them are sums.
enum Family : unsigned {
    noFamily = 0,
    qrCodes = 1,
    microQrCodes = 2,
    aztecCodes = 4,
    dataMatrixCodes = 8,
    pdf417Codes = 16,
    linearCodes = 32, ///< but for DataBar
    dataBarCodes = 64
};
using Families = unsigned;

constexpr Families matrixFamilies = qrCodes | microQrCodes | aztecCodes | dataMatrixCodes;
constexpr Families zxingFamilies = matrixFamilies | pdf417Codes | linearCodes;
constexpr Families zbarFamilies = qrCodes | linearCodes | dataBarCodes;

/// Codes that carry their own check against misreading, and have an area: all but those of plain bars.
bool isArea(CodeSymbology symbology);

} // namespace folvane
