#pragma once

#include "controls/PaintedButton.h"

#include <QPixmap>

namespace folvane {

/// A ready stamp that can be chosen, white with a rounded outline. Its text is for screen readers.
class ReadyStampTile : public PaintedButton {
    Q_OBJECT

public:
    explicit ReadyStampTile(QWidget* parent = nullptr);

    /// As large as it is, which room() bounds. A null picture leaves the tile blank.
    void setPicture(const QPixmap& picture);
    QSize sizeHint() const override;
    /// The room for the picture in a tile of this width.
    static QSize room(int width);

protected:
    void draw(QPainter& painter, const ControlState& state) const override;

private:
    QPixmap m_picture;
};

} // namespace folvane
