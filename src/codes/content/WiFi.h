#pragma once

#include <QString>

#include <optional>

namespace folvane::codes {

/// A network to join.
struct WiFi {
    QString ssid; ///< never empty
    std::optional<QString> password;
    QString security; ///< as written; empty when it was not
    bool isHidden = false;

    bool operator==(const WiFi&) const = default;
};

/// A text that begins with "WIFI:".
std::optional<WiFi> wifi(QStringView text);

} // namespace folvane::codes
