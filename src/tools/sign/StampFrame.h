#pragma once

#include "records/stampBox.h"

#include <QPolygonF>
#include <QRectF>

class QPainter;

namespace folvane {

/// The outline of a selected stamp with its handles, where a stamp is taken hold of, and all of it in one rectangle. In the page's units,
/// from its upper left corner.
class StampFrame {
public:
    enum class Part { None, Picture, TurnHandle, ResizeHandle };

    /// Where the turn handle stands while the stamp is upright.
    enum class TurnSide { Above, Below };

    explicit StampFrame(const StampBox& box, TurnSide side = TurnSide::Above) : m_box(box), m_side(side) {}

    /// Handles and the outline count only if the stamp is selected.
    Part partAt(QPointF point, bool isSelected) const;
    QPointF turnHandle() const;
    QPointF resizeHandle() const;
    /// The way to the resize handle, as it is seen.
    QPointF fromCenterToCorner() const { return resizeHandle() - m_box.center; }
    /// What the picture covers.
    QRectF bounds() const;
    /// With outline and handles.
    QRectF outerBounds() const;

    /// The outline with its handles, over whatever lies there.
    void draw(QPainter& painter) const;

private:
    QPointF onPage(QPointF fromCenter) const;
    QPointF fromCenter(QPointF onPage) const;
    QRectF picture() const;
    QRectF outline() const;
    QPointF middleOfTurnSide(double beyond) const;

    StampBox m_box;
    TurnSide m_side;
};

} // namespace folvane
