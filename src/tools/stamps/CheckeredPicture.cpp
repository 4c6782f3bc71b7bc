#include "tools/stamps/CheckeredPicture.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "tools/stamps/checkerboard.h"

#include <QPainter>

namespace folvane {

namespace {

/// On whole pixels of the screen.
QPointF inTheMiddle(const QRectF& room, const QPixmap& picture)
{
    const double scale = picture.devicePixelRatio();
    const QSizeF free = room.size() - picture.deviceIndependentSize();
    const QPointF corner = room.topLeft() + QPointF(free.width(), free.height()) / 2;
    return QPointF((corner * scale).toPoint()) / scale;
}

} // namespace

CheckeredPicture::CheckeredPicture(int padding, QWidget* parent) : QWidget(parent), m_padding(padding) {}

void CheckeredPicture::setPicture(const QImage& picture)
{
    m_picture = picture;
    m_shown = QPixmap();
    update();
}

const QPixmap& CheckeredPicture::shown()
{
    const double scale = devicePixelRatioF();
    const QSize room = rect().marginsRemoved(QMargins() + m_padding).size() * scale;
    const QSize pixels = m_picture.size().scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (m_shown.size() != pixels) {
        m_shown =
            QPixmap::fromImage(m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        m_shown.setDevicePixelRatio(scale);
    }
    return m_shown;
}

void CheckeredPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawCheckerboard(painter, rect(), cornerRadius);
    painter.strokePath(continuousRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5),
                       QPen(theme::hairline, 1));
    if (!m_picture.isNull())
        painter.drawPixmap(inTheMiddle(rect(), shown()), shown());
}

} // namespace folvane
