#pragma once

#include "controls/style/icons.h"

#include <QPushButton>

#include <optional>

class QVariantAnimation;

namespace folvane {

struct ControlState;

/// The push buttons of the program. A layout places them by their frame (see visualMargin.h): shadow and focus
/// ring, 14 pixels below a primary button and 4 to 10 elsewhere, lie over its spacings and margins.
class Button : public QPushButton {
    Q_OBJECT

public:
    enum class Kind {
        Primary,   ///< the one thing to do, filled with the accent, with a coloured shadow
        Secondary, ///< outlined
        Tool,      ///< outlined and smaller, in a bar; an icon, a text or both
    };

    Button(Kind kind, const QString& text, QWidget* parent = nullptr);

    /// Primary: filled with `theme::danger`. Others: labelled in it.
    void setDestructive(bool destructive);
    /// An icon before the text, in the colour of the text.
    void setSymbol(Icon icon);
    /// Leaves the text to screen readers and shows only the icon, in a square as high as the other buttons.
    void setIconOnly(bool iconOnly);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// What the button seems to be: the widget without its visual margin.
    QRect frame() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& place) const override { return frame().contains(place); }
    void changeEvent(QEvent* event) override;

private:
    bool showsText() const { return !m_iconOnly && !text().isEmpty(); }
    QColor accent() const;
    QColor labelColor() const;
    int labelWidth() const;
    double opacity(const ControlState& state) const;
    void setPress(double press);
    void refreshMargin();
    void animatePress(double target);
    void draw(QPainter& painter, const ControlState& state) const;
    void drawFrame(QPainter& painter, const ControlState& state) const;
    void drawLabel(QPainter& painter) const;

    Kind m_kind;
    bool m_destructive = false;
    bool m_iconOnly = false;
    std::optional<Icon> m_symbol;
    double m_press = 0; // from 0 to 1
    QVariantAnimation* m_pressing;
};

} // namespace folvane
