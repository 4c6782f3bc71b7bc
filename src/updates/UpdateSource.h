#pragma once

#include <QSslConfiguration>
#include <QUrl>

#include <chrono>

namespace folvane {

/// Where updates are looked for, and what they are compared with.
struct UpdateSource {
    QUrl productPage;
    QUrl versionFile;
    qint64 currentBuild = 0;
    std::chrono::milliseconds timeout{15'000}; ///< without a byte
    QSslConfiguration tls = {};                ///< null: the system's
};

/// The constants of the build; nothing that a user or an environment sets changes them.
UpdateSource makersUpdateSource();

} // namespace folvane
