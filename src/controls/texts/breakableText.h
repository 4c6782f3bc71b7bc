#pragma once

#include <QString>

namespace folvane {

/// The same text for a label that wraps: very long words (names of files) may break somewhere.
QString breakableText(QString text);

} // namespace folvane
