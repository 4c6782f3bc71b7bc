#pragma once

#include <QColor>

class QPainter;
class QPainterPath;
class QWidget;

namespace folvane {

inline constexpr double pressedOpacity = 0.75;
inline constexpr double disabledOpacity = 0.4;

/// What the hand and the keyboard do to a painted control just now, and how controls show it.
struct ControlState {
    bool isEnabled = true;
    bool isUnderPointer = false;
    bool isPressed = false;
    bool hasFocus = false; ///< and it is worth marking

    /// Under the pointer and not pressed.
    bool isHovered() const { return isEnabled && isUnderPointer && !isPressed; }
    /// At which its label is drawn.
    double opacity() const;
    /// Lays over a ground, in the colours told, that the control is pressed or under the pointer.
    void wash(QPainter& painter, const QPainterPath& ground, const QColor& hover,
              const QColor& pressed) const;
    void wash(QPainter& painter, const QPainterPath& ground) const;
};

ControlState stateOf(const QWidget& control, bool isPressed);

} // namespace folvane
