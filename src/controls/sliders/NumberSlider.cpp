#include "controls/sliders/NumberSlider.h"

namespace folvane {

NumberSlider::NumberSlider(const QString& name, int minimum, int maximum, const QString& unit,
                           QWidget* parent)
    : KnobSlider(name, parent), m_unit(unit)
{
    setRange(minimum, maximum);
    setPageStep(15);
}

} // namespace folvane
