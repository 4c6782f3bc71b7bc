#pragma once

#include "updates/UpdateRelease.h"

#include <QByteArray>

namespace folvane {

/// The release that a version file tells of: a JSON object with "version" (text) and "build" (a whole number of 64 bits), and
/// where it likes "url" and "dmg" (addresses) and "sha256" (text); null there is as good as nothing, and other keys do not matter.
/// Throws UpdateError for everything else.
UpdateRelease releaseIn(const QByteArray& versionFile);

} // namespace folvane
