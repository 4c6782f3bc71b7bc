#pragma once

#include "controls/dragging/DropTarget.h"
#include "tools/stamps/StampSource.h"

namespace folvane {

/// Lets pictures be dropped on a widget, to become stamps. Nobody gets anything else there.
class StampDrops : public DropTarget {
    Q_OBJECT

public:
    explicit StampDrops(QWidget& target) : DropTarget(target) {}

signals:
    void dropped(folvane::StampSource source);

protected:
    Verdict judge(const QMimeData& data) const override;
    void take(const QMimeData& data) override;
};

} // namespace folvane
