#pragma once

#include "records/StampPlacement.h"

#include <QSizeF>

#include <optional>

class QKeyEvent;

namespace folvane {

/// The stamp after a key that moves (arrows), resizes (+ and -) or turns it ([ and ]), on a page of this size; nothing for any other key.
/// The limits are those of dragging; keys never snap.
std::optional<StampPlacement> stampAfterKey(StampPlacement stamp, QSizeF page, const QKeyEvent& key);

} // namespace folvane
