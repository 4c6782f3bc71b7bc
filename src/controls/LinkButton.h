#pragma once

#include "controls/PaintedButton.h"
#include "controls/style/icons.h"

#include <optional>

namespace folvane {

/// A button that looks like a link: its text in the deep accent colour unless told, underlined under the pointer.
class LinkButton : public PaintedButton {
    Q_OBJECT

public:
    /// At the left and right of its text, for the ring of the focus.
    static constexpr int ringRoom = 4;

    explicit LinkButton(const QString& text, QWidget* parent = nullptr);

    /// An icon before the text.
    void setSymbol(Icon icon);
    /// Of text and icon.
    void setColor(const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void draw(QPainter& painter, const ControlState& state) const override;

private:
    int symbolWidth() const;

    std::optional<Icon> m_symbol;
    QColor m_color;
};

} // namespace folvane
