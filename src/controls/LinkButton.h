#pragma once

#include "controls/PaintedButton.h"

namespace folvane {

/// A button that looks like a link: its text in the deep accent colour, underlined under the pointer.
class LinkButton : public PaintedButton {
    Q_OBJECT

public:
    /// At the left and right of its text, for the ring of the focus.
    static constexpr int ringRoom = 4;

    explicit LinkButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void draw(QPainter& painter, const ControlState& state) const override;
};

} // namespace folvane
