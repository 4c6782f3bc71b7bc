#include "tools/sign/StampHandles.h"

#include <QPainter>

namespace folvane {

StampHandles::StampHandles(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void StampHandles::setFrame(const std::optional<StampFrame>& frame, QPointF page)
{
    m_frame = frame;
    m_page = page;
    setVisible(m_frame.has_value());
    if (!m_frame)
        return;
    setGeometry(m_frame->outerBounds().translated(page).toAlignedRect());
    update();
}

void StampHandles::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.translate(m_page - pos());
    m_frame->draw(painter);
}

} // namespace folvane
