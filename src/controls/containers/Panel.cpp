#include "controls/containers/Panel.h"

#include "controls/accessibility.h"
#include "controls/layouts.h"
#include "controls/style/Shadow.h"
#include "controls/style/focusRing.h"
#include "controls/style/visualMargin.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr double cornerRadius = 18;
const Shadow shadow{theme::faded(theme::black, 0.05), 12, 4};

} // namespace

QMargins Panel::margin()
{
    return shadow.margins() | focusRingMargins;
}

Panel::Panel(int padding, QWidget* parent)
    : QFrame(parent), m_content(makeColumn(this, margin() + padding, 8))
{
    setVisualMargin(*this, margin());
    setSpokenRole(*this, QAccessible::Grouping);
}

void Panel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect frame = rect().marginsRemoved(margin());
    drawCard(painter, frame, cornerRadius, shadow);
    if (showsFocus(*this))
        drawFocusRing(painter, frame, cornerRadius);
}

} // namespace folvane
