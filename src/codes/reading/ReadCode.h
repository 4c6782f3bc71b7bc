#pragma once

#include "records/CodeSymbology.h"

#include <QString>

namespace folvane {

/// What one code in a picture says.
struct ReadCode {
    QString payload; ///< never empty
    CodeSymbology symbology = CodeSymbology::Other;

    bool operator==(const ReadCode&) const = default;
};

} // namespace folvane
