#include "controls/sheets/NoteBanner.h"

#include "controls/appearance.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"

#include <QPainter>

#include <algorithm>

namespace folvane {

namespace {

constexpr int padding = 12;
constexpr int spacing = 10;
constexpr int iconSide = 16;
constexpr int narrowestText = 80;

struct Look {
    Icon icon;
    QColor color;
};

Look look(NoteBanner::Tone tone)
{
    switch (tone) {
    case NoteBanner::Tone::Info: return {Icon::InfoFilled, theme::accentDeep};
    case NoteBanner::Tone::Warning: return {Icon::Warning, theme::warning};
    case NoteBanner::Tone::Danger: return {Icon::Report, theme::danger};
    }
    Q_UNREACHABLE();
}

} // namespace

NoteBanner::NoteBanner(const QString& text, Tone tone, QWidget* parent) : QLabel(text, parent), m_tone(tone)
{
    setTextFormat(Qt::PlainText);
    setFont(interfaceFont(12.5));
    setWordWrap(true);
    setMargin(padding);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter); // an indent needs a side
    setIndent(iconSide + spacing);
    setTextColor(*this, theme::text);
}

QSize NoteBanner::minimumSizeHint() const
{
    return {2 * padding + iconSide + spacing + narrowestText, 2 * padding + fontMetrics().height()};
}

void NoteBanner::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRect(rect(), 10), theme::faded(look(m_tone).color, 0.1));
    const int textTop = padding + std::max(0, height() - heightForWidth(width())) / 2;
    const double top = textTop + (fontMetrics().height() - iconSide) / 2.0; // beside the first line
    drawIcon(painter, look(m_tone).icon, QRectF(padding, top, iconSide, iconSide), look(m_tone).color);
    painter.end();
    QLabel::paintEvent(event);
}

} // namespace folvane
