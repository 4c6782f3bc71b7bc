#pragma once

#include "controls/PaintedButton.h"

#include <QUrl>

namespace folvane {

class FileDrops;

/// A large place to drop files on, or to click.
class DropZone : public PaintedButton {
    Q_OBJECT

public:
    explicit DropZone(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void filesDropped(QList<QUrl> files);

protected:
    void draw(QPainter& painter, const ControlState& state) const override;

private:
    void drawGround(QPainter& painter, const ControlState& state) const;

    FileDrops* m_drops;
};

} // namespace folvane
