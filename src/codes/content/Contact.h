#pragma once

#include <QStringList>

#include <optional>

namespace folvane::codes {

/// A person or a firm. There is a name, a phone or an address of mail at least.
struct Contact {
    QString vCard;               ///< as written, or made of a MECARD
    std::optional<QString> name; ///< not empty
    QStringList phones;
    QStringList emails;
    std::optional<QString> organization;

    bool operator==(const Contact&) const = default;
};

/// A text that begins with "BEGIN:VCARD".
std::optional<Contact> contactFromVCard(QStringView text);
/// A text that begins with "MECARD:".
std::optional<Contact> contactFromMeCard(QStringView text);

} // namespace folvane::codes
