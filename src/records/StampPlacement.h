#pragma once

#include <QPointF>
#include <QUuid>

namespace folvane {

/// One stamp on one page. All geometry is relative to the page as it is shown, so that it survives
/// any page size and any resolution.
struct StampPlacement {
    QUuid id = QUuid::createUuid();
    QUuid stampID;       ///< the record in the stamp library whose picture is placed
    QPointF center;      ///< fraction of the displayed page, origin at the top left, y downwards
    double width = 0;    ///< fraction of the displayed page's width
    double rotation = 0; ///< degrees, clockwise on the screen

    bool operator==(const StampPlacement&) const = default;
};

} // namespace folvane
