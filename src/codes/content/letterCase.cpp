#include "codes/content/letterCase.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace folvane::codes {

namespace {

icu::UnicodeString viewed(QStringView text)
{
    return {false, text.utf16(), int32_t(text.size())};
}

QString fromIcu(const icu::UnicodeString& text)
{
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace

QString upperCase(QStringView text)
{
    return fromIcu(viewed(text).toUpper(icu::Locale::getRoot()));
}

QString lowerCase(QStringView text)
{
    return fromIcu(viewed(text).toLower(icu::Locale::getRoot()));
}

} // namespace folvane::codes
