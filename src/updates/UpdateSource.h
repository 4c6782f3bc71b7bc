#pragma once

#include <QSslConfiguration>
#include <QUrl>

#include <chrono>
#include <optional>

namespace folvane {

/// Where updates are looked for, and what they are compared with.
struct UpdateSource {
    QUrl productPage;
    QUrl versionFile;
    qint64 currentBuild = 0;
    std::chrono::milliseconds timeout{15'000}; ///< without a byte
    std::optional<QSslConfiguration> tls =
        {}; ///< none: the system's, which is not even loaded before it is needed
};

/// The constants of the build; nothing that a user or an environment sets changes them.
UpdateSource makersUpdateSource();

} // namespace folvane
