#pragma once

#include <QColor>
#include <QString>

#include <array>

namespace folvane {

/// The colours of ready and drawn stamps.
enum class StampInk { Red, Blue, Black };

inline constexpr std::array stampInks{StampInk::Red, StampInk::Blue, StampInk::Black};

/// As it stands in preferences and identities: "red".
QString rawText(StampInk ink);
/// Red for what is no ink.
StampInk stampInk(const QString& rawText);
/// In the user's language.
QString labelOf(StampInk ink);
/// In sRGB, a little translucent.
QColor colorOf(StampInk ink);

} // namespace folvane
