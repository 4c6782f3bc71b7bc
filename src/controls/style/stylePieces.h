#pragma once

#include <QStyle>

class QMenu;
class QPainter;
class QStyleOptionFrame;
class QStyleOptionMenuItem;
class QStyleOptionSlider;
class QStyleOptionSpinBox;
class QStyleOptionToolButton;
class QWidget;

/// What FolvaneStyle draws, by topic; only it includes this. Each function takes what the style was asked to draw.
namespace folvane {

namespace menus {

/// Around the frame of a menu that can be blended with what lies below, else 0.
int shadowRoom(const QWidget* menu);
void drawPanel(QPainter& painter, const QRect& rect, const QWidget* menu);
QSize itemSize(const QStyleOptionMenuItem& item, const QSize& text);
void drawItem(QPainter& painter, const QStyleOptionMenuItem& item, const QMenu* menu);
void drawBarItem(QPainter& painter, const QStyleOptionMenuItem& item);

} // namespace menus

namespace fields {

inline constexpr int padding = 10; ///< left and right of the text of a line edit

void drawLineEdit(QPainter& painter, const QStyleOptionFrame& frame);
void drawFrame(QPainter& painter, const QRect& rect);
void drawToolTip(QPainter& painter, const QRect& rect, const QWidget* tip);
void drawFocus(QPainter& painter, const QRect& rect);

} // namespace fields

namespace spinBoxes {

inline constexpr int arrowWidth = 28; ///< of both arrows, one above the other

QRect partRect(const QRect& box, QStyle::SubControl part);
void draw(QPainter& painter, const QStyleOptionSpinBox& box);

} // namespace spinBoxes

namespace scrollBars {

inline constexpr int extent = 12;
inline constexpr int shortestThumb = 36;

QRect partRect(const QStyleOptionSlider& bar, QStyle::SubControl part);
void draw(QPainter& painter, const QStyleOptionSlider& bar, const QRect& thumb);

} // namespace scrollBars

namespace toolButtons {

/// An icon alone, which shows a ground only under the pointer.
void draw(QPainter& painter, const QStyleOptionToolButton& button, const QWidget* widget);

} // namespace toolButtons

} // namespace folvane
