#include "codes/content/Link.h"

#include "codes/content/characters.h"
#include "codes/content/letterCase.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace folvane::codes {

namespace {

/// All of Unicode's white space is in the first plane.
bool isWhitespace(QChar c)
{
    return u_isUWhiteSpace(c.unicode());
}

} // namespace

// 1. No character is white space.
// 2. The text begins with "http://" or "https://", or with "www.", where "https://" is understood. A name alone is no link.
// 3. It has a host and is otherwise an address as QUrl is ready to read one: what should have been encoded is encoded,
//    a stray "%" stands for itself; a host or a port that cannot be is refused.
std::optional<Link> webLink(QStringView text)
{
    if (std::ranges::any_of(text, isWhitespace))
        return std::nullopt;
    const QString lower = lowerCase(text);
    const bool hasScheme = beginsWith(lower, u"http://") || beginsWith(lower, u"https://");
    if (!hasScheme && !beginsWith(lower, u"www."))
        return std::nullopt;
    const QUrl url(hasScheme ? text.toString() : QStringLiteral("https://") + text.toString(),
                   QUrl::TolerantMode);
    return url.isValid() && !url.host().isEmpty() ? std::optional(Link{url}) : std::nullopt;
}

} // namespace folvane::codes
