#pragma once

#include "controls/paper.h"
#include "records/PageItem.h"

namespace folvane {

class StampPictures;

/// What lies on the page, for a view in which it is at most `pageWidth` pixels wide.
QList<StampPicture> stampsOn(const PageItem& page, double pageWidth, StampPictures& pictures);

} // namespace folvane
