#pragma once

#include "controls/Watches.h"
#include "documents/AppModel.h"
#include "tools/stamps/CheckeredPicture.h"

namespace folvane {

/// The picture of one stamp of the library, as wide as there is room and as high as told. Without a picture the bare
/// checkerboard.
class StampTile : public CheckeredPicture {
    Q_OBJECT

public:
    StampTile(AppModel& model, const QUuid& stamp, int height, QWidget* parent = nullptr);

private:
    Watches m_watches;
};

} // namespace folvane
