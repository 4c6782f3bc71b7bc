#include "tools/stamps/StampTile.h"

namespace folvane {

namespace {

constexpr int padding = 8;

} // namespace

StampTile::StampTile(AppModel& model, const QUuid& stamp, int height, QWidget* parent)
    : CheckeredPicture(padding, parent)
{
    setFixedHeight(height);
    m_watches.keep([this, &model, stamp] { setPicture(model.stamps.images.value().value(stamp)); },
                   model.stamps.images);
}

} // namespace folvane
