#pragma once

#include "controls/PaintedButton.h"

#include <QCheckBox>

namespace folvane {

/// Something that is on or off: a box before its title. All of it can be clicked.
class CheckBox : public Painted<QCheckBox> {
    Q_OBJECT

public:
    explicit CheckBox(const QString& title, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    void draw(QPainter& painter, const ControlState& state) const override;
};

} // namespace folvane
