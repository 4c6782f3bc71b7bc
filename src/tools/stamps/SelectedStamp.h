#pragma once

#include "controls/Watches.h"
#include "documents/AppModel.h"

#include <QWidget>

class QLabel;

namespace folvane {

class NumberSlider;

/// What can be done with the stamp that is selected on the page: turning it, copying it to all pages, taking it away.
/// Hidden while none is.
class SelectedStamp : public QWidget {
    Q_OBJECT

public:
    explicit SelectedStamp(AppModel& model, QWidget* parent = nullptr);

    /// Asks for nothing, even where the slider cannot show the angle.
    void setSelected(const std::optional<StampPlacement>& placement);

signals:
    void removeRequested();
    void addToAllRequested();
    void rotateRequested(double degrees);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLayout* makeAngle();
    void showAngle(double degrees);
    void turnTo(int degrees);
    void refreshName();

    AppModel& m_model;
    std::optional<StampPlacement> m_selected;
    QLabel* m_name;
    NumberSlider* m_slider;
    QLabel* m_angle;
    Watches m_watches;
};

} // namespace folvane
