#include "controls/containers/PlainScrollArea.h"

namespace folvane {

PlainScrollArea::PlainScrollArea(QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
}

void PlainScrollArea::setPage(QWidget* page)
{
    setWidget(page);
    page->setAutoFillBackground(false); // the scroll area has switched it on
}

} // namespace folvane
