#pragma once

#include "controls/sliders/KnobSlider.h"

namespace folvane {

/// A slider over whole numbers that lie too close together to be steps: an arrow key moves it by 1, a page key by 15.
class NumberSlider : public KnobSlider {
    Q_OBJECT

public:
    /// `unit` stands behind the number where it is read out. Begins at 0, or where the range is nearest to it.
    NumberSlider(const QString& name, int minimum, int maximum, const QString& unit,
                 QWidget* parent = nullptr);

    QString valueText() const override { return QString::number(value()) + m_unit; }

private:
    const QString m_unit;
};

} // namespace folvane
