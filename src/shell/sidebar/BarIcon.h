#pragma once

#include "controls/PaintedButton.h"
#include "controls/style/icons.h"

namespace folvane {

/// A small button with an icon and no frame, at the foot of the sidebar.
class BarIcon : public PaintedButton {
    Q_OBJECT

public:
    /// `name` is what a screen reader says, `tip` its tooltip.
    BarIcon(Icon icon, const QString& name, const QString& tip, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void draw(QPainter& painter, const ControlState& state) const override;

private:
    Icon m_icon;
};

} // namespace folvane
