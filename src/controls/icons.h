#pragma once

#include <QColor>
#include <QIcon>

class QPainter;
class QRectF;

namespace folvane {

/// Pictures of commands and things; each value is the glyph's place in the embedded icon font.
enum class Icon : char16_t {
    Add = 0xe145,
    BrokenImage = 0xe3ad,
    CheckCircle = 0xe86c,
    Close = 0xe5cd,
    Delete = 0xe872,
    Document = 0xe415,
    Error = 0xe000,
    Home = 0xe88a,
    Info = 0xe88f,
    Lock = 0xe897,
    More = 0xe5d3,
    Pictures = 0xe413,
    RotateLeft = 0xe419,
    RotateRight = 0xe41a,
    Upload = 0xe2c6,
};

/// Draws the icon as large as `box` and centred in it.
void drawIcon(QPainter& painter, Icon icon, const QRectF& box, const QColor& color);

/// An icon for buttons and menus, sharp at every size and faded while disabled.
QIcon themedIcon(Icon icon, const QColor& color);

} // namespace folvane
