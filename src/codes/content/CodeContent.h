#pragma once

#include "codes/content/Contact.h"
#include "codes/content/Email.h"
#include "codes/content/Event.h"
#include "codes/content/Link.h"
#include "codes/content/Location.h"
#include "codes/content/Product.h"
#include "codes/content/Sms.h"
#include "codes/content/WiFi.h"

#include <variant>

namespace folvane {

namespace codes {

struct Phone {
    QString number; ///< as written; may be empty

    bool operator==(const Phone&) const = default;
};

struct Text {
    QString text;

    bool operator==(const Text&) const = default;
};

} // namespace codes

/// What a code means.
using CodeContent = std::variant<codes::Link, codes::WiFi, codes::Contact, codes::Event, codes::Phone,
                                 codes::Sms, codes::Email, codes::Location, codes::Product, codes::Text>;

/// What the text read from a code means; plain text when nothing else.
CodeContent codeContent(const QString& payload, CodeSymbology symbology);

/// The kind in the user's language: "Wi-Fi".
QString kindTitle(const CodeContent& content);

/// The name of the symbol that stands for the kind: "wifi".
QString systemImage(const CodeContent& content);

} // namespace folvane
