#include "codes/content/Contact.h"

#include "codes/content/characters.h"
#include "codes/content/lines.h"
#include "codes/content/trimmed.h"

namespace folvane::codes {

namespace {

/// "Jane Doe" of "Doe;Jane;…"; either may be missing.
QString givenAndFamilyName(QStringView value)
{
    const qsizetype familyEnd = indexOf(value, u';');
    if (familyEnd < 0)
        return value.toString();
    const QStringView rest = value.sliced(familyEnd + 1);
    const qsizetype givenEnd = indexOf(rest, u';');
    QStringList parts{rest.first(givenEnd < 0 ? rest.size() : givenEnd).toString(),
                      value.first(familyEnd).toString()};
    parts.removeAll(QString());
    return parts.join(u' ');
}

QString organizationOf(QString value)
{
    return trimmed(value.replace(u';', u' '), isBlank).toString();
}

std::optional<QString> firstWithText(const QString& text, const QString& otherwise)
{
    const QString& chosen = text.isEmpty() ? otherwise : text;
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen);
}

} // namespace

// 1. Lines without a colon are passed over. The key is what stands before the first semicolon of the head.
// 2. FN is the name as shown, N the family name, a semicolon and the given name: it serves where FN is missing or empty.
// 3. TEL and EMAIL add up, empty or not; of the others the last one counts.
// 4. Semicolons in ORG become blanks.
// 5. Without a name, a phone and an address of mail it is no contact.
std::optional<Contact> contactFromVCard(QStringView text)
{
    Contact contact{text.toString(), {}, {}, {}, {}};
    QString shownName;
    QString structuredName;
    for (const QString& line : unfoldedLines(text)) {
        const std::optional<LineField> field = lineField(line);
        if (!field)
            continue;
        const QStringView key = firstPiece(field->head, u';');
        if (key == u"FN")
            shownName = field->value;
        else if (key == u"N")
            structuredName = givenAndFamilyName(field->value);
        else if (key == u"TEL")
            contact.phones.append(field->value);
        else if (key == u"EMAIL")
            contact.emails.append(field->value);
        else if (key == u"ORG")
            contact.organization = organizationOf(field->value);
    }
    contact.name = firstWithText(shownName, structuredName);
    if (!contact.name && contact.phones.isEmpty() && contact.emails.isEmpty())
        return std::nullopt;
    return contact;
}

} // namespace folvane::codes
