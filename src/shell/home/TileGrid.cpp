#include "shell/home/TileGrid.h"

#include "controls/containers/AdaptiveColumns.h"
#include "controls/style/visualMargin.h"
#include "shell/home/ToolTile.h"

#include <QResizeEvent>

#include <algorithm>

namespace folvane {

namespace {

constexpr AdaptiveColumns grid{250, 14};

int highestText(const QList<ToolTile*>& tiles, int tileWidth)
{
    int height = 0;
    for (const ToolTile* tile : tiles)
        height = std::max(height, tile->textHeight(tileWidth));
    return height;
}

} // namespace

TileGrid::TileGrid(QWidget* parent) : QFrame(parent)
{
    setVisualMargin(*this, ToolTile::margin());
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TileGrid::add(ToolTile* tile)
{
    tile->setParent(this);
    m_tiles.append(tile);
    updateGeometry();
}

QList<ToolTile*> TileGrid::row(qsizetype first, int columns) const
{
    return m_tiles.sliced(first, std::min<qsizetype>(columns, m_tiles.size() - first));
}

int TileGrid::heightForWidth(int width) const
{
    const QMargins margin = ToolTile::margin();
    const int inside = width - margin.left() - margin.right();
    int height = margin.top() + margin.bottom() - grid.spacing;
    const int columns = grid.in(inside);
    for (qsizetype first = 0; first < m_tiles.size(); first += columns)
        height +=
            ToolTile::frameHeight(highestText(row(first, columns), grid.columnWidth(inside))) + grid.spacing;
    return std::max(0, height);
}

// As high as the present width needs: a scroll area asks for no height at a width.
QSize TileGrid::sizeHint() const
{
    return {grid.narrowest, heightForWidth(width())};
}

void TileGrid::resizeEvent(QResizeEvent* event)
{
    if (heightForWidth(event->oldSize().width()) != heightForWidth(width()))
        updateGeometry();
    const QRect inside = rect().marginsRemoved(ToolTile::margin());
    const int columns = grid.in(inside.width());
    const int width = grid.columnWidth(inside.width());
    QRect frame(inside.topLeft(), QSize(width, 0));
    for (qsizetype first = 0; first < m_tiles.size(); first += columns) {
        const QList<ToolTile*> tiles = row(first, columns);
        const int text = highestText(tiles, width);
        frame.setHeight(ToolTile::frameHeight(text));
        frame.moveLeft(inside.left());
        for (ToolTile* tile : tiles) {
            tile->alignTo(text);
            tile->setGeometry(frame.marginsAdded(ToolTile::margin()));
            frame.translate(width + grid.spacing, 0);
        }
        frame.translate(0, frame.height() + grid.spacing);
    }
}

} // namespace folvane
