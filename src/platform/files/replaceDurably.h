#pragma once

#include <QByteArray>
#include <QString>

namespace folvane {

/// Writes a file of the program's own: whenever the machine stops, either the old bytes stand under that name or the new
/// ones, whole. The bytes are on the disk before the name leads to them, and the name is before this returns. False when
/// that failed; what stood there stays.
bool replaceDurably(const QString& path, const QByteArray& bytes);

} // namespace folvane
