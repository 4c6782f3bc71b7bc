#pragma once

#include <QString>

#include <optional>

namespace folvane::codes {

/// A mail to write.
struct Email {
    QString address; ///< may be empty
    std::optional<QString> subject;
    std::optional<QString> body;

    bool operator==(const Email&) const = default;
};

/// A text that begins with "MAILTO:".
Email emailFromUri(QStringView text);
/// A text that begins with "MATMSG:".
Email emailFromFields(QStringView text);

} // namespace folvane::codes
