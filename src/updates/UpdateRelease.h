#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace folvane {

/// A published build, as the version file tells of it.
struct UpdateRelease {
    QString version; ///< for people; never compared
    qint64 build = 0;
    // Addresses in the letters of the file, because schemes and hosts are compared exactly; QUrl makes them small.
    std::optional<QString> url = {};    ///< the page of the release
    std::optional<QString> dmg = {};    ///< what an update is installed from
    std::optional<QString> sha256 = {}; ///< of that, in hexadecimal

    /// The page to send the user to: the release's own where it stands on the maker's site, else the product's.
    QUrl downloadURL(const QUrl& productPage) const;

    bool operator==(const UpdateRelease&) const = default;
};

/// Whether the address is an https one on the very host of the page.
bool isOnSiteOf(const QUrl& page, const QString& address);

} // namespace folvane
