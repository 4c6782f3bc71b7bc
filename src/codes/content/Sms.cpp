#include "codes/content/Sms.h"

#include "codes/content/Uri.h"
#include "codes/content/characters.h"
#include "codes/content/letterCase.h"

namespace folvane::codes {

namespace {

// 1. Before the first colon stands the number, behind it the body, colons and all.
// 2. Either may be missing.
Sms numberAndBody(QStringView text)
{
    const QList<QStringView> parts = pieces(text, u':', 1);
    return {parts.value(0).toString(), parts.size() == 2 ? std::optional(parts[1].toString()) : std::nullopt};
}

// 1. Before the first question mark stands the number; a text of question marks only is one itself.
// 2. Behind it stands a query, whose item "body" is the body.
Sms numberAndQuery(QStringView text)
{
    const QStringView number = firstPiece(text, u'?');
    const std::optional<Uri> uri = Uri::parse(QStringLiteral("sms:") + text.toString());
    return {(number.isEmpty() ? text : number).toString(), uri ? uri->value(u"body") : std::nullopt};
}

} // namespace

Sms sms(QStringView text)
{
    return beginsWith(upperCase(text), u"SMSTO:") ? numberAndBody(withoutFirst(text, 6))
                                                  : numberAndQuery(withoutFirst(text, 4));
}

} // namespace folvane::codes
