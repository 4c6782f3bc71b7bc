#include "tools/stamps/StampDrops.h"

#include "tools/stamps/stampFromData.h"

namespace folvane {

DropTarget::Verdict StampDrops::judge(const QMimeData& data) const
{
    return offersStamp(data, StampGesture::Drop) ? Verdict::Take : Verdict::Refuse;
}

void StampDrops::take(const QMimeData& data)
{
    if (const auto source = stampFrom(data, StampGesture::Drop))
        emit dropped(*source);
}

} // namespace folvane
