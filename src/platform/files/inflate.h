#pragma once

#include <QByteArray>

namespace folvane {

/// Unpacks zlib or gzip data. Empty when it is broken or gives more than limit bytes.
QByteArray inflated(QByteArrayView packed, qsizetype limit);

} // namespace folvane
