#pragma once

#include <QIcon>
#include <QImage>

namespace folvane {

/// The logo as a full square, `pixels` wide and high.
QImage brandLogo(int pixels);

/// The logo as windows and their buttons show it: with rounded corners.
QIcon brandIcon();

} // namespace folvane
