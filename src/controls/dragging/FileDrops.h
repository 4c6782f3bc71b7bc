#pragma once

#include "controls/dragging/DropTarget.h"

#include <QList>
#include <QUrl>

namespace folvane {

/// Lets local files be dropped on a widget, as copies; anything else is left to what lies around it.
class FileDrops : public DropTarget {
    Q_OBJECT

public:
    explicit FileDrops(QWidget& target) : DropTarget(target) {}

signals:
    void dropped(QList<QUrl> files);

protected:
    Verdict judge(const QMimeData& data) const override;
    void take(const QMimeData& data) override;
};

} // namespace folvane
