#include "controls/sliders/StepSlider.h"

namespace folvane {

StepSlider::StepSlider(const QString& name, const QStringList& titles, QWidget* parent)
    : KnobSlider(name, parent), m_titles(titles)
{
    setRange(0, int(titles.size()) - 1);
    setPageStep(3);
}

} // namespace folvane
