#include "shell/TileGrid.h"

#include "controls/visualMargin.h"
#include "shell/ToolTile.h"

#include <QResizeEvent>

#include <algorithm>

namespace folvane {

namespace {

constexpr int narrowestTile = 250;
constexpr int spacing = 14;

int columnsIn(int width)
{
    return std::max(1, (width + spacing) / (narrowestTile + spacing));
}

int tileWidth(int width)
{
    const int columns = columnsIn(width);
    return (width - (columns - 1) * spacing) / columns;
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

int TileGrid::rowHeight(qsizetype first, int columns, int tileWidth) const
{
    int height = 0;
    for (const ToolTile* tile : m_tiles.sliced(first, std::min<qsizetype>(columns, m_tiles.size() - first)))
        height = std::max(height, tile->frameHeight(tileWidth));
    return height;
}

int TileGrid::heightForWidth(int width) const
{
    const QMargins margin = ToolTile::margin();
    const int inside = width - margin.left() - margin.right();
    int height = margin.top() + margin.bottom() - spacing;
    for (qsizetype first = 0; first < m_tiles.size(); first += columnsIn(inside))
        height += rowHeight(first, columnsIn(inside), tileWidth(inside)) + spacing;
    return std::max(0, height);
}

// As high as the present width needs: a scroll area asks for no height at a width.
QSize TileGrid::sizeHint() const
{
    return {narrowestTile, heightForWidth(width())};
}

void TileGrid::resizeEvent(QResizeEvent* event)
{
    if (heightForWidth(event->oldSize().width()) != heightForWidth(width()))
        updateGeometry();
    const QRect inside = rect().marginsRemoved(ToolTile::margin());
    const int columns = columnsIn(inside.width());
    const int tile = tileWidth(inside.width());
    int top = inside.top();
    for (qsizetype i = 0; i < m_tiles.size(); ++i) {
        const int column = int(i % columns);
        if (column == 0 && i > 0)
            top += rowHeight(i - columns, columns, tile) + spacing;
        const QRect frame(inside.left() + column * (tile + spacing), top, tile,
                          rowHeight(i - column, columns, tile));
        m_tiles[i]->setGeometry(frame.marginsAdded(ToolTile::margin()));
    }
}

} // namespace folvane
