#include "controls/sheets/Panel.h"

#include "controls/style/Shadow.h"
#include "controls/style/visualMargin.h"

#include <QPainter>
#include <QVBoxLayout>

namespace folvane {

namespace {

constexpr double cornerRadius = 18;

} // namespace

Panel::Panel(QWidget* parent, int padding) : QFrame(parent), m_content(new QVBoxLayout(this))
{
    const QMargins shadow = shadows::panel.margins();
    setVisualMargin(*this, shadow);
    m_content->setContentsMargins(shadow + padding);
    m_content->setSpacing(10);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void Panel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawCard(painter, rect().marginsRemoved(visualMargin(*this)), cornerRadius, shadows::panel);
}

} // namespace folvane
