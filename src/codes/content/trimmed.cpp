#include "codes/content/trimmed.h"

namespace folvane::codes {

bool isBlank(char32_t c)
{
    return c == U'\t' || QChar::category(c) == QChar::Separator_Space;
}

bool isBlankOrNewline(char32_t c)
{
    return QChar::isSpace(c) && c != U'\t';
}

QStringView trimmed(QStringView text, bool (*belongs)(char32_t))
{
    // No character beyond the first plane belongs to either class.
    while (!text.isEmpty() && belongs(text.front().unicode()))
        text = text.sliced(1);
    while (!text.isEmpty() && belongs(text.back().unicode()))
        text.chop(1);
    return text;
}

} // namespace folvane::codes
