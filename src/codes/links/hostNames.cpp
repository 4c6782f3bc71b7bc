#include "codes/links/hostNames.h"

#include <algorithm>

namespace folvane {

namespace {

/// Digits that make at most 255, with or without a sign; "-0" is a number, too.
bool isByte(QStringView text)
{
    const bool isNegative = text.startsWith(u'-');
    const QStringView digits = isNegative || text.startsWith(u'+') ? text.sliced(1) : text;
    int value = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return false;
        value = std::min(value * 10 + (c.unicode() - u'0'), 256);
    }
    return !digits.isEmpty() && value <= (isNegative ? 0 : 255);
}

enum Script : unsigned { Other = 0, Latin = 1, Cyrillic = 2, Greek = 4 };

Script scriptOf(QChar c)
{
    if ((c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'))
        return Latin;
    if (c >= u'\u0400' && c <= u'\u04FF')
        return Cyrillic;
    return c >= u'\u0370' && c <= u'\u03FF' ? Greek : Other;
}

bool isMixed(QStringView label)
{
    unsigned scripts = 0;
    for (const QChar c : label)
        scripts |= scriptOf(c);
    return (scripts & (scripts - 1)) != 0;
}

QStringView upToAnyOf(QStringView text, QStringView ends)
{
    const auto end = std::ranges::find_if(text, [ends](QChar c) { return ends.contains(c); });
    return text.first(end - text.begin());
}

} // namespace

QList<QStringView> labelsOf(QStringView host)
{
    return host.split(u'.', Qt::SkipEmptyParts);
}

bool isNumericAddress(const QString& host)
{
    if (host.startsWith(u'[') || host.contains(u':'))
        return true;
    const QList<QStringView> numbers = labelsOf(host);
    return numbers.size() == 4 && std::ranges::all_of(numbers, isByte);
}

bool hasMixedScripts(const QString& host)
{
    return std::ranges::any_of(labelsOf(host), isMixed);
}

// 1. The host stands behind the first "://"; without one there is none.
// 2. It ends before the first "/", "?" or "#".
// 3. Of the parts between "@" that are not empty it is in the last, so a user name goes. Only "@" stays what it is.
// 4. Of the parts between ":" that are not empty it is the first, so a port goes. Without one there is none.
std::optional<QString> printedHost(const QString& text)
{
    const QLatin1String start("://");
    const qsizetype found = text.indexOf(start);
    if (found < 0)
        return std::nullopt;
    const QStringView authority = upToAnyOf(QStringView(text).sliced(found + start.size()), u"/?#");
    const QList<QStringView> behindNames = authority.split(u'@', Qt::SkipEmptyParts);
    const QStringView place = behindNames.isEmpty() ? authority : behindNames.last();
    const QList<QStringView> beforePorts = place.split(u':', Qt::SkipEmptyParts);
    return beforePorts.isEmpty() ? std::nullopt : std::optional(beforePorts.first().toString());
}

} // namespace folvane
