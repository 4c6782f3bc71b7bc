#include "controls/BrandMark.h"

#include "controls/style/Shadow.h"
#include "controls/style/brandPictures.h"
#include "controls/style/continuousRect.h"
#include "controls/style/visualMargin.h"

#include <QPainter>

#include <cmath>

namespace folvane {

namespace {

Shadow shadowFor(int size)
{
    return {theme::faded(theme::accent, 0.3), 0.15 * size, 0.06 * size};
}

} // namespace

BrandMark::BrandMark(int size, QWidget* parent) : QFrame(parent), m_size(size)
{
    const QMargins margins = shadowFor(size).margins();
    setVisualMargin(*this, margins);
    setFixedSize(QSize(size, size).grownBy(margins));
}

const QImage& BrandMark::picture(int pixels)
{
    if (m_picture.width() != pixels)
        m_picture = brandLogo(pixels);
    return m_picture;
}

void BrandMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF square = rect().marginsRemoved(visualMargin(*this));
    const double corner = 0.2237 * m_size;
    shadowFor(m_size).draw(painter, square, corner);

    // A brush is clipped smoothly at the edge of the path; a clip would cut it in steps.
    const double scale = std::hypot(painter.deviceTransform().m11(), painter.deviceTransform().m12());
    const QImage& logo = picture(static_cast<int>(std::lround(m_size * scale)));
    QBrush brush(logo);
    brush.setTransform(QTransform::fromScale(square.width() / logo.width(), square.height() / logo.height())
                       * QTransform::fromTranslate(square.x(), square.y()));
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillPath(continuousRect(square, corner), brush);
}

} // namespace folvane
