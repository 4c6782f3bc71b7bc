#pragma once

#include "records/CodeSymbology.h"

#include <QString>

namespace folvane {

/// The name by which programs know a symbology: "microQR".
QString rawText(CodeSymbology symbology);

/// The name by which people know it: "Micro QR".
QString displayName(CodeSymbology symbology);

} // namespace folvane
