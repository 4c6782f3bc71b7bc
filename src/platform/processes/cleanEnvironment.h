#pragma once

#include <QByteArray>
#include <QMap>

namespace folvane {

/// Variables of a process and their values, in the system's bytes.
using Environment = QMap<QByteArray, QByteArray>;

/// This program's own environment as it was at the first call, without what puts libraries into a tool (LD_…, DYLD_…), and
/// with the system's folders alone as the path.
const Environment& cleanEnvironment();

} // namespace folvane
