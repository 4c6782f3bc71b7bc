#pragma once

#include <QLocale>
#include <QString>

#include <unicode/locid.h>
#include <unicode/unistr.h>

// Between Qt and ICU; for this folder's .cpp files.

namespace folvane {

/// ICU's name for the current locale. The C locale speaks English.
inline icu::Locale icuLocale()
{
    const QLocale locale;
    return icu::Locale(locale.language() == QLocale::C ? "en_US" : locale.name().toLatin1().constData());
}

inline icu::UnicodeString toIcu(const QString& text)
{
    return icu::UnicodeString(text.utf16(), int32_t(text.size()));
}

inline QString fromIcu(const icu::UnicodeString& text)
{
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace folvane
