#pragma once

#include <QString>

#include <optional>

namespace folvane::codes {

/// A message to send.
struct Sms {
    QString number;
    std::optional<QString> body;

    bool operator==(const Sms&) const = default;
};

/// A text that begins with "SMSTO:" or "SMS:".
Sms sms(QStringView text);

} // namespace folvane::codes
