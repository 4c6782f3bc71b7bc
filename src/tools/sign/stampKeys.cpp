#include "tools/sign/stampKeys.h"

#include "tools/sign/stampDrags.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace folvane {

namespace {

// Parts of the page's width, and degrees; the second with Shift.
constexpr double step = 0.01, fineStep = 0.001;
constexpr double degree = 1, manyDegrees = 15;

std::optional<QPointF> direction(int key)
{
    switch (key) {
    case Qt::Key_Left: return QPointF(-1, 0);
    case Qt::Key_Right: return QPointF(1, 0);
    case Qt::Key_Up: return QPointF(0, -1);
    case Qt::Key_Down: return QPointF(0, 1);
    default: return std::nullopt;
    }
}

/// The two keys that undo each other.
struct KeyPair {
    std::array<int, 2> less, more;

    int sign(int key) const
    {
        return std::ranges::count(more, key) > 0 ? 1 : std::ranges::count(less, key) > 0 ? -1 : 0;
    }
};

// With Shift a key is another one: which, is the layout's choice.
constexpr KeyPair sizeKeys{{Qt::Key_Minus, Qt::Key_Underscore}, {Qt::Key_Plus, Qt::Key_Equal}};
constexpr KeyPair turnKeys{{Qt::Key_BracketLeft, Qt::Key_BraceLeft},
                           {Qt::Key_BracketRight, Qt::Key_BraceRight}};

} // namespace

std::optional<StampPlacement> stampAfterKey(StampPlacement stamp, QSizeF page, const QKeyEvent& key)
{
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return std::nullopt;
    const bool shift = key.modifiers() & Qt::ShiftModifier;
    if (const std::optional<QPointF> way = direction(key.key()))
        return movedStamp(stamp, page, {}, *way * (shift ? fineStep : step) * page.width());
    if (const int sign = sizeKeys.sign(key.key())) {
        stamp.width = reachableWidth(stamp.width + sign * step);
        return stamp;
    }
    if (const int sign = turnKeys.sign(key.key())) {
        stamp.rotation = wrappedAngle(stamp.rotation + sign * (shift ? manyDegrees : degree));
        return stamp;
    }
    return std::nullopt;
}

} // namespace folvane
