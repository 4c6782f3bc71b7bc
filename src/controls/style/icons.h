#pragma once

#include <QColor>
#include <QIcon>

class QPainter;
class QRectF;

namespace folvane {

/// Pictures of commands and things; each value is the glyph's place in the embedded icon font.
enum class Icon : char16_t {
    Account = 0xe853,
    Add = 0xe145,
    AddPage = 0xe89c,
    Apps = 0xe5c3,
    At = 0xe0e6,
    Bars = 0xe8ec,
    Book = 0xe865,
    BoxChecked = 0xe834,
    BoxUnchecked = 0xe835,
    BrokenImage = 0xe3ad,
    Calendar = 0xe878,
    Check = 0xe5ca,
    CheckCircle = 0xe86c,
    ChevronLeft = 0xe5cb,
    ChevronRight = 0xe5cc,
    Close = 0xe5cd,
    Compress = 0xf1cf,
    Copies = 0xe14d,
    Delete = 0xe872,
    Document = 0xe415,
    Download = 0xf090,
    DragHandle = 0xe25d,
    Envelope = 0xe0be,
    Error = 0xe000,
    ExpandLess = 0xe5ce,
    ExpandMore = 0xe5cf,
    Film = 0xe41b,
    Gesture = 0xe155,
    Globe = 0xe894,
    Heart = 0xe87d,
    Home = 0xe88a,
    Info = 0xe88f,
    InfoFilled = 0xe88e,
    Layers = 0xe53b,
    Link = 0xe157,
    Lock = 0xe897,
    LockOutline = 0xe899,
    Message = 0xe0b7,
    More = 0xe5d3,
    Music = 0xe405,
    Paste = 0xe14f,
    People = 0xe7fb,
    Phone = 0xe0cd,
    Photo = 0xe410,
    Pictures = 0xe413,
    Place = 0xe55f,
    RadioChecked = 0xe837,
    RadioUnchecked = 0xe836,
    Remove = 0xe5c9,
    Report = 0xe160,
    Resize = 0xf1ce, ///< drawn mirrored
    RotateLeft = 0xe042,
    RotateRight = 0xe41a, ///< drawn as the mirrored RotateLeft
    ScanCode = 0xf206,
    Scissors = 0xe14e,
    Send = 0xe163,
    Share = 0xe80d,
    Shield = 0xe9e0,
    Text = 0xe236,
    TextDocument = 0xe873,
    Warning = 0xe002,
    WiFi = 0xe63e,
};

/// Draws the icon as large as `box` and centred in it.
void drawIcon(QPainter& painter, Icon icon, const QRectF& box, const QColor& color);

/// An icon for buttons and menus, sharp at every size and faded while disabled.
QIcon themedIcon(Icon icon, const QColor& color);

} // namespace folvane
