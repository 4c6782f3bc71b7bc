#include "tools/stamps/CheckeredPicture.h"

#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/drawInTheMiddle.h"
#include "tools/stamps/checkerboard.h"

#include <QPainter>

namespace folvane {

CheckeredPicture::CheckeredPicture(int padding, QWidget* parent) : QWidget(parent), m_padding(padding) {}

void CheckeredPicture::setPicture(const QImage& picture)
{
    if (picture.cacheKey() == m_picture.cacheKey())
        return;
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
        drawInTheMiddle(painter, rect(), shown());
}

} // namespace folvane
