#pragma once

#include <QStringView>

namespace folvane::codes {

bool isBlank(char32_t c);          ///< a separating space, or a tab
bool isBlankOrNewline(char32_t c); ///< any separator, or one of the line controls; a tab is neither
/// The text without what belongs to the class at its ends.
QStringView trimmed(QStringView text, bool (*belongs)(char32_t));

} // namespace folvane::codes
