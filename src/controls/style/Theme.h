#pragma once

#include <QColor>
#include <QLinearGradient>
#include <QPalette>

/// The one palette of the program. Views name these and no raw colours; lengths are device-independent pixels.
namespace folvane::theme {

inline constexpr QColor background(246, 244, 241);
inline constexpr QColor surface(255, 255, 255);
inline constexpr QColor text(20, 18, 16);
inline constexpr QColor secondaryText(107, 100, 94);
inline constexpr QColor accent(230, 12, 9);
inline constexpr QColor accentDeep(184, 3, 6);
inline constexpr QColor success(18, 183, 106);
inline constexpr QColor warning(245, 165, 36);
inline constexpr QColor danger(217, 45, 32);

inline constexpr QColor chrome(239, 236, 231);      // around the content: `background`, a little darker
inline constexpr QColor accentSoft(230, 12, 9, 31); // 0.12
inline constexpr QColor veil(20, 18, 16, 31);       // 0.12 of `text`, over a window that has to wait
inline constexpr QColor hairline(0, 0, 0, 18);      // 0.07
inline constexpr QColor black(0, 0, 0);             // of shadows and dimmed windows
inline constexpr QColor hover(60, 40, 30, 15);      // 0.06, over a surface under the pointer
inline constexpr QColor hoverSoft(230, 12, 9, 8);   // 0.03, over a large surface under the pointer
inline constexpr QColor pressed(60, 40, 30, 31);    // 0.12
inline constexpr QColor glow(255, 255, 255, 26);    // 0.1, over the accent under the pointer
inline constexpr QColor fieldBorder(0, 0, 0, 41);   // 0.16
inline constexpr QColor disabledText(166, 160, 154);
inline constexpr QColor disabledFill(214, 210, 205);
inline constexpr QColor placeholder(112, 105, 99);       // 4.5 : 1 on a field that is off
inline constexpr QColor scrollThumb(0, 0, 0, 71);        // 0.28
inline constexpr QColor scrollThumbHover(0, 0, 0, 112);  // 0.44
inline constexpr QColor checker(237, 237, 237);          // every second square under what can be seen through
inline constexpr QColor track(0, 0, 0, 15);              // 0.06, behind the choices of a picker
inline constexpr QColor focus = accent;                  // whole, for 3 : 1 on every ground
inline constexpr QColor secondaryTextOnTint(96, 89, 83); // on a row that is chosen or under the pointer

/// The colour at `opacity` (0 to 1) of its own.
QColor faded(QColor color, double opacity);

/// From `accent` at the top left to `accentDeep` at the bottom right of `frame`.
QLinearGradient accentGradient(const QRectF& frame);

/// The same light colours in Qt's roles.
QPalette palette();

} // namespace folvane::theme
