#pragma once

#include "tools/stamps/StampSource.h"

#include <optional>

class QMimeData;

namespace folvane {

enum class StampGesture { Drop, Paste };

/// What a new stamp is to be made from in what is dropped or pasted: the first picture among local files; without local files, the
/// bytes of a picture; and of what is pasted, a picture whose path or file URL stands there as text. Nothing is fetched from elsewhere.
std::optional<StampSource> stampFrom(const QMimeData& data, StampGesture gesture);

/// Whether there is something, told without fetching the bytes of pictures.
bool offersStamp(const QMimeData& data, StampGesture gesture);

} // namespace folvane
