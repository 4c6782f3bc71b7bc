#pragma once

#include "records/StampRecord.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace folvane {

/// The index of the stamp library as a compact JSON array of objects. A solidus is written escaped.
QByteArray stampIndex(const QList<StampRecord>& records);

/// Nothing unless every record in it can be read. Keys that are not known are left alone.
std::optional<QList<StampRecord>> recordsOfIndex(const QByteArray& json);

} // namespace folvane
