#pragma once

#include <QUrl>

#include <optional>

namespace folvane::codes {

/// A page of the web.
struct Link {
    QUrl url; ///< http or https, with a host

    bool operator==(const Link&) const = default;
};

/// Nothing when the text is not the address of one, or has a blank in it.
std::optional<Link> webLink(QStringView text);

} // namespace folvane::codes
