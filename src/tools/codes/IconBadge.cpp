#include "tools/codes/IconBadge.h"

#include "controls/accessibility.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr int side = 32;
constexpr double cornerRadius = 8;
constexpr int inset = 7; // of the icon

} // namespace

IconBadge::IconBadge(Icon icon, QWidget* parent) : QWidget(parent), m_icon(icon)
{
    setFixedSize(side, side);
    setSpokenRole(*this, QAccessible::Whitespace);
}

void IconBadge::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(rect(), cornerRadius), theme::accentSoft);
    drawIcon(painter, m_icon, QRectF(rect()).marginsRemoved(QMarginsF() + inset), theme::accent);
}

} // namespace folvane
