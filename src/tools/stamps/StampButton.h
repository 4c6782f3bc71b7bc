#pragma once

#include "controls/PaintedButton.h"
#include "controls/Watches.h"
#include "documents/AppModel.h"

namespace folvane {

/// A stamp of the library to be put on the page. The ring of its focus lies in a margin around the picture.
class StampButton : public PaintedButton {
    Q_OBJECT

public:
    static constexpr int margin = 3;

    StampButton(AppModel& model, const QUuid& stamp, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void draw(QPainter& painter, const ControlState& state) const override;

private:
    Watches m_watches;
};

} // namespace folvane
