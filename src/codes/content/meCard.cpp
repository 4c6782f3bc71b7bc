#include "codes/content/Contact.h"
#include "codes/content/MeFields.h"
#include "codes/content/characters.h"
#include "codes/content/trimmed.h"

namespace folvane::codes {

namespace {

/// What stands on both sides of the first comma: family name and given name, or one of them.
QStringList nameParts(const QString& field)
{
    QStringList parts;
    for (const QStringView part : pieces(field, u',', 1))
        parts.append(trimmed(part, isBlank).toString());
    return parts;
}

QString nameOf(const QStringList& parts)
{
    return parts.size() == 2 ? parts[1] + u' ' + parts[0] : parts.value(0);
}

/// Repeated fields stand in lines.
QStringList values(const QString& field)
{
    QStringList found;
    for (const QStringView value : pieces(field, u'\n'))
        found.append(value.toString());
    return found;
}

QString vCardOf(const Contact& contact, const QStringList& nameParts, const MeFields& fields)
{
    QStringList lines{QStringLiteral("BEGIN:VCARD"), QStringLiteral("VERSION:3.0")};
    const auto add = [&lines](const char* before, const std::optional<QString>& value,
                              const char* behind = "") {
        if (value)
            lines.append(QLatin1String(before) + *value + QLatin1String(behind));
    };
    add("FN:", contact.name);
    if (contact.name)
        add("N:", nameParts.value(0) + u';' + nameParts.value(1), ";;;");
    add("ORG:", contact.organization);
    for (const QString& phone : contact.phones)
        add("TEL:", phone);
    for (const QString& email : contact.emails)
        add("EMAIL:", email);
    add("URL:", fields.find("URL"));
    add("ADR:;;", fields.find("ADR"), ";;;;");
    add("NOTE:", fields.find("NOTE"));
    lines.append(QStringLiteral("END:VCARD"));
    return lines.join(QLatin1String("\r\n"));
}

} // namespace

// 1. N is the family name, a comma and the given name, or one name.
// 2. TEL and EMAIL may come more than once. ORG is the organization.
// 3. Without a name, a phone and an address of mail it is no contact.
// 4. Other programs take a vCard: it is made of these fields and of URL, ADR and NOTE, which go in as they stand.
std::optional<Contact> contactFromMeCard(QStringView text)
{
    const MeFields fields(withoutFirst(text, 7));
    const QStringList parts = nameParts(fields.valueOrEmpty("N"));
    const QString name = nameOf(parts);
    Contact contact{{},
                    name.isEmpty() ? std::nullopt : std::optional(name),
                    values(fields.valueOrEmpty("TEL")),
                    values(fields.valueOrEmpty("EMAIL")),
                    fields.find("ORG")};
    if (!contact.name && contact.phones.isEmpty() && contact.emails.isEmpty())
        return std::nullopt;
    contact.vCard = vCardOf(contact, parts, fields);
    return contact;
}

} // namespace folvane::codes
