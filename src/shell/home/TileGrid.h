#pragma once

#include <QFrame>

namespace folvane {

class ToolTile;

/// Tiles in as many equal columns as fit, each row as high as its highest tile.
class TileGrid : public QFrame {
    Q_OBJECT

public:
    explicit TileGrid(QWidget* parent = nullptr);

    void add(ToolTile* tile);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QList<ToolTile*> row(qsizetype first, int columns) const;

    QList<ToolTile*> m_tiles;
};

} // namespace folvane
