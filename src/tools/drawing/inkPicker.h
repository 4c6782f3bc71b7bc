#pragma once

#include "controls/SegmentedPicker.h"
#include "stamps/StampInk.h"

namespace folvane {

/// A choice of all inks; `name` is what a screen reader calls it.
SegmentedPicker* makeInkPicker(const QString& name, StampInk chosen, QWidget* parent);

StampInk inkOf(const SegmentedPicker& picker);

} // namespace folvane
