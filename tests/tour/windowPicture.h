#pragma once

#include <QImage>
#include <QPixmap>

#include <optional>

class QWidget;

namespace folvane {

struct PlacedPicture {
    QPixmap picture;
    QPoint topLeft; ///< global
};

/// What the person sees: the window, and over it its dialogs, menus, tooltips and what is being dragged.
QImage windowPicture(QWidget& window, const std::optional<PlacedPicture>& dragged);

} // namespace folvane
