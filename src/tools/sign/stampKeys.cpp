#include "tools/sign/stampKeys.h"

#include "tools/sign/stampDrags.h"

#include <QKeyEvent>

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

// With Shift a key is another one: which, is the layout's choice.
int growth(int key)
{
    switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: return 1;
    case Qt::Key_Minus:
    case Qt::Key_Underscore: return -1;
    default: return 0;
    }
}

int turn(int key)
{
    switch (key) {
    case Qt::Key_BracketRight:
    case Qt::Key_BraceRight: return 1;
    case Qt::Key_BracketLeft:
    case Qt::Key_BraceLeft: return -1;
    default: return 0;
    }
}

} // namespace

std::optional<StampPlacement> stampAfterKey(StampPlacement stamp, QSizeF page, const QKeyEvent& key)
{
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return std::nullopt;
    const bool shift = key.modifiers() & Qt::ShiftModifier;
    if (const std::optional<QPointF> way = direction(key.key()))
        return movedStamp(stamp, page, {}, *way * (shift ? fineStep : step) * page.width());
    if (const int sign = growth(key.key())) {
        stamp.width = reachableWidth(stamp.width + sign * step);
        return stamp;
    }
    if (const int sign = turn(key.key())) {
        stamp.rotation = wrappedAngle(stamp.rotation + sign * (shift ? manyDegrees : degree));
        return stamp;
    }
    return std::nullopt;
}

} // namespace folvane
