#pragma once

#include "records/CodeSymbology.h"

#include <QPointF>
#include <QString>

#include <array>

namespace folvane {

/// A code as it was seen in a picture.
struct CodeObservation {
    QString payload;
    CodeSymbology symbology = CodeSymbology::Other;
    std::array<QPointF, 4> corners; ///< fractions of the picture, from its upper left

    bool operator==(const CodeObservation&) const = default;
};

} // namespace folvane
