#include "controls/style/icons.h"

#include "controls/style/ControlState.h"
#include "controls/style/Theme.h"

#include <QFont>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace folvane {

namespace {

class GlyphEngine : public QIconEngine {
public:
    GlyphEngine(Icon icon, const QColor& color) : m_icon(icon), m_color(color) {}

    void paint(QPainter* painter, const QRect& box, QIcon::Mode mode, QIcon::State) override
    {
        QColor color = m_color;
        if (mode == QIcon::Disabled)
            color = theme::faded(color, disabledOpacity);
        drawIcon(*painter, m_icon, box, color);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new GlyphEngine(*this); }

private:
    Icon m_icon;
    QColor m_color;
};

} // namespace

// The font's own pair for turning has broken arcs, and of a whole one it has only one half.
void drawIcon(QPainter& painter, Icon icon, const QRectF& box, const QColor& color)
{
    const bool isMirrored = icon == Icon::RotateRight || icon == Icon::Resize;
    QFont font(QStringLiteral("Material Icons"));
    font.setPixelSize(std::max(1, qRound(std::min(box.width(), box.height()))));
    painter.save();
    painter.setFont(font);
    painter.setPen(color);
    if (isMirrored) {
        painter.translate(2 * box.center().x(), 0);
        painter.scale(-1, 1);
    }
    painter.drawText(
        box, Qt::AlignCenter,
        QString(QChar(static_cast<char16_t>(icon == Icon::RotateRight ? Icon::RotateLeft : icon))));
    painter.restore();
}

QIcon themedIcon(Icon icon, const QColor& color)
{
    return QIcon(new GlyphEngine(icon, color));
}

} // namespace folvane
