#pragma once

#include "controls/sliders/KnobSlider.h"

#include <QStringList>

namespace folvane {

/// A slider over a few steps, each of which has a title. Screen readers say the title of the step.
class StepSlider : public KnobSlider {
    Q_OBJECT

public:
    /// `name` is what a screen reader calls the question. At least two titles.
    StepSlider(const QString& name, const QStringList& titles, QWidget* parent = nullptr);

    /// The title of the present step.
    QString valueText() const override { return m_titles[value()]; }

private:
    const QStringList m_titles;
};

} // namespace folvane
