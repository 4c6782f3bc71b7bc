#pragma once

#include <QColor>

/// The one palette of the program. Views name these and no raw colours; lengths are device-independent pixels.
namespace folvane::theme {

inline constexpr QColor background(246, 244, 241);
inline constexpr QColor surface(255, 255, 255);
inline constexpr QColor text(20, 18, 16);
inline constexpr QColor secondaryText(107, 100, 94);
inline constexpr QColor accent(230, 12, 9);
inline constexpr QColor accentDeep(184, 3, 6);
inline constexpr QColor success(18, 183, 106);
inline constexpr QColor danger(217, 45, 32);
inline constexpr QColor warning(245, 165, 36);

inline constexpr QColor accentSoft(230, 12, 9, 31); // 0.12
inline constexpr QColor hairline(0, 0, 0, 18);      // 0.07
inline constexpr QColor hover(0, 0, 0, 13);

} // namespace folvane::theme
