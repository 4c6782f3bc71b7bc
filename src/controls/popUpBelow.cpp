#include "controls/popUpBelow.h"

#include "controls/style/visualMargin.h"

#include <QMenu>
#include <QStyle>

namespace folvane {

namespace {

constexpr int gap = 4;

} // namespace

void popUpBelow(QMenu& menu, const QWidget& button)
{
    const int shadow = menu.style()->pixelMetric(QStyle::PM_MenuPanelWidth, nullptr, &menu);
    const int width = menu.sizeHint().width() - 2 * shadow;
    const QRect frame = button.rect().marginsRemoved(visualMargin(button));
    const bool fits = button.mapTo(button.window(), frame.topLeft()).x() + width <= button.window()->width();
    const int left = fits ? frame.left() : frame.right() + 1 - width;
    menu.popup(button.mapToGlobal(QPoint(left, frame.bottom() + gap)));
}

} // namespace folvane
