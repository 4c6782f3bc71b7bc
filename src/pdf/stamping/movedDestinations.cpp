#include "pdf/stamping/movedDestinations.h"

#include "pdf/stamping/contentText.h"

#include <QRectF>

#include <cmath>
#include <optional>

namespace folvane::pdf {

namespace {

constexpr int deepest = 200; // no destination lies as deep

using Items = std::vector<QPDFObjectHandle>;

bool isNumber(const Items& items, size_t index)
{
    return index < items.size() && QPDFObjectHandle(items[index]).isNumber();
}

double numberAt(const Items& items, size_t index)
{
    return isNumber(items, index) ? QPDFObjectHandle(items[index]).getNumericValue() : 0;
}

/// A coordinate that is null means: as it was. On a page that lies on its side now, that is the other one.
void movePoint(Items& items, const QTransform& move)
{
    items.resize(std::max<size_t>(items.size(), 4), QPDFObjectHandle::newNull());
    const bool hasX = isNumber(items, 2), hasY = isNumber(items, 3);
    const QPointF moved = move.map(QPointF(numberAt(items, 2), numberAt(items, 3)));
    const bool isSideways = std::abs(move.m11()) < 0.5;
    items[2] = (isSideways ? hasY : hasX) ? real(moved.x()) : QPDFObjectHandle::newNull();
    items[3] = (isSideways ? hasX : hasY) ? real(moved.y()) : QPDFObjectHandle::newNull();
}

void moveBox(Items& items, const QTransform& move)
{
    items.resize(std::max<size_t>(items.size(), 6), QPDFObjectHandle::newInteger(0));
    const QRectF box = move.mapRect(QRectF(QPointF(numberAt(items, 2), numberAt(items, 3)),
                                           QPointF(numberAt(items, 4), numberAt(items, 5))));
    items[2] = real(box.left());
    items[3] = real(box.top());
    items[4] = real(box.right());
    items[5] = real(box.bottom());
}

/// One line that is to be at the window's edge: "/FitH top" or "/FitV left", and those of the bounding box ("/FitBH").
void moveLine(Items& items, const std::string& fit, const QTransform& move)
{
    const bool isAcross = fit.back() == 'H', isSideways = std::abs(move.m11()) < 0.5;
    const double at = numberAt(items, 2);
    const QPointF moved = move.map(isAcross ? QPointF(0, at) : QPointF(at, 0));
    const bool isAcrossNow = isAcross != isSideways;
    items[1] = QPDFObjectHandle::newName(fit.substr(0, fit.size() - 1) + (isAcrossNow ? 'H' : 'V'));
    if (isNumber(items, 2))
        items[2] = real(isAcrossNow ? moved.y() : moved.x());
}

/// Nothing unless it is a destination on one of the pages.
std::optional<QPDFObjectHandle> moved(QPDFObjectHandle array, const ObjGenMap<QTransform>& moves)
{
    if (array.getArrayNItems() < 2 || !array.getArrayItem(0).isIndirect() || !array.getArrayItem(1).isName())
        return std::nullopt;
    const auto move = moves.find(array.getArrayItem(0).getObjGen());
    if (move == moves.end())
        return std::nullopt;
    Items items = array.getArrayAsVector();
    const std::string fit = items[1].getName();
    if (fit == "/XYZ")
        movePoint(items, move->second);
    else if (fit == "/FitR")
        moveBox(items, move->second);
    else if (fit == "/FitH" || fit == "/FitV" || fit == "/FitBH" || fit == "/FitBV")
        moveLine(items, fit, move->second);
    else
        return std::nullopt;
    return QPDFObjectHandle::newArray(items);
}

void moveWithin(QPDFObjectHandle value, const ObjGenMap<QTransform>& moves, int depth);

/// A destination is replaced and not changed: more than one may hold the same.
template <typename Put>
void moveEntry(QPDFObjectHandle entry, const ObjGenMap<QTransform>& moves, int depth, Put put)
{
    if (entry.isIndirect() || depth > deepest)
        return;
    if (const auto destination = entry.isArray() ? moved(entry, moves) : std::nullopt)
        put(*destination);
    else
        moveWithin(entry, moves, depth + 1);
}

void moveWithin(QPDFObjectHandle value, const ObjGenMap<QTransform>& moves, int depth)
{
    if (value.isArray()) {
        for (int i = 0; i < value.getArrayNItems(); ++i)
            moveEntry(value.getArrayItem(i), moves, depth, [&](auto& to) { value.setArrayItem(i, to); });
    } else if (value.isDictionary()) { // that of a stream tells of its data alone
        for (const std::string& key : value.getKeys())
            moveEntry(value.getKey(key), moves, depth, [&](auto& to) { value.replaceKey(key, to); });
    }
}

} // namespace

void moveDestinations(QPDF& document, const ObjGenMap<QTransform>& moves)
{
    for (QPDFObjectHandle& object : document.getAllObjects()) {
        const auto destination = object.isArray() ? moved(object, moves) : std::nullopt;
        if (destination)
            document.replaceObject(object.getObjGen(), *destination);
        else
            moveWithin(object, moves, 0);
    }
}

} // namespace folvane::pdf
