#pragma once

#include <QPixmap>

namespace folvane {

struct PageCell;

/// What hangs at the pointer while pages are dragged: the cell of the page that was taken hold of, over another one when
/// there are several, with their number. `scale` is that of the screen.
QPixmap dragPicture(PageCell cell, int pages, double scale);

} // namespace folvane
