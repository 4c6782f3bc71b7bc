#include "shell/home/ToolTile.h"

#include "controls/appearance.h"
#include "controls/style/Shadow.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/focusRing.h"

#include <QPainter>

#include <algorithm>

namespace folvane {

namespace {

const Shadow shadow{theme::faded(theme::black, 0.05), 8, 3};
constexpr int padding = 16;
constexpr int iconSide = 40;
constexpr int glyphSide = 20;
constexpr int gap = 12;
constexpr int lineGap = 3;
constexpr int leastHeight = 96;
constexpr double radius = 16;

QFont titleFont()
{
    return interfaceFont(15, Weight::SemiBold);
}

QFont detailFont()
{
    return interfaceFont(12.5);
}

int detailHeight(const QString& detail, int width)
{
    const int flags = Qt::AlignLeft | Qt::TextWordWrap;
    return QFontMetrics(detailFont()).boundingRect(QRect(0, 0, width, 1000), flags, detail).height();
}

} // namespace

ToolTile::ToolTile(Icon icon, const QString& title, const QString& detail, QWidget* parent)
    : PaintedButton(title, Qt::StrongFocus, parent), m_icon(icon), m_detail(detail)
{
    setAccessibleDescription(detail);
    setCursor(Qt::PointingHandCursor);
}

QMargins ToolTile::margin()
{
    return shadow.margins() | focusRingMargins;
}

int ToolTile::frameHeight(int textHeight)
{
    return std::max(leastHeight, textHeight + 2 * padding);
}

int ToolTile::textHeight(int frameWidth) const
{
    const int textWidth = frameWidth - 2 * padding - iconSide - gap;
    return QFontMetrics(titleFont()).height() + lineGap + detailHeight(m_detail, textWidth);
}

void ToolTile::alignTo(int textHeight)
{
    m_alignedTo = textHeight;
    update();
}

void ToolTile::draw(QPainter& painter, const ControlState& state) const
{
    const QRect frame = this->frame();
    drawCard(painter, frame, radius, shadow);
    state.wash(painter, continuousRect(frame, radius));
    if (state.hasFocus)
        drawFocusRing(painter, frame, radius);

    const int textLeft = frame.left() + padding + iconSide + gap;
    const int textWidth = frame.right() + 1 - padding - textLeft;
    const int titleHeight = QFontMetrics(titleFont()).height();
    const int top = frame.top() + (frame.height() - m_alignedTo) / 2;
    const QRectF square(frame.left() + padding, frame.top() + (frame.height() - iconSide) / 2.0, iconSide,
                        iconSide);
    painter.fillPath(continuousRect(square, 10), theme::accentSoft);
    QRectF glyph(0, 0, glyphSide, glyphSide);
    glyph.moveCenter(square.center());
    drawIcon(painter, m_icon, glyph, theme::accent);

    painter.setFont(titleFont());
    painter.setPen(theme::text);
    painter.drawText(QRect(textLeft, top, textWidth, titleHeight), Qt::AlignLeft | Qt::AlignVCenter, text());
    painter.setFont(detailFont());
    painter.setPen(theme::secondaryText);
    painter.drawText(QRect(textLeft, top + titleHeight + lineGap, textWidth, height()),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_detail);
}

} // namespace folvane
