#include "codes/content/Email.h"

#include "codes/content/MeFields.h"
#include "codes/content/Uri.h"
#include "codes/content/characters.h"

namespace folvane::codes {

// 1. The path is the address, decoded where it can be; the items "subject" and "body" of the query say the rest.
// 2. A text that is no address of the kind is one of mail as it stands.
Email emailFromUri(QStringView text)
{
    const std::optional<Uri> uri = Uri::parse(text);
    const QString address = uri ? uri->path : withoutFirst(text, 7).toString();
    return {percentDecoded(address).value_or(address), uri ? uri->value(u"subject") : std::nullopt,
            uri ? uri->value(u"body") : std::nullopt};
}

// The fields are TO, SUB and BODY.
Email emailFromFields(QStringView text)
{
    const MeFields fields(withoutFirst(text, 7));
    return {fields.valueOrEmpty("TO"), fields.find("SUB"), fields.find("BODY")};
}

} // namespace folvane::codes
